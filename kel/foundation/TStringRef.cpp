#include "kel/foundation/TStringRef.h"

#include "kel/foundation/AppTextEncoding.h"
#include "kel/foundation/TMutableStringRef.h"

#include <cstdarg>

namespace {

BCStringEncoding ResolveEncoding(uint32_t encoding) {
    return encoding == TStringRef::kApplicationEncoding ? AppTextEncoding() : encoding;
}

} // namespace

TStringRef::TStringRef(BCStringRef string) : TObjectRef(string, true) {}

TStringRef::TStringRef(BCStringRef string, bool retain) : TObjectRef(string, retain) {}

TStringRef& TStringRef::operator=(const TStringRef& other) {
    Set(other.ref);
    return *this;
}

TStringRef& TStringRef::operator=(BCStringRef string) {
    Set(string);
    return *this;
}

TStringRef TStringRef::Create(const char* text, uint32_t encoding) {
    if (text == nullptr) {
        return {};
    }
    return {BCStringCreateWithCString(kBCAllocatorDefault, text, ResolveEncoding(encoding)), false};
}

TStringRef TStringRef::Create(const uint8_t* text, uint32_t encoding) {
    if (text == nullptr) {
        return {};
    }
    return {BCStringCreateWithPascalString(kBCAllocatorDefault, text, ResolveEncoding(encoding)),
            false};
}

TStringRef TStringRef::Create(BCStringRef string) {
    if (string == nullptr) {
        return {};
    }
    return {BCStringCreateCopy(kBCAllocatorDefault, string), false};
}

TStringRef TStringRef::Create(const UniChar* characters, int32_t length) {
    if (characters == nullptr && length != 0) {
        return {};
    }
    return {BCStringCreateWithCharacters(kBCAllocatorDefault, characters, length), true};
}

TStringRef TStringRef::CreateWithFormat(const char* format, ...) {
    TStringRef formatString = Create(format, kBCStringEncodingUTF8);
    if (formatString.IsNil()) {
        return {};
    }
    va_list arguments;
    va_start(arguments, format);
    BCStringRef made = BCStringCreateWithFormatAndArguments(
        kBCAllocatorDefault, nullptr, formatString.AsBCStringRef(), arguments);
    va_end(arguments);
    return {made, false};
}

bool TStringRef::Contains(TRange range) const {
    return range.location >= 0 && range.length >= 0 &&
           static_cast<int64_t>(range.location) + range.length <= Length();
}

TStringRef TStringRef::CreateSubstring(TRange range) const {
    if (IsNil() || !Contains(range)) {
        return {};
    }
    return {BCStringCreateWithSubstring(kBCAllocatorDefault, AsBCStringRef(), range), false};
}

int32_t TStringRef::Length() const {
    return IsNil() ? 0 : static_cast<int32_t>(BCStringGetLength(AsBCStringRef()));
}

TStringRef TStringRef::Copy() const {
    return Create(AsBCStringRef());
}

TMutableStringRef TStringRef::CopyMutable(int32_t capacity) const {
    if (IsNil()) {
        return {};
    }
    return {BCStringCreateMutableCopy(kBCAllocatorDefault, capacity, AsBCStringRef()), false};
}

void TStringRef::CopyCharacters(TRange range, UniChar* out) const {
    if (IsNil() || out == nullptr || !Contains(range)) {
        return;
    }
    BCStringGetCharacters(AsBCStringRef(), range, out);
}

bool TStringRef::CopyToPascalString(uint8_t* out, int32_t size, uint32_t encoding) const {
    if (IsNil() || out == nullptr || size <= 0) {
        return false;
    }
    return BCStringGetPascalString(AsBCStringRef(), out, size, ResolveEncoding(encoding));
}

TRange TStringRef::Find(const TStringRef& toFind, uint32_t options) const {
    if (IsNil() || toFind.IsNil()) {
        return {kBCNotFound, 0};
    }
    return BCStringFind(AsBCStringRef(), toFind.AsBCStringRef(), options);
}

UniChar TStringRef::CharacterAtIndex(int32_t index) const {
    if (index < 0 || index >= Length()) {
        return 0;
    }
    return BCStringGetCharacterAtIndex(AsBCStringRef(), index);
}
