#include "NodeTestSupport.h"
#include "tests/support/TestEnvironment.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace nodetest;
namespace fs = std::filesystem;

namespace {

Held Original(NodeRef node, StatusCode* status) {
    NodeRef original = nullptr;
    *status = NodeFollowAlias(node, false, &original);
    return Held(original);
}

Held VirtualChild(NodeRef container, NodeRef node) {
    NodeRef found = nullptr;
    return NodeFindVirtualChild(container, node, &found, 0) == noErr ? Held(found) : Held();
}

// Points XDG_RUNTIME_DIR at a folder of the test while it lives.
class RuntimeFolder {
public:
    RuntimeFolder() : folder_(keltest::MakeScratchFolder("runtime")) {
        if (const char* old = std::getenv("XDG_RUNTIME_DIR"))
            old_ = old;
        setenv("XDG_RUNTIME_DIR", folder_.c_str(), 1);
    }
    ~RuntimeFolder() {
        if (old_.empty())
            unsetenv("XDG_RUNTIME_DIR");
        else
            setenv("XDG_RUNTIME_DIR", old_.c_str(), 1);
    }
    const fs::path& Path() const { return folder_; }

private:
    fs::path folder_;
    std::string old_;
};

// The places list shows every bookmark as other file dialogs do: with its label, one row each
// even for a folder that has a row already, and missing or unmounted places as unreachable.
TEST(NodeSidebarTest, PlacesShowOneRowPerBookmarkReachableOrNot) {
    auto home = keltest::ScratchHome();
    fs::create_directories(home / "Desktop");
    auto marked = keltest::MakeScratchFolder("marked");
    auto later = keltest::MakeScratchFolder("later") / "made later";
    keltest::WriteFile(home / ".config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Desktop\"\n");
    keltest::WriteFile(
        home / ".config/gtk-3.0/bookmarks",
        "file://" + marked.string() + " Marked\n" + "file://" + (home / "Desktop").string() + "\n" +
            "file://" + later.parent_path().string() + "/made%20later Later\n" +
            "sftp://host.example/srv/x\n" + "file://" + marked.string() + " Again\n");
    Held places(GetVirtualNode(kVirtualNodePlaces));
    std::vector<Held> rows = Children(places.get());
    ASSERT_EQ(rows.size(), 7u);
    EXPECT_EQ(rows[0].get(), NodeAt(home).get());
    EXPECT_EQ(rows[1].get(), NodeAt(home / "Desktop").get());
    const char16_t* names[] = {u"Marked", u"Desktop", u"Later", u"x on host.example", u"Again"};
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(StringProperty(rows[i + 2].get(), "dnam"), names[i]);
        EXPECT_TRUE(NodeIsAlias(rows[i + 2].get()));
    }
    EXPECT_NE(rows[2].get(), rows[6].get()) << "two bookmarks of one folder are two rows";

    StatusCode status = noErr;
    EXPECT_EQ(Original(rows[2].get(), &status).get(), NodeAt(marked).get());
    EXPECT_EQ(Original(rows[3].get(), &status).get(), NodeAt(home / "Desktop").get());
    for (size_t unreachable : {4u, 5u}) {
        EXPECT_FALSE(Original(rows[unreachable].get(), &status));
        EXPECT_EQ(status, fnfErr);
        FourCharCode type = 0;
        EXPECT_NE(
            GetNodePropertyAsFourCharCode(rows[unreachable].get(), NodeCode("asty"), &type, 0),
            noErr);
    }
    fs::create_directory(later);
    EXPECT_EQ(Original(rows[4].get(), &status).get(), NodeAt(later).get());

    EXPECT_EQ(VirtualChild(places.get(), NodeAt(marked).get()).get(), rows[2].get());
    EXPECT_EQ(VirtualChild(places.get(), NodeAt(home / "Desktop").get()).get(), rows[1].get())
        << "the folder's own row comes first";
    BCIndex length = 0;
    EXPECT_EQ(GetNodeAsPathName(rows[2].get(), 1, 0, &length, nullptr), kNodeBadPathErr);
    EXPECT_EQ(Child(rows[2].get(), u"x").get(), nullptr);
    fs::remove(home / ".config/gtk-3.0/bookmarks");
    fs::remove(home / ".config/user-dirs.dirs");
}

TEST(NodeSidebarTest, ARemoteBookmarkIsReachableWhileMounted) {
    RuntimeFolder runtime;
    keltest::WriteFile(keltest::ScratchHome() / ".config/gtk-3.0/bookmarks",
                       "sftp://bob@files.example/srv/share Files\n");
    Held places(GetVirtualNode(kVirtualNodePlaces));
    std::vector<Held> rows = Children(places.get());
    ASSERT_FALSE(rows.empty());
    NodeRef row = rows.back().get();
    EXPECT_EQ(StringProperty(row, "dnam"), u"Files");
    StatusCode status = noErr;
    EXPECT_FALSE(Original(row, &status));

    fs::path mounted = runtime.Path() / "gvfs/sftp:host=files.example,user=bob/srv/share";
    fs::create_directories(mounted);
    EXPECT_EQ(Original(row, &status).get(), NodeAt(mounted).get());
    EXPECT_EQ(VirtualChild(places.get(), NodeAt(mounted).get()).get(), row);
    fs::remove(keltest::ScratchHome() / ".config/gtk-3.0/bookmarks");
}

// Deleting a bookmark's row takes out that line alone: other bookmarks of the same folder,
// lines the reader skips and the file's other lines stay as they were.
TEST(NodeSidebarTest, DeletingABookmarkRowRemovesItsLineOnly) {
    const fs::path file = keltest::ScratchHome() / ".config/gtk-3.0/bookmarks";
    auto marked = keltest::MakeScratchFolder("marked");
    const std::string first = "file://" + marked.string() + " Marked\n";
    const std::string rest = "not a bookmark\nfile://" + marked.string() + " Again\n";
    keltest::WriteFile(file, first + rest);
    Held places(GetVirtualNode(kVirtualNodePlaces));
    std::vector<Held> rows = Children(places.get());
    ASSERT_GE(rows.size(), 2u);
    NodeRef marking = rows[rows.size() - 2].get();
    ASSERT_EQ(StringProperty(marking, "dnam"), u"Marked");
    EXPECT_EQ(DeleteNode(marking), noErr);
    EXPECT_EQ(keltest::ReadFile(file), rest);
    EXPECT_TRUE(fs::is_directory(marked)) << "the folder itself stays";
    EXPECT_EQ(DeleteNode(marking), fnfErr) << "the line is gone already";
    fs::remove(file);
    EXPECT_EQ(DeleteNode(rows.back().get()), fnfErr) << "no file, nothing to remove";
}

TEST(NodeSidebarTest, DevicesStartWithTheComputer) {
    Held devices(GetVirtualNode(kVirtualNodeDevices));
    std::vector<Held> rows = Children(devices.get());
    ASSERT_GE(rows.size(), 2u);
    EXPECT_EQ(rows[0].get(), GetRootNode());
}

} // namespace
