#pragma once

// Conversions between the toolbox's UTF-16 text and core strings and UTF-8.

#include <basalt/BasaltCore.h>
#include <string>
#include <string_view>

namespace basalt::toolbox {

std::u16string FromBCString(BCStringRef string);
// An owned string; the caller releases it.
BCStringRef MakeBCString(const std::u16string& text);
std::u16string FromUTF8(std::string_view text);
std::string ToUTF8(const std::u16string& text);

// Holds one reference to a core string.
class StringHolder {
public:
    explicit StringHolder(BCStringRef adopted) : string_(adopted) {}
    StringHolder(const StringHolder&) = delete;
    StringHolder& operator=(const StringHolder&) = delete;
    ~StringHolder() { BCRelease(string_); }
    BCStringRef get() const { return string_; }

private:
    BCStringRef string_;
};

} // namespace basalt::toolbox
