#pragma once

// A holder of a writable core string. Edits on a nil holder do nothing.

#include "kel/foundation/RetainedRef.h"
#include "kel/foundation/TStringRef.h"

class TMutableStringRef : public TStringRef {
public:
    TMutableStringRef() = default;
    TMutableStringRef(BCMutableStringRef string, bool retain);
    TMutableStringRef(const TMutableStringRef& other) = default;
    TMutableStringRef& operator=(const TMutableStringRef& other);
    ~TMutableStringRef() override = default;

    BCMutableStringRef AsBCMutableStringRef() const {
        return const_cast<BCMutableStringRef>(static_cast<BCStringRef>(ref));
    }
    // A second holder of the same string, counted up.
    operator RetainedMutableRef<BCOpaqueString>() const; // NOLINT(google-explicit-constructor)

    void Append(const TStringRef& appended);
    void Delete(TRange range);
    void Replace(TRange range, const TStringRef& replacement);

    // Fills the first parameter mark "^<index>" of a localised text with value. A nil value
    // removes the mark together with one blank after it, so the sentence closes up. The text is
    // searched as it stands: the mark ^1 also matches the start of ^10. True if a mark was found.
    bool ReplaceParam(int32_t index, const TStringRef& value);
};
