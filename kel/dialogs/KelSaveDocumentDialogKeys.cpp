// The save dialog's keys, and the files the user points at: a click on a file in the list or a
// file dropped on the window gives its name to the field, keeping the dialog's extension.

#include "basalt/nodes/NodeProperties.h"
#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/foundation/TUniString.h"
#include "kel/interface/KelCommandKeys.h"

#include <cctype>

namespace {

constexpr uint16_t kReturn = 13;
constexpr uint16_t kEnter = 3;
constexpr int32_t kSaveCommandKey = 9;

bool IsReturnOrEnter(uint16_t key) {
    return key == kReturn || key == kEnter;
}

TStringRef NameOf(const TKelNode& node, FourCharCode property) {
    TUniString name;
    node.GetPropertyAsString(property, name);
    return name.AsBCString();
}

} // namespace

bool KelSaveDocumentDialog::FilterRawKeyEvent(uint16_t key, uint32_t modifiers, EventRef event) {
    // Return while the field composes text belongs to the input method: it must not save.
    if (IsReturnOrEnter(key) && nameField != nullptr && nameField->IsComposing()) {
        return true;
    }
    if ((modifiers & cmdKey) == 0) {
        return false;
    }
    const int lower = std::tolower(key);
    if (lower == 'n' && simpleMode) {
        return false;
    }
    if (lower == 's' && CanChoose() && defaultControl != nullptr) {
        ControlPartCode part = kControlNoPart;
        BTViewSimulateClick(defaultControl, kControlButtonPart, modifiers, &part);
        return part != kControlNoPart;
    }
    return TBrowseDialog::FilterRawKeyEvent(key, modifiers, event);
}

bool KelSaveDocumentDialog::DefaultKeydown(uint16_t character, int16_t& item) {
    if (IsReturnOrEnter(character) && nameField != nullptr && nameField->IsComposing()) {
        return false;
    }
    return TBrowseDialog::DefaultKeydown(character, item);
}

bool KelSaveDocumentDialog::ProcessModifierKeys(uint16_t key, uint32_t modifiers,
                                                int16_t& itemHit) {
    if (TBrowseDialog::ProcessModifierKeys(key, modifiers, itemHit)) {
        return true;
    }
    const uint8_t save = CommandKeyAt(kSaveCommandKey);
    if ((modifiers & cmdKey) == 0 || save == 0 || std::tolower(key) != std::tolower(save) ||
        (actionState & kActionSaveRefused) != 0) {
        return false;
    }
    TryAcceptDialog(0);
    return true;
}

void KelSaveDocumentDialog::NodeBrowserControlDisabledItemClicked(TNodeBrowserControl&,
                                                                  TKelNode& node) {
    if (node.IsContainer() && !NodeIsPackage(node.PeekNodeRef())) {
        return;
    }
    TakeNameOf(node);
}

bool KelSaveDocumentDialog::CanReceiveDrop(TKelNode& node) {
    if (TBrowseDialog::CanReceiveDrop(node)) {
        return true;
    }
    if (node.IsEmpty() || node.IsContainer()) {
        return false;
    }
    TKelNode parent = node.GetParent();
    return TBrowseDialog::CanReceiveDrop(parent);
}

StatusCode KelSaveDocumentDialog::ReceiveDrop(TKelNode& node) {
    if (node.IsContainer()) {
        return TBrowseDialog::ReceiveDrop(node);
    }
    TKelNode parent = node.GetParent();
    const StatusCode status = TBrowseDialog::ReceiveDrop(parent);
    if (status == noErr) {
        TakeNameOf(node);
    }
    return status;
}

// The field shows a file's name as people read it, and that may not be the file's own name:
// bytes that are not UTF-8 show as Latin-1 letters. Until the user edits the field, the name
// saved is the file's own, so that saving names the very file the user pointed at.
void KelSaveDocumentDialog::TakeNameOf(const TKelNode& node) {
    SetSaveFileName(NameOf(node, NodeCode("dnam")), true);
    const TStringRef shown = __KelDialog::SaveFileName();
    const TStringRef own = KeepingOwnExtension(NameOf(node, NodeCode("pnam")));
    if (BCStringCompare(own.AsBCStringRef(), shown.AsBCStringRef(), 0) != kBCCompareEqualTo) {
        taken = {shown, own};
    }
}
