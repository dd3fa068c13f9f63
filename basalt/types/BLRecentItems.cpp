// The recent items list in the freedesktop recently-used.xbel. The file is shared with other
// programs, so an entry is inserted or refreshed in place by text, and the file is replaced
// atomically (write a temporary, then rename).

#include "basalt/files/BFFileURL.h"
#include "basalt/types/BLRegistry.h"
#include "basalt/types/MimeDatabase.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace basalt::types {
namespace {

constexpr std::string_view kEmptyFile =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<xbel version=\"1.0\"\n"
    "      xmlns:bookmark=\"http://www.freedesktop.org/standards/desktop-bookmarks\"\n"
    "      xmlns:mime=\"http://www.freedesktop.org/standards/shared-mime-info\"\n>\n"
    "</xbel>\n";

std::string Now() {
    std::time_t now = std::time(nullptr);
    char text[32];
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

std::string XmlEscape(std::string_view text) {
    std::string out;
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string Entry(const std::string& href, const std::string& mimeType,
                  const std::string& application, const std::string& stamp) {
    std::ostringstream out;
    out << "  <bookmark href=\"" << XmlEscape(href) << "\" added=\"" << stamp << "\" modified=\""
        << stamp << "\" visited=\"" << stamp << "\">\n"
        << "    <info>\n      <metadata owner=\"http://freedesktop.org\">\n"
        << "        <mime:mime-type type=\"" << XmlEscape(mimeType) << "\"/>\n"
        << "        <bookmark:applications>\n"
        << "          <bookmark:application name=\"" << XmlEscape(application) << "\" exec=\"&apos;"
        << XmlEscape(application) << " %u&apos;\" modified=\"" << stamp << "\" count=\"1\"/>\n"
        << "        </bookmark:applications>\n      </metadata>\n    </info>\n"
        << "  </bookmark>\n";
    return out.str();
}

// Moves the entry's "modified" and "visited" stamps to now; false if the entry is not there.
bool Refresh(std::string& text, const std::string& href, const std::string& stamp) {
    size_t at = text.find("href=\"" + XmlEscape(href) + "\"");
    if (at == std::string::npos)
        return false;
    size_t end = text.find('>', at);
    for (std::string key : {"modified=\"", "visited=\""}) {
        size_t field = text.find(key, at);
        if (field != std::string::npos && field < end)
            text.replace(field + key.size(),
                         text.find('"', field + key.size()) - field - key.size(), stamp);
    }
    return true;
}

} // namespace

std::string RecentItemsPath() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && *data != '\0')
        return std::string(data) + "/recently-used.xbel";
    const char* home = std::getenv("HOME");
    return std::string(home != nullptr ? home : "") + "/.local/share/recently-used.xbel";
}

bool AddRecentItem(const std::string& path, const std::string& mimeType,
                   const std::string& application) {
    std::string file = RecentItemsPath();
    std::ifstream in(file);
    std::stringstream buffer;
    buffer << in.rdbuf();
    std::string text = buffer.str();
    size_t close = text.rfind("</xbel>");
    if (close == std::string::npos) {
        text = kEmptyFile;
        close = text.rfind("</xbel>");
    }
    std::string href = files::FileURLFromPath(path, false);
    std::string stamp = Now();
    if (!Refresh(text, href, stamp))
        text.insert(close, Entry(href, mimeType, application, stamp));
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), error);
    std::string temporary = file + ".tmp-" + std::to_string(::getpid());
    {
        std::ofstream out(temporary, std::ios::trunc);
        out << text;
        if (!out.flush())
            return false;
    }
    return std::rename(temporary.c_str(), file.c_str()) == 0;
}

} // namespace basalt::types

extern "C" StatusCode _BLAddRecentItem(const char* path, int32_t) {
    if (path == nullptr || path[0] != '/')
        return paramErr;
    std::string name = std::filesystem::path(path).filename().string();
    std::string mime = basalt::types::MimeDatabase::Shared().TypeForName(name);
    char self[4096] = {};
    ssize_t used = ::readlink("/proc/self/exe", self, sizeof self - 1);
    std::string application =
        used > 0 ? std::filesystem::path(std::string(self, static_cast<size_t>(used)))
                       .filename()
                       .string()
                 : "kel";
    return basalt::types::AddRecentItem(path, mime, application) ? StatusCode(noErr)
                                                                 : StatusCode(permErr);
}
