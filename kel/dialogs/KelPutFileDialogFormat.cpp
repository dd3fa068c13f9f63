// The save dialog's format popup: the formats the client offers for the file, with the client's
// own kind of document first when the client names a creator.

#include "basalt/types/BLRegistry.h"
#include "kel/dialogs/KelPutFileDialog.h"

namespace {

constexpr FourCharCode kAnyCreator = NodeCode("****");
// The client's own file type and creator, the first line of the popup.
constexpr uint16_t kClientFormat = 0x402;

} // namespace

void KelPutFileDialog::BuildTypeMenu(const TDialogConfiguration& configuration) {
    const bool hasExtension =
        configuration.popupExtension != nullptr || configuration.legacyPopupExtension != nullptr;
    if (fileCreator != kAnyCreator && hasExtension) {
        TTypeMenuItem item;
        item.kind = kClientFormat;
        item.fileType = fileType;
        item.creator = fileCreator;
        BCStringRef kind = nullptr;
        if (BLCopyKindStringForInfo(fileType, fileCreator, nullptr, &kind) == noErr) {
            item.title = TStringRef(kind, false);
        } else {
            item.title = BundleText("Default");
        }
        AddTypeMenuItem(item);
    }
    TBrowseDialog::BuildTypeMenu(configuration);
}

void KelPutFileDialog::SetupFormatPopup() {
    bool wanted = true;
    if ((optionFlags & kKelOptNoTypePopup) != 0) {
        wanted = false;
    } else if ((optionFlags & kKelOptStationery) == 0 && typeMenuItems.empty()) {
        wanted = fileCreator != kAnyCreator && (optionFlags & kKelOptNoMetaTypes) == 0;
    }
    formatPopup = wanted ? Control(kBrowseFormatPopup) : nullptr;
    if (formatPopup != nullptr) {
        SetControlMinimum(formatPopup, 0);
        SetControlValue(formatPopup, 0);
    } else {
        HideFormatPopup();
    }
}

void KelPutFileDialog::HideFormatPopup() {
    ControlRef popup = Control(kBrowseFormatPopup);
    if (popup == nullptr) {
        return;
    }
    HideControl(popup);
    if (ControlRef label = Control(kBrowseFormatPopupLabel)) {
        HideControl(label);
    }
    RemoveWidgetFromBottomGroup(popup);
    formatPopup = nullptr;
}

void KelPutFileDialog::SetUpFormatFilterMenu() {
    if (formatPopup == nullptr) {
        return;
    }
    AttachTypeMenu(formatPopup);
    FillInFormatPopup();
    if (formatPopup != nullptr) {
        ShowControl(formatPopup);
    }
}

void KelPutFileDialog::FillInFormatPopup() {
    if (CountMenuItems(typeMenu) == 0) {
        HideFormatPopup();
    }
}

void KelPutFileDialog::HandleFormatPopup(ControlRef control) {
    const int16_t value = GetControlValue(control);
    if (value != selectedFormatItem && value >= 1 && value <= std::ssize(typeMenuItems)) {
        NotifyClientPopupSelection(value, typeMenuItems[value - 1]);
    }
}

StatusCode KelPutFileDialog::SelectCustomType(KelMenuItemSpec* spec) {
    unsigned char found = false;
    const StatusCode status = ActualSelectCustomType(spec, formatPopup, &found);
    if (status == noErr && found) {
        selectedFormatItem = -1;
        HandleFormatPopup(formatPopup);
        selectedFormatItem = GetControlValue(formatPopup);
    }
    return status;
}
