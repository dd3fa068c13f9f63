#include "basalt/files/BFFileURL.h"

#include <cctype>

namespace basalt::files {
namespace {

bool IsPlain(unsigned char c) {
    return std::isalnum(c) || c == '/' || c == '-' || c == '.' || c == '_' || c == '~' ||
           c == '!' || c == '$' || c == '&' || c == '\'' || c == '(' || c == ')' || c == '*' ||
           c == '+' || c == ',' || c == ';' || c == '=' || c == ':' || c == '@';
}

int HexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

std::string FileURLFromPath(std::string_view path, bool isDirectory) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string url = "file://";
    for (unsigned char c : path) {
        if (IsPlain(c)) {
            url.push_back(static_cast<char>(c));
        } else {
            url.push_back('%');
            url.push_back(kHex[c >> 4]);
            url.push_back(kHex[c & 15]);
        }
    }
    if (isDirectory && (url.empty() || url.back() != '/'))
        url.push_back('/');
    return url;
}

std::optional<std::string> PathFromFileURL(std::string_view url) {
    constexpr std::string_view kScheme = "file://";
    if (url.substr(0, kScheme.size()) != kScheme)
        return std::nullopt;
    std::string_view rest = url.substr(kScheme.size());
    if (rest.substr(0, 9) == "localhost")
        rest.remove_prefix(9);
    if (rest.empty() || rest.front() != '/')
        return std::nullopt;
    std::string path;
    for (size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] != '%') {
            path.push_back(rest[i]);
            continue;
        }
        if (i + 2 >= rest.size())
            return std::nullopt;
        int high = HexValue(rest[i + 1]);
        int low = HexValue(rest[i + 2]);
        if (high < 0 || low < 0)
            return std::nullopt;
        path.push_back(static_cast<char>(high * 16 + low));
        i += 2;
    }
    if (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

} // namespace basalt::files
