#include "kel/foundation/TSystemLocaleCollator.h"

#include <basalt/BasaltCore.h>

namespace {

constexpr UCCollateOptions kCaseInsensitiveOptions = 0x3800E;
constexpr UCCollateOptions kCaseSensitiveOptions = 0x38006;

int CompareInLocale(bool caseSensitive, uint32_t lengthA, const uint16_t* charsA, uint32_t lengthB,
                    const uint16_t* charsB) {
    if (lengthA == 0 || lengthB == 0) {
        return lengthA == lengthB ? 0 : (lengthA == 0 ? -1 : 1);
    }
    Boolean equivalent = false;
    int32_t order = 0;
    StatusCode status =
        UCCompareTextDefault(caseSensitive ? kCaseSensitiveOptions : kCaseInsensitiveOptions,
                             charsA, lengthA, charsB, lengthB, &equivalent, &order);
    if (status != noErr || equivalent) {
        return 0;
    }
    return order;
}

} // namespace

int TSystemLocaleCollator::operator()(uint32_t lengthA, const uint16_t* charsA, uint32_t lengthB,
                                      const uint16_t* charsB) const {
    return CompareInLocale(false, lengthA, charsA, lengthB, charsB);
}

int TCaseSensitiveSystemLocaleCollator::operator()(uint32_t lengthA, const uint16_t* charsA,
                                                   uint32_t lengthB, const uint16_t* charsB) const {
    return CompareInLocale(true, lengthA, charsA, lengthB, charsB);
}
