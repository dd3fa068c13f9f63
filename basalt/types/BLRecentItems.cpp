// The recent items list: the freedesktop recently-used.xbel that all of the user's
// applications share. GLib's bookmark file reads and writes it, so an entry is found by the
// same URI rules the other applications use, never listed twice, and the file stays one that
// every one of them can read. A file that cannot be read is left alone rather than replaced.

#include "basalt/types/BLRegistry.h"
#include "basalt/types/MimeDatabase.h"

#include <cstdlib>
#include <filesystem>
#include <glib.h>
#include <memory>
#include <unistd.h>

namespace basalt::types {
namespace {

struct GLibFree {
    void operator()(GBookmarkFile* file) const { g_bookmark_file_free(file); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GDateTime* time) const { g_date_time_unref(time); }
    void operator()(gchar* text) const { g_free(text); }
};
template <typename T>
using GLibPtr = std::unique_ptr<T, GLibFree>;

// The file as it is on disk; an empty list if there is none, null if it cannot be read.
GLibPtr<GBookmarkFile> Load(const std::string& file) {
    GLibPtr<GBookmarkFile> bookmarks(g_bookmark_file_new());
    GError* failure = nullptr;
    if (!g_bookmark_file_load_from_file(bookmarks.get(), file.c_str(), &failure)) {
        GLibPtr<GError> error(failure);
        if (!g_error_matches(failure, G_FILE_ERROR, G_FILE_ERROR_NOENT))
            return nullptr;
    }
    return bookmarks;
}

bool Save(GBookmarkFile* bookmarks, const std::string& file) {
    gsize length = 0;
    GLibPtr<gchar> data(g_bookmark_file_to_data(bookmarks, &length, nullptr));
    std::string folder = std::filesystem::path(file).parent_path().string();
    // The list tells what the user opened: private to the user, like the other writers make it.
    return data != nullptr && g_mkdir_with_parents(folder.c_str(), 0700) == 0 &&
           g_file_set_contents_full(file.c_str(), data.get(), static_cast<gssize>(length),
                                    G_FILE_SET_CONTENTS_CONSISTENT, 0600, nullptr);
}

} // namespace

std::string RecentItemsPath() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && *data == '/')
        return std::string(data) + "/recently-used.xbel";
    const char* home = std::getenv("HOME");
    return std::string(home != nullptr ? home : "") + "/.local/share/recently-used.xbel";
}

bool AddRecentItem(const std::string& path, const std::string& mimeType,
                   const std::string& application) {
    std::string file = RecentItemsPath();
    GLibPtr<GBookmarkFile> bookmarks = Load(file);
    GLibPtr<gchar> uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    if (bookmarks == nullptr || uri == nullptr)
        return false;
    GBookmarkFile* list = bookmarks.get();
    GLibPtr<GDateTime> now(g_date_time_new_now_utc());
    GLibPtr<gchar> name(g_utf8_make_valid(application.c_str(), -1));
    std::string exec = std::string(name.get()) + " %u";
    g_bookmark_file_set_mime_type(list, uri.get(), mimeType.c_str());
    // Adds the entry if it is new, else counts one more use by this application.
    g_bookmark_file_add_application(list, uri.get(), name.get(), exec.c_str());
    g_bookmark_file_set_modified_date_time(list, uri.get(), now.get());
    g_bookmark_file_set_visited_date_time(list, uri.get(), now.get());
    return Save(list, file);
}

} // namespace basalt::types

extern "C" StatusCode _BLAddRecentItem(const char* path, int32_t) {
    if (path == nullptr || path[0] != '/')
        return paramErr;
    // A set-uid client writes nothing into the user's files.
    if (::getuid() != ::geteuid())
        return noErr;
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
