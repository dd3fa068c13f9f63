#pragma once

// A core string holds UTF-16 code units. Immutable and mutable strings are the same object;
// the mutating functions refuse strings that were made immutable.

#include "basalt/core/BCObject.h"

#include <string>

namespace basalt {

class String final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::String;

    explicit String(std::u16string text, bool isMutable = false)
        : BCObject(kType), text_(std::move(text)), mutable_(isMutable) {}

    const std::u16string& Text() const { return text_; }
    std::u16string& MutableText() { return text_; }
    bool IsMutable() const { return mutable_; }

    bool Equals(const BCObject& other) const override;
    BCHashCode Hash() const override;
    std::string Describe() const override;

private:
    std::u16string text_;
    const bool mutable_;
};

// The characters of a string reference; empty for null or a non-string.
const std::u16string& TextOf(BCStringRef string);

// A new immutable string, owned by the caller.
BCStringRef MakeString(std::u16string text);

// UTF-8 from UTF-16; unpaired surrogates become U+FFFD.
std::string ToUTF8(const std::u16string& text);
std::u16string FromUTF8(const std::string& text);

// The string's text as UTF-8; empty for null.
std::string UTF8Of(BCStringRef string);

} // namespace basalt
