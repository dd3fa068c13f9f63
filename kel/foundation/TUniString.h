#pragma once

// UTF-16 text with copy on write.
//
// buffer[0] is the number of strings sharing the buffer (a plain 16-bit count: strings stay on
// one thread); the text starts at buffer[1] and has no terminator. Every writer first calls
// AllocateBuffer, which gives the string a buffer of its own. Mirror is the one exception: it
// reverses the text in place, so sharers see it.
//
// A buffer always has room for at least kDefaultCapacity characters, whatever capacity it was
// made for. A copy takes a capacity of at least kDefaultCapacity while still sharing its source's
// buffer, and keeps writing into that buffer once the source is gone.

#include "kel/foundation/ICollator.h"
#include "kel/foundation/TStringRef.h"

#include <basalt/BasaltCore.h>
#include <cstdint>
#include <vector>

class TUniString;

// Converts text in the encoding of script into destination, at most its capacity. Null text or
// length 0 empties it. Answers the converter's status.
StatusCode TextToUniString(ScriptCode script, const char* text, uint32_t length,
                           TUniString& destination);

class TUniString {
public:
    static constexpr uint32_t kDefaultCapacity = 255;

    TUniString() = default;
    TUniString(const TUniString& other);
    TUniString(uint32_t length, const uint16_t* chars);
    TUniString(const uint8_t* lengthPrefixed, ScriptCode script);
    TUniString(const char* text, ScriptCode script);
    explicit TUniString(BCStringRef string);
    TUniString& operator=(const TUniString& other);
    virtual ~TUniString();

    uint32_t Capacity() const { return capacity; }
    uint32_t Length() const { return length; }
    // The text, or null while there is no buffer.
    const uint16_t* Characters() const { return buffer == nullptr ? nullptr : buffer + 1; }

    // With adjust, capacity becomes the source's length; without, the text is cut to capacity.
    void Set(BCStringRef string, bool adjust);
    void Set(const uint8_t* lengthPrefixed, ScriptCode script, bool adjust);
    void Set(const char* text, uint32_t byteLength, ScriptCode script, bool adjust);
    // Shares other's buffer when the capacities match, else copies what fits.
    void Set(const TUniString& other);
    // Joins parts[first..last] with one separator between neighbours.
    void Set(const std::vector<TUniString>& parts, uint32_t first, uint32_t last,
             uint16_t separator);

    void AllocateBuffer() const;
    void SetCapacity(uint32_t newCapacity);
    void Append(const TUniString& other);
    void Append(uint16_t character);

    // A new core string, or nil if this string never had a buffer.
    TStringRef AsBCString() const;
    void Mirror();
    // 1-based, inclusive; 0 counts as 1 for both ends.
    TUniString GetSubString(uint32_t first, uint32_t last) const;
    bool BeginsWith(const TUniString& prefix, const ICollator& collator) const;
    // Splits at each separator; empty tokens are kept.
    void Tokenize(std::vector<TUniString>& out, uint16_t separator) const;

private:
    friend StatusCode TextToUniString(ScriptCode, const char*, uint32_t, TUniString&);

    static uint16_t* NewBuffer(uint32_t capacity);
    static void DropBuffer(uint16_t* buffer);
    uint16_t* Text() const { return buffer + 1; }

    uint32_t capacity = kDefaultCapacity;
    uint32_t length = 0;
    mutable uint16_t* buffer = nullptr;
};
