// The open dialog's type popup at work: picking an entry changes the filter, tells the client
// and keeps of the selection what the new filter still allows.

#include "basalt/nodes/NodeProperties.h"
#include "kel/dialogs/KelGetFileDialog.h"

namespace {

constexpr FourCharCode kReplyFormatRef = 0x62667266; // "bfrf"
constexpr StatusCode kFailedErr = kKelBadCustomControlParamErr;
constexpr StatusCode kInvalidErr = kKelNotApplicableErr;
constexpr unsigned long kSelectionSet = 1;
constexpr unsigned long kSelectionRemove = 3;

bool MatchesCodes(const TTypeMenuItem& entry, const KelMenuItemSpec& spec,
                  FourCharCode replyFormat) {
    if (entry.kind != TTypeMenuItem::kOneType && entry.kind != TTypeMenuItem::kClientItem) {
        return false;
    }
    // Client items of a current client are told apart by type alone: their creator is "extn".
    const bool creatorCounts =
        entry.kind == TTypeMenuItem::kOneType || replyFormat != kReplyFormatRef;
    return (!creatorCounts || entry.creator == spec.menuCreator) && entry.fileType == spec.menuType;
}

bool MatchesTitle(MenuRef menu, MenuItemIndex item, const KelMenuItemSpec& spec) {
    if (spec.menuItemName[0] == 0) {
        return true;
    }
    BCStringRef text = nullptr;
    if (CopyMenuItemTextAsBCString(menu, item, &text) != noErr) {
        return false;
    }
    const TStringRef itemText(text, false);
    const TStringRef wanted =
        TStringRef::Create(spec.menuItemName, TStringRef::kApplicationEncoding);
    return BCStringCompare(itemText.AsBCStringRef(), wanted.AsBCStringRef(),
                           kBCCompareCaseInsensitive | kBCCompareNonliteral) == kBCCompareEqualTo;
}

} // namespace

void TBrowseDialog::BuildTypeMenu(const TDialogConfiguration& configuration) {
    if (configuration.popupExtension != nullptr) {
        AddPopupMenuItemSeperator();
        SetTypeMenuExtension(TArrayRef(configuration.popupExtension));
    } else if (configuration.legacyPopupExtension != nullptr) {
        AddPopupMenuItemSeperator();
        SetTypeMenuExtension(
            reinterpret_cast<KelMenuItemSpec**>(configuration.legacyPopupExtension));
    }
}

void TBrowseDialog::NotifyClientPopupSelection(int16_t item, const TTypeMenuItem& entry) {
    KelMenuItemSpec spec{};
    spec.menuCreator = entry.creator;
    spec.menuType = entry.fileType;
    BCStringRef text = nullptr;
    if (CopyMenuItemTextAsBCString(typeMenu, static_cast<MenuItemIndex>(item), &text) == noErr) {
        TStringRef(text, false)
            .CopyToPascalString(spec.menuItemName, sizeof spec.menuItemName,
                                TStringRef::kApplicationEncoding);
    }
    client.record.eventData = &spec;
    client.Event(kKelCBPopupMenuSelect);
    client.record.eventData = nullptr;
}

StatusCode TBrowseDialog::ActualSelectCustomType(KelMenuItemSpec* spec, ControlRef popup,
                                                 unsigned char* found) {
    if (spec == nullptr) {
        return paramErr;
    }
    if (popup == nullptr || typeMenuItems.empty()) {
        return kInvalidErr;
    }
    const int16_t maximum = GetControlMaximum(popup);
    if (maximum < 0) {
        return kFailedErr;
    }
    const FourCharCode replyFormat = client.SelectionType();
    for (int16_t index = 0; index < maximum && index < std::ssize(typeMenuItems); ++index) {
        const auto item = static_cast<MenuItemIndex>(index + 1);
        if (MatchesCodes(typeMenuItems[index], *spec, replyFormat) &&
            MatchesTitle(typeMenu, item, *spec)) {
            SetControlValue(popup, static_cast<int16_t>(item));
            *found = true;
            return noErr;
        }
    }
    return kFailedErr;
}

int32_t KelGetFileDialog::ItemHit(int16_t item, int16_t part, uint32_t modifiers) {
    if (item != kBrowseTypePopup) {
        return TBrowseDialog::ItemHit(item, part, modifiers);
    }
    HandleShowPopup(typePopup);
    selectedPopupItem = GetControlValue(typePopup);
    return true;
}

void KelGetFileDialog::HandleShowPopup(ControlRef control) {
    const int16_t value = GetControlValue(control);
    if (value == selectedPopupItem || value < 1 || value > std::ssize(typeMenuItems)) {
        return;
    }
    TKelNodeArray selection;
    GetSelection(selection);
    if (browser != nullptr && !selection.empty()) {
        browser->SetSelection(selection, kSelectionRemove);
    }
    const TTypeMenuItem& entry = typeMenuItems[value - 1];
    ApplyFilterOf(entry);
    NotifyClientPopupSelection(value, entry);
    if (browser == nullptr) {
        return;
    }
    TKelNode target;
    if (browser->GetTarget(target) == noErr && NodeIsQueryHitsContainer(target.PeekNodeRef())) {
        // The search runs again under the new filter.
        TUniString text;
        if (target.GetPropertyAsString(NodeCode("dnam"), text) == noErr) {
            browser->SetQueryTarget(text.AsBCString().AsBCStringRef());
        }
    }
    browser->Refresh();
    Reselect(selection);
}

void KelGetFileDialog::ApplyFilterOf(const TTypeMenuItem& entry) {
    switch (entry.kind) {
    case TTypeMenuItem::kFilterByTypeList:
        filter.SetMode(TNodeFilter::kTypeList, 0, 0, nullptr);
        break;
    case TTypeMenuItem::kFilterByTypeListAnyCreator:
        filter.SetMode(TNodeFilter::kTypeListAnyCreator, 0, 0, nullptr);
        break;
    case TTypeMenuItem::kNoFilter:
    case TTypeMenuItem::kClientItem:
        filter.SetMode(TNodeFilter::kNoTypes, 0, 0, nullptr);
        break;
    case TTypeMenuItem::kOneType:
        filter.SetMode(TNodeFilter::kOneType, entry.creator, entry.fileType, entry.typeIdentifier);
        break;
    default:
        break;
    }
}

void KelGetFileDialog::Reselect(TKelNodeArray& nodes) {
    TKelNodeArray kept;
    for (const TKelNode& node : nodes) {
        if (filter.CanSelect(node, 0)) {
            kept.push_back(node);
        }
    }
    if (!kept.empty()) {
        browser->SetSelection(kept, kSelectionSet);
    }
}

StatusCode KelGetFileDialog::SelectCustomType(KelMenuItemSpec* spec) {
    unsigned char found = false;
    const StatusCode status = ActualSelectCustomType(spec, typePopup, &found);
    if (status == noErr && found) {
        selectedPopupItem = -1;
        HandleShowPopup(typePopup);
    }
    return status;
}

StatusCode KelGetFileDialog::SelectAllType(uint16_t* kind) {
    if (kind == nullptr) {
        return paramErr;
    }
    if (typePopup == nullptr) {
        return kInvalidErr;
    }
    for (size_t index = 0; index < typeMenuItems.size(); ++index) {
        if (typeMenuItems[index].kind == *kind) {
            PickPopupItem(static_cast<int16_t>(index + 1));
            return noErr;
        }
    }
    return kInvalidErr;
}

void KelGetFileDialog::PickPopupItem(int16_t item) {
    SetControlValue(typePopup, item);
    selectedPopupItem = -1;
    HandleShowPopup(typePopup);
}
