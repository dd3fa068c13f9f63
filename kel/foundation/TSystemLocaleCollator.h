#pragma once

// Collators under the rules of the current locale. An empty argument is ordered before any
// text without asking the locale.

#include "kel/foundation/ICollator.h"

class TSystemLocaleCollator : public ICollator {
public:
    int operator()(uint32_t lengthA, const uint16_t* charsA, uint32_t lengthB,
                   const uint16_t* charsB) const override;
};

class TCaseSensitiveSystemLocaleCollator : public ICollator {
public:
    int operator()(uint32_t lengthA, const uint16_t* charsA, uint32_t lengthB,
                   const uint16_t* charsB) const override;
};
