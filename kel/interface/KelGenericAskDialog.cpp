#include "kel/interface/KelGenericAskDialog.h"

StatusCode KelGenericAskDialog::CreateDialog() {
    return kBCUnimpErr;
}

StatusCode KelGenericAskDialog::StartDialog() {
    return kBCUnimpErr;
}

void KelGenericAskDialog::TerminateDialog() {}

bool KelGenericAskDialog::DoKeyEvent(uint8_t, uint32_t, uint32_t&) {
    return false;
}

StatusCode KelGenericAskDialog::TerminateWithHit(int16_t hit, uint32_t defaultAction,
                                                 uint32_t otherAction) {
    uint32_t action = kKelUserActionNone;
    switch (hit) {
    case 1:
        action = defaultAction;
        break;
    case 2:
        action = kKelUserActionCancel;
        break;
    case 3:
        action = otherAction;
        break;
    default:
        break;
    }
    return TerminateWithUserAction(action);
}
