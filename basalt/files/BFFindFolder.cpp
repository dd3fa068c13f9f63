#include "basalt/files/BFFindFolder.h"

#include "basalt/files/BFLongPath.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace basalt::files {
namespace {

constexpr OSType Code(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view SkipBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

// The value of one line if it sets the key; the home folder is still "$HOME".
std::optional<std::string_view> ValueOf(std::string_view line, std::string_view key) {
    line = SkipBlanks(line);
    if (!line.starts_with(key))
        return std::nullopt;
    line = SkipBlanks(line.substr(key.size()));
    if (!line.starts_with('='))
        return std::nullopt;
    line = SkipBlanks(line.substr(1));
    size_t close = line.rfind('"');
    if (!line.starts_with('"') || close == 0)
        return std::nullopt;
    return line.substr(1, close - 1);
}

bool MakeFolders(const std::string& path) {
    for (size_t at = 1; at != std::string::npos;) {
        at = path.find('/', at + 1);
        std::string part = path.substr(0, at);
        if (::mkdir(part.c_str(), 0755) != 0 && errno != EEXIST)
            return false;
    }
    return true;
}

} // namespace

std::string HomePath() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home == '/')
        return home;
    const passwd* entry = ::getpwuid(::getuid());
    return entry != nullptr ? entry->pw_dir : "/";
}

std::string ConfigHome() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    return config != nullptr && *config == '/' ? std::string(config) : HomePath() + "/.config";
}

std::optional<std::string> UserDirFromText(std::string_view text, std::string_view key,
                                           const std::string& home) {
    std::string wanted = "XDG_" + std::string(key) + "_DIR";
    std::optional<std::string> found;
    // The same reading as the other applications': the last line for a key wins, a value is
    // "$HOME..." or an absolute path in double quotes, and one trailing slash is dropped.
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.find('\n', at), text.size());
        std::optional<std::string_view> value = ValueOf(text.substr(at, end - at), wanted);
        at = end + 1;
        if (!value)
            continue;
        bool inHome = value->starts_with("$HOME");
        if (inHome)
            value->remove_prefix(5);
        else if (!value->starts_with('/'))
            continue;
        if (value->size() > 1 && value->ends_with('/'))
            value->remove_suffix(1);
        if (!inHome) {
            found = std::string(*value);
            continue;
        }
        while (value->starts_with('/'))
            value->remove_prefix(1);
        found = value->empty() ? home : JoinPath(home, std::string(*value));
    }
    return found;
}

std::optional<std::string> UserDir(const std::string& key) {
    std::ifstream file(ConfigHome() + "/user-dirs.dirs");
    std::stringstream text;
    text << file.rdbuf();
    return UserDirFromText(text.str(), key, HomePath());
}

std::optional<std::string> FolderPathForType(OSType folderType) {
    auto userDir = [](const char* key, const char* fallback) {
        return UserDir(key).value_or(HomePath() + "/" + fallback);
    };
    if (folderType == Code("desk"))
        return userDir("DESKTOP", "Desktop");
    if (folderType == Code("docs"))
        return userDir("DOCUMENTS", "Documents");
    if (folderType == Code("down"))
        return userDir("DOWNLOAD", "Downloads");
    if (folderType == Code("cusr"))
        return HomePath();
    if (folderType == Code("apps"))
        return std::string("/usr/share/applications");
    if (folderType == Code("favs"))
        return ConfigHome() + "/kel/Favorites";
    return std::nullopt;
}

} // namespace basalt::files

extern "C" StatusCode BFFindFolder(int16_t, OSType folderType, Boolean create, BFRef* folder) {
    using namespace basalt::files;
    if (folder == nullptr)
        return paramErr;
    auto path = FolderPathForType(folderType);
    if (!path)
        return fnfErr;
    StatusCode status = MakeRef(*path, *folder);
    if (status == fnfErr && create && MakeFolders(*path))
        status = MakeRef(*path, *folder);
    return status;
}
