#include "basalt/toolbox/views/UnicodeText.h"

#include <unicode/unistr.h>

namespace basalt::toolbox {

std::u16string FromBCString(BCStringRef string) {
    if (string == nullptr)
        return {};
    std::u16string text(size_t(BCStringGetLength(string)), u'\0');
    BCStringGetCharacters(string, BCRangeMake(0, BCIndex(text.size())),
                          reinterpret_cast<UniChar*>(text.data()));
    return text;
}

BCStringRef MakeBCString(const std::u16string& text) {
    return BCStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar*>(text.data()),
                                        BCIndex(text.size()));
}

std::u16string FromUTF8(std::string_view text) {
    icu::UnicodeString unicode =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), int32_t(text.size())));
    return std::u16string(unicode.getBuffer(), size_t(unicode.length()));
}

std::string ToUTF8(const std::u16string& text) {
    std::string out;
    icu::UnicodeString(text.data(), int32_t(text.size())).toUTF8String(out);
    return out;
}

} // namespace basalt::toolbox
