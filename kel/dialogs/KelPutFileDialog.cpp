#include "kel/dialogs/KelPutFileDialog.h"

KelPutFileDialog::KelPutFileDialog(const TDialogConfiguration& configuration,
                                   const BEDesc* defaultLocation, FourCharCode fileType,
                                   FourCharCode fileCreator)
    : TBrowseDialog(BCSTR("Put File"), kKelUserActionSaveAs, TStringRef(BCSTR("PutFile")),
                    configuration, defaultLocation, BCSTR("KelPanelFileListModeForSaveMode")),
      fileType(fileType), fileCreator(fileCreator), disclosedCustomRect(0, 0, -1, -1),
      collapsedCustomRect(0, 0, -1, -1) {
    // The format popup shares the bottom group with the custom area.
    ++bottomGroupCount;
}

StatusCode KelPutFileDialog::InitDialog() {
    SetupDialogItems();
    SetupFormatPopup();
    SetUpFormatFilterMenu();
    return TBrowseDialog::InitDialog();
}

StatusCode KelPutFileDialog::StartDialog() {
    // The first format is picked as if by the user, so the client hears of it before any other.
    if (formatPopup != nullptr && GetControlValue(formatPopup) == 0) {
        selectedFormatItem = -1;
        SetControlValue(formatPopup, 1);
        HandleFormatPopup(formatPopup);
        selectedFormatItem = GetControlValue(formatPopup);
    }
    return TBrowseDialog::StartDialog();
}

// While the pane is hidden the window shrinks over it: its views keep the size they had, so
// that none is laid out to nothing, and take the pane's size again when it shows.
void KelPutFileDialog::FreezePane(bool frozen) {
    ControlRef pane = Control(kBrowsePane);
    if (pane == nullptr || frozen == paneFrozen) {
        return;
    }
    paneFrozen = frozen;
    if (frozen) {
        BTViewGetFrame(pane, &frozenPaneFrame);
        BTViewSuspendLayout(pane);
        return;
    }
    BGRect now = BGRectZero;
    BTViewGetFrame(pane, &now);
    BGRect before = now;
    before.size = frozenPaneFrame.size;
    BTViewSetFrame(pane, &before);
    BTViewResumeLayout(pane);
    BTViewSetFrame(pane, &now);
}

void KelPutFileDialog::DisclosableAreaShowHide(unsigned char show) {
    FreezePane(show == 0);
    for (ControlRef view :
         {Control(kBrowsePane), hideExtensionCheckbox, Control(kBrowseNewFolder)}) {
        if (view == nullptr) {
            continue;
        }
        if (show != 0) {
            ShowControl(view);
        } else {
            HideControl(view);
        }
    }
    if (browser != nullptr) {
        browser->deferPopulation = show == 0;
        if (show != 0) {
            browser->PopulateDeferredContainers();
        }
    }
    disclosed = show != 0;
}
