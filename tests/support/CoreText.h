#pragma once

// Core strings as std::string, so that failed expectations print readable text.

#include <basalt/BasaltCore.h>
#include <string>

namespace keltest {

// The string's text in UTF-8; "<null>" for a null string or one that does not convert.
inline std::string Utf8(BCStringRef string) {
    char buffer[2048] = {};
    if (string == nullptr ||
        !BCStringGetCString(string, buffer, sizeof buffer, kBCStringEncodingUTF8))
        return "<null>";
    return buffer;
}

// The same for a string the caller owns, which it releases.
inline std::string AdoptUtf8(BCStringRef string) {
    std::string text = Utf8(string);
    BCRelease(string);
    return text;
}

} // namespace keltest
