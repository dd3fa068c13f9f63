#include "basalt/core/BCBundle.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace basalt {
namespace {

// "de_AT.UTF-8@euro" gives "de_AT"; the C locales give nothing.
std::string LanguageCode(std::string entry) {
    entry = entry.substr(0, entry.find_first_of(".@"));
    if (entry == "C" || entry == "POSIX")
        return "";
    std::replace(entry.begin(), entry.end(), '-', '_');
    return entry;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::stringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        if (!part.empty())
            parts.push_back(part);
    return parts;
}

std::string FirstSetVariable() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return "";
}

} // namespace

std::vector<std::string> PreferredLanguages() {
    const char* language = std::getenv("LANGUAGE");
    std::vector<std::string> entries = Split(language != nullptr ? language : "", ':');
    if (entries.empty())
        entries = {FirstSetVariable()};
    std::vector<std::string> languages;
    auto add = [&](const std::string& code) {
        if (!code.empty() && std::find(languages.begin(), languages.end(), code) == languages.end())
            languages.push_back(code);
    };
    for (const std::string& entry : entries) {
        std::string code = LanguageCode(entry);
        add(code);
        add(code.substr(0, code.find('_')));
    }
    add("en");
    return languages;
}

} // namespace basalt
