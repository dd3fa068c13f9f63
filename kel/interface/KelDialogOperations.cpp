// The operations on a dialog. Each forwards when the second implementation serves the process;
// otherwise it holds a reference on the dialog for the length of the call, so that a callback
// may end and dispose of the dialog without pulling it away from under the call. A null or dead
// dialog is refused with -50 (or the empty answer of a call that returns no status).

#include "kel/interface/KelRouting.h"
#include "kel/interface/__KelDialog.h"

#include <cstring>

namespace {

__KelDialog* LiveDialog(KelDialogRef dialog) {
    return __KelDialog::IsLive(dialog) ? dialog : nullptr;
}

} // namespace

StatusCode KelDialogRun(KelDialogRef dialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogRun>(TKKelEntry::DialogRun)(dialog);
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return paramErr;
    }
    StRetainDialog hold(live);
    return live->Run();
}

uint32_t KelDialogGetUserAction(KelDialogRef dialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogGetUserAction>(TKKelEntry::DialogGetUserAction)(dialog);
    }
    __KelDialog* live = LiveDialog(dialog);
    return live != nullptr ? live->UserAction() : uint32_t{kKelUserActionNone};
}

StatusCode KelDialogGetReply(KelDialogRef dialog, KelReplyRecord* reply) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogGetReply>(TKKelEntry::DialogGetReply)(dialog, reply);
    }
    if (reply == nullptr) {
        return paramErr;
    }
    std::memset(reply, 0, sizeof *reply);
    reply->version = 2;
    reply->selection = BEDesc{typeNull, nullptr};
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return paramErr;
    }
    StRetainDialog hold(live);
    return live->FillReply(*reply);
}

WindowRef KelDialogGetWindow(KelDialogRef dialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogGetWindow>(TKKelEntry::DialogGetWindow)(dialog);
    }
    __KelDialog* live = LiveDialog(dialog);
    return live != nullptr ? live->GetWindow() : nullptr;
}

void KelDialogDispose(KelDialogRef dialog) {
    if (LoadTKKelRoutines()) {
        TKKel<&KelDialogDispose>(TKKelEntry::DialogDispose)(dialog);
        return;
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return;
    }
    StRetainDialog hold(live);
    if (live->IsRunning()) {
        live->Terminate();
    }
    live->Release();
}

StatusCode KelCustomControl(KelDialogRef dialog, long selector, void* parms) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCustomControl>(TKKelEntry::CustomControl)(dialog, selector, parms);
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return paramErr;
    }
    StRetainDialog hold(live);
    return live->CustomControl(selector, parms);
}

BCStringRef KelDialogGetSaveFileName(KelDialogRef dialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogGetSaveFileName>(TKKelEntry::DialogGetSaveFileName)(dialog);
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return nullptr;
    }
    StRetainDialog hold(live);
    // The dialog keeps the string alive; the caller gets no reference of its own.
    return live->SaveFileName().AsBCStringRef();
}

StatusCode KelDialogSetSaveFileName(KelDialogRef dialog, BCStringRef name) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogSetSaveFileName>(TKKelEntry::DialogSetSaveFileName)(dialog, name);
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return paramErr;
    }
    StRetainDialog hold(live);
    live->SetSaveFileName(TStringRef(name), false);
    return noErr;
}

Boolean KelDialogGetSaveFileExtensionHidden(KelDialogRef dialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogGetSaveFileExtensionHidden>(
            TKKelEntry::DialogGetSaveFileExtensionHidden)(dialog);
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return 0;
    }
    StRetainDialog hold(live);
    return live->SaveFileExtensionHidden() ? 1 : 0;
}

StatusCode KelDialogSetSaveFileExtensionHidden(KelDialogRef dialog, Boolean hidden) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogSetSaveFileExtensionHidden>(
            TKKelEntry::DialogSetSaveFileExtensionHidden)(dialog, hidden);
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return paramErr;
    }
    StRetainDialog hold(live);
    return live->SetSaveFileExtensionHidden(hidden != 0);
}

StatusCode KelDialogSetFilterTypeIdentifiers(KelDialogRef dialog, BCArrayRef identifiers) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelDialogSetFilterTypeIdentifiers>(
            TKKelEntry::DialogSetFilterTypeIdentifiers)(dialog, identifiers);
    }
    __KelDialog* live = LiveDialog(dialog);
    if (live == nullptr) {
        return paramErr;
    }
    StRetainDialog hold(live);
    return live->SetFilterTypeIdentifiers(identifiers);
}
