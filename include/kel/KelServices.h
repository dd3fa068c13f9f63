/*
 * KelServices: standard file dialogs and document alerts.
 *
 * The records below cross the library's boundary and are laid out by the client's compiler, so
 * they are packed to two-byte boundaries: a 32-bit field may sit at an even offset that is no
 * multiple of four. Pointers and handles are 8 bytes on LP64; the sizes and offsets are pinned
 * by the assertions at the end of this file. The header compiles as C99 and as C++.
 *
 * Ownership: the client owns its option records and its reply record. A create call takes its
 * own references to the strings of the options; the client owns one reference to the dialog and
 * gives it back with KelDialogDispose. A valid reply is freed with KelDisposeReply.
 */
#ifndef KEL_SERVICES_H
#define KEL_SERVICES_H

#include <basalt/BasaltCore.h>
#include <basalt/BasaltFiles.h>
#include <basalt/BasaltGraphics.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KEL_EXPORT __attribute__((visibility("default")))

/* ---- Platform types the boundary shares with the toolbox and the node service -------------- */

/* The toolbox header declares the same WindowRef; a client may include either first. */
#if !defined(BASALT_WINDOWREF_DEFINED) && !defined(BASALT_TOOLBOX_H)
#define BASALT_WINDOWREF_DEFINED
typedef struct OpaqueWindowPtr* WindowRef;
#endif

#pragma pack(push, 2)

/* ---- Constants ------------------------------------------------------------------------------ */

/* KelLibraryVersion: major 3, minor and bug 0x10, released. */
enum { kKelLibraryVersion = 0x03108000 };

/* Option flags of KelDialogCreationOptions.optionFlags and KelDialogOptions.optionFlags. */
enum {
    kKelOptNoTypePopup = 0x00000001,
    kKelOptNoAutoTranslate = 0x00000002,
    kKelOptNoMetaTypes = 0x00000004,
    kKelOptReserved8 = 0x00000008,
    kKelOptAllFilesInPopup = 0x00000010,
    kKelOptStationery = 0x00000020,
    kKelOptPreviews = 0x00000040,
    kKelOptMultipleSelection = 0x00000080,
    kKelOptShowInvisible = 0x00000100,
    kKelOptKeepAliases = 0x00000200,
    kKelOptSelectDefault = 0x00000400,
    kKelOptAllReadable = 0x00000800,
    kKelOptPackagesSelectable = 0x00001000,
    kKelOptPackagesBrowsable = 0x00002000,
    kKelOptNoRecents = 0x00004000,
    kKelOptNoCustomFrame = 0x00008000,
    kKelOptNoReplaceConfirm = 0x00010000,
    kKelOptExtensionHandling = 0x00020000,
    kKelOptPopupIsHandle = 0x00040000,
    kKelOptConverted = 0x00080000,
    kKelOptDefaults = 0x000000E4
};

/* Modality of KelDialogCreationOptions.modality. */
enum {
    kKelModalityModeless = 0,
    kKelModalityAppModal = 1,
    kKelModalityModal = 2,
    kKelModalitySheet = 3
};

/* User actions, read with KelDialogGetUserAction and reported with kKelCBUserAction. */
enum {
    kKelUserActionNone = 0,
    kKelUserActionCancel = 1,
    kKelUserActionOpen = 2,
    kKelUserActionSaveAs = 3,
    kKelUserActionChoose = 4,
    kKelUserActionNewFolder = 5,
    kKelUserActionSaveChanges = 6,
    kKelUserActionDontSaveChanges = 7,
    kKelUserActionDiscardChanges = 8,
    kKelUserActionReviewDocuments = 9,
    kKelUserActionDiscardDocuments = 10
};

/* Event selectors, the first argument of a KelEventProc. */
enum {
    kKelCBEvent = 0,
    kKelCBCustomize = 1,
    kKelCBStart = 2,
    kKelCBTerminate = 3,
    kKelCBAdjustRect = 4,
    kKelCBNewLocation = 5,
    kKelCBShowDesktop = 6,
    kKelCBSelectEntry = 7,
    kKelCBPopupMenuSelect = 8,
    kKelCBAccept = 9,
    kKelCBCancel = 10,
    kKelCBAdjustPreview = 11,
    kKelCBUserAction = 12
};
#define kKelCBOpenSelection 0x80000000UL

/* Actions of KelCreateAskSaveChangesDialog and KelAskSaveChanges. */
enum { kKelSaveChangesClosing = 1, kKelSaveChangesQuitting = 2, kKelSaveChangesOther = 3 };

/* Answers of the blocking ask calls. */
enum { kKelAnswerSaveOrDiscard = 1, kKelAnswerCancel = 2, kKelAnswerDontSave = 3 };

/* Selectors of KelCustomControl; the comment gives what parms points at. 1 to 6 have no
   function, 18 and 19 add the client's controls to the custom area. Terminate ends any dialog
   with user action 0. */
enum {
    kKelCtlShowDesktop = 0,         /* none */
    kKelCtlGetLocation = 7,         /* BEDesc, filled */
    kKelCtlSetLocation = 8,         /* BEDesc; no data means the root */
    kKelCtlGetSelection = 9,        /* BEDesc, filled with a list */
    kKelCtlSetSelection = 10,       /* BEDescList or one BEDesc; null clears */
    kKelCtlShowSelection = 11,      /* none */
    kKelCtlOpenSelection = 12,      /* none */
    kKelCtlEjectVolume = 13,        /* int16_t volume reference number */
    kKelCtlNewFolder = 14,          /* length-prefixed name */
    kKelCtlCancel = 15,             /* none */
    kKelCtlAccept = 16,             /* none */
    kKelCtlIsPreviewShowing = 17,   /* uint8_t, filled */
    kKelCtlAddControl = 18,         /* ControlRef */
    kKelCtlAddControlList = 19,     /* Handle */
    kKelCtlGetFirstControlID = 20,  /* uint16_t, filled */
    kKelCtlSelectCustomType = 21,   /* KelMenuItemSpec */
    kKelCtlSelectAllType = 22,      /* uint16_t kind of type popup entry */
    kKelCtlGetEditFileName = 23,    /* length-prefixed buffer of 33 bytes */
    kKelCtlSetEditFileName = 24,    /* length-prefixed name */
    kKelCtlSelectEditFileName = 25, /* ControlEditTextSelectionRec */
    kKelCtlBrowserSelectAll = 26,   /* none */
    kKelCtlGotoParent = 27,         /* none */
    kKelCtlSetActionState = 28,     /* uint32_t: 1 refuses open, 2 save, 4 choose, 16 new folder */
    kKelCtlRefresh = 29,            /* none */
    kKelCtlTerminate = 30           /* none */
};

/* Status values of the boundary besides those of the platform (0, -50, -108, -128). */
enum {
    kKelUnimplementedErr = -4,
    kKelNoPreviewErr = -2007,
    kKelWrongStateErr = -5694,
    kKelWrongDialogClassErr = -5695,
    kKelBadCustomControlParamErr = -5697,
    kKelNotApplicableErr = -5698,
    kKelBadLocationErr = -10001
};

/* The creator of a client's popup item made from a string array: "extn". */
#define kKelExtensionCreator 0x6578746EU

/* ---- Records -------------------------------------------------------------------------------- */

typedef struct __KelDialog* KelDialogRef;
typedef struct __KelPreview* KelPreviewReference;

typedef struct KelDialogCreationOptions {
    uint16_t version;
    uint32_t optionFlags;
    Point location;
    BCStringRef clientName;
    BCStringRef windowTitle;
    BCStringRef actionButtonLabel;
    BCStringRef cancelButtonLabel;
    BCStringRef saveFileName;
    BCStringRef message;
    uint32_t preferenceKey;
    BCArrayRef popupExtension;
    uint32_t modality;
    WindowRef parentWindow;
    char reserved[16];
} KelDialogCreationOptions;

/* The older options record, taken by the blocking calls. */
typedef struct KelDialogOptions {
    uint16_t version;
    uint32_t optionFlags;
    Point location;
    Str255 clientName;
    Str255 windowTitle;
    Str255 actionButtonLabel;
    Str255 cancelButtonLabel;
    Str255 savedFileName;
    Str255 message;
    uint32_t preferenceKey;
    Handle popupExtension;
    char reserved[494];
} KelDialogOptions;

typedef struct KelReplyRecord {
    uint16_t version;
    uint8_t validRecord;
    uint8_t replacing;
    uint8_t isStationery;
    uint8_t translationNeeded;
    /* At offset 6: copy it into a BEDesc of your own before handing it to descriptor calls. */
    BEDescList selection;
    int16_t keyScript;
    Handle fileTranslation;
    uint32_t reserved1;
    BCStringRef saveFileName;
    uint8_t saveFileExtensionHidden;
    uint8_t reserved2;
    char reserved[226];
} KelReplyRecord;

/* Handed to every callback. */
typedef struct KelCBRec {
    uint16_t version;
    KelDialogRef context;
    WindowRef window;
    Rect customRect;
    Rect previewRect;
    void* eventData;
    int16_t itemHit;
    uint32_t userAction;
    char reserved[220];
} KelCBRec;

typedef struct KelMenuItemSpec {
    uint16_t version;
    FourCharCode menuCreator;
    FourCharCode menuType;
    Str255 menuItemName;
    char reserved[246];
} KelMenuItemSpec;

/* Held in a relocatable block; typeCount values follow the header. */
typedef struct KelTypeList {
    FourCharCode componentSignature;
    int16_t reserved;
    int16_t typeCount;
    FourCharCode osTypes[1];
} KelTypeList;

/* The second argument of a KelObjectFilterProc. Bytes 12 on have a file and a folder form. */
typedef struct KelFileInfo {
    uint8_t locked;
    uint8_t resourceOpen;
    uint8_t dataOpen;
    uint8_t reserved1;
    uint32_t dataSize;
    uint32_t resourceSize;
    FourCharCode type;
    FourCharCode creator;
    uint16_t flags;
    uint32_t location;
    uint16_t reserved2;
    char extendedInfo[16];
} KelFileInfo;

typedef struct KelFolderInfo {
    uint8_t shareable;
    uint8_t sharePoint;
    uint8_t mounted;
    uint8_t readable;
    uint8_t writeable;
    char reserved1[13];
    uint16_t flags;
    char reserved2[6];
    char extendedInfo[16];
    FourCharCode folderType;
    FourCharCode folderCreator;
} KelFolderInfo;

typedef struct KelFileOrFolderInfo {
    uint16_t version;
    uint8_t isFolder;
    uint8_t visible;
    uint32_t creationDate;
    uint32_t modificationDate;
    union {
        KelFileInfo file;
        KelFolderInfo folder;
        char reserved[260];
    } fileAndFolder;
} KelFileOrFolderInfo;

#pragma pack(pop)

/* ---- Callbacks ------------------------------------------------------------------------------ */

typedef void (*KelEventProc)(long selector, KelCBRec* record, void* clientData);
/* Nonzero if the client drew the preview itself. */
typedef Boolean (*KelPreviewProc)(KelCBRec* record, void* clientData);
/* Nonzero to let the item through; info points at a KelFileOrFolderInfo. */
typedef Boolean (*KelObjectFilterProc)(BEDesc* item, void* info, void* clientData,
                                       int16_t filterMode);
/* state 0 when a background load starts, 2 when it ends. */
typedef void (*KelLoadPreviewProc)(void* reference, int16_t state, void* data);

typedef KelEventProc KelEventUPP;
typedef KelPreviewProc KelPreviewUPP;
typedef KelObjectFilterProc KelObjectFilterUPP;
typedef KelLoadPreviewProc KelLoadPreviewUPP;

KEL_EXPORT KelEventUPP NewKelEventUPP(KelEventProc proc);
KEL_EXPORT KelPreviewUPP NewKelPreviewUPP(KelPreviewProc proc);
KEL_EXPORT KelObjectFilterUPP NewKelObjectFilterUPP(KelObjectFilterProc proc);
KEL_EXPORT KelLoadPreviewUPP NewKelLoadPreviewUPP(KelLoadPreviewProc proc);
KEL_EXPORT void DisposeKelEventUPP(KelEventUPP upp);
KEL_EXPORT void DisposeKelPreviewUPP(KelPreviewUPP upp);
KEL_EXPORT void DisposeKelObjectFilterUPP(KelObjectFilterUPP upp);
KEL_EXPORT void DisposeKelLoadPreviewUPP(KelLoadPreviewUPP upp);
KEL_EXPORT void InvokeKelEventUPP(long selector, KelCBRec* record, void* clientData,
                                  KelEventUPP upp);
KEL_EXPORT Boolean InvokeKelPreviewUPP(KelCBRec* record, void* clientData, KelPreviewUPP upp);
KEL_EXPORT Boolean InvokeKelObjectFilterUPP(BEDesc* item, void* info, void* clientData,
                                            int16_t filterMode, KelObjectFilterUPP upp);
KEL_EXPORT void InvokeKelLoadPreviewUPP(void* reference, int16_t state, void* data,
                                        KelLoadPreviewUPP upp);

/* ---- Defaults and version ------------------------------------------------------------------- */

KEL_EXPORT uint32_t KelLibraryVersion(void);
/* Fill every field but reserved with the defaults; -50 on null. */
KEL_EXPORT StatusCode KelGetDefaultDialogOptions(KelDialogOptions* options);
KEL_EXPORT StatusCode KelGetDefaultDialogCreationOptions(KelDialogCreationOptions* options);

/* ---- Create calls --------------------------------------------------------------------------- */

/* Options may be null for the defaults. The dialog is stored through outDialog, which must not be
   null; no window exists until KelDialogRun. typeList is a handle of KelTypeList. */
KEL_EXPORT StatusCode KelCreateGetFileDialog(const KelDialogCreationOptions* options,
                                             KelTypeList** typeList, KelEventProc eventProc,
                                             KelPreviewProc previewProc,
                                             KelObjectFilterProc filterProc, void* clientData,
                                             KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreatePutFileDialog(const KelDialogCreationOptions* options,
                                             FourCharCode fileType, FourCharCode fileCreator,
                                             KelEventProc eventProc, void* clientData,
                                             KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateChooseFileDialog(const KelDialogCreationOptions* options,
                                                KelTypeList** typeList, KelEventProc eventProc,
                                                KelPreviewProc previewProc,
                                                KelObjectFilterProc filterProc, void* clientData,
                                                KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateChooseFolderDialog(const KelDialogCreationOptions* options,
                                                  KelEventProc eventProc,
                                                  KelObjectFilterProc filterProc, void* clientData,
                                                  KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateChooseVolumeDialog(const KelDialogCreationOptions* options,
                                                  KelEventProc eventProc,
                                                  KelObjectFilterProc filterProc, void* clientData,
                                                  KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateChooseObjectDialog(const KelDialogCreationOptions* options,
                                                  KelEventProc eventProc,
                                                  KelPreviewProc previewProc,
                                                  KelObjectFilterProc filterProc, void* clientData,
                                                  KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateNewFolderDialog(const KelDialogCreationOptions* options,
                                               KelEventProc eventProc, void* clientData,
                                               KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateAskSaveChangesDialog(const KelDialogCreationOptions* options,
                                                    uint32_t action, KelEventProc eventProc,
                                                    void* clientData, KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateAskDiscardChangesDialog(const KelDialogCreationOptions* options,
                                                       KelEventProc eventProc, void* clientData,
                                                       KelDialogRef* outDialog);
KEL_EXPORT StatusCode KelCreateAskReviewDocumentsDialog(const KelDialogCreationOptions* options,
                                                        uint32_t documentCount,
                                                        KelEventProc eventProc, void* clientData,
                                                        KelDialogRef* outDialog);

/* ---- Dialog operations ---------------------------------------------------------------------- */

KEL_EXPORT StatusCode KelDialogRun(KelDialogRef dialog);
KEL_EXPORT uint32_t KelDialogGetUserAction(KelDialogRef dialog);
KEL_EXPORT StatusCode KelDialogGetReply(KelDialogRef dialog, KelReplyRecord* reply);
KEL_EXPORT WindowRef KelDialogGetWindow(KelDialogRef dialog);
KEL_EXPORT void KelDialogDispose(KelDialogRef dialog);
KEL_EXPORT StatusCode KelCustomControl(KelDialogRef dialog, long selector, void* parms);
/* Not retained for the caller. */
KEL_EXPORT BCStringRef KelDialogGetSaveFileName(KelDialogRef dialog);
KEL_EXPORT StatusCode KelDialogSetSaveFileName(KelDialogRef dialog, BCStringRef name);
KEL_EXPORT Boolean KelDialogGetSaveFileExtensionHidden(KelDialogRef dialog);
KEL_EXPORT StatusCode KelDialogSetSaveFileExtensionHidden(KelDialogRef dialog, Boolean hidden);
KEL_EXPORT StatusCode KelDialogSetFilterTypeIdentifiers(KelDialogRef dialog,
                                                        BCArrayRef identifiers);

/* ---- Replies -------------------------------------------------------------------------------- */

KEL_EXPORT StatusCode KelDisposeReply(KelReplyRecord* reply);
KEL_EXPORT StatusCode KelCompleteSave(KelReplyRecord* reply, uint32_t translationMode);
/* Kept for old clients; always -4. */
KEL_EXPORT StatusCode KelTranslateFile(const void* inputSpec, const void* outputVolume,
                                       int32_t outputDirID, const void* outputName,
                                       void* outputSpec, uint32_t translationMode);

/* ---- Blocking calls ------------------------------------------------------------------------- */

/* Each shows its dialog, waits for its end and fills reply (or answer). */
KEL_EXPORT StatusCode KelGetFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                                 const KelDialogOptions* options, KelEventProc eventProc,
                                 KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                                 KelTypeList** typeList, void* clientData);
KEL_EXPORT StatusCode KelPutFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                                 const KelDialogOptions* options, KelEventProc eventProc,
                                 FourCharCode fileType, FourCharCode fileCreator, void* clientData);
KEL_EXPORT StatusCode KelChooseFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                                    const KelDialogOptions* options, KelEventProc eventProc,
                                    KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                                    KelTypeList** typeList, void* clientData);
KEL_EXPORT StatusCode KelChooseFolder(const BEDesc* defaultLocation, KelReplyRecord* reply,
                                      const KelDialogOptions* options, KelEventProc eventProc,
                                      KelObjectFilterProc filterProc, void* clientData);
KEL_EXPORT StatusCode KelChooseVolume(const BEDesc* defaultSelection, KelReplyRecord* reply,
                                      const KelDialogOptions* options, KelEventProc eventProc,
                                      KelObjectFilterProc filterProc, void* clientData);
KEL_EXPORT StatusCode KelChooseObject(const BEDesc* defaultLocation, KelReplyRecord* reply,
                                      const KelDialogOptions* options, KelEventProc eventProc,
                                      KelObjectFilterProc filterProc, void* clientData);
KEL_EXPORT StatusCode KelNewFolder(const BEDesc* defaultLocation, KelReplyRecord* reply,
                                   const KelDialogOptions* options, KelEventProc eventProc,
                                   void* clientData);
KEL_EXPORT StatusCode KelAskSaveChanges(const KelDialogOptions* options, uint32_t action,
                                        uint32_t* answer, KelEventProc eventProc, void* clientData);
KEL_EXPORT StatusCode KelCustomAskSaveChanges(const KelDialogOptions* options, uint32_t* answer,
                                              KelEventProc eventProc, void* clientData);
KEL_EXPORT StatusCode KelAskDiscardChanges(const KelDialogOptions* options, uint32_t* answer,
                                           KelEventProc eventProc, void* clientData);

/* ---- Previews ------------------------------------------------------------------------------- */

KEL_EXPORT KelPreviewReference KelCreatePreviewReference(void);
KEL_EXPORT StatusCode KelSetupPreview(KelPreviewReference reference, WindowRef window,
                                      const BEDesc* fileDesc, Rect* bounds);
KEL_EXPORT StatusCode KelSetPreviewArea(KelPreviewReference reference, Rect* bounds);
KEL_EXPORT StatusCode KelLoadPreview(KelPreviewReference reference, KelLoadPreviewProc callback,
                                     void* data);
KEL_EXPORT StatusCode KelDrawPreviewInContext(KelPreviewReference reference, BGContextRef context);
KEL_EXPORT void KelDisposePreviewReference(KelPreviewReference reference);
KEL_EXPORT StatusCode KelCreatePreview(const BEDesc* fileDesc, FourCharCode type, const void* data,
                                       int32_t size);

/* ---- Layout checks (LP64) ------------------------------------------------------------------- */

#if defined(__cplusplus)
#define KEL_STATIC_ASSERT(condition, name) static_assert(condition, #name)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define KEL_STATIC_ASSERT(condition, name) _Static_assert(condition, #name)
#else
#define KEL_STATIC_ASSERT(condition, name) typedef char kel_layout_##name[(condition) ? 1 : -1]
#endif

#if defined(__LP64__)
KEL_STATIC_ASSERT(sizeof(BEDesc) == 16, BEDescSize);
KEL_STATIC_ASSERT(sizeof(KelDialogCreationOptions) == 98, CreationOptionsSize);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, optionFlags) == 2, CreationFlags);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, location) == 6, CreationLocation);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, clientName) == 10, CreationClientName);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, preferenceKey) == 58, CreationPrefKey);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, popupExtension) == 62, CreationPopup);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, modality) == 70, CreationModality);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, parentWindow) == 74, CreationParent);
KEL_STATIC_ASSERT(offsetof(KelDialogCreationOptions, reserved) == 82, CreationReserved);
KEL_STATIC_ASSERT(sizeof(KelDialogOptions) == 2052, OptionsSize);
KEL_STATIC_ASSERT(offsetof(KelDialogOptions, clientName) == 10, OptionsClientName);
KEL_STATIC_ASSERT(offsetof(KelDialogOptions, message) == 1290, OptionsMessage);
KEL_STATIC_ASSERT(offsetof(KelDialogOptions, preferenceKey) == 1546, OptionsPrefKey);
KEL_STATIC_ASSERT(offsetof(KelDialogOptions, popupExtension) == 1550, OptionsPopup);
KEL_STATIC_ASSERT(offsetof(KelDialogOptions, reserved) == 1558, OptionsReserved);
KEL_STATIC_ASSERT(sizeof(KelReplyRecord) == 272, ReplySize);
KEL_STATIC_ASSERT(offsetof(KelReplyRecord, selection) == 6, ReplySelection);
KEL_STATIC_ASSERT(offsetof(KelReplyRecord, keyScript) == 22, ReplyKeyScript);
KEL_STATIC_ASSERT(offsetof(KelReplyRecord, fileTranslation) == 24, ReplyTranslation);
KEL_STATIC_ASSERT(offsetof(KelReplyRecord, reserved1) == 32, ReplyReserved1);
KEL_STATIC_ASSERT(offsetof(KelReplyRecord, saveFileName) == 36, ReplySaveFileName);
KEL_STATIC_ASSERT(offsetof(KelReplyRecord, saveFileExtensionHidden) == 44, ReplyHidden);
KEL_STATIC_ASSERT(offsetof(KelReplyRecord, reserved) == 46, ReplyReserved);
KEL_STATIC_ASSERT(sizeof(KelCBRec) == 268, CBRecSize);
KEL_STATIC_ASSERT(offsetof(KelCBRec, context) == 2, CBRecContext);
KEL_STATIC_ASSERT(offsetof(KelCBRec, window) == 10, CBRecWindow);
KEL_STATIC_ASSERT(offsetof(KelCBRec, customRect) == 18, CBRecCustomRect);
KEL_STATIC_ASSERT(offsetof(KelCBRec, previewRect) == 26, CBRecPreviewRect);
KEL_STATIC_ASSERT(offsetof(KelCBRec, eventData) == 34, CBRecEventData);
KEL_STATIC_ASSERT(offsetof(KelCBRec, itemHit) == 42, CBRecItemHit);
KEL_STATIC_ASSERT(offsetof(KelCBRec, userAction) == 44, CBRecUserAction);
KEL_STATIC_ASSERT(offsetof(KelCBRec, reserved) == 48, CBRecReserved);
#endif
KEL_STATIC_ASSERT(sizeof(KelMenuItemSpec) == 512, MenuItemSpecSize);
KEL_STATIC_ASSERT(offsetof(KelMenuItemSpec, menuType) == 6, MenuItemSpecType);
KEL_STATIC_ASSERT(offsetof(KelMenuItemSpec, menuItemName) == 10, MenuItemSpecName);
KEL_STATIC_ASSERT(offsetof(KelTypeList, osTypes) == 8, TypeListTypes);
KEL_STATIC_ASSERT(sizeof(KelFileOrFolderInfo) == 272, FileOrFolderInfoSize);
KEL_STATIC_ASSERT(offsetof(KelFileOrFolderInfo, fileAndFolder.file.dataSize) == 16, FileDataSize);
KEL_STATIC_ASSERT(offsetof(KelFileOrFolderInfo, fileAndFolder.file.flags) == 32, FileFlags);
KEL_STATIC_ASSERT(offsetof(KelFileOrFolderInfo, fileAndFolder.file.extendedInfo) == 40,
                  FileExtendedInfo);
KEL_STATIC_ASSERT(offsetof(KelFileOrFolderInfo, fileAndFolder.folder.flags) == 30, FolderFlags);
KEL_STATIC_ASSERT(offsetof(KelFileOrFolderInfo, fileAndFolder.folder.folderType) == 54, FolderType);
KEL_STATIC_ASSERT(offsetof(KelFileOrFolderInfo, fileAndFolder.folder.folderCreator) == 58,
                  FolderCreator);

#undef KEL_STATIC_ASSERT

#ifdef __cplusplus
}
#endif

#endif /* KEL_SERVICES_H */
