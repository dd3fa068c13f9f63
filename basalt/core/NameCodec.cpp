#include "basalt/core/NameCodec.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace basalt {
namespace {

constexpr char16_t kEscapeBase = 0xDC80;

// UTF-16 never takes more units than UTF-8 takes bytes, so the text is written in place and
// cut to length; most names are ASCII, which is copied as it is.
template <class InvalidByte>
std::u16string Decode(std::string_view bytes, InvalidByte invalid) {
    std::u16string out(bytes.size(), u'\0');
    const auto* s = reinterpret_cast<const uint8_t*>(bytes.data());
    int32_t length = static_cast<int32_t>(bytes.size());
    size_t used = 0;
    for (int32_t i = 0; i < length;) {
        if (s[i] < 0x80) {
            out[used++] = s[i++];
            continue;
        }
        int32_t start = i;
        UChar32 c;
        U8_NEXT(s, i, length, c);
        if (c < 0) {
            // Step one byte only, so the bytes after a bad lead are looked at again.
            i = start + 1;
            out[used++] = invalid(s[start]);
        } else if (U_IS_BMP(c)) {
            out[used++] = static_cast<char16_t>(c);
        } else {
            out[used++] = static_cast<char16_t>(U16_LEAD(c));
            out[used++] = static_cast<char16_t>(U16_TRAIL(c));
        }
    }
    out.resize(used);
    return out;
}

} // namespace

std::u16string DecodeName(std::string_view bytes) {
    return Decode(bytes, [](uint8_t b) { return static_cast<char16_t>(kEscapeBase + b); });
}

std::u16string DisplayName(std::string_view bytes) {
    return Decode(bytes, [](uint8_t b) { return static_cast<char16_t>(b); });
}

std::string EncodeName(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    int32_t length = static_cast<int32_t>(text.size());
    for (int32_t i = 0; i < length;) {
        UChar32 c;
        U16_NEXT(text.data(), i, length, c);
        if (c >= kEscapeBase && c <= kEscapeBase + 0xFF) {
            out.push_back(static_cast<char>(c - kEscapeBase));
            continue;
        }
        if (U_IS_SURROGATE(c))
            c = 0xFFFD;
        uint8_t buffer[4];
        int32_t used = 0;
        U8_APPEND_UNSAFE(buffer, used, c);
        out.append(reinterpret_cast<char*>(buffer), static_cast<size_t>(used));
    }
    return out;
}

} // namespace basalt
