#include "kel/dialogs/KelSaveDocumentDialog.h"

#include "basalt/nodes/NodeProperties.h"

KelSaveDocumentDialog::KelSaveDocumentDialog(const TDialogConfiguration& configuration,
                                             FourCharCode fileType, FourCharCode fileCreator,
                                             const BEDesc* defaultLocation)
    : KelPutFileDialog(configuration, defaultLocation, fileType, fileCreator) {
    if ((optionFlags & kKelOptExtensionHandling) != 0) {
        SetExtensionHidden(prefs.GetExtensionHiddenPref());
        userHidesExtension = extensionHidden;
        if (saveFileName.Length() > 0) {
            extension = CopyExtensionFromName(saveFileName.AsBCStringRef());
            if (!extension) {
                SetExtensionHidden(false);
                userHidesExtension = false;
            }
        }
    }
    BuildTypeMenu(configuration);
}

// The field goes before the window and the browser it observes.
KelSaveDocumentDialog::~KelSaveDocumentDialog() {
    nameField.reset();
}

StatusCode KelSaveDocumentDialog::InitDialog() {
    const StatusCode status = KelPutFileDialog::InitDialog();
    if (simpleMode) {
        DisclosableAreaShowHide(false);
        ShowWhereRow(true);
    }
    collapsedCustomRect = client.record.customRect;
    if (disclosed) {
        int16_t width = 0;
        int16_t height = 0;
        GetWindowDeltaSize(width, height);
        TRect bounds;
        GetBounds(bounds);
        minimumWidth = int16_t(RectWidth(bounds) - width);
        minimumHeight = int16_t(RectHeight(bounds) - height);
    }
    FixButtons();
    return status;
}

void KelSaveDocumentDialog::SetupDialogItems() {
    TBrowseDialog::SetupDialogItems();
    // The pane starts level with the where row in the layout: it goes below it, so that the
    // collapsed window keeps that row.
    MovePaneTop(WhereRowDepth());
    if ((optionFlags & kKelOptExtensionHandling) != 0) {
        hideExtensionCheckbox = Control(kBrowseHideExtension);
        if (hideExtensionCheckbox != nullptr && !extension) {
            DisableControl(hideExtensionCheckbox);
        }
        SetExtensionHidden(extensionHidden);
    } else if (ControlRef checkbox = Control(kBrowseHideExtension)) {
        HideControl(checkbox);
        AdjustViewPositionBySizeAndExtra(checkbox, kShiftLeft);
    }
    disclosureButton = Control(kBrowseDisclosure);
    if (disclosureButton != nullptr) {
        SetControlValue(disclosureButton, 0);
    }
    SetupEditField();
}

void KelSaveDocumentDialog::AssignWindowTitle() {
    AssignTitleFrom("Save Title", "Save Default Title");
}

TStringRef KelSaveDocumentDialog::GetDefaultButtonTitle() {
    return actionButtonLabel.Length() > 0 ? actionButtonLabel : BundleText("Save Button");
}

void KelSaveDocumentDialog::SetDefaultButtonTitle() {
    if (defaultControl != nullptr) {
        SetControlTitleWithBCString(defaultControl, GetDefaultButtonTitle().AsBCStringRef());
    }
}

void KelSaveDocumentDialog::FixButtons() {
    FixButtons(nullptr);
}

void KelSaveDocumentDialog::FixButtons(const TStringRef* given) {
    TBrowseDialog::FixButtons();
    const TStringRef text =
        given != nullptr ? *given
                         : (nameField != nullptr ? nameField->GetTextContent() : TStringRef());
    TKelNode target;
    const bool searching =
        Target(target) == noErr && NodeIsQueryHitsContainer(target.PeekNodeRef());
    if (defaultControl != nullptr) {
        const bool can = !IsTargetLocked() && !searching &&
                         (actionState & kActionSaveRefused) == 0 && CanNameAFile(text);
        if (can) {
            ActivateControl(defaultControl);
        } else {
            DeactivateControl(defaultControl);
        }
    }
    if (disclosureButton != nullptr) {
        if (searching && !simpleMode) {
            DisableControl(disclosureButton);
        } else {
            EnableControl(disclosureButton);
        }
    }
    if (given == nullptr) {
        return;
    }
    if (hideExtensionCheckbox != nullptr) {
        if (text.Length() > 0 && extension) {
            EnableControl(hideExtensionCheckbox);
        } else {
            DisableControl(hideExtensionCheckbox);
        }
    }
    SetDefaultButtonTitle();
}

// The name is what the field shows: a hidden extension alone is no name. "." and ".." are the
// folder and its parent, never a file of it.
bool KelSaveDocumentDialog::CanNameAFile(const TStringRef& text) const {
    if (text.Length() == 0) {
        return false;
    }
    const TStringRef whole = nameField != nullptr ? WholeNameOf(text) : text;
    for (BCStringRef folder : {BCSTR("."), BCSTR("..")}) {
        if (BCStringCompare(whole.AsBCStringRef(), folder, 0) == kBCCompareEqualTo) {
            return false;
        }
    }
    return true;
}

bool KelSaveDocumentDialog::CanChoose() {
    const TStringRef name = nameField != nullptr ? nameField->GetTextContent() : SaveFileName();
    return TBrowseDialog::CanChoose() && (actionState & kActionSaveRefused) == 0 &&
           !IsTargetLocked() && CanNameAFile(name);
}

bool KelSaveDocumentDialog::ValidateAcceptDialog(uint32_t modifiers) {
    // The client may change things while it hears of the first check: the second sees them.
    return TBrowseDialog::ValidateAcceptDialog(modifiers) && CanChoose() && ValidateExtension() &&
           CanReplaceIfConflict() && CheckForHiddenFileName();
}

int32_t KelSaveDocumentDialog::ItemHit(int16_t item, int16_t part, uint32_t modifiers) {
    editMenu.AdjustMenu();
    switch (item) {
    case kBrowseDisclosure: {
        StRetainDialog retain(this);
        if (simpleMode) {
            ShowBrowserPane();
        } else {
            HideBrowserPane();
        }
        EventInCustomArea(kKelCBAdjustRect);
        return 1;
    }
    case kBrowseHideExtension:
        SetSaveFileExtensionHidden(!extensionHidden);
        return 1;
    case kBrowseFormatPopup:
        if (formatPopup == nullptr) {
            return TBrowseDialog::ItemHit(item, part, modifiers);
        }
        HandleFormatPopup(formatPopup);
        selectedFormatItem = GetControlValue(formatPopup);
        return 1;
    case kBrowseSaveName:
        SetKelState(actionState);
        return TBrowseDialog::ItemHit(item, part, modifiers);
    default:
        return TBrowseDialog::ItemHit(item, part, modifiers);
    }
}

void KelSaveDocumentDialog::SaveDialogPrefs() {
    prefs.SetWindowMinimizedPref(simpleMode);
    if ((optionFlags & kKelOptExtensionHandling) != 0 && userAction == acceptAction) {
        prefs.SetExtensionHiddenPref(userHidesExtension);
    }
    TBrowseDialog::SaveDialogPrefs();
}
