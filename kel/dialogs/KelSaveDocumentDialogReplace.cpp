// The questions before a save goes ahead: a name that is taken, and a name that begins with a
// dot. Both alerts have Cancel as their default button, so a stray return never overwrites a
// file or hides one.

#include "basalt/nodes/NodeProperties.h"
#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/dialogs/SaveDialogAlerts.h"
#include "kel/foundation/TUniString.h"
#include "kel/interface/KelCommandKeys.h"

namespace {

constexpr int16_t kYesItem = 1;
constexpr int16_t kCancelItem = 2;
constexpr uint16_t kAlertPosition = 43018;
constexpr int32_t kCancelCommandKey = 1;
constexpr int32_t kReplaceCommandKey = 10;
constexpr int32_t kReplaceCommandKeyLower = 11;
constexpr uint16_t kReturnKeyCode = 0x24;
constexpr uint16_t kEnterKeyCode = 0x4C;
constexpr uint16_t kEscapeKeyCode = 0x35;

bool IsCommandKeyAt(uint8_t character, int32_t index) {
    const uint8_t key = CommandKeyAt(index);
    return key != 0 && character == key;
}

void Refuse(const char* key, const TStringRef& name) {
    SaveAlert alert;
    alert.kind = kSaveNoteAlert;
    alert.text = BundleTextWith(key, {name});
    RunSaveAlert(alert);
}

// A question with Cancel as its default; true only when the user pressed the first button.
bool AskWithCancelDefault(const TStringRef& text, const TStringRef& yesTitle) {
    SaveAlert alert;
    alert.kind = kSaveCautionAlert;
    alert.text = text;
    alert.defaultText = yesTitle;
    alert.cancelButton = kCancelItem;
    alert.defaultButton = kCancelItem;
    alert.position = kAlertPosition;
    alert.filter = KelSaveDocumentDialog::replaceDialogFilter;
    return RunSaveAlert(alert) == kYesItem;
}

} // namespace

bool KelSaveDocumentDialog::CanReplaceIfConflict() {
    if ((optionFlags & kKelOptNoReplaceConfirm) != 0) {
        return true;
    }
    TKelNode target;
    if (Target(target) != noErr || target.IsEmpty()) {
        return false;
    }
    TKelNode original = target;
    if (NodeIsAlias(target.PeekNodeRef()) && target.FollowAlias(false, original) != noErr) {
        return false;
    }
    TKelNode child = original.GetChild(TUniString(SaveFileName().AsBCStringRef()));
    return child.IsEmpty() || ConfirmReplacing(child);
}

bool KelSaveDocumentDialog::ConfirmReplacing(TKelNode& node) {
    TUniString shownName;
    node.GetPropertyAsString(NodeCode("dnam"), shownName);
    TStringRef name = shownName.AsBCString();
    NodeRef ref = node.PeekNodeRef();
    const bool packageCounts = (optionFlags & kKelOptPackagesSelectable) != 0 && NodeIsPackage(ref);
    if (node.IsContainer() && !NodeIsAlias(ref) && !packageCounts) {
        Refuse("Cant Replace Folder", name);
        return false;
    }
    Boolean locked = false;
    GetNodePropertyAsBoolean(ref, NodeCode("aslk"), &locked, 0);
    if (locked) {
        Refuse("Cant Replace Locked", name);
        return false;
    }
    uint32_t bits = kNodePermissionWrite;
    if (NodeGetPermissions(ref, &bits) != noErr || (bits & kNodePermissionWrite) == 0) {
        Refuse("Not Right Privs", name);
        return false;
    }
    TStringRef text;
    if (extension) {
        Boolean hidesExtension = false;
        GetNodePropertyAsBoolean(ref, NodeCode("hext"), &hidesExtension, 0);
        const int32_t cut = int32_t(BCStringGetLength(extension)) + 1;
        if (!hidesExtension && name.Length() > cut) {
            name = name.CreateSubstring(TRange(0, name.Length() - cut));
        }
        text = BundleTextWith("ReplaceWithExtensionAlertText", {name, TStringRef(extension.Get())});
    } else {
        text = BundleTextWith("ReplaceAlertText", {name});
    }
    return AskWithCancelDefault(text, BundleText("Replace Button"));
}

bool KelSaveDocumentDialog::CheckForHiddenFileName() {
    const TStringRef text = nameField != nullptr ? nameField->GetTextContent() : SaveFileName();
    if (text.Length() == 0 || text.CharacterAtIndex(0) != u'.') {
        return true;
    }
    return AskWithCancelDefault(BundleText("Cant use period"), BundleText("Use Dot Button"));
}

Boolean KelSaveDocumentDialog::replaceDialogFilter(DialogRef, EventRecord* event,
                                                   DialogItemIndex* item) {
    if (event == nullptr || item == nullptr || event->what != keyDown) {
        return false;
    }
    if ((event->modifiers & cmdKey) != 0) {
        const auto character = static_cast<uint8_t>(event->message & charCodeMask);
        if (IsCommandKeyAt(character, kReplaceCommandKey) ||
            IsCommandKeyAt(character, kReplaceCommandKeyLower)) {
            *item = kYesItem;
            return true;
        }
        if (IsCommandKeyAt(character, kCancelCommandKey)) {
            *item = kCancelItem;
            return true;
        }
        return false;
    }
    const auto keyCode = static_cast<uint16_t>((event->message & keyCodeMask) >> 8);
    if (keyCode == kReturnKeyCode || keyCode == kEnterKeyCode || keyCode == kEscapeKeyCode) {
        *item = kCancelItem;
        return true;
    }
    return false;
}
