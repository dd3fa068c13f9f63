#pragma once

// The user's bookmarked folders, from the bookmarks file that the desktop's file dialogs and
// file manager share ($XDG_CONFIG_HOME/gtk-3.0/bookmarks). Every line is "URI[ label]"; it is
// read as those programs read it, so the same bookmarks appear everywhere, remote ones too.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace basalt::files {

struct Bookmark {
    std::string uri;
    std::optional<std::string> path; // the folder of a "file:" URI
    std::string label;               // empty if the line has none
};

std::string BookmarksFilePath();
std::vector<Bookmark> ReadBookmarks();
std::vector<Bookmark> ParseBookmarks(std::string_view text);

} // namespace basalt::files
