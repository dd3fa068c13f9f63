#pragma once

// Asks whether to save a changed document: save, don't save, or cancel.

#include "kel/interface/KelGenericAskDialog.h"

class KelAskSaveDialog : public KelGenericAskDialog {
public:
    KelAskSaveDialog(const TDialogConfiguration& configuration, uint32_t action)
        : KelGenericAskDialog(configuration), action(action) {}

    StatusCode TerminateWithAlertResult(int16_t hit) override {
        return TerminateWithHit(hit, kKelUserActionSaveChanges, kKelUserActionDontSaveChanges);
    }

    uint32_t Action() const { return action; }

private:
    // Why the document closes: 1 closing it, 2 quitting, anything else another reason.
    uint32_t action;
};
