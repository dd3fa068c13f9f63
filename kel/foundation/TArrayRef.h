#pragma once

// A holder of a core array. Arrays from clients may hold values of any kind, so elements are
// read through checked accessors.

#include "kel/foundation/TStringRef.h"

class TArrayRef : public TObjectRef {
public:
    TArrayRef() = default;
    TArrayRef(BCArrayRef array); // NOLINT(google-explicit-constructor): retains, like a copy
    TArrayRef(BCArrayRef array, bool retain);
    TArrayRef(const TArrayRef& other) = default;
    TArrayRef& operator=(const TArrayRef& other);
    ~TArrayRef() override = default;

    BCArrayRef AsBCArrayRef() const { return static_cast<BCArrayRef>(ref); }

    // 0 for nil.
    int32_t Count() const;
    // The element as a string, or nil if it is something else or the index is out of range.
    TStringRef IndexAsSafeString(int32_t index) const;
};
