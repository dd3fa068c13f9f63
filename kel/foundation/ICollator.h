#pragma once

#include <cstdint>

// Orders two runs of UTF-16 text: negative, 0 or positive.
class ICollator {
public:
    virtual ~ICollator() = default;
    virtual int operator()(uint32_t lengthA, const uint16_t* charsA, uint32_t lengthB,
                           const uint16_t* charsB) const = 0;
};
