#include "basalt/types/BLRegistry.h"
#include "tests/support/TestEnvironment.h"

#include <filesystem>
#include <glib.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

struct BookmarkFileFree {
    void operator()(GBookmarkFile* file) const { g_bookmark_file_free(file); }
};
using BookmarkFile = std::unique_ptr<GBookmarkFile, BookmarkFileFree>;

std::string Uri(const std::string& path) {
    gchar* uri = g_filename_to_uri(path.c_str(), nullptr, nullptr);
    std::string text = uri;
    g_free(uri);
    return text;
}

// The recent list as another desktop application reads it; null if it would refuse it.
BookmarkFile ReadAsOthersDo() {
    BookmarkFile file(g_bookmark_file_new());
    GError* error = nullptr;
    if (!g_bookmark_file_load_from_file(file.get(), basalt::types::RecentItemsPath().c_str(),
                                        &error)) {
        ADD_FAILURE() << error->message;
        g_error_free(error);
        return nullptr;
    }
    return file;
}

// What another application leaves behind after opening the files.
void WriteAsOthersDo(const std::vector<std::string>& paths) {
    BookmarkFile file(g_bookmark_file_new());
    for (const std::string& path : paths) {
        g_bookmark_file_set_mime_type(file.get(), Uri(path).c_str(), "text/plain");
        g_bookmark_file_add_application(file.get(), Uri(path).c_str(), "editor", "editor %u");
    }
    fs::create_directories(fs::path(basalt::types::RecentItemsPath()).parent_path());
    ASSERT_TRUE(
        g_bookmark_file_to_file(file.get(), basalt::types::RecentItemsPath().c_str(), nullptr));
}

std::string OurApplication() {
    return fs::read_symlink("/proc/self/exe").filename().string();
}

// Names that URIs and XML escape: each must stay one entry shared by both applications.
TEST(BLRecentItemsTest, FilesOthersListedStayOneEntryWithBothApplications) {
    auto folder = keltest::MakeScratchFolder("recent");
    std::vector<std::string> paths;
    for (const char* name : {"O'Brien's notes.txt", "a;b.txt", "R&D <draft> \"1\".txt",
                             "caf\xc3\xa9 #1 100%.txt", "bytes \xff.txt"}) {
        paths.push_back((folder / name).string());
        keltest::WriteFile(paths.back(), "x");
    }
    std::string fresh = (folder / "fresh.png").string();
    keltest::WriteFile(fresh, "x");
    WriteAsOthersDo(paths);

    for (const std::string& path : paths)
        ASSERT_EQ(_BLAddRecentItem(path.c_str(), 2), noErr) << path;
    ASSERT_EQ(_BLAddRecentItem(fresh.c_str(), 2), noErr);
    ASSERT_EQ(_BLAddRecentItem(fresh.c_str(), 2), noErr);

    BookmarkFile file = ReadAsOthersDo();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(g_bookmark_file_get_size(file.get()), static_cast<gint>(paths.size() + 1));
    std::string ours = OurApplication();
    for (const std::string& path : paths) {
        std::string uri = Uri(path);
        EXPECT_TRUE(g_bookmark_file_has_application(file.get(), uri.c_str(), "editor", nullptr))
            << path;
        EXPECT_TRUE(g_bookmark_file_has_application(file.get(), uri.c_str(), ours.c_str(), nullptr))
            << path;
    }
    guint count = 0;
    ASSERT_TRUE(g_bookmark_file_get_application_info(file.get(), Uri(fresh).c_str(), ours.c_str(),
                                                     nullptr, &count, nullptr, nullptr));
    EXPECT_EQ(count, 2u);
    gchar* mime = g_bookmark_file_get_mime_type(file.get(), Uri(fresh).c_str(), nullptr);
    EXPECT_STREQ(mime, "image/png");
    g_free(mime);
    struct stat info {};
    ASSERT_EQ(::stat(basalt::types::RecentItemsPath().c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    fs::remove(basalt::types::RecentItemsPath());
}

TEST(BLRecentItemsTest, AFileOthersCannotReadIsLeftAlone) {
    auto folder = keltest::MakeScratchFolder("recent-bad");
    std::string path = (folder / "a.txt").string();
    keltest::WriteFile(path, "x");
    std::string broken = "<?xml version=\"1.0\"?>\n<xbel version=\"1.0\"><bookmark href=";
    keltest::WriteFile(basalt::types::RecentItemsPath(), broken);
    EXPECT_EQ(_BLAddRecentItem(path.c_str(), 2), permErr);
    EXPECT_EQ(keltest::ReadFile(basalt::types::RecentItemsPath()), broken);
    EXPECT_EQ(_BLAddRecentItem("relative/path", 2), paramErr);
    EXPECT_EQ(_BLAddRecentItem(nullptr, 2), paramErr);
    fs::remove(basalt::types::RecentItemsPath());
}

} // namespace
