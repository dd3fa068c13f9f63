#include "basalt/types/BUTypes.h"
#include "basalt/types/MimeDatabase.h"

#include <array>
#include <utility>

namespace basalt::types {
namespace {

constexpr uint32_t Code(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

// Common codes; the first entry for a type is the code that type reports.
constexpr std::array<std::pair<uint32_t, const char*>, 24> kCodes{{
    {Code("TEXT"), "text/plain"},
    {Code("utxt"), "text/plain"},
    {Code("HTML"), "text/html"},
    {Code("RTF "), "application/rtf"},
    {Code("PDF "), "application/pdf"},
    {Code("JPEG"), "image/jpeg"},
    {Code("PNGf"), "image/png"},
    {Code("GIFf"), "image/gif"},
    {Code("TIFF"), "image/tiff"},
    {Code("BMPf"), "image/bmp"},
    {Code("8BPS"), "image/vnd.adobe.photoshop"},
    {Code("MooV"), "video/quicktime"},
    {Code("mpg4"), "video/mp4"},
    {Code("MPG "), "video/mpeg"},
    {Code("Mp3 "), "audio/mpeg"},
    {Code("WAVE"), "audio/x-wav"},
    {Code("AIFF"), "audio/x-aiff"},
    {Code("ZIP "), "application/zip"},
    {Code("APPL"), "application/x-desktop"},
    {Code("fldr"), "inode/directory"},
    {Code("disk"), "inode/mount-point"},
    {Code("fpka"), "inode/x-kel-package"},
    {Code("XML "), "application/xml"},
    {Code("sfnt"), "font/ttf"},
}};

constexpr std::string_view kUnknownPrefix = "application/x-kel-ostype-";

} // namespace

std::string FourCharCodeText(uint32_t code) {
    std::string text(4, ' ');
    for (int i = 0; i < 4; ++i)
        text[static_cast<size_t>(i)] = static_cast<char>((code >> (24 - 8 * i)) & 0xFF);
    return text;
}

std::string TypeForFourCharCode(uint32_t code) {
    for (const auto& [known, type] : kCodes) {
        if (known == code)
            return type;
    }
    std::string tag;
    for (char c : FourCharCodeText(code))
        tag += std::isalnum(static_cast<unsigned char>(c)) ? std::string(1, c)
                                                           : "%" + std::to_string(uint8_t(c));
    return std::string(kUnknownPrefix) + tag;
}

uint32_t FourCharCodeForType(std::string_view type) {
    std::string canonical = MimeDatabase::Shared().Canonical(type);
    for (const auto& [code, known] : kCodes) {
        if (canonical == known)
            return code;
    }
    // Any other text is plain text to an older client.
    return MimeDatabase::Shared().ConformsTo(canonical, "text/plain") ? Code("TEXT") : 0;
}

} // namespace basalt::types
