#pragma once

// The UTF-16 characters of a core string, read in place when the string offers them and
// otherwise copied into a buffer of our own that only grows.

#include <basalt/BasaltCore.h>
#include <cstdint>

class BCCharactersPtr {
public:
    explicit BCCharactersPtr(BCStringRef string);
    BCCharactersPtr(const BCCharactersPtr&) = delete;
    BCCharactersPtr& operator=(const BCCharactersPtr&) = delete;
    ~BCCharactersPtr();

    // Reads the characters again, after the string has changed. Null for a nil string.
    void Reset();
    const UniChar* Get() const { return characters; }

private:
    BCStringRef string;
    int32_t capacity = 0;
    UniChar* ownBuffer = nullptr;
    const UniChar* characters = nullptr;
};
