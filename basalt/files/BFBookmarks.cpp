#include "basalt/files/BFBookmarks.h"

#include "basalt/files/BFFileURL.h"
#include "basalt/files/BFFindFolder.h"

#include <fstream>
#include <sstream>
#include <unicode/utf8.h>

namespace basalt::files {
namespace {

bool IsUtf8(std::string_view text) {
    for (int32_t at = 0, length = static_cast<int32_t>(text.size()); at < length;) {
        UChar32 c = 0;
        U8_NEXT(text.data(), at, length, c);
        if (c < 0)
            return false;
    }
    return true;
}

// "scheme:" as URIs begin: a letter, then letters, digits, "+", "-" or ".".
bool HasScheme(std::string_view uri) {
    size_t colon = uri.find(':');
    if (colon == 0 || colon == std::string_view::npos || !std::isalpha(uri[0] & 0xFF))
        return false;
    for (char c : uri.substr(0, colon)) {
        if (!std::isalnum(c & 0xFF) && c != '+' && c != '-' && c != '.')
            return false;
    }
    return true;
}

} // namespace

std::string BookmarksFilePath() {
    return ConfigHome() + "/gtk-3.0/bookmarks";
}

std::vector<Bookmark> ParseBookmarks(std::string_view text) {
    std::vector<Bookmark> bookmarks;
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        at = end + 1;
        // Lines that are not UTF-8 are skipped by the other readers too.
        if (line.empty() || !IsUtf8(line))
            continue;
        size_t space = line.find(' ');
        std::string_view uri = line.substr(0, space);
        if (!HasScheme(uri))
            continue;
        Bookmark bookmark{std::string(uri), PathFromFileURL(uri), {}};
        if (space != std::string_view::npos)
            bookmark.label = std::string(line.substr(space + 1));
        bookmarks.push_back(std::move(bookmark));
    }
    return bookmarks;
}

std::vector<Bookmark> ReadBookmarks() {
    std::ifstream file(BookmarksFilePath());
    std::stringstream text;
    text << file.rdbuf();
    return ParseBookmarks(text.str());
}

} // namespace basalt::files
