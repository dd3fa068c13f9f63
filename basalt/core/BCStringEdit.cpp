// Mutation of strings made with BCStringCreateMutable*; immutable strings are left untouched.

#include "basalt/core/BCString.h"
#include "basalt/core/BCStringSearch.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

using basalt::String;
using basalt::TextOf;

namespace {

std::u16string* Editable(BCMutableStringRef string) {
    String* object = basalt::AsMutable<String>(string);
    return object != nullptr && object->IsMutable() ? &object->MutableText() : nullptr;
}

bool ValidRange(const std::u16string& text, BCRange range) {
    return range.location >= 0 && range.length >= 0 &&
           static_cast<size_t>(range.location + range.length) <= text.size();
}

using CaseMapper = int32_t (*)(UChar*, int32_t, const UChar*, int32_t, const char*, UErrorCode*);

void MapCase(BCMutableStringRef string, CaseMapper mapper) {
    std::u16string* text = Editable(string);
    if (text == nullptr || text->empty())
        return;
    std::u16string out(text->size() * 3, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = mapper(out.data(), static_cast<int32_t>(out.size()), text->data(),
                            static_cast<int32_t>(text->size()), "", &status);
    if (U_SUCCESS(status)) {
        out.resize(static_cast<size_t>(length));
        *text = std::move(out);
    }
}

} // namespace

extern "C" {

void BCStringAppend(BCMutableStringRef string, BCStringRef appended) {
    if (std::u16string* text = Editable(string))
        text->append(TextOf(appended));
}

void BCStringAppendCharacters(BCMutableStringRef string, const UniChar* chars, BCIndex numChars) {
    std::u16string* text = Editable(string);
    if (text != nullptr && chars != nullptr && numChars > 0)
        text->append(reinterpret_cast<const char16_t*>(chars), static_cast<size_t>(numChars));
}

void BCStringAppendCString(BCMutableStringRef string, const char* cString,
                           BCStringEncoding encoding) {
    BCStringRef appended = BCStringCreateWithCString(kBCAllocatorDefault, cString, encoding);
    BCStringAppend(string, appended);
    BCRelease(appended);
}

void BCStringInsert(BCMutableStringRef string, BCIndex index, BCStringRef inserted) {
    std::u16string* text = Editable(string);
    if (text != nullptr && index >= 0 && static_cast<size_t>(index) <= text->size())
        text->insert(static_cast<size_t>(index), TextOf(inserted));
}

void BCStringDelete(BCMutableStringRef string, BCRange range) {
    BCStringReplace(string, range, nullptr);
}

void BCStringReplace(BCMutableStringRef string, BCRange range, BCStringRef replacement) {
    std::u16string* text = Editable(string);
    if (text == nullptr || !ValidRange(*text, range))
        return;
    // Copy first: the replacement may be the string itself.
    std::u16string with = TextOf(replacement);
    text->replace(static_cast<size_t>(range.location), static_cast<size_t>(range.length), with);
}

void BCStringReplaceAll(BCMutableStringRef string, BCStringRef replacement) {
    if (std::u16string* text = Editable(string))
        *text = std::u16string(TextOf(replacement));
}

BCIndex BCStringFindAndReplace(BCMutableStringRef string, BCStringRef toFind,
                               BCStringRef replacement, BCRange rangeToSearch,
                               BCOptionFlags options) {
    std::u16string* text = Editable(string);
    if (text == nullptr || !ValidRange(*text, rangeToSearch) || TextOf(toFind).empty())
        return 0;
    std::vector<BCRange> hits = basalt::FindAll(*text, TextOf(toFind), rangeToSearch, options);
    std::u16string with = TextOf(replacement);
    // Replace from the end so the earlier ranges stay valid.
    for (auto hit = hits.rbegin(); hit != hits.rend(); ++hit)
        text->replace(static_cast<size_t>(hit->location), static_cast<size_t>(hit->length), with);
    return static_cast<BCIndex>(hits.size());
}

void BCStringLowercase(BCMutableStringRef string, const void*) {
    MapCase(string, u_strToLower);
}

void BCStringUppercase(BCMutableStringRef string, const void*) {
    MapCase(string, u_strToUpper);
}

void BCStringTrimWhitespace(BCMutableStringRef string) {
    std::u16string* text = Editable(string);
    if (text == nullptr)
        return;
    // Every white space character sits in the Basic Multilingual Plane, so units will do.
    auto isSpace = [](char16_t unit) { return u_isUWhiteSpace(unit) != 0; };
    size_t end = text->size();
    while (end > 0 && isSpace((*text)[end - 1]))
        --end;
    size_t start = 0;
    while (start < end && isSpace((*text)[start]))
        ++start;
    *text = text->substr(start, end - start);
}

} // extern "C"
