#pragma once

// The open dialog, and the base of the choose and new folder dialogs.

#include "kel/dialogs/TBrowseDialog.h"

class KelGetFileDialog : public TBrowseDialog {
public:
    explicit KelGetFileDialog(const TDialogConfiguration& configuration)
        : KelGetFileDialog(configuration, BCSTR("Get File"), kKelUserActionOpen) {}

protected:
    KelGetFileDialog(const TDialogConfiguration& configuration, BCStringRef layoutName,
                     uint32_t acceptAction)
        : TBrowseDialog(configuration, layoutName, acceptAction) {}
};
