#pragma once

// The base of the three alerts that ask about unsaved work. Each maps the button the user hit to
// a user action. The alert itself is a toolbox standard alert; until the toolbox offers one, the
// dialog cannot be shown and CreateDialog says so.

#include "kel/interface/__KelDialog.h"

class KelGenericAskDialog : public __KelDialog {
public:
    using __KelDialog::__KelDialog;

    StatusCode CreateDialog() override;
    StatusCode StartDialog() override;
    void TerminateDialog() override;
    // Ends the dialog with the user action of the alert's button hit.
    virtual StatusCode TerminateWithAlertResult(int16_t hit) = 0;
    virtual bool DoKeyEvent(uint8_t character, uint32_t modifiers, uint32_t& hit);

protected:
    // Buttons are numbered from 1: default, cancel, other.
    StatusCode TerminateWithHit(int16_t hit, uint32_t defaultAction, uint32_t otherAction);
};
