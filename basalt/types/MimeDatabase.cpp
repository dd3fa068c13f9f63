#include "basalt/types/MimeDatabase.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace basalt::types {
namespace {

constexpr std::string_view kData = "application/octet-stream";

std::vector<std::string> DataDirs() {
    std::vector<std::string> dirs;
    const char* home = std::getenv("XDG_DATA_HOME");
    if (home != nullptr && *home != '\0')
        dirs.push_back(std::string(home) + "/mime");
    else if (const char* h = std::getenv("HOME"))
        dirs.push_back(std::string(h) + "/.local/share/mime");
    const char* shared = std::getenv("XDG_DATA_DIRS");
    std::stringstream list(shared != nullptr && *shared != '\0' ? shared
                                                                : "/usr/local/share:/usr/share");
    std::string dir;
    while (std::getline(list, dir, ':')) {
        if (!dir.empty())
            dirs.push_back(dir + "/mime");
    }
    return dirs;
}

} // namespace

MimeDatabase& MimeDatabase::Shared() {
    static MimeDatabase* database = new MimeDatabase(DataDirs()); // lives for the process
    return *database;
}

MimeDatabase::MimeDatabase(std::vector<std::string> mimeDirs) : dirs_(std::move(mimeDirs)) {
    for (const std::string& dir : dirs_)
        globs_.AddFile(dir + "/globs2");
    // Later folders rank lower, so load them first and let earlier ones overwrite.
    for (auto it = dirs_.rbegin(); it != dirs_.rend(); ++it)
        Load(*it);
}

void MimeDatabase::Load(const std::string& dir) {
    LoadPairs(dir + "/subclasses", ' ', parents_);
    LoadPairs(dir + "/aliases", ' ', aliases_);
    LoadPairs(dir + "/generic-icons", ':', icons_);
}

void MimeDatabase::LoadPairs(const std::string& path, char separator,
                             std::unordered_map<std::string, std::vector<std::string>>& into) {
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        size_t cut = line.find(separator);
        if (line.empty() || line[0] == '#' || cut == std::string::npos)
            continue;
        auto& values = into[line.substr(0, cut)];
        std::string value = line.substr(cut + 1);
        if (std::find(values.begin(), values.end(), value) == values.end())
            values.push_back(value);
    }
}

std::string MimeDatabase::TypeForName(std::string_view name) const {
    std::string type = globs_.Match(name);
    return type.empty() ? std::string(kData) : type;
}

std::string MimeDatabase::Canonical(std::string_view type) const {
    auto found = aliases_.find(std::string(type));
    return found != aliases_.end() && !found->second.empty() ? found->second.front()
                                                             : std::string(type);
}

std::vector<std::string> MimeDatabase::Parents(std::string_view type) const {
    std::string canonical = Canonical(type);
    std::vector<std::string> parents;
    if (auto found = parents_.find(canonical); found != parents_.end())
        parents = found->second;
    if (canonical.starts_with("text/") && canonical != "text/plain")
        parents.push_back("text/plain");
    if (!canonical.starts_with("inode/") && canonical != kData)
        parents.push_back(std::string(kData));
    return parents;
}

bool MimeDatabase::ConformsTo(std::string_view type, std::string_view parent) const {
    std::string target = Canonical(parent);
    std::vector<std::string> pending{Canonical(type)};
    for (size_t i = 0; i < pending.size() && i < 64; ++i) {
        if (pending[i] == target)
            return true;
        for (std::string& next : Parents(pending[i])) {
            if (std::find(pending.begin(), pending.end(), next) == pending.end())
                pending.push_back(std::move(next));
        }
    }
    return false;
}

std::string MimeDatabase::GenericIcon(std::string_view type) const {
    std::string canonical = Canonical(type);
    if (auto found = icons_.find(canonical); found != icons_.end() && !found->second.empty())
        return found->second.front();
    return canonical.substr(0, canonical.find('/')) + "-x-generic";
}

std::string MimeDatabase::Comment(std::string_view type) const {
    std::string canonical = Canonical(type);
    std::lock_guard lock(commentMutex_);
    if (auto found = comments_.find(canonical); found != comments_.end())
        return found->second;
    std::string comment;
    for (const std::string& dir : dirs_) {
        std::ifstream file(dir + "/" + canonical + ".xml");
        std::string line;
        while (comment.empty() && std::getline(file, line)) {
            size_t open = line.find("<comment>");
            size_t close = line.find("</comment>");
            if (open != std::string::npos && close != std::string::npos && close > open)
                comment = line.substr(open + 9, close - open - 9);
        }
        if (!comment.empty())
            break;
    }
    comments_[canonical] = comment;
    return comment;
}

std::string MimeDatabase::PreferredExtension(std::string_view type) const {
    return globs_.Extension(Canonical(type));
}

} // namespace basalt::types
