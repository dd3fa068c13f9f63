/*
 * Basalt toolbox: events and event loops, timers, windows, views and controls, menus, dialogs,
 * standard alerts and sheets, layout files and the scrap. A C header, so that a client written
 * in C can own a window that carries a sheet and run its own loop.
 *
 * Four-character codes are big-endian from their characters: "abcd" is 0x61626364.
 * Everything here is for the main thread, except PostEventToQueue, which any thread may call.
 */
#ifndef BASALT_TOOLBOX_H
#define BASALT_TOOLBOX_H

#include "basalt/BasaltCore.h"
#include "basalt/BasaltGraphics.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Events ------------------------------------------------------------------------------ */

typedef uint32_t EventParamName;
typedef uint32_t EventParamType;
typedef uint32_t EventKind;
typedef uint32_t EventClass;
/* Seconds since the system started. */
typedef double EventTime;
typedef double EventTimeout;
typedef double EventTimerInterval;
typedef uint32_t EventAttributes;
typedef uint32_t OptionBits;

#define kEventDurationForever (-1.0)
#define kEventDurationNoWait (0.0)
#define kEventDurationSecond (1.0)
#define kEventDurationMillisecond (0.001)

typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventQueueRef* EventQueueRef;
typedef struct OpaqueEventLoopRef* EventLoopRef;
typedef struct OpaqueEventLoopTimerRef* EventLoopTimerRef;

typedef StatusCode (*EventHandlerProcPtr)(EventHandlerCallRef inHandlerCallRef, EventRef inEvent,
                                          void* inUserData);
typedef EventHandlerProcPtr EventHandlerUPP;
typedef void (*EventLoopTimerProcPtr)(EventLoopTimerRef inTimer, void* inUserData);
typedef EventLoopTimerProcPtr EventLoopTimerUPP;

typedef struct EventTypeSpec {
    EventClass eventClass;
    EventKind eventKind;
} EventTypeSpec;

typedef enum EventPriority {
    kEventPriorityLow = 0,
    kEventPriorityStandard = 1,
    kEventPriorityHigh = 2
} EventPriority;

/* SendEventToEventTargetWithOptions. */
enum { kEventTargetDontPropagate = 1, kEventTargetSendToAllHandlers = 2 };

enum {
    eventAlreadyPostedErr = -9860,
    eventTargetBusyErr = -9861,
    eventClassInvalidErr = -9862,
    eventInternalErr = -9868,
    eventParameterNotFoundErr = -9870,
    eventLoopQuitErr = -9876,
    eventNotInQueueErr = -9877,
    eventHandlerAlreadyInstalledErr = -9880,
    errEventTypeMismatch = -1700,
    errUnknownControl = -30584,
    errDataNotSupported = -30583,
    errInvalidWindowRef = -5600,
    errInvalidWindowPtr = -5600,
    menuItemNotFoundErr = -5623,
    errInvalidMenuRef = -5604,
    errControlHiddenOrDisabled = -30600,
    errLayoutFile = -4990,
    errNoSuchLayoutWindow = -4991
};

/* Event classes. */
enum {
    kEventClassMouse = 0x6D6F7573,       /* "mous" */
    kEventClassKeyboard = 0x6B657962,    /* "keyb" */
    kEventClassTextInput = 0x74657874,   /* "text" */
    kEventClassApplication = 0x6170706C, /* "appl" */
    kEventClassMenu = 0x6D656E75,        /* "menu" */
    kEventClassWindow = 0x77696E64,      /* "wind" */
    kEventClassControl = 0x636E746C,     /* "cntl" */
    kEventClassCommand = 0x636D6473,     /* "cmds" */
    kEventClassObject = 0x62746F62,      /* "btob" */
    kEventClassScrollable = 0x7363726C,  /* "scrl" */
    kEventClassSplitter = 0x73706C69,    /* "spli" */
    kEventClassSearchField = 0x73726664, /* "srfd" */
    kEventClassTextField = 0x74786664,   /* "txfd" */
    kEventClassToolbox = 0x74626F78      /* "tbox": the toolbox's own wake-ups */
};

enum {
    kEventMouseDown = 1,
    kEventMouseUp = 2,
    kEventMouseMoved = 5,
    kEventMouseDragged = 6,
    kEventMouseWheelMoved = 10,

    kEventRawKeyDown = 1,
    kEventRawKeyRepeat = 2,
    kEventRawKeyUp = 3,
    kEventRawKeyModifiersChanged = 4,

    kEventTextInputUpdateActiveInputArea = 1,
    kEventTextInputUnicodeForKeyEvent = 2,

    kEventCommandProcess = 1,
    kEventCommandUpdateStatus = 2,

    kEventMenuOpening = 1,
    kEventMenuClosed = 2,
    kEventMenuEnableItems = 8,

    kEventWindowUpdate = 1,
    kEventWindowDrawContent = 2,
    kEventWindowActivated = 5,
    kEventWindowDeactivated = 6,
    kEventWindowShown = 24,
    kEventWindowHidden = 25,
    kEventWindowBoundsChanging = 26,
    kEventWindowBoundsChanged = 27,
    kEventWindowClose = 72,
    kEventWindowClosed = 73,
    kEventWindowGetIdealSize = 80,
    kEventWindowGetMinimumSize = 81,

    kEventControlHit = 1,
    kEventControlHitTest = 3,
    kEventControlDraw = 4,
    kEventControlSetFocusPart = 7,
    kEventControlActivate = 9,
    kEventControlDeactivate = 10,
    kEventControlClickActivation = 17,
    kEventControlTrackingAreaEntered = 23,
    kEventControlTrackingAreaExited = 24,
    kEventControlTrack = 51,
    kEventControlGetPartRegion = 101,
    kEventControlSetData = 103,
    kEventControlGetData = 104,
    kEventControlGetSizeConstraints = 105,
    kEventControlValueFieldChanged = 151,
    kEventControlBoundsChanged = 154,
    kEventControlVisibilityChanged = 157,
    kEventControlTitleChanged = 158,
    kEventControlOwningWindowChanged = 159,
    kEventControlHiliteChanged = 160,
    kEventControlEnabledStateChanged = 161,
    kEventControlGetFeatures = 1000,
    kEventControlGetOptimalBounds = 1003,

    kEventObjectConstruct = 1,
    kEventObjectInitialize = 2,
    kEventObjectDestruct = 3,
    kEventObjectPrintDebugInfo = 5,

    kEventScrollableGetInfo = 1,
    kEventScrollableInfoChanged = 2,
    kEventScrollableScrollTo = 10,

    kEventSplitterMoved = 1,
    kEventSearchFieldCancelClicked = 1,
    kEventTextFieldTextDidChange = 3,

    kEventToolboxWake = 1
};

/* Parameter names. */
enum {
    kEventParamDirectObject = 0x2D2D2D2D,               /* "----" */
    kEventParamMouseLocation = 0x6D6C6F63,              /* "mloc": global, y down */
    kEventParamWindowMouseLocation = 0x776D6F75,        /* "wmou" */
    kEventParamMouseButton = 0x6D62746E,                /* "mbtn" */
    kEventParamMouseWheelDelta = 0x6D77646C,            /* "mwdl": lines, positive scrolls up */
    kEventParamMouseWheelAxis = 0x6D776178,             /* "mwax": absent means the vertical */
    kEventParamMouseWheelSmoothDelta = 0x6D777364,      /* "mwsd": lines with their fractions,
                                                           from a touchpad or a free wheel */
    kEventParamClickCount = 0x63636E74,                 /* "ccnt" */
    kEventParamKeyModifiers = 0x6B6D6F64,               /* "kmod" */
    kEventParamKeyCode = 0x6B636F64,                    /* "kcod" */
    kEventParamKeyMacCharCodes = 0x6B636872,            /* "kchr" */
    kEventParamKeyUnicodes = 0x6B756E69,                /* "kuni" */
    kEventParamTextInputSendText = 0x74737478,          /* "tstx" */
    kEventParamTextInputSendKeyboardEvent = 0x74736B65, /* "tske" */
    kEventParamControlPart = 0x63707274,                /* "cprt" */
    kEventParamControlRef = 0x2D2D2D2D,
    kEventParamWindowRef = 0x77696E64,           /* "wind" */
    kEventParamCGContextRef = 0x636E7478,        /* "cntx" */
    kEventParamRgnHandle = 0x72676E68,           /* "rgnh" */
    kEventParamDimensions = 0x64696D73,          /* "dims" */
    kEventParamAttributes = 0x61747472,          /* "attr" */
    kEventParamOriginalBounds = 0x6F726374,      /* "orct" */
    kEventParamPostTarget = 0x70747267,          /* "ptrg": where a posted event is dispatched */
    kEventParamCurrentBounds = 0x63726374,       /* "crct" */
    kEventParamControlPreviousPart = 0x636F7063, /* "copc" */
    kEventParamControlCurrentPart = 0x636E7063,  /* "cnpc" */
    kEventParamControlOriginalOwningWindow = 0x636F6F77,  /* "coow" */
    kEventParamControlCurrentOwningWindow = 0x63636F77,   /* "ccow" */
    kEventParamControlFeatures = 0x63667472,              /* "cftr" */
    kEventParamControlOptimalBounds = 0x636F626E,         /* "cobn" */
    kEventParamControlOptimalBaselineOffset = 0x636F626F, /* "cobo" */
    kEventParamControlDataTag = 0x63647467,               /* "cdtg" */
    kEventParamControlDataBuffer = 0x63646266,            /* "cdbf" */
    kEventParamControlDataBufferSize = 0x63646273,        /* "cdbs" */
    kEventParamControlRegion = 0x6372676E,                /* "crgn" */
    kEventParamControlFocusEverywhere = 0x63666576,       /* "cfev" */
    kEventParamControlClickActivationResult = 0x636C6163, /* "clac" */
    kEventParamMinimumSize = 0x6D6E737A,                  /* "mnsz" */
    kEventParamMaximumSize = 0x6D78737A,                  /* "mxsz" */
    kEventParamTrackingArea = 0x63747261,                 /* "ctra" */
    kEventParamMenuRef = 0x6D656E75,                      /* "menu" */
    kEventParamObject = 0x62746F69,                       /* "btoi" */
    kEventParamImageSize = 0x696D737A,                    /* "imsz" */
    kEventParamViewSize = 0x7677737A,                     /* "vwsz" */
    kEventParamLineSize = 0x6C6E737A,                     /* "lnsz" */
    kEventParamOrigin = 0x6F72676E,                       /* "orgn" */
    kEventParamTimer = 0x746D7220                         /* "tmr " */
};

/* The axis of a wheel event; a horizontal delta is positive when it scrolls left. */
typedef uint16_t EventMouseWheelAxis;
enum { kEventMouseWheelAxisX = 0, kEventMouseWheelAxisY = 1 };

/* Also declared by the other basalt headers; whichever comes first defines it. */
#ifndef BASALT_TYPE_WILDCARD_DEFINED
#define BASALT_TYPE_WILDCARD_DEFINED
enum { typeWildCard = 0x2A2A2A2A /* "****" */ };
#endif

/* Parameter types. */
enum {
    typeBoolean = 0x626F6F6C,                /* "bool" */
    typeSInt16 = 0x73686F72,                 /* "shor" */
    typeSInt32 = 0x6C6F6E67,                 /* "long" */
    typeUInt32 = 0x6D61676E,                 /* "magn" */
    typeIEEE64BitFloatingPoint = 0x646F7562, /* "doub" */
    typeChar = 0x54455854,                   /* "TEXT" */
    typeUnicodeText = 0x75747874,            /* "utxt" */
    typeQDPoint = 0x51447074,                /* "QDpt" */
    typeQDRectangle = 0x71647274,            /* "qdrt" */
    typeBTPoint = 0x62747074,                /* "btpt" */
    typeBTSize = 0x6274737A,                 /* "btsz" */
    typeBTRect = 0x62747263,                 /* "btrc" */
    typeBTCommand = 0x6274636D,              /* "btcm" */
    typeControlPartCode = 0x63707274,        /* "cprt" */
    typeControlRef = 0x6374726C,             /* "ctrl" */
    typeWindowRef = 0x77696E64,              /* "wind" */
    typeMenuRef = 0x6D656E75,                /* "menu" */
    typeEventRef = 0x65766E74,               /* "evnt" */
    typeEventTargetRef = 0x65747267,         /* "etrg" */
    typeBGContextRef = 0x636E7478,           /* "cntx" */
    typeQDRgnHandle = 0x72676E68,            /* "rgnh" */
    typeTrackingAreaRef = 0x63747261,        /* "ctra" */
    typeObjectRef = 0x62746F62,              /* "btob" */
    typeVoidPtr = 0x766F6964,                /* "void" */
    typeEnumeration = 0x656E756D,            /* "enum" */
    typeMouseButton = 0x6D62746E,            /* "mbtn" */
    typeMouseWheelAxis = 0x6D776178,         /* "mwax" */
    typeClickActivationResult = 0x636C6163,  /* "clac" */
    typeEventLoopTimerRef = 0x746D7220       /* "tmr " */
};

/* Modifier bits: command is the Ctrl key on Linux, option is Alt. */
enum {
    activeFlag = 0x0001,
    btnState = 0x0080,
    cmdKey = 0x0100,
    shiftKey = 0x0200,
    alphaLock = 0x0400,
    optionKey = 0x0800,
    controlKey = 0x1000
};

/* Virtual key codes. */
enum {
    kVK_ANSI_A = 0x00,
    kVK_ANSI_S = 0x01,
    kVK_ANSI_D = 0x02,
    kVK_ANSI_Z = 0x06,
    kVK_ANSI_X = 0x07,
    kVK_ANSI_C = 0x08,
    kVK_ANSI_V = 0x09,
    kVK_ANSI_N = 0x2D,
    kVK_ANSI_Period = 0x2F,
    kVK_Return = 0x24,
    kVK_Tab = 0x30,
    kVK_Space = 0x31,
    kVK_Delete = 0x33,
    kVK_Escape = 0x35,
    kVK_ANSI_KeypadEnter = 0x4C,
    kVK_ForwardDelete = 0x75,
    kVK_Home = 0x73,
    kVK_End = 0x77,
    kVK_PageUp = 0x74,
    kVK_PageDown = 0x79,
    kVK_LeftArrow = 0x7B,
    kVK_RightArrow = 0x7C,
    kVK_DownArrow = 0x7D,
    kVK_UpArrow = 0x7E
};

BASALT_EXPORT StatusCode CreateEvent(BCAllocatorRef allocator, EventClass inClassID,
                                     EventKind inKind, EventTime inWhen,
                                     EventAttributes inAttributes, EventRef* outEvent);
BASALT_EXPORT EventRef CopyEvent(EventRef inOther);
BASALT_EXPORT EventRef RetainEvent(EventRef inEvent);
BASALT_EXPORT void ReleaseEvent(EventRef inEvent);
BASALT_EXPORT long GetEventRetainCount(EventRef inEvent);
BASALT_EXPORT EventClass GetEventClass(EventRef inEvent);
BASALT_EXPORT EventKind GetEventKind(EventRef inEvent);
BASALT_EXPORT EventTime GetEventTime(EventRef inEvent);
BASALT_EXPORT StatusCode SetEventTime(EventRef inEvent, EventTime inTime);
BASALT_EXPORT EventTime GetCurrentEventTime(void);
/* Sixtieths of a second since the system started. */
BASALT_EXPORT uint32_t TickCount(void);

BASALT_EXPORT StatusCode SetEventParameter(EventRef inEvent, EventParamName inName,
                                           EventParamType inType, size_t inSize,
                                           const void* inDataPtr);
/* inDesiredType typeWildCard takes the parameter as stored. A stored type that differs from
   the one desired gives errEventTypeMismatch, except among the integer types, which convert. */
BASALT_EXPORT StatusCode GetEventParameter(EventRef inEvent, EventParamName inName,
                                           EventParamType inDesiredType,
                                           EventParamType* outActualType, size_t inBufferSize,
                                           size_t* outActualSize, void* outData);

BASALT_EXPORT EventTargetRef GetApplicationEventTarget(void);
/* Where the loops send what they take from the queue; it routes input to windows. */
BASALT_EXPORT EventTargetRef GetEventDispatcherTarget(void);

/* A later installed handler is called first. */
BASALT_EXPORT StatusCode InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                                             unsigned long inNumTypes, const EventTypeSpec* inList,
                                             void* inUserData, EventHandlerRef* outRef);
BASALT_EXPORT StatusCode RemoveEventHandler(EventHandlerRef inHandlerRef);
BASALT_EXPORT StatusCode AddEventTypesToHandler(EventHandlerRef inHandlerRef,
                                                unsigned long inNumTypes,
                                                const EventTypeSpec* inList);
BASALT_EXPORT StatusCode RemoveEventTypesFromHandler(EventHandlerRef inHandlerRef,
                                                     unsigned long inNumTypes,
                                                     const EventTypeSpec* inList);
BASALT_EXPORT StatusCode CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent);
BASALT_EXPORT StatusCode SendEventToEventTarget(EventRef inEvent, EventTargetRef inTarget);
BASALT_EXPORT StatusCode SendEventToEventTargetWithOptions(EventRef inEvent,
                                                           EventTargetRef inTarget,
                                                           OptionBits inOptions);

/* ---- Queue and loops --------------------------------------------------------------------- */

BASALT_EXPORT EventQueueRef GetMainEventQueue(void);
BASALT_EXPORT EventQueueRef GetCurrentEventQueue(void);
/* Thread-safe. The queue takes its own reference. */
BASALT_EXPORT StatusCode PostEventToQueue(EventQueueRef inQueue, EventRef inEvent,
                                          EventPriority inPriority);
BASALT_EXPORT StatusCode RemoveEventFromQueue(EventQueueRef inQueue, EventRef inEvent);
BASALT_EXPORT StatusCode FlushEventQueue(EventQueueRef inQueue);
BASALT_EXPORT StatusCode FlushEventsMatchingListFromQueue(EventQueueRef inQueue,
                                                          unsigned long inNumTypes,
                                                          const EventTypeSpec* inList);
BASALT_EXPORT long GetNumEventsInQueue(EventQueueRef inQueue);

/* Waits for an event of the list (all events when inNumTypes is 0), firing timers meanwhile.
   With inPullEvent the caller owns the event and it leaves the queue; without, the event stays
   queued and is not the caller's. -9875 after the timeout, -9876 when the loop was quit. */
BASALT_EXPORT StatusCode ReceiveNextEvent(unsigned long inNumTypes, const EventTypeSpec* inList,
                                          EventTimeout inTimeout, Boolean inPullEvent,
                                          EventRef* outEvent);

BASALT_EXPORT EventLoopRef GetMainEventLoop(void);
BASALT_EXPORT EventLoopRef GetCurrentEventLoop(void);
/* Runs the loop for a while, dispatching; -9875 when the time is up, -9876 when quit. */
BASALT_EXPORT StatusCode RunCurrentEventLoop(EventTimeout inTimeout);
/* Ends the innermost run of the loop. */
BASALT_EXPORT StatusCode QuitEventLoop(EventLoopRef inEventLoop);
BASALT_EXPORT void RunApplicationEventLoop(void);
BASALT_EXPORT void QuitApplicationEventLoop(void);

BASALT_EXPORT StatusCode InstallEventLoopTimer(EventLoopRef inEventLoop,
                                               EventTimerInterval inFireDelay,
                                               EventTimerInterval inInterval,
                                               EventLoopTimerUPP inTimerProc, void* inTimerData,
                                               EventLoopTimerRef* outTimer);
BASALT_EXPORT StatusCode RemoveEventLoopTimer(EventLoopTimerRef inTimer);
/* kEventDurationForever parks the timer until it is set again. */
BASALT_EXPORT StatusCode SetEventLoopTimerNextFireTime(EventLoopTimerRef inTimer,
                                                       EventTimerInterval inNextFire);

/* ---- Classic events ---------------------------------------------------------------------- */

typedef uint16_t EventKindClassic;
typedef uint16_t EventMask;
typedef uint16_t EventModifiers;

enum {
    nullEvent = 0,
    mouseDown = 1,
    mouseUp = 2,
    keyDown = 3,
    keyUp = 4,
    autoKey = 5,
    updateEvt = 6,
    activateEvt = 8,
    osEvt = 15
};

enum {
    mDownMask = 1 << mouseDown,
    mUpMask = 1 << mouseUp,
    keyDownMask = 1 << keyDown,
    keyUpMask = 1 << keyUp,
    autoKeyMask = 1 << autoKey,
    updateMask = 1 << updateEvt,
    activMask = 1 << activateEvt,
    everyEvent = 0xFFFF
};

enum { charCodeMask = 0x000000FF, keyCodeMask = 0x0000FF00 };

/* message: for keys the character in the low byte and the key code in the next; for update and
   activate events the window (pointer-sized). */
typedef struct EventRecord {
    EventKindClassic what;
    uintptr_t message;
    uint32_t when;
    Point where;
    EventModifiers modifiers;
} EventRecord;

/* Waits up to sleep ticks (at most a second) for an event of the mask, dispatching the events
   that handlers take. Returns false with a null event when nothing came. */
BASALT_EXPORT Boolean WaitNextEvent(EventMask eventMask, EventRecord* theEvent, uint32_t sleep,
                                    RgnHandle mouseRgn);
/* Takes the first queued event of the mask without waiting and without dispatching it. */
BASALT_EXPORT Boolean GetNextEvent(EventMask eventMask, EventRecord* theEvent);
/* As GetNextEvent, but leaves the event queued. */
BASALT_EXPORT Boolean EventAvail(EventMask eventMask, EventRecord* theEvent);
BASALT_EXPORT void FlushEvents(EventMask whichMask, EventMask stopMask);
/* False if the event has no classic form. */
BASALT_EXPORT Boolean ConvertEventRefToEventRecord(EventRef inEvent, EventRecord* outEvent);
/* The character a key code gives with the given modifiers, through the keyboard layout. */
BASALT_EXPORT uint32_t KeyTranslate(const void* transData, uint16_t keycode, uint32_t* state);
BASALT_EXPORT uint32_t GetCurrentKeyModifiers(void);
/* The key repeat threshold in ticks. */
BASALT_EXPORT int16_t LMGetKeyRepThresh(void);

/* ---- Windows ----------------------------------------------------------------------------- */

/* The library's public header declares the same WindowRef; whichever comes first defines it. */
#ifndef BASALT_WINDOWREF_DEFINED
#define BASALT_WINDOWREF_DEFINED
typedef struct OpaqueWindowPtr* WindowRef;
#endif
typedef WindowRef WindowPtr;
typedef struct OpaqueControlRef* ControlRef;
typedef ControlRef BTViewRef;
typedef struct OpaqueMenuRef* MenuRef;
typedef struct OpaqueDialogPtr* DialogRef;
typedef DialogRef DialogPtr;
typedef struct OpaqueGrafPtr* GrafPtr;
typedef GrafPtr CGrafPtr;
typedef uint32_t WindowClass;
typedef uint64_t WindowAttributes;
typedef uint32_t WindowRegionCode;
typedef int16_t ControlPartCode;
typedef int16_t DialogItemIndex;
typedef uint16_t MenuItemIndex;
typedef int16_t MenuID;
typedef uint32_t MenuCommand;
typedef uint32_t MenuItemAttributes;
typedef uint32_t PropertyCreator;
typedef uint32_t PropertyTag;

enum {
    kAlertWindowClass = 1,
    kMovableAlertWindowClass = 2,
    kModalWindowClass = 3,
    kMovableModalWindowClass = 4,
    kFloatingWindowClass = 5,
    kDocumentWindowClass = 6,
    kUtilityWindowClass = 8,
    kSheetWindowClass = 11,
    kPlainWindowClass = 13
};

enum {
    kWindowNoAttributes = 0,
    kWindowCloseBoxAttribute = 1u << 0,
    kWindowHorizontalZoomAttribute = 1u << 1,
    kWindowVerticalZoomAttribute = 1u << 2,
    kWindowCollapseBoxAttribute = 1u << 3,
    kWindowResizableAttribute = 1u << 4,
    kWindowStandardHandlerAttribute = 1u << 25,
    kWindowLiveResizeAttribute = 1u << 28,
    kWindowCompositingAttribute = 1u << 19,
    kWindowStandardDocumentAttributes = (1u << 0) | (1u << 1) | (1u << 2) | (1u << 3) | (1u << 4)
};

/* GetWindowRegion / GetWindowBounds codes. */
enum {
    kWindowTitleBarRgn = 0,
    kWindowTitleTextRgn = 1,
    kWindowCloseBoxRgn = 2,
    kWindowGrowRgn = 5,
    kWindowStructureRgn = 32,
    kWindowContentRgn = 33,
    kWindowUpdateRgn = 34,
    kWindowGlobalPortRgn = 40
};

/* RepositionWindow / AutoPositionWindow methods. */
enum {
    kWindowCenterOnMainScreen = 1,
    kWindowCenterOnParentWindow = 2,
    kWindowAlertPositionOnMainScreen = 7,
    kWindowAlertPositionOnParentWindow = 8,
    kWindowCascadeOnMainScreen = 4
};

/* The height of a window's title bar in the toolbox's look. */
enum { kBTWindowTitleBarHeight = 22 };

BASALT_EXPORT StatusCode CreateNewWindow(WindowClass windowClass, WindowAttributes attributes,
                                         const Rect* contentBounds, WindowRef* outWindow);
BASALT_EXPORT void DisposeWindow(WindowRef window);
BASALT_EXPORT Boolean IsValidWindowPtr(WindowRef window);
BASALT_EXPORT EventTargetRef GetWindowEventTarget(WindowRef window);
BASALT_EXPORT void ShowWindow(WindowRef window);
BASALT_EXPORT void HideWindow(WindowRef window);
BASALT_EXPORT Boolean IsWindowVisible(WindowRef window);
BASALT_EXPORT void SelectWindow(WindowRef window);
BASALT_EXPORT void BringToFront(WindowRef window);
BASALT_EXPORT WindowRef FrontWindow(void);
BASALT_EXPORT WindowRef FrontNonFloatingWindow(void);
/* The window that takes key events: the modal window if one runs, else the front window. */
BASALT_EXPORT WindowRef GetUserFocusWindow(void);
BASALT_EXPORT Boolean IsWindowActive(WindowRef window);
BASALT_EXPORT Boolean IsWindowHilited(WindowRef window);
BASALT_EXPORT StatusCode GetWindowClass(WindowRef window, WindowClass* outClass);
BASALT_EXPORT StatusCode SetWindowClass(WindowRef window, WindowClass windowClass);
BASALT_EXPORT StatusCode GetWindowAttributes(WindowRef window, WindowAttributes* outAttributes);
BASALT_EXPORT StatusCode ChangeWindowAttributes(WindowRef window, WindowAttributes setThese,
                                                WindowAttributes clearThese);
/* Global coordinates (y down). kWindowContentRgn or kWindowStructureRgn. */
BASALT_EXPORT StatusCode GetWindowBounds(WindowRef window, WindowRegionCode regionCode,
                                         Rect* globalBounds);
BASALT_EXPORT StatusCode SetWindowBounds(WindowRef window, WindowRegionCode regionCode,
                                         const Rect* globalBounds);
BASALT_EXPORT StatusCode GetWindowRegion(WindowRef window, WindowRegionCode inRegionCode,
                                         RgnHandle ioWinRgn);
BASALT_EXPORT void SizeWindow(WindowRef window, int16_t width, int16_t height, Boolean fUpdate);
/* Moves the content's top left to (h, v), global. */
BASALT_EXPORT void MoveWindow(WindowRef window, int16_t hGlobal, int16_t vGlobal, Boolean front);
BASALT_EXPORT StatusCode RepositionWindow(WindowRef window, WindowRef parentWindow,
                                          uint32_t method);
BASALT_EXPORT StatusCode AutoPositionWindow(WindowRef window, uint32_t method, Boolean useWindow,
                                            Boolean onMainScreen);
/* Zooms out to the ideal size (ioIdealSize when it is not empty, else the answer of "wind" 80
   in "dims", height in v and width in h), kept on the display; zooming in puts back the bounds
   from before. ioIdealSize gets the size used. */
enum { inZoomIn = 7, inZoomOut = 8 };
BASALT_EXPORT StatusCode ZoomWindowIdeal(WindowRef inWindow, int16_t inPartCode,
                                         Point* ioIdealSize);
BASALT_EXPORT StatusCode SetWindowTitleWithBCString(WindowRef window, BCStringRef title);
BASALT_EXPORT StatusCode CopyWindowTitleAsBCString(WindowRef window, BCStringRef* outTitle);
BASALT_EXPORT void SetWRefCon(WindowRef window, long data);
BASALT_EXPORT long GetWRefCon(WindowRef window);
BASALT_EXPORT StatusCode SetWindowProperty(WindowRef window, PropertyCreator creator,
                                           PropertyTag tag, size_t size, const void* buffer);
BASALT_EXPORT StatusCode GetWindowProperty(WindowRef window, PropertyCreator creator,
                                           PropertyTag tag, size_t bufferSize, size_t* actualSize,
                                           void* buffer);
BASALT_EXPORT StatusCode RemoveWindowProperty(WindowRef window, PropertyCreator creator,
                                              PropertyTag tag);
/* Makes the window's content draw and reach the screen (or the headless surface) now. */
BASALT_EXPORT StatusCode BTWindowFlush(WindowRef window);
BASALT_EXPORT Boolean BTViewIsCompositingEnabled(WindowRef window);
BASALT_EXPORT StatusCode BTGrowBoxViewSetTransparent(BTViewRef growBox, Boolean transparent);
/* The usable area of the display that shows most of the window, and the whole display. */
BASALT_EXPORT StatusCode BTWindowGetGreatestAreaDisplay(WindowRef window, uint32_t options,
                                                        Rect* outDisplayBounds);
BASALT_EXPORT StatusCode BTWindowGetAvailablePositioningBounds(uint32_t display,
                                                               BGRect* outAvailableRect);
BASALT_EXPORT RgnHandle GetGrayRgn(void);
BASALT_EXPORT int16_t GetMBarHeight(void);

/* Sheets: a sheet window shown on its parent; the parent takes no input while it shows. */
BASALT_EXPORT StatusCode ShowSheetWindow(WindowRef inSheet, WindowRef inParentWindow);
BASALT_EXPORT StatusCode HideSheetWindow(WindowRef inSheet);
BASALT_EXPORT StatusCode GetSheetWindowParent(WindowRef inSheet, WindowRef* outParentWindow);

/* Modal loops and the application modal state. */
BASALT_EXPORT StatusCode RunAppModalLoopForWindow(WindowRef inWindow);
BASALT_EXPORT StatusCode QuitAppModalLoopForWindow(WindowRef inWindow);
BASALT_EXPORT StatusCode BeginAppModalStateForWindow(WindowRef inWindow);
BASALT_EXPORT StatusCode EndAppModalStateForWindow(WindowRef inWindow);
/* The menu bar's part of the modal state: menus other than the application's are disabled.
   Begin hands back the state it left, which End takes to return the bar to it, so a state ended
   out of order cannot leave the bar disabled or enabled too early. */
BASALT_EXPORT uint32_t _BeginAppModalState(void);
BASALT_EXPORT void _EndAppModalState(uint32_t inSavedState);

/* Ports: each window has one; the current port is process-wide state. */
BASALT_EXPORT void GetPort(GrafPtr* port);
BASALT_EXPORT void SetPort(GrafPtr port);
BASALT_EXPORT void SetPortWindowPort(WindowRef window);
BASALT_EXPORT CGrafPtr GetWindowPort(WindowRef window);
BASALT_EXPORT WindowRef GetWindowFromPort(CGrafPtr port);
BASALT_EXPORT Rect* GetPortBounds(CGrafPtr port, Rect* rect);
BASALT_EXPORT RgnHandle GetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn);
BASALT_EXPORT void SetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn);

/* The pointer's shape over the process's windows; headless this only keeps the state. */
enum {
    kThemeArrowCursor = 0,
    kThemeIBeamCursor = 4,
    kThemeCrossCursor = 5,
    kThemeWatchCursor = 7,
    kThemePointingHandCursor = 10,
    kThemeSpinningCursor = 14,
    kThemeResizeLeftCursor = 17,
    kThemeResizeRightCursor = 18,
    kThemeResizeLeftRightCursor = 19,
    kThemeNotAllowedCursor = 20,
    kThemeResizeUpCursor = 21,
    kThemeResizeDownCursor = 22,
    kThemeResizeUpDownCursor = 23
};
BASALT_EXPORT void InitCursor(void);
BASALT_EXPORT StatusCode SetThemeCursor(uint32_t inCursor);

/* The alert sound; 4096 is the user's alert sound. */
BASALT_EXPORT void AudioServicesPlayAlertSound(uint32_t inSystemSoundID);

/* ---- Views and controls ------------------------------------------------------------------ */

typedef struct ControlID {
    OSType signature;
    int32_t id;
} ControlID;

typedef struct ControlKind {
    OSType signature;
    OSType kind;
} ControlKind;

typedef uint32_t ControlFeatures;
/* Feature bits ("cntl" 1000 answers them in "cftr"). A view of a custom class with the focus
   bit is in the tab order and is asked ("cntl" 7) whether it takes the focus. */
enum { kBTControlSupportsEmbedding = 1u << 1, kBTControlSupportsFocus = 1u << 2 };

/* Part codes. */
enum {
    kControlNoPart = 0,
    kControlLabelPart = 1,
    kControlMenuPart = 2,
    kControlEditTextPart = 5,
    kControlIndicatorPart = 129,
    kControlButtonPart = 10,
    kControlCheckBoxPart = 11,
    kControlRadioButtonPart = 12,
    kControlUpButtonPart = 20,
    kControlDownButtonPart = 21,
    kControlPageUpPart = 22,
    kControlPageDownPart = 23,
    kControlClockPart = 8,
    kControlFocusNoPart = 0,
    kControlFocusNextPart = -1,
    kControlFocusPrevPart = -2,
    kControlInactivePart = 255,
    kControlDisabledPart = 254,
    kControlStructureMetaPart = -1,
    kControlContentMetaPart = -2,
    kControlOpaqueMetaPart = -3,
    kBTSearchFieldCancelPart = 31,
    kBTSplitterPart = 40
};

/* Control kinds: signature "velm" and these kinds. */
enum {
    kControlKindSignature = 0x76656C6D,        /* "velm" */
    kControlKindPushButton = 0x70757368,       /* "push" */
    kControlKindBevelButton = 0x6265766C,      /* "bevl" */
    kControlKindSegmentedView = 0x7367656D,    /* "sgem" */
    kControlKindCheckBox = 0x63626F78,         /* "cbox" */
    kControlKindRadioButton = 0x7264696F,      /* "rdio" */
    kControlKindStaticText = 0x73746578,       /* "stex" */
    kControlKindEditText = 0x65747874,         /* "etxt" */
    kControlKindEditUnicodeText = 0x65757478,  /* "eutx" */
    kControlKindSearchField = 0x73726664,      /* "srfd" */
    kControlKindPopupButton = 0x706F7062,      /* "popb" */
    kControlKindChasingArrows = 0x63617272,    /* "carr" */
    kControlKindGroupBox = 0x67727062,         /* "grpb" */
    kControlKindUserPane = 0x75737270,         /* "usrp" */
    kControlKindDisclosureButton = 0x6469736B, /* "disk" */
    kControlKindSplitter = 0x73706C74,         /* "splt" */
    kControlKindScrollView = 0x7363726C,       /* "scrl" */
    kControlKindImageView = 0x696D6167,        /* "imag" */
    kControlKindSeparator = 0x73657061,        /* "sepa" */
    kControlKindRoot = 0x726F6F74              /* "root" */
};

/* Control data tags. */
enum {
    kControlEditTextCFStringTag = 0x63667374,       /* "cfst": a BCStringRef */
    kControlEditTextSelectionTag = 0x73656C65,      /* "sele": ControlEditTextSelectionRec */
    kControlEditTextKeyFilterTag = 0x666C7472,      /* "fltr": ControlKeyFilterUPP */
    kControlEditTextInlineInputTag = 0x75707570,    /* "upup": ControlEditTextInlinePreUpdateUPP */
    kControlEditTextValidationProcTag = 0x76616C69, /* "vali": ControlEditTextValidationUPP */
    kControlEditTextSingleLineTag = 0x73676C63,     /* "sglc": Boolean */
    kControlEditTextTextTag = 0x74657874,           /* "text": bytes of the text, UTF-8 */
    kControlPopupButtonMenuRefTag = 0x6D68616E,     /* "mhan": MenuRef */
    kControlChasingArrowsAnimatingTag = 0x616E696D, /* "anim": Boolean */
    kControlStaticTextCFStringTag = 0x63667374,
    kControlFontStyleTag = 0x666F6E74,         /* "font": BTThemeFontID (u16) */
    kControlKindTag = 0x6B696E64,              /* "kind" */
    kControlPushButtonDefaultTag = 0x646C6674, /* "dflt": Boolean */
    kControlPushButtonCancelTag = 0x636E636C,  /* "cncl": Boolean */
    kControlSegmentCountTag = 0x7367636E,      /* "sgcn": u32 */
    kControlSegmentEnabledTag = 0x656E6162,    /* "enab": Boolean, per segment (part) */
    kControlImageViewImageTag = 0x696D6167     /* "imag": BGImageRef */
};

typedef struct ControlEditTextSelectionRec {
    int16_t selStart;
    int16_t selEnd;
} ControlEditTextSelectionRec;

enum { kControlKeyFilterBlockKey = 0, kControlKeyFilterPassKey = 1 };
typedef int16_t ControlKeyFilterResult;
typedef ControlKeyFilterResult (*ControlKeyFilterProcPtr)(ControlRef theControl, int16_t* keyCode,
                                                          int16_t* charCode,
                                                          EventModifiers* modifiers);
typedef ControlKeyFilterProcPtr ControlKeyFilterUPP;
typedef void (*ControlEditTextValidationProcPtr)(ControlRef control);
typedef ControlEditTextValidationProcPtr ControlEditTextValidationUPP;
/* Called while an input method composes text: the active range of the composition, both -1
   when the composition has ended. */
typedef void (*ControlEditTextInlinePreUpdateProcPtr)(ControlRef control, int32_t fixLength,
                                                      int32_t activeStart, int32_t activeEnd);
typedef ControlEditTextInlinePreUpdateProcPtr ControlEditTextInlinePreUpdateUPP;

/* Layout bindings: each edge of a view follows an edge of its superview. */
enum { kBTLayoutBindNone = 0, kBTLayoutBindMin = 1, kBTLayoutBindMax = 2 };

typedef struct BTSideBinding {
    BTViewRef toView; /* null: the superview; else the side follows that view's top or left edge
                        (kind min) or bottom or right edge (kind max) as it moves */
    uint32_t kind;
    BGFloat offset;
} BTSideBinding;

typedef struct BTBinding {
    BTSideBinding top;
    BTSideBinding left;
    BTSideBinding bottom;
    BTSideBinding right;
} BTBinding;

typedef struct BTLayoutInfo {
    uint32_t version;
    BTBinding binding;
} BTLayoutInfo;

typedef struct OpaqueTrackingAreaRef* BTViewTrackingAreaRef;
typedef uint64_t BTViewTrackingAreaID;
typedef struct OpaqueShapeRef* BTShapeRef;

/* The commands of menus and controls. */
typedef struct BTCommand {
    uint32_t attributes;
    uint32_t commandID;
    struct {
        MenuRef menuRef;
        MenuItemIndex menuItemIndex;
    } menu;
} BTCommand;

enum {
    kBTCommandFromMenu = 1,
    kBTCommandFromControl = 2,
    kBTCommandOK = 0x6F6B2020,       /* "ok  " */
    kBTCommandCancel = 0x6E6F7421,   /* "not!" */
    kBTCommandOther = 0x6F746872,    /* "othr" */
    kBTCommandUndo = 0x756E646F,     /* "undo" */
    kBTCommandCut = 0x63757420,      /* "cut " */
    kBTCommandCopy = 0x636F7079,     /* "copy" */
    kBTCommandPaste = 0x70617374,    /* "past" */
    kBTCommandSelectAll = 0x73616C6C /* "sall" */
};

BASALT_EXPORT EventTargetRef GetControlEventTarget(ControlRef control);
/* The window's content view; every view of the window descends from it. */
BASALT_EXPORT StatusCode GetRootControl(WindowRef window, ControlRef* outControl);
BASALT_EXPORT WindowRef GetControlOwner(ControlRef control);
BASALT_EXPORT StatusCode GetControlByID(WindowRef inWindow, const ControlID* inID,
                                        ControlRef* outControl);
BASALT_EXPORT StatusCode GetControlID(ControlRef inControl, ControlID* outID);
BASALT_EXPORT StatusCode SetControlID(ControlRef inControl, const ControlID* inID);
BASALT_EXPORT StatusCode GetControlKind(ControlRef inControl, ControlKind* outControlKind);
BASALT_EXPORT void DisposeControl(ControlRef control);

/* Makes a control of one of the kinds above in the window's content view. */
BASALT_EXPORT StatusCode BTCreateControl(WindowRef window, const Rect* bounds, OSType kind,
                                         BCStringRef title, ControlRef* outControl);

BASALT_EXPORT StatusCode BTViewAddSubview(BTViewRef inParent, BTViewRef inNewChild);
BASALT_EXPORT StatusCode BTViewRemoveFromSuperview(BTViewRef inView);
BASALT_EXPORT BTViewRef BTViewGetSuperview(BTViewRef inView);
BASALT_EXPORT BTViewRef BTViewGetRoot(WindowRef inWindow);
BASALT_EXPORT BTViewRef BTViewGetFirstSubview(BTViewRef inView);
BASALT_EXPORT BTViewRef BTViewGetNextView(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewFindByID(BTViewRef inStartView, ControlID inID,
                                        BTViewRef* outControl);
/* op 1 above, 2 below; other null means all siblings. */
BASALT_EXPORT StatusCode BTViewSetZOrder(BTViewRef inView, uint32_t inOp, BTViewRef inOther);

/* Frame: in the superview's coordinates, origin top left. Bounds: the view's own. */
BASALT_EXPORT StatusCode BTViewGetFrame(BTViewRef inView, BGRect* outRect);
BASALT_EXPORT StatusCode BTViewSetFrame(BTViewRef inView, const BGRect* inRect);
BASALT_EXPORT StatusCode BTViewMoveBy(BTViewRef inView, BGFloat inDX, BGFloat inDY);
BASALT_EXPORT StatusCode BTViewGetBounds(BTViewRef inView, BGRect* outRect);
BASALT_EXPORT StatusCode BTViewSetBoundsOrigin(BTViewRef inView, BGFloat inX, BGFloat inY);
/* A null view means the window's content view. */
BASALT_EXPORT StatusCode BTViewConvertRect(BGRect* ioRect, BTViewRef inSourceView,
                                           BTViewRef inDestView);
BASALT_EXPORT StatusCode BTPointConvert(BGPoint* ioPoint, uint32_t inSourceSpace,
                                        void* inSourceObject, uint32_t inDestSpace,
                                        void* inDestObject);
/* Spaces of BTPointConvert and BTRectConvert: the screen (global points, y down), a window's
   content (object: the WindowRef), a view's bounds (object: the view). */
enum { kBTCoordSpaceScreenPixel = 1, kBTCoordSpaceWindow = 2, kBTCoordSpaceView = 3 };
BASALT_EXPORT StatusCode BTRectConvert(BGRect* ioRect, uint32_t inSourceSpace, void* inSourceObject,
                                       uint32_t inDestSpace, void* inDestObject);
BASALT_EXPORT StatusCode BTViewGetOptimalBounds(BTViewRef inView, BGRect* outBounds,
                                                float* outBaseLineOffset);
BASALT_EXPORT StatusCode GetBestControlRect(ControlRef inControl, Rect* outRect,
                                            int16_t* outBaseLineOffset);
BASALT_EXPORT StatusCode BTViewSetLayoutInfo(BTViewRef inView, const BTLayoutInfo* inLayoutInfo);
BASALT_EXPORT StatusCode BTViewGetLayoutInfo(BTViewRef inView, BTLayoutInfo* outLayoutInfo);
BASALT_EXPORT StatusCode BTViewSuspendLayout(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewResumeLayout(BTViewRef inView);
BASALT_EXPORT Boolean BTViewIsLayoutActive(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewApplyLayout(BTViewRef inView);

BASALT_EXPORT StatusCode BTViewSetVisible(BTViewRef inView, Boolean inVisible);
BASALT_EXPORT Boolean BTViewIsVisible(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewSetNeedsDisplay(BTViewRef inView, Boolean inNeedsDisplay);
BASALT_EXPORT Boolean BTViewGetNeedsDisplay(BTViewRef inView);
/* Draws the view and what it contains into its window now. */
BASALT_EXPORT StatusCode BTViewRender(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewScrollRect(BTViewRef inView, const BGRect* inRect, BGFloat inDX,
                                          BGFloat inDY);
BASALT_EXPORT Boolean BTViewIsActive(BTViewRef inView);
BASALT_EXPORT Boolean BTViewIsEnabled(BTViewRef inView, BTViewRef* outEnabledView);
/* Clicks the view as if the user had: hilite, the same events a click sends, and the hit. */
BASALT_EXPORT StatusCode BTViewSimulateClick(BTViewRef inView, ControlPartCode inPartToClick,
                                             uint32_t inModifiers, ControlPartCode* outPartClicked);
BASALT_EXPORT ControlPartCode BTViewGetFocusPart(BTViewRef inView);

BASALT_EXPORT int32_t BTViewGetValue(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewSetValue(BTViewRef inView, int32_t inValue);
BASALT_EXPORT int32_t BTViewGetMinimum(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewSetMinimum(BTViewRef inView, int32_t inMinimum);
BASALT_EXPORT int32_t BTViewGetMaximum(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewSetMaximum(BTViewRef inView, int32_t inMaximum);
BASALT_EXPORT BCStringRef BTViewCopyText(BTViewRef inView);
BASALT_EXPORT StatusCode BTViewSetText(BTViewRef inView, BCStringRef inText);

BASALT_EXPORT void ShowControl(ControlRef control);
BASALT_EXPORT void HideControl(ControlRef control);
BASALT_EXPORT Boolean IsControlVisible(ControlRef control);
BASALT_EXPORT StatusCode EnableControl(ControlRef control);
BASALT_EXPORT StatusCode DisableControl(ControlRef control);
BASALT_EXPORT Boolean IsControlEnabled(ControlRef control);
BASALT_EXPORT StatusCode ActivateControl(ControlRef control);
BASALT_EXPORT StatusCode DeactivateControl(ControlRef control);
BASALT_EXPORT Boolean IsControlActive(ControlRef control);
BASALT_EXPORT void HiliteControl(ControlRef control, ControlPartCode hiliteState);
BASALT_EXPORT ControlPartCode GetControlHilite(ControlRef control);
BASALT_EXPORT Boolean IsControlHilited(ControlRef control);
BASALT_EXPORT Rect* GetControlBounds(ControlRef control, Rect* bounds);
BASALT_EXPORT void SetControlBounds(ControlRef control, const Rect* bounds);
BASALT_EXPORT int16_t GetControlValue(ControlRef control);
BASALT_EXPORT void SetControlValue(ControlRef control, int16_t value);
BASALT_EXPORT int32_t GetControl32BitValue(ControlRef control);
BASALT_EXPORT void SetControl32BitValue(ControlRef control, int32_t value);
BASALT_EXPORT void SetControlMinimum(ControlRef control, int16_t value);
BASALT_EXPORT void SetControlMaximum(ControlRef control, int16_t value);
BASALT_EXPORT int16_t GetControlMaximum(ControlRef control);
BASALT_EXPORT StatusCode SetControlTitleWithBCString(ControlRef control, BCStringRef title);
BASALT_EXPORT StatusCode CopyControlTitleAsBCString(ControlRef control, BCStringRef* outTitle);
/* The command a hit on the control sends ("cmds" 1) when no handler takes the hit. */
BASALT_EXPORT StatusCode SetControlCommandID(ControlRef inControl, uint32_t inCommandID);
BASALT_EXPORT StatusCode GetControlCommandID(ControlRef inControl, uint32_t* outCommandID);
BASALT_EXPORT void SetControlReference(ControlRef control, long data);
BASALT_EXPORT long GetControlReference(ControlRef control);
BASALT_EXPORT void DrawOneControl(ControlRef control);
BASALT_EXPORT void Draw1Control(ControlRef control);
BASALT_EXPORT void DrawControlInCurrentPort(ControlRef control);

/* Control data: "cfst" takes and gives a BCStringRef (the getter's is owned by the caller). */
BASALT_EXPORT StatusCode SetControlData(ControlRef inControl, ControlPartCode inPart,
                                        ResType inTagName, size_t inSize, const void* inData);
BASALT_EXPORT StatusCode GetControlData(ControlRef inControl, ControlPartCode inPart,
                                        ResType inTagName, size_t inBufferSize, void* inBuffer,
                                        size_t* outActualSize);
BASALT_EXPORT StatusCode GetControlDataSize(ControlRef inControl, ControlPartCode inPart,
                                            ResType inTagName, size_t* outMaxSize);
BASALT_EXPORT StatusCode SetControlProperty(ControlRef control, PropertyCreator creator,
                                            PropertyTag tag, size_t size, const void* buffer);
BASALT_EXPORT StatusCode GetControlProperty(ControlRef control, PropertyCreator creator,
                                            PropertyTag tag, size_t bufferSize, size_t* actualSize,
                                            void* buffer);
BASALT_EXPORT StatusCode RemoveControlProperty(ControlRef control, PropertyCreator creator,
                                               PropertyTag tag);

BASALT_EXPORT StatusCode SetKeyboardFocus(WindowRef inWindow, ControlRef inControl,
                                          ControlPartCode inPart);
BASALT_EXPORT StatusCode GetKeyboardFocus(WindowRef inWindow, ControlRef* outControl);
BASALT_EXPORT StatusCode ClearKeyboardFocus(WindowRef inWindow);
BASALT_EXPORT StatusCode AdvanceKeyboardFocus(WindowRef inWindow);
BASALT_EXPORT StatusCode SetWindowDefaultButton(WindowRef inWindow, ControlRef inControl);
BASALT_EXPORT StatusCode SetWindowCancelButton(WindowRef inWindow, ControlRef inControl);
BASALT_EXPORT StatusCode GetWindowDefaultButton(WindowRef inWindow, ControlRef* outControl);
BASALT_EXPORT StatusCode GetWindowCancelButton(WindowRef inWindow, ControlRef* outControl);

/* Search fields. */
enum { kBTSearchFieldAttributesCancel = 1u << 0, kBTSearchFieldAttributesSearchIcon = 1u << 1 };
BASALT_EXPORT StatusCode BTSearchFieldChangeAttributes(BTViewRef inSearchField,
                                                       uint32_t inAttributesToSet,
                                                       uint32_t inAttributesToClear);
BASALT_EXPORT StatusCode BTSearchFieldGetAttributes(BTViewRef inSearchField,
                                                    uint32_t* outAttributes);

/* Scroll views: actions of BTScrollViewGoTo. */
enum {
    kBTScrollViewOptionsVertScroll = 1,
    kBTScrollViewOptionsHorizScroll = 2,
    kBTScrollViewScrollToTop = 1,
    kBTScrollViewScrollToBottom = 2,
    kBTScrollViewPageUp = 16,
    kBTScrollViewPageDown = 32
};
BASALT_EXPORT StatusCode BTScrollViewCreate(uint32_t inOptions, BTViewRef* outView);
BASALT_EXPORT StatusCode BTScrollViewSetScrollBarAutoHide(BTViewRef inView, Boolean inAutoHide);
BASALT_EXPORT StatusCode BTScrollViewGoTo(BTViewRef inView, uint32_t inAction);

/* Tracking areas: the view gets "cntl" 23 and 24 when the mouse enters and leaves. */
BASALT_EXPORT BTShapeRef BTShapeCreateWithRect(const BGRect* inRect);
BASALT_EXPORT void BTShapeRelease(BTShapeRef inShape);
BASALT_EXPORT StatusCode BTViewNewTrackingArea(BTViewRef inView, BTShapeRef inShape,
                                               BTViewTrackingAreaID inID,
                                               BTViewTrackingAreaRef* outRef);
BASALT_EXPORT StatusCode BTViewChangeTrackingArea(BTViewTrackingAreaRef inArea, BTShapeRef inShape);
BASALT_EXPORT StatusCode BTViewGetTrackingAreaID(BTViewTrackingAreaRef inArea,
                                                 BTViewTrackingAreaID* outID);
BASALT_EXPORT StatusCode BTViewDisposeTrackingArea(BTViewTrackingAreaRef inArea);

/* Follows the mouse while a button is down; results 1 down, 2 up, 5 moved, 6 dragged. */
typedef uint16_t MouseTrackingResult;
enum {
    kMouseTrackingMouseDown = 1,
    kMouseTrackingMouseUp = 2,
    kMouseTrackingMouseMoved = 5,
    kMouseTrackingMouseDragged = 6,
    kMouseTrackingTimedOut = 9
};
BASALT_EXPORT StatusCode TrackMouseLocation(GrafPtr inPort, Point* outPt,
                                            MouseTrackingResult* outResult);

/* Custom view classes. A class registers the "btob" events it answers; BTObjectCreate makes
   an object of it, sending construct, then initialise with the given event. Initialise and
   destruct carry the instance that construct stored, in "btoi" of type "void". */
typedef struct OpaqueBTObjectClassRef* BTObjectClassRef;
typedef struct OpaqueBTObjectRef* BTObjectRef;
BASALT_EXPORT StatusCode BTObjectRegisterSubclass(
    BCStringRef inClassID, BCStringRef inBaseClassID, OptionBits inOptions,
    EventHandlerUPP inConstructProc, unsigned long inNumEvents, const EventTypeSpec* inEventList,
    void* inConstructData, BTObjectClassRef* outClassRef);
BASALT_EXPORT StatusCode BTObjectCreate(BCStringRef inClassID, EventRef inConstructData,
                                        BTObjectRef* outObject);
/* The instance data of the given class (what its construct handler stored), else null. */
BASALT_EXPORT void* BTObjectDynamicCast(BTObjectRef inObject, BCStringRef inClassID);
BASALT_EXPORT Boolean BTObjectIsOfClass(BTObjectRef inObject, BCStringRef inClassID);
/* The base class id of every view. */
#define kBTViewClassID "com.velmo.btview"

/* ---- Menus ------------------------------------------------------------------------------- */

enum {
    kMenuItemAttrDisabled = 1u << 1,
    kMenuItemAttrIconDisabled = 1u << 2,
    kMenuItemAttrSubmenuParentChoosable = 1u << 3,
    kMenuItemAttrHidden = 1u << 5,
    kMenuItemAttrSeparator = 1u << 6,
    kMenuItemAttrSectionHeader = 1u << 7,
    kMenuItemAttrIgnoreMeta = 1u << 8
};

enum { kMenuIconRefType = 6, kMenuNoIcon = 0 };
enum {
    kMenuNoModifiers = 0,
    kMenuShiftModifier = 1,
    kMenuOptionModifier = 2,
    kMenuNoCommandModifier = 8
};

BASALT_EXPORT StatusCode CreateNewMenu(MenuID inMenuID, uint32_t inMenuAttributes,
                                       MenuRef* outMenuRef);
BASALT_EXPORT void DisposeMenu(MenuRef theMenu);
BASALT_EXPORT StatusCode RetainMenu(MenuRef inMenu);
BASALT_EXPORT StatusCode ReleaseMenu(MenuRef inMenu);
BASALT_EXPORT Boolean IsValidMenu(MenuRef inMenu);
BASALT_EXPORT MenuID GetMenuID(MenuRef menu);
BASALT_EXPORT EventTargetRef GetMenuEventTarget(MenuRef inMenu);
BASALT_EXPORT StatusCode SetMenuTitleWithBCString(MenuRef inMenu, BCStringRef inString);
BASALT_EXPORT StatusCode AppendMenuItemTextWithBCString(MenuRef inMenu, BCStringRef inString,
                                                        MenuItemAttributes inAttributes,
                                                        MenuCommand inCommandID,
                                                        MenuItemIndex* outNewItem);
BASALT_EXPORT StatusCode InsertMenuItemTextWithBCString(MenuRef inMenu, BCStringRef inString,
                                                        MenuItemIndex inAfterItem,
                                                        MenuItemAttributes inAttributes,
                                                        MenuCommand inCommandID);
BASALT_EXPORT StatusCode SetMenuItemTextWithBCString(MenuRef inMenu, MenuItemIndex inItem,
                                                     BCStringRef inString);
BASALT_EXPORT StatusCode CopyMenuItemTextAsBCString(MenuRef inMenu, MenuItemIndex inItem,
                                                    BCStringRef* outString);
BASALT_EXPORT void DeleteMenuItem(MenuRef theMenu, MenuItemIndex item);
BASALT_EXPORT StatusCode DeleteMenuItems(MenuRef inMenu, MenuItemIndex inFirstItem,
                                         unsigned long inNumItems);
BASALT_EXPORT uint16_t CountMenuItems(MenuRef theMenu);
BASALT_EXPORT void CalcMenuSize(MenuRef theMenu);
BASALT_EXPORT void EnableMenuItem(MenuRef theMenu, MenuItemIndex item);
BASALT_EXPORT void DisableMenuItem(MenuRef theMenu, MenuItemIndex item);
BASALT_EXPORT Boolean IsMenuItemEnabled(MenuRef menu, MenuItemIndex item);
BASALT_EXPORT void SetItemCmd(MenuRef theMenu, MenuItemIndex item, int16_t cmdChar);
BASALT_EXPORT void GetItemCmd(MenuRef theMenu, MenuItemIndex item, int16_t* cmdChar);
BASALT_EXPORT StatusCode SetMenuItemModifiers(MenuRef inMenu, MenuItemIndex inItem,
                                              uint8_t inModifiers);
BASALT_EXPORT StatusCode SetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem,
                                              MenuCommand inCommandID);
BASALT_EXPORT StatusCode GetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem,
                                              MenuCommand* outCommandID);
BASALT_EXPORT void CheckMenuItem(MenuRef theMenu, MenuItemIndex item, Boolean checked);
/* iconType kMenuIconRefType: iconHandle is an IconRef, which the menu retains. */
BASALT_EXPORT StatusCode SetMenuItemIconHandle(MenuRef inMenu, MenuItemIndex inItem,
                                               uint8_t inIconType, Handle inIconHandle);
BASALT_EXPORT StatusCode GetMenuItemIconHandle(MenuRef inMenu, MenuItemIndex inItem,
                                               uint8_t* outIconType, Handle* outIconHandle);
BASALT_EXPORT StatusCode ChangeMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem,
                                                  MenuItemAttributes inSetTheseAttributes,
                                                  MenuItemAttributes inClearTheseAttributes);
BASALT_EXPORT StatusCode GetMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem,
                                               MenuItemAttributes* outAttributes);

/* The menu bar. */
BASALT_EXPORT void InsertMenu(MenuRef theMenu, MenuID beforeID);
BASALT_EXPORT void DeleteMenu(MenuID menuID);
BASALT_EXPORT void ClearMenuBar(void);
BASALT_EXPORT MenuRef GetMenuHandle(MenuID menuID);
BASALT_EXPORT MenuRef GetMenuRef(MenuID menuID);
/* The menu after inMenu in the bar, the first when inMenu is null; null at the end. */
BASALT_EXPORT MenuRef GetNextMenuInBar(MenuRef inMenu);
/* The application menu and the help menu count as system menus. */
BASALT_EXPORT Boolean IsThisASystemMenu(MenuRef inMenu);
BASALT_EXPORT void InvalMenuBar(void);
BASALT_EXPORT void DrawMenuBar(void);
BASALT_EXPORT void HiliteMenu(MenuID menuID);
/* True if the key event matches an enabled item's command key; the menu and item. */
BASALT_EXPORT Boolean IsMenuKeyEvent(MenuRef inStartMenu, EventRef inEvent, OptionBits inOptions,
                                     MenuRef* outMenu, MenuItemIndex* outMenuItem);
/* Pops the menu up at a global point; the item chosen (menu id high word, item low) or 0. */
BASALT_EXPORT long PopUpMenuSelect(MenuRef menu, int16_t top, int16_t left, int16_t popUpItem);
BASALT_EXPORT StatusCode ProcessBTCommand(const BTCommand* inCommand);

/* ---- Dialogs ----------------------------------------------------------------------------- */

enum {
    kDialogItemUserItem = 0,
    kDialogItemButton = 4,
    kDialogItemCheckBox = 5,
    kDialogItemRadioButton = 6,
    kDialogItemControl = 7,
    kDialogItemStaticText = 8,
    kDialogItemEditText = 16,
    kDialogItemDisabled = 128
};

/* An item list (DITL) in memory: a handle holding a count minus one (i16), then per item: a
   reserved i32, the rectangle, the type byte, then a length byte and that many bytes of
   text (UTF-8), padded to an even length. */
typedef Handle DITLHandle;
enum { overlayDITL = 0, appendDITLRight = 1, appendDITLBottom = 2 };
typedef int16_t DITLMethod;

typedef Boolean (*ModalFilterProcPtr)(DialogRef theDialog, EventRecord* theEvent,
                                      DialogItemIndex* itemHit);
typedef ModalFilterProcPtr ModalFilterUPP;

/* Makes a dialog over a window that already exists: its controls become the items. */
BASALT_EXPORT StatusCode _CreatePrivateDialogRefAndBindToWindowRef(WindowRef inWindow,
                                                                   DialogRef* outDialog);
BASALT_EXPORT DialogRef GetDialogFromWindow(WindowRef window);
BASALT_EXPORT WindowRef GetDialogWindow(DialogRef dialog);
BASALT_EXPORT void DisposeDialog(DialogRef theDialog);
BASALT_EXPORT StatusCode SetDialogTracksCursor(DialogRef inDialog, Boolean inTracks);
BASALT_EXPORT StatusCode GetDialogItemAsControl(DialogRef inDialog, int16_t inItemNo,
                                                ControlRef* outControl);
BASALT_EXPORT void GetDialogItem(DialogRef theDialog, DialogItemIndex itemNo, int16_t* itemType,
                                 Handle* item, Rect* box);
BASALT_EXPORT StatusCode SetDialogDefaultItem(DialogRef theDialog, DialogItemIndex newItem);
BASALT_EXPORT StatusCode SetDialogCancelItem(DialogRef theDialog, DialogItemIndex newItem);
BASALT_EXPORT DialogItemIndex CountDITL(DialogRef theDialog);
/* Adds the items of the list, placed as the method says (a negative method is an item number
   to place them relative to). */
BASALT_EXPORT void AppendDITL(DialogRef theDialog, Handle theHandle, DITLMethod method);
BASALT_EXPORT void ShortenDITL(DialogRef theDialog, DialogItemIndex numberItems);
BASALT_EXPORT StatusCode GetDITLItemRectangle(DialogRef inDialog, DialogItemIndex inItemNo,
                                              Rect* outRect);
BASALT_EXPORT StatusCode SetDialogItemRectangle(DialogRef inDialog, DialogItemIndex inItemNo,
                                                const Rect* inRect);
/* Handles an event for the dialog that owns its window: true with the item when it hit one. */
BASALT_EXPORT Boolean DialogSelect(const EventRecord* theEvent, DialogRef* theDialog,
                                   DialogItemIndex* itemHit);
BASALT_EXPORT Boolean IsDialogEvent(const EventRecord* theEvent);
/* Edit commands on the dialog's focused text field, through the scrap. */
BASALT_EXPORT void DialogCut(DialogRef theDialog);
BASALT_EXPORT void DialogCopy(DialogRef theDialog);
BASALT_EXPORT void DialogPaste(DialogRef theDialog);
BASALT_EXPORT void DialogDelete(DialogRef theDialog);

/* ---- Standard alerts and sheets ---------------------------------------------------------- */

typedef int16_t AlertType;
enum { kAlertStopAlert = 0, kAlertNoteAlert = 1, kAlertCautionAlert = 2, kAlertPlainAlert = 3 };

/* Items of a standard alert. */
enum {
    kAlertStdAlertOKButton = 1,
    kAlertStdAlertCancelButton = 2,
    kAlertStdAlertOtherButton = 3,
    kAlertStdAlertHelpButton = 4
};

/* flags of the parameter record. kStdAlertCautionIcon shows the caution icon whatever the alert
   type: for a family of alerts that guard the user's files, which look alike though their types
   differ. */
enum {
    kStdAlertDoNotCloseOnHelp = 1u << 5,
    kStdAlertDoNotAnimateOnDefault = 1u << 2,
    kStdAlertCautionIcon = 1u << 16
};

enum { kStdAlertVersionOne = 1 };
/* For defaultText, cancelText, otherText: -1 asks for the toolbox's own text. */
#define kAlertDefaultOKText ((BCStringRef)(intptr_t)-1)
#define kAlertDefaultCancelText ((BCStringRef)(intptr_t)-1)
#define kAlertDefaultOtherText ((BCStringRef)(intptr_t)-1)

typedef struct AlertStdBCStringAlertParamRec {
    uint32_t version;
    Boolean movable;
    Boolean helpButton;
    BCStringRef defaultText;
    BCStringRef cancelText;
    BCStringRef otherText;
    int16_t defaultButton;
    int16_t cancelButton;
    uint16_t position;
    uint32_t flags;
} AlertStdBCStringAlertParamRec;

enum {
    kWindowDefaultPosition = 0,
    kWindowAlertPositionMainScreen = 0x300A,
    kWindowAlertPositionParentWindow = 0xB00A,
    kWindowAlertPositionParentWindowScreen = 0x700A
};

BASALT_EXPORT StatusCode GetStandardAlertDefaultParams(AlertStdBCStringAlertParamRec* param,
                                                       uint32_t version);
/* param may be null for an OK button alone. The texts are copied. */
BASALT_EXPORT StatusCode CreateStandardAlert(AlertType alertType, BCStringRef error,
                                             BCStringRef explanation,
                                             const AlertStdBCStringAlertParamRec* param,
                                             DialogRef* outAlert);
/* Runs the alert modally and disposes of it; the item hit (1 default, 2 cancel, 3 other). */
BASALT_EXPORT StatusCode RunStandardAlert(DialogRef inAlert, ModalFilterUPP filterProc,
                                          DialogItemIndex* outItemHit);
/* A sheet: its buttons send "cmds" 1 with "ok  ", "not!" or "othr" to the target and close it. */
BASALT_EXPORT StatusCode CreateStandardSheet(AlertType alertType, BCStringRef error,
                                             BCStringRef explanation,
                                             const AlertStdBCStringAlertParamRec* param,
                                             EventTargetRef notifyTarget, DialogRef* outSheet);
BASALT_EXPORT StatusCode CloseStandardSheet(DialogRef inSheet, uint32_t inResultCommand);

/* ---- Layout files ------------------------------------------------------------------------ */

typedef struct OpaqueLayoutRef* LayoutRef;

/* The layout file <name>.json in the bundle's resources. errLayoutFile when it is missing or
   does not parse; the reason is in BTCopyLastLayoutError. */
BASALT_EXPORT StatusCode CreateLayoutReferenceWithBCBundle(BCBundleRef inBundle, BCStringRef inName,
                                                           LayoutRef* outLayoutRef);
BASALT_EXPORT StatusCode CreateLayoutReferenceWithPath(const char* inPath, LayoutRef* outLayoutRef);
BASALT_EXPORT StatusCode CreateWindowFromLayout(LayoutRef inLayoutRef, BCStringRef inName,
                                                WindowRef* outWindow);
BASALT_EXPORT void DisposeLayoutReference(LayoutRef inLayoutRef);
/* The message of the last layout failure (file, window and problem), or null. Owned. */
BASALT_EXPORT BCStringRef BTCopyLastLayoutError(void);

/* ---- Scrap and pasteboard ---------------------------------------------------------------- */

typedef struct OpaqueScrapRef* ScrapRef;
typedef uint32_t ScrapFlavorType;
typedef uint32_t ScrapFlavorFlags;
enum {
    kScrapFlavorTypeText = 0x54455854,         /* "TEXT" */
    kScrapFlavorTypeUnicode = 0x75747874,      /* "utxt" */
    kScrapFlavorTypeTextStyle = 0x7374796C,    /* "styl" */
    kScrapFlavorTypeUnicodeStyle = 0x7573746C, /* "ustl" */
    kScrapFlavorMaskNone = 0,
    noTypeErr = -102,
    internalScrapErr = -4988
};

BASALT_EXPORT StatusCode GetCurrentScrap(ScrapRef* scrap);
BASALT_EXPORT StatusCode ClearCurrentScrap(void);
BASALT_EXPORT StatusCode GetScrapFlavorFlags(ScrapRef scrap, ScrapFlavorType flavorType,
                                             ScrapFlavorFlags* flavorFlags);
BASALT_EXPORT StatusCode GetScrapFlavorSize(ScrapRef scrap, ScrapFlavorType flavorType,
                                            Size* byteCount);
BASALT_EXPORT StatusCode GetScrapFlavorData(ScrapRef scrap, ScrapFlavorType flavorType,
                                            Size* byteCount, void* destination);
BASALT_EXPORT StatusCode PutScrapFlavor(ScrapRef scrap, ScrapFlavorType flavorType,
                                        ScrapFlavorFlags flavorFlags, Size flavorSize,
                                        const void* flavorData);

typedef struct OpaquePasteboardRef* PasteboardRef;
typedef void* PasteboardItemID;
enum {
    kPasteboardModified = 1,
    kPasteboardClientIsOwner = 2,
    badPasteboardSyncErr = -25130,
    badPasteboardIndexErr = -25131,
    badPasteboardFlavorErr = -25133
};
/* The clipboard's name: "com.velmo.pasteboard.clipboard"; others are private pasteboards. */
#define kPasteboardClipboard "com.velmo.pasteboard.clipboard"
BASALT_EXPORT StatusCode PasteboardCreate(BCStringRef inName, PasteboardRef* outPasteboard);
BASALT_EXPORT void PasteboardRelease(PasteboardRef inPasteboard);
BASALT_EXPORT uint32_t PasteboardSynchronize(PasteboardRef inPasteboard);
BASALT_EXPORT StatusCode PasteboardClear(PasteboardRef inPasteboard);
BASALT_EXPORT StatusCode PasteboardGetItemCount(PasteboardRef inPasteboard,
                                                unsigned long* outCount);
BASALT_EXPORT StatusCode PasteboardGetItemIdentifier(PasteboardRef inPasteboard,
                                                     unsigned long inIndex,
                                                     PasteboardItemID* outItem);
/* Flavours are type identifiers such as "public.utf8-plain-text". */
BASALT_EXPORT StatusCode PasteboardPutItemFlavor(PasteboardRef inPasteboard,
                                                 PasteboardItemID inItem, BCStringRef inFlavorType,
                                                 BCDataRef inData, uint32_t inFlags);
BASALT_EXPORT StatusCode PasteboardCopyItemFlavorData(PasteboardRef inPasteboard,
                                                      PasteboardItemID inItem,
                                                      BCStringRef inFlavorType, BCDataRef* outData);
BASALT_EXPORT StatusCode PasteboardCopyItemFlavors(PasteboardRef inPasteboard,
                                                   PasteboardItemID inItem,
                                                   BCArrayRef* outFlavorTypes);

#ifdef __cplusplus
}

/* The records' layouts on our LP64 target: field order and widths as above, pointers 8 bytes. */
static_assert(sizeof(EventTypeSpec) == 8, "EventTypeSpec");
static_assert(sizeof(ControlID) == 8 && sizeof(ControlKind) == 8, "ControlID, ControlKind");
static_assert(sizeof(ControlEditTextSelectionRec) == 4, "ControlEditTextSelectionRec");
static_assert(sizeof(BTCommand) == 24 && offsetof(BTCommand, menu) == 8, "BTCommand");
static_assert(sizeof(EventRecord) == 32 && offsetof(EventRecord, message) == 8 &&
                  offsetof(EventRecord, when) == 16 && offsetof(EventRecord, where) == 20 &&
                  offsetof(EventRecord, modifiers) == 24,
              "EventRecord");
#endif

#endif /* BASALT_TOOLBOX_H */
