// A stand-in for the second implementation of the panels: a loadable module that exports the
// entry points the library looks up. Its answers are recognisable, so a test can tell a forwarded
// call from a local one. Built a second time without the last entry point.
//
// With TERRACEKIT_STUB_FOLDER set it instead behaves as a working implementation whose dialogs
// succeed and reply with that folder, and writes the calls it gets, one a line, to
// TERRACEKIT_STUB_TRACE.

#include <basalt/files/BEDesc.h>
#include <basalt/files/BFRef.h>
#include <cstdio>
#include <cstdlib>
#include <kel/KelServices.h>

#define TK_ENTRY extern "C" __attribute__((visibility("default")))

namespace {

int dialogToken;

const char* ReplyFolder() {
    return std::getenv("TERRACEKIT_STUB_FOLDER");
}

void Trace(const char* call) {
    if (const char* path = std::getenv("TERRACEKIT_STUB_TRACE")) {
        if (std::FILE* file = std::fopen(path, "a")) {
            std::fprintf(file, "%s\n", call);
            std::fclose(file);
        }
    }
}

} // namespace

// The dialog every create call hands out, and the answers given about it.
TK_ENTRY KelDialogRef TerraceKitStubDialog() {
    return reinterpret_cast<KelDialogRef>(&dialogToken);
}
constexpr StatusCode kStubStatus = 4242;
constexpr uint32_t kStubUserAction = 77;

// The stub's answer, or success when it plays a working implementation.
StatusCode Answer() {
    return ReplyFolder() != nullptr ? StatusCode(noErr) : kStubStatus;
}

TK_ENTRY StatusCode _TKKelGetDefaultDialogCreationOptions(KelDialogCreationOptions* options) {
    Trace("defaults");
    if (ReplyFolder() != nullptr) {
        *options = KelDialogCreationOptions{};
    }
    return Answer();
}

#define TK_CREATE(name, ...)                                                                       \
    TK_ENTRY StatusCode name(__VA_ARGS__, KelDialogRef* out) {                                     \
        Trace(#name);                                                                              \
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
    Trace("run");
    return Answer();
}
TK_ENTRY StatusCode _TKKelCompleteSave(KelReplyRecord*, uint32_t) {
    return kStubStatus;
}
TK_ENTRY void _TKKelDialogDispose(KelDialogRef) {
    Trace("dispose");
}
TK_ENTRY WindowRef _TKKelDialogGetWindow(KelDialogRef) {
    return nullptr;
}
TK_ENTRY uint32_t _TKKelDialogGetUserAction(KelDialogRef) {
    return kStubUserAction;
}
// The reply of a working implementation: the folder, named by a file reference.
TK_ENTRY StatusCode _TKKelDialogGetReply(KelDialogRef, KelReplyRecord* reply) {
    Trace("reply");
    BFRef folder;
    if (ReplyFolder() == nullptr ||
        BFPathMakeRef(reinterpret_cast<const uint8_t*>(ReplyFolder()), &folder, nullptr) != noErr) {
        return kStubStatus;
    }
    *reply = KelReplyRecord{};
    reply->version = 2;
    reply->validRecord = 1;
    BEDescList selection; // the record's own sits unaligned
    BECreateList(nullptr, 0, false, &selection);
    BEPutPtr(&selection, 0, typeBFRef, &folder, sizeof folder);
    reply->selection = selection;
    reply->saveFileName = BCSTR("Letter.txt");
    return noErr;
}
TK_ENTRY StatusCode _TKKelDisposeReply(KelReplyRecord*) {
    return kStubStatus;
}
TK_ENTRY StatusCode _TKKelCustomControl(KelDialogRef, long selector, void*) {
    Trace(selector == 8 ? "set-location" : "custom-control");
    return Answer();
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
