#include "basalt/files/BFFindFolder.h"

#include "tests/support/TestEnvironment.h"

#include <filesystem>
#include <glib.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

constexpr uint32_t FourCC(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

namespace fs = std::filesystem;
using namespace basalt::files;

namespace {

std::string PathOf(const BFRef& ref) {
    uint8_t buffer[4096];
    return BFRefMakePath(&ref, buffer, sizeof buffer) == noErr ? reinterpret_cast<char*>(buffer)
                                                               : "";
}

TEST(BFFindFolderTest, UserDirsDecideAndCreateMakesMissingFolders) {
    fs::path home = keltest::ScratchHome();
    keltest::WriteFile(home / ".config/user-dirs.dirs",
                       "# comment\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                       "XDG_DOCUMENTS_DIR=\"$HOME/\"\n");
    BFRef ref;
    EXPECT_EQ(BFFindFolder(kBFUserDomain, FourCC("desk"), false, &ref), fnfErr);
    ASSERT_EQ(BFFindFolder(kBFUserDomain, FourCC("desk"), true, &ref), noErr);
    EXPECT_EQ(PathOf(ref), (home / "Schreibtisch").string());

    EXPECT_EQ(FolderPathForType(FourCC("docs")), home.string());
    EXPECT_EQ(FolderPathForType(FourCC("down")), (home / "Downloads").string()) << "no entry";
    ASSERT_EQ(BFFindFolder(kBFUserDomain, FourCC("cusr"), false, &ref), noErr);
    EXPECT_EQ(PathOf(ref), home.string());
    EXPECT_EQ(BFFindFolder(kBFUserDomain, FourCC("zzzz"), true, &ref), fnfErr);
    fs::remove(home / ".config/user-dirs.dirs");
}

// GLib reads the file once per process, so each reading is made in a child of its own.
std::vector<std::string> GLibUserDirs() {
    int out[2];
    if (::pipe(out) != 0)
        return {};
    pid_t child = ::fork();
    if (child == 0) {
        ::close(out[0]);
        std::string text;
        for (GUserDirectory dir : {G_USER_DIRECTORY_DESKTOP, G_USER_DIRECTORY_DOCUMENTS,
                                   G_USER_DIRECTORY_DOWNLOAD, G_USER_DIRECTORY_MUSIC}) {
            const char* path = g_get_user_special_dir(dir);
            text += path != nullptr ? path : "(none)";
            text += '\n';
        }
        ssize_t written = ::write(out[1], text.data(), text.size());
        ::_exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
    }
    ::close(out[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t got; (got = ::read(out[0], buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<size_t>(got));
    ::close(out[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    std::vector<std::string> paths;
    for (size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
        paths.push_back(text.substr(at, end - at));
    return paths;
}

std::vector<std::string> OurUserDirs() {
    std::vector<std::string> paths{*FolderPathForType(FourCC("desk"))};
    for (const char* key : {"DOCUMENTS", "DOWNLOAD", "MUSIC"})
        paths.push_back(UserDir(key).value_or("(none)"));
    return paths;
}

// The user-dirs file is shared with every other application: it must read the same here.
TEST(BFFindFolderTest, UserDirsReadAsGLibReadsThem) {
    fs::path file = keltest::ScratchHome() / ".config/user-dirs.dirs";
    const char* const cases[] = {
        "XDG_DESKTOP_DIR=\"$HOME/Desk\"\nXDG_DOCUMENTS_DIR=\"/srv/docs\"\n",
        "  \tXDG_DESKTOP_DIR = \"$HOME/Indented\"\n\tXDG_MUSIC_DIR\t=\t\"/m\"\n",
        "XDG_DOCUMENTS_DIR=\"$HOME/First\"\nXDG_DOCUMENTS_DIR=\"$HOME/Second\"\n",
        "XDG_DOWNLOAD_DIR=\"$HOME/Down/\"\nXDG_MUSIC_DIR=\"/music//\"\n",
        "XDG_DOCUMENTS_DIR=\"relative/docs\"\nXDG_DOWNLOAD_DIR=$HOME/unquoted\n",
        "XDG_DESKTOP_DIR=\"$HOME/\"\nXDG_DOCUMENTS_DIR=\"$HOME\"\nXDG_MUSIC_DIR=\"\"\n",
        "XDG_DOCUMENTS_DIR=\"$HOME/with \\\"quote\\\"\"\nXDG_DOWNLOAD_DIR=\"$HOMEx\"\n",
        "XDG_DOCUMENTS_DIRX=\"/nope\"\n# "
        "XDG_MUSIC_DIR=\"/commented\"\nXDG_DOWNLOAD_DIR=\"/d\r\"\r\n",
        "XDG_DESKTOP_DIR=\"/only-open-quote\nXDG_DOCUMENTS_DIR=\"$HOME//double\"\n",
        "",
    };
    for (const char* text : cases) {
        keltest::WriteFile(file, text);
        EXPECT_EQ(OurUserDirs(), GLibUserDirs()) << text;
    }
    fs::remove(file);
}

} // namespace
