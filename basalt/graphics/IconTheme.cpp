#include "basalt/graphics/IconTheme.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <sstream>

namespace basalt::graphics {

namespace fs = std::filesystem;

struct IconThemeSet::Folder {
    std::string subPath;
    int size = 0;
    int scale = 1;
    int minSize = 0;
    int maxSize = 0;
    int threshold = 2;
    enum class Type { Fixed, Scalable, Threshold } type = Type::Threshold;
};

struct IconThemeSet::Theme {
    std::vector<fs::path> roots; // the theme's folder in every base folder that has it
    std::vector<Folder> folders;
    std::vector<std::string> inherits;
};

namespace {

// The picture formats an icon file may have: SVG only where gdk-pixbuf has a loader for it.
const std::vector<std::string>& Extensions() {
    static const std::vector<std::string> extensions = [] {
        std::vector<std::string> found = {".png"};
        GSList* formats = gdk_pixbuf_get_formats();
        for (GSList* item = formats; item != nullptr; item = item->next) {
            gchar* name = gdk_pixbuf_format_get_name(static_cast<GdkPixbufFormat*>(item->data));
            if (std::string(name) == "svg")
                found.push_back(".svg");
            g_free(name);
        }
        g_slist_free(formats);
        return found;
    }();
    return extensions;
}

std::vector<std::string> SplitList(const std::string& text) {
    std::vector<std::string> items;
    std::stringstream stream(text);
    std::string item;
    while (std::getline(stream, item, ','))
        if (!item.empty())
            items.push_back(item);
    return items;
}

int ToInt(const std::string& text, int fallback) {
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    return end != text.c_str() ? static_cast<int>(value) : fallback;
}

// The groups of an index.theme file: group name -> key -> value.
std::map<std::string, std::map<std::string, std::string>> ReadIni(const fs::path& file) {
    std::map<std::string, std::map<std::string, std::string>> groups;
    std::ifstream in(file);
    std::string line, group;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (line.front() == '[' && line.back() == ']') {
            group = line.substr(1, line.size() - 2);
            continue;
        }
        const auto equals = line.find('=');
        if (equals != std::string::npos)
            groups[group][line.substr(0, equals)] = line.substr(equals + 1);
    }
    return groups;
}

IconThemeSet::Folder::Type TypeOf(const std::string& text) {
    using Type = IconThemeSet::Folder::Type;
    if (text == "Fixed")
        return Type::Fixed;
    return text == "Scalable" ? Type::Scalable : Type::Threshold;
}

std::vector<fs::path> DefaultBaseFolders() {
    std::vector<fs::path> folders;
    const char* home = std::getenv("HOME");
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    if (dataHome != nullptr && *dataHome != '\0')
        folders.push_back(fs::path(dataHome) / "icons");
    else if (home != nullptr)
        folders.push_back(fs::path(home) / ".local/share/icons");
    const char* dataDirs = std::getenv("XDG_DATA_DIRS");
    std::string dirs =
        dataDirs != nullptr && *dataDirs != '\0' ? dataDirs : "/usr/local/share:/usr/share";
    std::stringstream stream(dirs);
    std::string dir;
    while (std::getline(stream, dir, ':'))
        if (!dir.empty())
            folders.push_back(fs::path(dir) / "icons");
    return folders;
}

} // namespace

IconThemeSet::IconThemeSet(std::vector<fs::path> baseFolders, std::vector<std::string> themes)
    : baseFolders_(std::move(baseFolders)), themeOrder_(std::move(themes)) {
    if (std::find(themeOrder_.begin(), themeOrder_.end(), "hicolor") == themeOrder_.end())
        themeOrder_.push_back("hicolor");
}

IconThemeSet::~IconThemeSet() = default;

IconThemeSet& IconThemeSet::Default() {
    static IconThemeSet themes(DefaultBaseFolders(), {"Adwaita", "hicolor"});
    return themes;
}

const IconThemeSet::Theme* IconThemeSet::LoadTheme(const std::string& name) {
    if (auto found = themes_.find(name); found != themes_.end())
        return found->second.get();
    auto theme = std::make_unique<Theme>();
    for (const fs::path& base : baseFolders_) {
        std::error_code ignored;
        if (!fs::is_directory(base / name, ignored))
            continue;
        theme->roots.push_back(base / name);
        if (!theme->folders.empty() || !fs::exists(base / name / "index.theme", ignored))
            continue;
        auto groups = ReadIni(base / name / "index.theme");
        theme->inherits = SplitList(groups["Icon Theme"]["Inherits"]);
        for (const std::string& sub : SplitList(groups["Icon Theme"]["Directories"])) {
            auto& keys = groups[sub];
            Folder folder;
            folder.subPath = sub;
            folder.size = ToInt(keys["Size"], 0);
            folder.scale = ToInt(keys["Scale"], 1);
            folder.minSize = ToInt(keys["MinSize"], folder.size);
            folder.maxSize = ToInt(keys["MaxSize"], folder.size);
            folder.threshold = ToInt(keys["Threshold"], 2);
            folder.type = TypeOf(keys["Type"]);
            if (folder.size > 0)
                theme->folders.push_back(folder);
        }
    }
    return themes_.emplace(name, std::move(theme)).first->second.get();
}

bool IconThemeSet::Holds(const fs::path& folder, const std::string& file) {
    auto listing = listings_.find(folder);
    if (listing == listings_.end()) {
        std::set<std::string> names;
        std::error_code error;
        for (fs::directory_iterator it(folder, error), end; !error && it != end;
             it.increment(error))
            names.insert(it->path().filename().string());
        listing = listings_.emplace(folder, std::move(names)).first;
    }
    return listing->second.count(file) != 0;
}

namespace {

// Lower is better: a folder made for the size, then the smallest larger one (scaling down
// keeps the picture sharp), then the largest smaller one.
std::pair<int, int> Score(const IconThemeSet::Folder& folder, int size) {
    using Type = IconThemeSet::Folder::Type;
    int low = folder.size * folder.scale, high = low;
    if (folder.type == Type::Scalable) {
        low = folder.minSize * folder.scale;
        high = folder.maxSize * folder.scale;
    } else if (folder.type == Type::Threshold) {
        low = (folder.size - folder.threshold) * folder.scale;
        high = (folder.size + folder.threshold) * folder.scale;
    }
    if (size >= low && size <= high)
        return {0, 0};
    if (low > size)
        return {1, low - size};
    return {2, size - high};
}

} // namespace

std::optional<fs::path> IconThemeSet::FindInTheme(const Theme& theme, const std::string& name,
                                                  int pixelSize) {
    std::optional<fs::path> best;
    std::pair<int, int> bestScore;
    for (const Folder& folder : theme.folders) {
        const auto score = Score(folder, pixelSize);
        if (best && score >= bestScore)
            continue;
        for (const fs::path& root : theme.roots) {
            for (const std::string& extension : Extensions()) {
                if (best && score >= bestScore)
                    break;
                if (!Holds(root / folder.subPath, name + extension))
                    continue;
                best = root / folder.subPath / (name + extension);
                bestScore = score;
            }
        }
        if (best && bestScore == std::pair{0, 0})
            return best;
    }
    return best;
}

std::optional<fs::path> IconThemeSet::Find(const std::string& name, int pixelSize) {
    if (name.empty() || name.find('/') != std::string::npos)
        return std::nullopt;
    std::lock_guard lock(mutex_);
    auto [answer, fresh] = answers_.try_emplace({name, pixelSize});
    if (fresh)
        answer->second = Search(name, pixelSize);
    return answer->second;
}

std::optional<fs::path> IconThemeSet::Search(const std::string& name, int pixelSize) {
    std::vector<std::string> chain = themeOrder_;
    std::set<std::string> visited;
    for (size_t i = 0; i < chain.size(); ++i) {
        if (!visited.insert(chain[i]).second)
            continue;
        const Theme* theme = LoadTheme(chain[i]);
        if (auto found = FindInTheme(*theme, name, pixelSize))
            return found;
        chain.insert(chain.end(), theme->inherits.begin(), theme->inherits.end());
    }
    for (const fs::path& base : baseFolders_) {
        const fs::path pixmaps = base.parent_path() / "pixmaps";
        for (const std::string& extension : Extensions())
            if (Holds(pixmaps, name + extension))
                return pixmaps / (name + extension);
    }
    return std::nullopt;
}

} // namespace basalt::graphics
