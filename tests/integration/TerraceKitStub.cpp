// A stand-in for the second implementation of the panels: a loadable module that exports the
// entry points the library looks up. Its answers are recognisable, so a test can tell a forwarded
// call from a local one. Built a second time without the last entry point.

#include <kel/KelServices.h>

#define TK_ENTRY extern "C" __attribute__((visibility("default")))

namespace {
int dialogToken;
} // namespace

// The dialog every create call hands out, and the answers given about it.
TK_ENTRY KelDialogRef TerraceKitStubDialog() {
    return reinterpret_cast<KelDialogRef>(&dialogToken);
}
constexpr StatusCode kStubStatus = 4242;
constexpr uint32_t kStubUserAction = 77;

TK_ENTRY StatusCode _TKKelGetDefaultDialogCreationOptions(KelDialogCreationOptions*) {
    return kStubStatus;
}

#define TK_CREATE(name, ...)                                                                       \
    TK_ENTRY StatusCode name(__VA_ARGS__, KelDialogRef* out) {                                     \
        *out = TerraceKitStubDialog();                                                             \
        return noErr;                                                                              \
    }

TK_CREATE(_TKKelCreateGetFileDialog, const KelDialogCreationOptions*, KelTypeList**, KelEventProc,
          KelPreviewProc, KelObjectFilterProc, void*)
TK_CREATE(_TKKelCreatePutFileDialog, const KelDialogCreationOptions*, FourCharCode, FourCharCode,
          KelEventProc, void*)
TK_CREATE(_TKKelCreateAskReviewDocumentsDialog, const KelDialogCreationOptions*, uint32_t,
          KelEventProc, void*)
TK_CREATE(_TKKelCreateAskSaveChangesDialog, const KelDialogCreationOptions*, uint32_t, KelEventProc,
          void*)
TK_CREATE(_TKKelCreateAskDiscardChangesDialog, const KelDialogCreationOptions*, KelEventProc, void*)
TK_CREATE(_TKKelCreateChooseFileDialog, const KelDialogCreationOptions*, KelTypeList**,
          KelEventProc, KelPreviewProc, KelObjectFilterProc, void*)
TK_CREATE(_TKKelCreateChooseFolderDialog, const KelDialogCreationOptions*, KelEventProc,
          KelObjectFilterProc, void*)
TK_CREATE(_TKKelCreateChooseVolumeDialog, const KelDialogCreationOptions*, KelEventProc,
          KelObjectFilterProc, void*)
TK_CREATE(_TKKelCreateChooseObjectDialog, const KelDialogCreationOptions*, KelEventProc,
          KelPreviewProc, KelObjectFilterProc, void*)
TK_CREATE(_TKKelCreateNewFolderDialog, const KelDialogCreationOptions*, KelEventProc, void*)

TK_ENTRY StatusCode _TKKelDialogRun(KelDialogRef) {
    return kStubStatus;
}
TK_ENTRY StatusCode _TKKelCompleteSave(KelReplyRecord*, uint32_t) {
    return kStubStatus;
}
TK_ENTRY void _TKKelDialogDispose(KelDialogRef) {}
TK_ENTRY WindowRef _TKKelDialogGetWindow(KelDialogRef) {
    return nullptr;
}
TK_ENTRY uint32_t _TKKelDialogGetUserAction(KelDialogRef) {
    return kStubUserAction;
}
TK_ENTRY StatusCode _TKKelDialogGetReply(KelDialogRef, KelReplyRecord*) {
    return kStubStatus;
}
TK_ENTRY StatusCode _TKKelDisposeReply(KelReplyRecord*) {
    return kStubStatus;
}
TK_ENTRY StatusCode _TKKelCustomControl(KelDialogRef, long, void*) {
    return kStubStatus;
}
TK_ENTRY BCStringRef _TKKelDialogGetSaveFileName(KelDialogRef) {
    return nullptr;
}
TK_ENTRY StatusCode _TKKelDialogSetSaveFileName(KelDialogRef, BCStringRef) {
    return kStubStatus;
}
TK_ENTRY Boolean _TKKelDialogGetSaveFileExtensionHidden(KelDialogRef) {
    return 1;
}
TK_ENTRY StatusCode _TKKelDialogSetSaveFileExtensionHidden(KelDialogRef, Boolean) {
    return kStubStatus;
}
#ifndef TERRACEKIT_STUB_INCOMPLETE
TK_ENTRY StatusCode _TKKelDialogSetFilterTypeIdentifiers(KelDialogRef, BCArrayRef) {
    return kStubStatus;
}
#endif
