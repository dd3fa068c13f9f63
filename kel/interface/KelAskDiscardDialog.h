#pragma once

// Asks whether to discard the changes of a document: discard or cancel.

#include "kel/interface/KelGenericAskDialog.h"

class KelAskDiscardDialog : public KelGenericAskDialog {
public:
    using KelGenericAskDialog::KelGenericAskDialog;

    StatusCode CreateDialog() override;
    StatusCode TerminateWithAlertResult(int16_t hit) override {
        // The alert has no third button.
        return TerminateWithHit(hit, kKelUserActionDiscardChanges, kKelUserActionNone);
    }
};
