#pragma once

// Finds icon files by freedesktop icon name in the installed icon themes: each theme's
// index.theme lists its folders with their sizes; a name is looked for at the exact size first,
// then at the closest, theme by theme along the inheritance chain, then in the plain pixmaps
// folders. Lookups are thread-safe; folder listings are read once and kept.

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace basalt::graphics {

class IconThemeSet {
public:
    // baseFolders are searched in order for "<theme>/index.theme"; themes in order, each
    // followed by what it inherits ("hicolor" always ends the chain).
    IconThemeSet(std::vector<std::filesystem::path> baseFolders, std::vector<std::string> themes);
    ~IconThemeSet();

    // The themes of this desktop: $XDG_DATA_HOME/icons, $XDG_DATA_DIRS/icons; Adwaita, hicolor.
    static IconThemeSet& Default();

    // The best file for name at pixelSize, PNG or SVG.
    std::optional<std::filesystem::path> Find(const std::string& name, int pixelSize);

    struct Folder;
    struct Theme;

private:
    const Theme* LoadTheme(const std::string& name);
    std::optional<std::filesystem::path> FindInTheme(const Theme& theme, const std::string& name,
                                                     int pixelSize);
    bool Holds(const std::filesystem::path& folder, const std::string& file);
    std::optional<std::filesystem::path> Search(const std::string& name, int pixelSize);

    std::vector<std::filesystem::path> baseFolders_;
    std::vector<std::string> themeOrder_;
    std::mutex mutex_;
    std::map<std::string, std::unique_ptr<Theme>> themes_;
    std::map<std::filesystem::path, std::set<std::string>> listings_;
    // As the folders' listings are kept, so are the answers: a list draws the same few icons
    // on every row.
    std::map<std::pair<std::string, int>, std::optional<std::filesystem::path>> answers_;
};

} // namespace basalt::graphics
