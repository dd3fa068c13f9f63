#pragma once

// The save dialog: a browser to pick the folder and a field for the name.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/KelBundle.h"

class KelSaveDocumentDialog : public TBrowseDialog {
public:
    KelSaveDocumentDialog(const TDialogConfiguration& configuration, FourCharCode fileType,
                          FourCharCode fileCreator)
        : TBrowseDialog(BCSTR("Put File"), kKelUserActionSaveAs, TStringRef(BCSTR("PutFile")),
                        configuration, nullptr, BCSTR("KelPanelFileListModeForSaveMode")),
          fileType(fileType), fileCreator(fileCreator) {}

    TStringRef GetDefaultButtonTitle() override {
        return KelBundle::GetStringResource(BCSTR("Save Button"));
    }

    StatusCode SetSaveFileExtensionHidden(bool) override {
        // Hiding the extension needs the name's extension handling, which comes with the save
        // dialog's name field.
        if ((optionFlags & kKelOptExtensionHandling) == 0) {
            return kKelWrongDialogClassErr;
        }
        return kBCUnimpErr;
    }

    FourCharCode FileType() const { return fileType; }
    FourCharCode FileCreator() const { return fileCreator; }

private:
    FourCharCode fileType;
    FourCharCode fileCreator;
};
