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

// A name read from the file system keeps each byte that is not UTF-8 as U+DC80 + byte.
constexpr UniChar kUndecodedByte = 0xDC80;

bool HoldsUndecodedBytes(const TStringRef& name) {
    for (int32_t index = 0; index < name.Length(); ++index) {
        const UniChar character = name.CharacterAtIndex(index);
        if (character >= kUndecodedByte && character <= kUndecodedByte + 0xFF) {
            return true;
        }
    }
    return false;
}

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
    TKelNode child = ExistingFile(original, SaveFileName());
    return child.IsEmpty() || ConfirmReplacing(child);
}

// The folder's lookup also finds a file by the name it is shown under, so that a typed name
// reaches a file whose own name is not UTF-8. Saving under the typed name makes a new file
// beside that one and replaces nothing: it is no conflict, and asking about it would mislead.
TKelNode KelSaveDocumentDialog::ExistingFile(const TKelNode& folder, const TStringRef& name) {
    TKelNode child = folder.GetChild(TUniString(name.AsBCStringRef()));
    TUniString own;
    if (child.IsEmpty() || child.GetPropertyAsString(NodeCode("pnam"), own) != noErr) {
        return child;
    }
    const TStringRef ownName = own.AsBCString();
    const bool sameName =
        BCStringCompare(ownName.AsBCStringRef(), name.AsBCStringRef(), 0) == kBCCompareEqualTo;
    return sameName || !HoldsUndecodedBytes(ownName) ? child : TKelNode();
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
