#include "basalt/linkage/Linkage.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

std::string Trimmed(const std::string& text) {
    auto isSpace = [](unsigned char c) { return std::isspace(c) != 0; };
    auto begin = std::find_if_not(text.begin(), text.end(), isSpace);
    auto end = std::find_if_not(text.rbegin(), text.rend(), isSpace).base();
    return begin < end ? std::string(begin, end) : std::string();
}

bool IsNumber(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](unsigned char c) { return std::isdigit(c) != 0; });
}

std::string UTF8(BCStringRef string) {
    char buffer[64] = {};
    return BCStringGetCString(string, buffer, sizeof buffer, kBCStringEncodingUTF8) ? buffer : "";
}

} // namespace

extern "C" Boolean _BSCheckFix(BCStringRef fixNumber) {
    std::string fix = Trimmed(UTF8(fixNumber));
    if (!IsNumber(fix))
        return false;
    // Read each time: the environment is the only switch, and tests flip it.
    const char* disabled = std::getenv("KEL_DISABLED_FIXES");
    std::stringstream list(disabled != nullptr ? disabled : "");
    for (std::string entry; std::getline(list, entry, ',');)
        if (Trimmed(entry) == fix)
            return false;
    return true;
}
