#pragma once

// A holder of a core string. Copies share the one string; a nil holder acts as the empty string
// for reading and yields nil for every derived string.

#include "kel/foundation/TObjectRef.h"
#include "kel/foundation/TRange.h"

#include <cstdint>

class TMutableStringRef;

class TStringRef : public TObjectRef {
public:
    // Stands for the application's legacy text encoding where an encoding is asked for.
    static constexpr uint32_t kApplicationEncoding = 0xFFFFFFFFu;

    TStringRef() = default;
    TStringRef(BCStringRef string); // NOLINT(google-explicit-constructor): retains, like a copy
    TStringRef(BCStringRef string, bool retain);
    TStringRef(const TStringRef& other) = default;
    TStringRef& operator=(const TStringRef& other);
    TStringRef& operator=(BCStringRef string);
    ~TStringRef() override = default;

    // The held reference, not counted up for the caller.
    BCStringRef AsBCStringRef() const { return static_cast<BCStringRef>(ref); }

    static TStringRef Create(const char* text, uint32_t encoding);
    // From a length-prefixed string.
    static TStringRef Create(const uint8_t* text, uint32_t encoding);
    static TStringRef Create(BCStringRef string);
    // The string made here is counted once more than its holder drops, so it is never freed:
    // callers keep such strings for the life of the process.
    static TStringRef Create(const UniChar* characters, int32_t length);
    static TStringRef CreateWithFormat(const char* format, ...)
        __attribute__((format(printf, 1, 2)));

    TStringRef CreateSubstring(TRange range) const;
    int32_t Length() const;
    // An independent read-only copy.
    TStringRef Copy() const;
    // A writable copy; capacity 0 means no limit.
    TMutableStringRef CopyMutable(int32_t capacity) const;
    void CopyCharacters(TRange range, UniChar* out) const;
    bool CopyToPascalString(uint8_t* out, int32_t size, uint32_t encoding) const;
    // Where toFind occurs, or location kBCNotFound.
    TRange Find(const TStringRef& toFind, uint32_t options) const;
    // 0 for a position outside the string.
    UniChar CharacterAtIndex(int32_t index) const;

protected:
    bool Contains(TRange range) const;
};
