#include "basalt/core/EncodingConverter.h"

#include "basalt/BasaltCore.h"

#include <array>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

namespace basalt {
namespace {

struct EncodingName {
    uint32_t encoding;
    const char* converter;
};

constexpr std::array kEncodings{
    EncodingName{kBCStringEncodingMacRoman, "macintosh"},
    EncodingName{kBCStringEncodingWindowsLatin1, "windows-1252"},
    EncodingName{kBCStringEncodingISOLatin1, "ISO-8859-1"},
    EncodingName{kBCStringEncodingASCII, "US-ASCII"},
    EncodingName{kBCStringEncodingUTF8, "UTF-8"},
    EncodingName{kBCStringEncodingUTF16, "UTF-16LE"},
    EncodingName{kBCStringEncodingUTF16BE, "UTF-16BE"},
    EncodingName{kBCStringEncodingUTF16LE, "UTF-16LE"},
    EncodingName{6u, "x-mac-greek"},
    EncodingName{7u, "x-mac-cyrillic"},
    EncodingName{29u, "x-mac-centraleurroman"},
    EncodingName{35u, "x-mac-turkish"},
    EncodingName{0x0501u, "windows-1250"},
    EncodingName{0x0502u, "windows-1251"},
    EncodingName{0x020Fu, "ISO-8859-15"},
    EncodingName{0x0202u, "ISO-8859-2"},
    EncodingName{0x0205u, "ISO-8859-5"},
    EncodingName{0x0206u, "ISO-8859-6"},
    EncodingName{0x0207u, "ISO-8859-7"},
    EncodingName{0x0208u, "ISO-8859-8"},
    EncodingName{0x0209u, "ISO-8859-9"},
    EncodingName{0x0503u, "windows-1253"},
    EncodingName{0x0504u, "windows-1254"},
    EncodingName{0x0505u, "windows-1255"},
    EncodingName{0x0506u, "windows-1256"},
    EncodingName{0x0A01u, "Shift_JIS"},
    EncodingName{0x0A02u, "KOI8-R"},
    EncodingName{0x0A03u, "Big5"},
    EncodingName{0x0920u, "EUC-JP"},
    EncodingName{0x0940u, "EUC-KR"},
    EncodingName{0x0632u, "GB18030"},
    EncodingName{0x0820u, "ISO-2022-JP"},
    EncodingName{0x0821u, "ISO-2022-CN"},
    EncodingName{0x0840u, "ISO-2022-KR"},
    EncodingName{0x18000100u, "UTF-32BE"},
    EncodingName{0x1C000100u, "UTF-32LE"},
};

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter OpenStrict(uint32_t encoding) {
    const char* name = ConverterNameFor(encoding);
    if (name == nullptr)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &status));
    if (U_FAILURE(status))
        return nullptr;
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

std::optional<std::string> EncodeChunk(UConverter* converter, std::u16string_view text) {
    std::string out(text.size() * 4 + 8, '\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = ucnv_fromUChars(converter, out.data(), static_cast<int32_t>(out.size()),
                                     text.data(), static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status))
        return std::nullopt;
    out.resize(static_cast<size_t>(length));
    return out;
}

// Splits text into whole code points so a lone unmappable one can be replaced.
size_t CodePointLength(std::u16string_view text, size_t at) {
    bool pair =
        at + 1 < text.size() && (text[at] & 0xFC00) == 0xD800 && (text[at + 1] & 0xFC00) == 0xDC00;
    return pair ? 2 : 1;
}

} // namespace

const char* ConverterNameFor(uint32_t encoding) {
    for (const auto& entry : kEncodings)
        if (entry.encoding == encoding)
            return entry.converter;
    return nullptr;
}

std::optional<uint32_t> EncodingNamed(const std::string& name) {
    if (name == "MacRoman" || name == "macroman")
        return kBCStringEncodingMacRoman;
    UErrorCode status = U_ZERO_ERROR;
    const char* canonical = ucnv_getAlias(name.c_str(), 0, &status);
    if (U_FAILURE(status) || canonical == nullptr)
        return std::nullopt;
    for (const auto& entry : kEncodings) {
        UErrorCode entryStatus = U_ZERO_ERROR;
        const char* own = ucnv_getAlias(entry.converter, 0, &entryStatus);
        if (U_SUCCESS(entryStatus) && own != nullptr && ucnv_compareNames(own, canonical) == 0)
            return entry.encoding;
    }
    return std::nullopt;
}

std::optional<std::u16string> DecodeBytes(const uint8_t* bytes, size_t length, uint32_t encoding) {
    Converter converter = OpenStrict(encoding);
    if (!converter || (bytes == nullptr && length > 0))
        return std::nullopt;
    std::u16string out(length + 1, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t units =
        ucnv_toUChars(converter.get(), out.data(), static_cast<int32_t>(out.size()),
                      reinterpret_cast<const char*>(bytes), static_cast<int32_t>(length), &status);
    if (U_FAILURE(status))
        return std::nullopt;
    out.resize(static_cast<size_t>(units));
    return out;
}

std::optional<std::string> EncodeText(std::u16string_view text, uint32_t encoding,
                                      uint8_t lossByte) {
    Converter converter = OpenStrict(encoding);
    if (!converter)
        return std::nullopt;
    if (auto whole = EncodeChunk(converter.get(), text))
        return whole;
    if (lossByte == 0)
        return std::nullopt;
    std::string out;
    for (size_t at = 0; at < text.size();) {
        size_t units = CodePointLength(text, at);
        ucnv_reset(converter.get());
        auto piece = EncodeChunk(converter.get(), text.substr(at, units));
        out += piece ? *piece : std::string(1, static_cast<char>(lossByte));
        at += units;
    }
    return out;
}

DecodeStatus DecodePrefix(const uint8_t* bytes, size_t length, uint32_t encoding, char16_t* out,
                          size_t capacity, size_t& bytesRead, size_t& unitsWritten) {
    bytesRead = unitsWritten = 0;
    Converter converter = OpenStrict(encoding);
    if (!converter)
        return DecodeStatus::Unsupported;
    const char* source = reinterpret_cast<const char*>(bytes);
    UChar* target = out;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(converter.get(), &target, out + capacity, &source, source + length, nullptr,
                   true, &status);
    unitsWritten = static_cast<size_t>(target - out);
    bytesRead = static_cast<size_t>(source - reinterpret_cast<const char*>(bytes));
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        // Keep a surrogate pair whole: drop a lone lead unit and the bytes that made it.
        if (unitsWritten > 0 && (out[unitsWritten - 1] & 0xFC00) == 0xD800) {
            --unitsWritten;
            size_t redoRead = 0, redoWritten = 0;
            DecodePrefix(bytes, length, encoding, out, unitsWritten, redoRead, redoWritten);
            bytesRead = redoRead;
        }
        return DecodeStatus::OutputFull;
    }
    return U_SUCCESS(status) ? DecodeStatus::Done : DecodeStatus::Malformed;
}

size_t MaxBytesPerUnit(uint32_t encoding) {
    Converter converter = OpenStrict(encoding);
    return converter ? static_cast<size_t>(ucnv_getMaxCharSize(converter.get())) : 0;
}

} // namespace basalt
