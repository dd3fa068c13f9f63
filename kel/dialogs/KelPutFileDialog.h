#pragma once

// The base of the save dialog: a browse dialog on the "Put File" windows with the client's file
// type and creator, the format popup (control 6, label 29, in the bottom group above the custom
// area) and the hide-extension checkbox (control 17). It knows whether the browser pane shows;
// the name field and the two window forms belong to KelSaveDocumentDialog.

#include "kel/dialogs/TBrowseDialog.h"

class KelPutFileDialog : public TBrowseDialog {
public:
    KelPutFileDialog(const TDialogConfiguration& configuration, const BEDesc* defaultLocation,
                     FourCharCode fileType, FourCharCode fileCreator);

    StatusCode InitDialog() override;
    StatusCode StartDialog() override;
    void BuildTypeMenu(const TDialogConfiguration& configuration) override;
    StatusCode SelectCustomType(KelMenuItemSpec* spec) override;
    // Shows or hides what only the full window has: the browser pane, the checkbox and the New
    // Folder button. A hidden browser fills the folders it opens only when it shows again.
    virtual void DisclosableAreaShowHide(unsigned char show);

    void SetupFormatPopup();
    void SetUpFormatFilterMenu();
    void FillInFormatPopup();
    // Tells the client of the popup's item, unless it is the item already acted on.
    void HandleFormatPopup(ControlRef control);

    FourCharCode FileType() const { return fileType; }
    FourCharCode FileCreator() const { return fileCreator; }
    ControlRef FormatPopup() const { return formatPopup; }
    bool Disclosed() const { return disclosed; }

protected:
    void HideFormatPopup();
    void FreezePane(bool frozen);

    FourCharCode fileType;
    FourCharCode fileCreator;
    ControlRef formatPopup = nullptr;
    ControlRef hideExtensionCheckbox = nullptr;
    int16_t selectedFormatItem = -1;
    TRect disclosedCustomRect;
    TRect collapsedCustomRect;
    bool disclosed = true;

private:
    bool paneFrozen = false;
    BGRect frozenPaneFrame = BGRectZero;
};
