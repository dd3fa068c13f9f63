#pragma once

// File names are bytes; the rest of the system speaks UTF-16. A name decodes as UTF-8, and a
// byte that is not part of valid UTF-8 becomes the lone surrogate U+DC80 + byte, which encodes
// back to the same byte: every name round-trips exactly. DisplayName is for people: there an
// invalid byte is read as Latin-1, so "caf\xE9" shows as "café".

#include <string>
#include <string_view>

namespace basalt {

std::u16string DecodeName(std::string_view bytes);
std::string EncodeName(std::u16string_view text);
std::u16string DisplayName(std::string_view bytes);

} // namespace basalt
