#include "kel/interface/KelBaseDialog.h"

bool KelBaseDialog::IsBTCommandAllowed(uint32_t) {
    return false;
}

bool KelBaseDialog::ExecuteBTCommand(uint32_t) {
    return false;
}

int32_t KelBaseDialog::ItemHit(int16_t, int16_t, uint32_t) {
    return 0;
}

void KelBaseDialog::SetUpViewLayouts() {}
