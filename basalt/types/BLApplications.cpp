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

using Claims = std::unordered_map<std::string, std::string>;

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

std::string_view Trim(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}

std::vector<std::string> SplitList(std::string_view list) {
    std::vector<std::string> items;
    for (size_t at = 0; at < list.size();) {
        size_t end = std::min(list.find(';', at), list.size());
        if (std::string_view item = Trim(list.substr(at, end - at)); !item.empty())
            items.emplace_back(item);
        at = end + 1;
    }
    return items;
}

// Calls take(key, value) for each "key=value" line of the group named group.
template <typename Take>
void ForEachKey(std::string_view text, std::string_view group, Take take) {
    bool inGroup = false;
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = Trim(text.substr(at, end - at));
        at = end + 1;
        if (line.starts_with('[')) {
            inGroup = line == "[" + std::string(group) + "]";
            continue;
        }
        size_t equals = line.find('=');
        if (inGroup && equals != std::string_view::npos && !line.starts_with('#'))
            take(Trim(line.substr(0, equals)), Trim(line.substr(equals + 1)));
    }
}

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

void ReadCache(Claims& claims, const std::filesystem::path& dir, const std::string& cache) {
    for (auto& [type, application] : MimeInfoCacheClaims(cache))
        claims.try_emplace(type, (dir / application).string());
}

void ReadDesktopFiles(Claims& claims, const std::filesystem::path& dir) {
    std::error_code error;
    // Stepped with error codes: a throwing iterator must not leave the registry.
    for (std::filesystem::directory_iterator entry(dir, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() != ".desktop")
            continue;
        for (std::string& type : DesktopFileTypes(ReadAll(entry->path())))
            claims.try_emplace(std::move(type), entry->path().string());
    }
}

const Claims& AllClaims() {
    static const Claims* claims = [] {
        auto* made = new Claims; // kept for the process
        for (const std::string& dir : ApplicationDirs()) {
            std::filesystem::path cache = dir + "/mimeinfo.cache";
            std::error_code error;
            if (std::filesystem::is_regular_file(cache, error))
                ReadCache(*made, dir, ReadAll(cache));
            else
                ReadDesktopFiles(*made, dir);
        }
        return made;
    }();
    return *claims;
}

} // namespace

std::vector<std::string> DesktopFileTypes(std::string_view text) {
    std::vector<std::string> types;
    bool hidden = false;
    ForEachKey(text, "Desktop Entry", [&](std::string_view key, std::string_view value) {
        if (key == "MimeType")
            types = SplitList(value);
        else if (key == "Hidden")
            hidden = value == "true";
    });
    // A hidden entry is one the user deleted: it claims nothing.
    return hidden ? std::vector<std::string>() : types;
}

std::vector<std::pair<std::string, std::string>> MimeInfoCacheClaims(std::string_view text) {
    std::vector<std::pair<std::string, std::string>> claims;
    ForEachKey(text, "MIME Cache", [&](std::string_view type, std::string_view applications) {
        std::vector<std::string> list = SplitList(applications);
        if (!type.empty() && !list.empty())
            claims.emplace_back(type, list.front());
    });
    return claims;
}

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

namespace {

// The type a client's extension names, or empty when no glob knows it, so that the type code
// can answer instead.
std::string TypeForExtension(BCStringRef extension) {
    if (extension == nullptr || BCStringGetLength(extension) == 0)
        return {};
    std::string type = MimeDatabase::Shared().TypeForName("x." + Utf8(extension));
    return type == "application/octet-stream" ? std::string() : type;
}

} // namespace

extern "C" {

StatusCode BLGetApplicationForInfo(OSType type, OSType, BCStringRef extension, uint32_t, BFRef*,
                                   BCURLRef* outURL) {
    std::string mime = TypeForExtension(extension);
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
    std::string mime = TypeForExtension(extension);
    if (mime.empty() && type != 0 && FourCharCodeForType(TypeForFourCharCode(type)) == type)
        mime = TypeForFourCharCode(type);
    std::string comment = mime.empty() ? std::string() : MimeDatabase::Shared().Comment(mime);
    if (comment.empty())
        return kBLApplicationNotFoundErr;
    *outKind = MakeString(comment);
    return noErr;
}

} // extern "C"
