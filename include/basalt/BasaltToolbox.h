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
    kEventParamClickCount = 0x63636E74,                 /* "ccnt" */
    kEventParamKeyModifiers = 0x6B6D6F64,               /* "kmod" */
    kEventParamKeyCode = 0x6B636F64,                    /* "kcod" */
    kEventParamKeyMacCharCodes = 0x6B636872,            /* "kchr" */
    kEventParamKeyUnicodes = 0x6B756E69,                /* "kuni" */
    kEventParamTextInputSendText = 0x74737478,          /* "tstx" */
    kEventParamTextInputSendKeyboardEvent = 0x74736B65, /* "tske" */
    kEventParamControlPart = 0x63707274,                /* "cprt" */
    kEventParamControlRef = 0x2D2D2D2D,
    kEventParamWindowRef = 0x77696E64,                    /* "wind" */
    kEventParamCGContextRef = 0x636E7478,                 /* "cntx" */
    kEventParamRgnHandle = 0x72676E68,                    /* "rgnh" */
    kEventParamDimensions = 0x64696D73,                   /* "dims" */
    kEventParamAttributes = 0x61747472,                   /* "attr" */
    kEventParamOriginalBounds = 0x6F726374,               /* "orct" */
    kEventParamCurrentBounds = 0x63726374,                /* "crct" */
    kEventParamControlPreviousPart = 0x636F7063,          /* "copc" */
    kEventParamControlCurrentPart = 0x636E7063,           /* "cnpc" */
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

/* Parameter types. */
enum {
    typeWildCard = 0x2A2A2A2A,               /* "****" */
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
    typeBGContextRef = 0x636E7478,           /* "cntx" */
    typeQDRgnHandle = 0x72676E68,            /* "rgnh" */
    typeTrackingAreaRef = 0x63747261,        /* "ctra" */
    typeObjectRef = 0x62746F62,              /* "btob" */
    typeVoidPtr = 0x766F6964,                /* "void" */
    typeEnumeration = 0x656E756D,            /* "enum" */
    typeMouseButton = 0x6D62746E,            /* "mbtn" */
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

#ifdef __cplusplus
}
#endif

#endif /* BASALT_TOOLBOX_H */
