#include "basalt/files/BFFindFolder.h"

#include "basalt/files/BFFileURL.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace basalt::files {
namespace {

constexpr OSType Code(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

// Expands "$HOME" at the start, as user-dirs.dirs writes it.
std::string Expand(std::string value) {
    if (value.compare(0, 5, "$HOME") == 0)
        value = HomePath() + value.substr(5);
    return value;
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

std::optional<std::string> UserDir(const std::string& key) {
    std::ifstream file(ConfigHome() + "/user-dirs.dirs");
    std::string wanted = "XDG_" + key + "_DIR=";
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, wanted.size(), wanted) != 0)
            continue;
        std::string value = line.substr(wanted.size());
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        value = Expand(value);
        // A user dir set to the home folder itself means the user has none.
        if (value.empty() || value == HomePath() || value == HomePath() + "/")
            return std::nullopt;
        return value;
    }
    return std::nullopt;
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

std::string BookmarksFilePath() {
    return ConfigHome() + "/gtk-3.0/bookmarks";
}

std::vector<Bookmark> ReadBookmarks() {
    std::vector<Bookmark> bookmarks;
    std::ifstream file(BookmarksFilePath());
    for (std::string line; std::getline(file, line);) {
        size_t space = line.find(' ');
        auto path = PathFromFileURL(line.substr(0, space));
        if (!path)
            continue;
        std::string label = space == std::string::npos ? "" : line.substr(space + 1);
        bookmarks.push_back({*path, label});
    }
    return bookmarks;
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
