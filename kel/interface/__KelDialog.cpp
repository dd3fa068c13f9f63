#include "kel/interface/__KelDialog.h"

#include <unordered_set>

namespace {

// Dialogs alive now. Main thread only, like the dialogs themselves.
std::unordered_set<const void*>& LiveDialogs() {
    static auto* dialogs = new std::unordered_set<const void*>;
    return *dialogs;
}

// The dialog keeps strings of its own, so a client may change its strings after the create call.
TStringRef CopyOf(BCStringRef string) {
    return TStringRef(string).Copy();
}

TTypeMenuItem ClientItem(uint16_t kind, const TStringRef& title, FourCharCode creator,
                         FourCharCode fileType) {
    TTypeMenuItem item;
    item.kind = kind;
    item.title = title;
    item.creator = creator;
    item.fileType = fileType;
    return item;
}

} // namespace

__KelDialog::__KelDialog(const TDialogConfiguration& configuration)
    : client(configuration.eventProc, configuration.previewProc, configuration.filterProc,
             configuration.clientData, configuration.selectionType),
      optionFlags(configuration.optionFlags), location(configuration.location),
      clientName(CopyOf(configuration.clientName)), windowTitle(CopyOf(configuration.windowTitle)),
      actionButtonLabel(CopyOf(configuration.actionButtonLabel)),
      cancelButtonLabel(CopyOf(configuration.cancelButtonLabel)),
      message(CopyOf(configuration.message)) {
    // Still __KelDialog's own SetSaveFileName here: subclasses act on the name once they stand.
    SetSaveFileName(TStringRef(configuration.saveFileName), false);
    preferenceKey = TStringRef::CreateWithFormat(
        "%lu", static_cast<unsigned long>(configuration.preferenceKey));
    modality = configuration.modality;
    parentWindow = configuration.parentWindow;
    client.record.context = this;
    LiveDialogs().insert(this);
}

__KelDialog::~__KelDialog() {
    LiveDialogs().erase(this);
}

bool __KelDialog::IsLive(const void* dialog) {
    return dialog != nullptr && LiveDialogs().contains(dialog);
}

void __KelDialog::Retain() {
    ++retainCount;
}

void __KelDialog::Release() {
    if (--retainCount == 0) {
        delete this;
    }
}

StatusCode __KelDialog::FillReply(KelReplyRecord& reply) {
    reply.version = 2;
    reply.validRecord = 0;
    return kKelWrongDialogClassErr;
}

StatusCode __KelDialog::CustomControl(long selector, void*) {
    return selector == kKelCtlTerminate ? Terminate() : kKelWrongDialogClassErr;
}

TStringRef __KelDialog::SaveFileName() {
    return saveFileName;
}

void __KelDialog::SetSaveFileName(const TStringRef& name, bool) {
    saveFileName = name.Copy();
}

bool __KelDialog::SaveFileExtensionHidden() {
    return false;
}

StatusCode __KelDialog::SetSaveFileExtensionHidden(bool) {
    return kKelWrongDialogClassErr;
}

StatusCode __KelDialog::SetFilterTypeIdentifiers(BCArrayRef) {
    return kKelWrongDialogClassErr;
}

StatusCode __KelDialog::Run() {
    if (running) {
        return kKelWrongStateErr;
    }
    if (modality == kKelModalitySheet && parentWindow == nullptr) {
        return paramErr;
    }
    if (StatusCode status = CreateDialog(); status != noErr) {
        return status;
    }
    running = true;
    client.Event(kKelCBStart);
    return StartDialog();
}

StatusCode __KelDialog::Terminate() {
    return TerminateWithUserAction(kKelUserActionNone);
}

StatusCode __KelDialog::TerminateWithUserAction(uint32_t action) {
    if (!running) {
        return kKelWrongStateErr;
    }
    // Stored first: TerminateDialog looks at it.
    userAction = action;
    TerminateDialog();
    running = false;
    client.record.userAction = action;
    client.Event(kKelCBUserAction);
    client.Event(kKelCBTerminate);
    client.Close();
    return noErr;
}

void __KelDialog::AddTypeMenuItem(const TTypeMenuItem& item) {
    typeMenuItems.push_back(item);
}

void __KelDialog::AddPopupMenuItemSeperator() {
    if (!typeMenuItems.empty()) {
        AddTypeMenuItem(ClientItem(TTypeMenuItem::kSeparator, TStringRef(), 0, 0));
    }
}

void __KelDialog::SetTypeMenuExtension(const TArrayRef& items) {
    for (int32_t index = 0; index < items.Count(); ++index) {
        AddTypeMenuItem(ClientItem(TTypeMenuItem::kClientItem, items.IndexAsSafeString(index),
                                   kKelExtensionCreator, static_cast<FourCharCode>(index)));
    }
}

void __KelDialog::SetTypeMenuExtension(KelMenuItemSpec** items) {
    if (items == nullptr) {
        return;
    }
    HLock(reinterpret_cast<Handle>(items));
    const Size count =
        GetHandleSize(reinterpret_cast<Handle>(items)) / static_cast<Size>(sizeof(KelMenuItemSpec));
    for (Size index = 0; index < count; ++index) {
        const KelMenuItemSpec& spec = (*items)[index];
        AddTypeMenuItem(
            ClientItem(TTypeMenuItem::kClientItem,
                       TStringRef::Create(spec.menuItemName, TStringRef::kApplicationEncoding),
                       spec.menuCreator, spec.menuType));
    }
    HUnlock(reinterpret_cast<Handle>(items));
}
