// Any bytes as typed search text and as a query expression: what the search field makes of any
// text is always a well-formed expression, and no expression text crashes the parser.

#include "basalt/types/BMQuery.h"

#include <basalt/BasaltCore.h>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

// The bytes as UTF-8 where they are, else as UTF-16 units (lone surrogates included). Owned.
BCStringRef InputText(const uint8_t* data, size_t size) {
    BCStringRef text =
        BCStringCreateWithBytes(nullptr, data, BCIndex(size), kBCStringEncodingUTF8, false);
    if (text != nullptr)
        return text;
    std::vector<UniChar> units(size / 2);
    for (size_t i = 0; i < units.size(); ++i)
        units[i] = UniChar(data[2 * i] | data[2 * i + 1] << 8);
    return BCStringCreateWithCharacters(nullptr, units.data(), BCIndex(units.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    BCStringRef text = InputText(data, size);
    if (text == nullptr)
        return 0;
    BMQueryValidateQueryString(text);
    if (BCStringRef query = BMQueryCreateQueryString(kBMQueryStringMatchAllMetadata, text)) {
        if (BMQueryValidateQueryString(query) != noErr)
            std::abort();
        BCRelease(query);
    }
    BCRelease(text);
    return 0;
}
