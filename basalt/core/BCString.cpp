#include "basalt/core/BCString.h"

#include "basalt/core/EncodingConverter.h"

#include <cstring>
#include <unicode/ustring.h>

namespace basalt {

bool String::Equals(const BCObject& other) const {
    return text_ == static_cast<const String&>(other).text_;
}

BCHashCode String::Hash() const {
    return std::hash<std::u16string>{}(text_);
}

std::string String::Describe() const {
    return ToUTF8(text_);
}

const std::u16string& TextOf(BCStringRef string) {
    static const std::u16string kEmpty;
    const String* object = As<String>(string);
    return object != nullptr ? object->Text() : kEmpty;
}

BCStringRef MakeString(std::u16string text) {
    return reinterpret_cast<BCStringRef>(static_cast<BCObject*>(new String(std::move(text))));
}

std::string ToUTF8(const std::u16string& text) {
    std::string out(text.size() * 3, '\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &length, text.data(),
                       static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &status);
    out.resize(U_SUCCESS(status) ? static_cast<size_t>(length) : 0);
    return out;
}

std::u16string FromUTF8(const std::string& text) {
    std::u16string out(text.size(), u'\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &length, text.data(),
                         static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &status);
    out.resize(U_SUCCESS(status) ? static_cast<size_t>(length) : 0);
    return out;
}

std::string UTF8Of(BCStringRef string) {
    return ToUTF8(TextOf(string));
}

} // namespace basalt

using basalt::String;
using basalt::TextOf;

namespace {

BCMutableStringRef MakeMutable(std::u16string text) {
    return reinterpret_cast<BCMutableStringRef>(
        static_cast<basalt::BCObject*>(new String(std::move(text), true)));
}

BCStringRef Decoded(const uint8_t* bytes, size_t length, BCStringEncoding encoding) {
    auto text = basalt::DecodeBytes(bytes, length, encoding);
    return text ? basalt::MakeString(std::move(*text)) : nullptr;
}

bool ValidRange(const std::u16string& text, BCRange range) {
    return range.location >= 0 && range.length >= 0 &&
           static_cast<size_t>(range.location + range.length) <= text.size();
}

} // namespace

extern "C" {

BCTypeID BCStringGetTypeID(void) {
    return static_cast<BCTypeID>(basalt::TypeID::String);
}

BCStringRef BCStringCreateWithCString(BCAllocatorRef, const char* cString,
                                      BCStringEncoding encoding) {
    if (cString == nullptr)
        return nullptr;
    return Decoded(reinterpret_cast<const uint8_t*>(cString), std::strlen(cString), encoding);
}

BCStringRef BCStringCreateWithPascalString(BCAllocatorRef, ConstStr255Param pString,
                                           BCStringEncoding encoding) {
    if (pString == nullptr)
        return nullptr;
    return Decoded(pString + 1, pString[0], encoding);
}

BCStringRef BCStringCreateWithCharacters(BCAllocatorRef, const UniChar* chars, BCIndex numChars) {
    if (numChars < 0 || (chars == nullptr && numChars > 0))
        return nullptr;
    auto* begin = reinterpret_cast<const char16_t*>(chars);
    return basalt::MakeString(numChars > 0 ? std::u16string(begin, begin + numChars) : u"");
}

BCStringRef BCStringCreateWithBytes(BCAllocatorRef, const uint8_t* bytes, BCIndex numBytes,
                                    BCStringEncoding encoding, Boolean) {
    if (numBytes < 0 || (bytes == nullptr && numBytes > 0))
        return nullptr;
    // Host-order UTF-16 honours a byte order mark wherever the bytes came from.
    if (encoding == kBCStringEncodingUnicode && numBytes >= 2) {
        if (bytes[0] == 0xFE && bytes[1] == 0xFF)
            return Decoded(bytes + 2, static_cast<size_t>(numBytes - 2), kBCStringEncodingUTF16BE);
        if (bytes[0] == 0xFF && bytes[1] == 0xFE)
            return Decoded(bytes + 2, static_cast<size_t>(numBytes - 2), kBCStringEncodingUTF16LE);
    }
    return Decoded(bytes, static_cast<size_t>(numBytes), encoding);
}

BCStringRef BCStringCreateCopy(BCAllocatorRef, BCStringRef string) {
    if (basalt::As<String>(string) == nullptr)
        return nullptr;
    return basalt::MakeString(TextOf(string));
}

BCStringRef BCStringCreateWithSubstring(BCAllocatorRef, BCStringRef string, BCRange range) {
    const auto& text = TextOf(string);
    if (basalt::As<String>(string) == nullptr || !ValidRange(text, range))
        return nullptr;
    return basalt::MakeString(
        text.substr(static_cast<size_t>(range.location), static_cast<size_t>(range.length)));
}

BCMutableStringRef BCStringCreateMutable(BCAllocatorRef, BCIndex) {
    return MakeMutable(u"");
}

BCMutableStringRef BCStringCreateMutableCopy(BCAllocatorRef, BCIndex, BCStringRef string) {
    return MakeMutable(TextOf(string));
}

BCIndex BCStringGetLength(BCStringRef string) {
    return static_cast<BCIndex>(TextOf(string).size());
}

UniChar BCStringGetCharacterAtIndex(BCStringRef string, BCIndex index) {
    const auto& text = TextOf(string);
    return index >= 0 && static_cast<size_t>(index) < text.size() ? text[static_cast<size_t>(index)]
                                                                  : 0;
}

void BCStringGetCharacters(BCStringRef string, BCRange range, UniChar* buffer) {
    const auto& text = TextOf(string);
    if (buffer == nullptr || !ValidRange(text, range))
        return;
    std::memcpy(buffer, text.data() + range.location,
                static_cast<size_t>(range.length) * sizeof(UniChar));
}

const UniChar* BCStringGetCharactersPtr(BCStringRef string) {
    const String* object = basalt::As<String>(string);
    // A mutable string may reallocate under the caller, so only immutable ones lend storage.
    if (object == nullptr || object->IsMutable())
        return nullptr;
    return reinterpret_cast<const UniChar*>(object->Text().c_str());
}

Boolean BCStringGetCString(BCStringRef string, char* buffer, BCIndex bufferSize,
                           BCStringEncoding encoding) {
    if (basalt::As<String>(string) == nullptr || buffer == nullptr || bufferSize <= 0)
        return false;
    auto bytes = basalt::EncodeText(TextOf(string), encoding, 0);
    if (!bytes || static_cast<BCIndex>(bytes->size()) >= bufferSize)
        return false;
    std::memcpy(buffer, bytes->c_str(), bytes->size() + 1);
    return true;
}

Boolean BCStringGetPascalString(BCStringRef string, unsigned char* buffer, BCIndex bufferSize,
                                BCStringEncoding encoding) {
    if (basalt::As<String>(string) == nullptr || buffer == nullptr || bufferSize <= 0)
        return false;
    auto bytes = basalt::EncodeText(TextOf(string), encoding, 0);
    if (!bytes || bytes->size() > 255 || static_cast<BCIndex>(bytes->size()) >= bufferSize)
        return false;
    buffer[0] = static_cast<unsigned char>(bytes->size());
    std::memcpy(buffer + 1, bytes->data(), bytes->size());
    return true;
}

BCIndex BCStringGetBytes(BCStringRef string, BCRange range, BCStringEncoding encoding,
                         uint8_t lossByte, Boolean isExternalRepresentation, uint8_t* buffer,
                         BCIndex maxBufLen, BCIndex* usedBufLen) {
    const auto& text = TextOf(string);
    if (usedBufLen != nullptr)
        *usedBufLen = 0;
    if (!ValidRange(text, range))
        return 0;
    std::string out;
    if (isExternalRepresentation && encoding == kBCStringEncodingUnicode)
        out = "\xFF\xFE";
    BCIndex converted = 0;
    for (BCIndex at = range.location; at < range.location + range.length;) {
        bool pair = at + 1 < range.location + range.length &&
                    (text[static_cast<size_t>(at)] & 0xFC00) == 0xD800 &&
                    (text[static_cast<size_t>(at) + 1] & 0xFC00) == 0xDC00;
        BCIndex units = pair ? 2 : 1;
        auto piece = basalt::EncodeText(
            std::u16string_view(text).substr(static_cast<size_t>(at), static_cast<size_t>(units)),
            encoding, lossByte);
        if (!piece)
            break;
        // A null buffer asks only how many bytes the conversion needs.
        if (buffer != nullptr && static_cast<BCIndex>(out.size() + piece->size()) > maxBufLen)
            break;
        out += *piece;
        at += units;
        converted += units;
    }
    if (buffer != nullptr)
        std::memcpy(buffer, out.data(), out.size());
    if (usedBufLen != nullptr)
        *usedBufLen = static_cast<BCIndex>(out.size());
    return converted;
}

BCIndex BCStringGetMaximumSizeForEncoding(BCIndex length, BCStringEncoding encoding) {
    size_t perUnit = basalt::MaxBytesPerUnit(encoding);
    return perUnit == 0 ? BCIndex(kBCNotFound) : length * static_cast<BCIndex>(perUnit);
}

BCStringEncoding BCStringGetSystemEncoding(void) {
    return kBCStringEncodingUTF8;
}

int32_t BCStringGetIntValue(BCStringRef string) {
    std::string text = basalt::UTF8Of(string);
    return static_cast<int32_t>(std::strtol(text.c_str(), nullptr, 10));
}

} // extern "C"
