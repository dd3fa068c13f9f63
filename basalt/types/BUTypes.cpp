#include "basalt/types/BUTypes.h"

#include "basalt/types/MimeDatabase.h"

#include <vector>

namespace basalt::types {

std::string Utf8(BCStringRef string) {
    if (string == nullptr)
        return {};
    BCIndex length = BCStringGetLength(string);
    BCIndex used = 0;
    BCStringGetBytes(string, BCRangeMake(0, length), kBCStringEncodingUTF8, '?', false, nullptr, 0,
                     &used);
    std::string text(static_cast<size_t>(used), '\0');
    BCStringGetBytes(string, BCRangeMake(0, length), kBCStringEncodingUTF8, '?', false,
                     reinterpret_cast<uint8_t*>(text.data()), used, &used);
    text.resize(static_cast<size_t>(used));
    return text;
}

BCStringRef MakeString(std::string_view utf8) {
    return BCStringCreateWithBytes(nullptr, reinterpret_cast<const uint8_t*>(utf8.data()),
                                   static_cast<BCIndex>(utf8.size()), kBCStringEncodingUTF8, false);
}

} // namespace basalt::types

using namespace basalt::types;

extern "C" {

Boolean BUTypeConformsTo(BCStringRef identifier, BCStringRef parent) {
    if (identifier == nullptr || parent == nullptr)
        return false;
    return MimeDatabase::Shared().ConformsTo(Utf8(identifier), Utf8(parent));
}

Boolean BUTypeEqual(BCStringRef a, BCStringRef b) {
    if (a == nullptr || b == nullptr)
        return false;
    auto& database = MimeDatabase::Shared();
    return database.Canonical(Utf8(a)) == database.Canonical(Utf8(b));
}

BCStringRef BUCreateStringForFourCharCode(OSType code) {
    return MakeString(FourCharCodeText(code));
}

OSType BUGetFourCharCodeFromString(BCStringRef string) {
    if (string == nullptr || BCStringGetLength(string) != 4)
        return 0;
    OSType code = 0;
    for (BCIndex i = 0; i < 4; ++i)
        code = code << 8 | (BCStringGetCharacterAtIndex(string, i) & 0xFF);
    return code;
}

BCStringRef BUTypeCreatePreferredIdentifierForTag(BCStringRef tagClass, BCStringRef tag,
                                                  BCStringRef) {
    if (tagClass == nullptr || tag == nullptr)
        return nullptr;
    std::string kind = Utf8(tagClass);
    std::string type;
    if (kind == Utf8(kBUTagClassFourCharCode)) {
        type = TypeForFourCharCode(BUGetFourCharCodeFromString(tag));
    } else if (kind == Utf8(kBUTagClassFilenameExtension)) {
        type = MimeDatabase::Shared().TypeForName("x." + Utf8(tag));
    } else if (kind == Utf8(kBUTagClassMIMEType)) {
        type = MimeDatabase::Shared().Canonical(Utf8(tag));
    } else {
        return nullptr;
    }
    return MakeString(type);
}

BCStringRef BUTypeCopyPreferredTagWithClass(BCStringRef identifier, BCStringRef tagClass) {
    if (identifier == nullptr || tagClass == nullptr)
        return nullptr;
    std::string kind = Utf8(tagClass);
    std::string type = Utf8(identifier);
    std::string tag;
    if (kind == Utf8(kBUTagClassFourCharCode)) {
        if (uint32_t code = FourCharCodeForType(type))
            tag = FourCharCodeText(code);
    } else if (kind == Utf8(kBUTagClassFilenameExtension)) {
        tag = MimeDatabase::Shared().PreferredExtension(type);
    } else if (kind == Utf8(kBUTagClassMIMEType)) {
        tag = MimeDatabase::Shared().Canonical(type);
    }
    return tag.empty() ? nullptr : MakeString(tag);
}

BCStringRef BUTypeCopyDescription(BCStringRef identifier) {
    if (identifier == nullptr)
        return nullptr;
    std::string comment = MimeDatabase::Shared().Comment(Utf8(identifier));
    return comment.empty() ? nullptr : MakeString(comment);
}

} // extern "C"
