// Localised string tables: any bytes parse to a table without crashing, and a table written
// back in the file's own syntax reads back the same.

#include "basalt/core/BCString.h"
#include "basalt/core/StringsTable.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

std::string Quoted(const std::u16string& text) {
    std::string out = "\"";
    for (char c : basalt::ToUTF8(text)) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        default:
            out += c;
        }
    }
    return out + "\"";
}

bool HasLoneSurrogate(const std::u16string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF)
            ++i;
        else if (unit >= 0xD800 && unit <= 0xDFFF)
            return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const basalt::StringsTable table = basalt::ParseStringsTable(text);

    // A lone surrogate has no UTF-8 form; tables that hold one cannot be written back as they are.
    std::string written;
    for (const auto& [key, value] : table) {
        if (HasLoneSurrogate(key) || HasLoneSurrogate(value))
            return 0;
        written += Quoted(key) + " = " + Quoted(value) + ";\n";
    }
    if (basalt::ParseStringsTable(written) != table)
        std::abort();
    return 0;
}
