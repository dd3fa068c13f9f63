// Which application claims a type: the mimeinfo.cache of each XDG applications folder, and
// the MimeType lines of the .desktop files of folders that have no cache. Read once.

#include "basalt/types/BLRegistry.h"
#include "basalt/types/BUTypes.h"
#include "basalt/types/MimeDatabase.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unordered_map>

namespace basalt::types {
namespace {

std::vector<std::string> ApplicationDirs() {
    std::vector<std::string> dirs;
    const char* home = std::getenv("XDG_DATA_HOME");
    if (home != nullptr && *home != '\0')
        dirs.push_back(std::string(home) + "/applications");
    else if (const char* h = std::getenv("HOME"))
        dirs.push_back(std::string(h) + "/.local/share/applications");
    const char* shared = std::getenv("XDG_DATA_DIRS");
    std::stringstream list(shared != nullptr && *shared != '\0' ? shared
                                                                : "/usr/local/share:/usr/share");
    std::string dir;
    while (std::getline(list, dir, ':'))
        dirs.push_back(dir + "/applications");
    return dirs;
}

void AddTypes(Claims& claims, const std::string& types, const std::string& desktopFile) {
    std::stringstream list(types);
    std::string type;
    while (std::getline(list, type, ';')) {
        if (!type.empty())
            claims.try_emplace(type, desktopFile);
    }
}

void ReadDesktopFiles(Claims& claims, const std::filesystem::path& dir) {
    std::error_code error;
    // Stepped with error codes: a throwing iterator must not leave the registry.
    for (std::filesystem::directory_iterator entry(dir, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() != ".desktop")
            continue;
        std::ifstream file(entry->path());
        ReadDesktopEntry(claims, entry->path().string(), file);
    }
}

} // namespace

void ReadMimeinfoCache(Claims& claims, const std::filesystem::path& dir, std::istream& cache) {
    std::string line;
    while (std::getline(cache, line)) {
        size_t equals = line.find('=');
        if (equals == std::string::npos || equals == 0 || line[0] == '[')
            continue;
        // The first file named claims the type; a line that names none claims nothing. Files
        // are named by their name in the folder: a name with "/" would point outside it.
        std::stringstream files(line.substr(equals + 1));
        std::string first;
        while (std::getline(files, first, ';') && first.empty()) {
        }
        if (!first.empty() && first.find('/') == std::string::npos)
            claims.try_emplace(line.substr(0, equals), (dir / first).string());
    }
}

void ReadDesktopEntry(Claims& claims, const std::string& file, std::istream& entry) {
    std::string line;
    while (std::getline(entry, line)) {
        if (line.starts_with("MimeType="))
            AddTypes(claims, line.substr(9), file);
    }
}

namespace {

const Claims& AllClaims() {
    static const Claims* claims = [] {
        auto* made = new Claims; // kept for the process
        for (const std::string& dir : ApplicationDirs()) {
            std::ifstream cache(dir + "/mimeinfo.cache");
            if (cache)
                ReadMimeinfoCache(*made, dir, cache);
            else
                ReadDesktopFiles(*made, dir);
        }
        return made;
    }();
    return *claims;
}

} // namespace

std::optional<std::string> ApplicationForType(std::string_view type) {
    const Claims& claims = AllClaims();
    auto& database = MimeDatabase::Shared();
    if (auto found = claims.find(database.Canonical(type)); found != claims.end())
        return found->second;
    for (const auto& [alias, file] : claims) {
        if (database.Canonical(alias) == database.Canonical(type))
            return file;
    }
    return std::nullopt;
}

} // namespace basalt::types

using namespace basalt::types;

extern "C" {

StatusCode BLGetApplicationForInfo(OSType type, OSType, BCStringRef extension, uint32_t, BFRef*,
                                   BCURLRef* outURL) {
    std::string mime;
    if (extension != nullptr && BCStringGetLength(extension) > 0)
        mime = MimeDatabase::Shared().TypeForName("x." + Utf8(extension));
    if (mime.empty() && type != 0 && FourCharCodeForType(TypeForFourCharCode(type)) == type)
        mime = TypeForFourCharCode(type);
    auto application = mime.empty() ? std::nullopt : ApplicationForType(mime);
    if (!application)
        return kBLApplicationNotFoundErr;
    if (outURL != nullptr)
        *outURL = BCURLCreateFromFileSystemRepresentation(
            nullptr, reinterpret_cast<const uint8_t*>(application->data()),
            static_cast<BCIndex>(application->size()), false);
    return noErr;
}

StatusCode BLCopyKindStringForInfo(OSType type, OSType, BCStringRef extension,
                                   BCStringRef* outKind) {
    if (outKind == nullptr)
        return paramErr;
    std::string mime;
    if (extension != nullptr && BCStringGetLength(extension) > 0)
        mime = MimeDatabase::Shared().TypeForName("x." + Utf8(extension));
    if (mime.empty() && type != 0 && FourCharCodeForType(TypeForFourCharCode(type)) == type)
        mime = TypeForFourCharCode(type);
    std::string comment = mime.empty() ? std::string() : MimeDatabase::Shared().Comment(mime);
    if (comment.empty())
        return kBLApplicationNotFoundErr;
    *outKind = MakeString(comment);
    return noErr;
}

} // extern "C"
