#pragma once

// A stretch of characters: where it starts and how many it covers. Converts both ways with the
// core library's range so that either can be passed where the other is taken.

#include <basalt/BasaltCore.h>
#include <cstdint>

struct TRange {
    int32_t location = 0;
    int32_t length = 0;

    constexpr TRange() = default;
    constexpr TRange(int32_t start, int32_t count) : location(start), length(count) {}
    constexpr TRange(BCRange range) // NOLINT(google-explicit-constructor): interchangeable
        : location(static_cast<int32_t>(range.location)),
          length(static_cast<int32_t>(range.length)) {}

    constexpr operator BCRange() const { return BCRange{location, length}; } // NOLINT
    constexpr bool IsFound() const { return location != kBCNotFound; }
    friend constexpr bool operator==(TRange, TRange) = default;
};
