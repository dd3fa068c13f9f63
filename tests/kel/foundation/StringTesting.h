#pragma once

// Helpers that turn holders into std::string so that failures print readable text.

#include "kel/foundation/TStringRef.h"
#include "kel/foundation/TUniString.h"
#include "tests/support/CoreText.h"

#include <string>

namespace keltest {

inline std::string Utf8(const TStringRef& string) {
    return Utf8(string.AsBCStringRef());
}

inline std::string Utf8(const TUniString& string) {
    return Utf8(string.AsBCString());
}

inline TUniString Uni(const char* ascii) {
    TStringRef text = TStringRef::Create(ascii, kBCStringEncodingUTF8);
    TUniString made;
    made.Set(text.AsBCStringRef(), false);
    return made;
}

} // namespace keltest
