#pragma once

// Asks whether to save a changed document: save, don't save, or cancel.

#include "kel/interface/KelGenericAskDialog.h"

class KelAskSaveDialog : public KelGenericAskDialog {
public:
    // Why the document closes.
    enum : uint32_t { kClosing = 1, kQuitting = 2 };

    KelAskSaveDialog(const TDialogConfiguration& configuration, uint32_t action)
        : KelGenericAskDialog(configuration), action(action) {}

    StatusCode CreateDialog() override;
    StatusCode TerminateWithAlertResult(int16_t hit) override {
        return TerminateWithHit(hit, kKelUserActionSaveChanges, kKelUserActionDontSaveChanges);
    }
    // The don't-save key presses the third button, with or without modifiers.
    bool DoKeyEvent(uint8_t character, uint32_t modifiers, uint32_t& hit) override;

    uint32_t Action() const { return action; }

private:
    uint32_t action;
};
