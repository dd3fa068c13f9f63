#pragma once

// The open dialog, and the base of the choose and new folder dialogs.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/KelBundle.h"

class KelGetFileDialog : public TBrowseDialog {
public:
    explicit KelGetFileDialog(const TDialogConfiguration& configuration)
        : KelGetFileDialog(configuration, BCSTR("Get File"), kKelUserActionOpen) {}

    TStringRef GetDefaultButtonTitle() override {
        return KelBundle::GetStringResource(BCSTR("Open Button"));
    }

protected:
    KelGetFileDialog(const TDialogConfiguration& configuration, BCStringRef layoutName,
                     uint32_t acceptAction)
        : TBrowseDialog(layoutName, acceptAction, TStringRef(BCSTR("GetFile")), configuration,
                        nullptr, BCSTR("KelPanelFileListModeForOpenMode")) {}
};
