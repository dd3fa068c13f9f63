#include "basalt/nodes/NodeBookmarks.h"

#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using namespace basalt::nodes;
namespace fs = std::filesystem;

namespace {

std::string Local(const std::string& uri, const std::vector<Volume>& volumes,
                  const std::string& gvfs = "/nonexistent") {
    return LocalPathOf({uri, std::nullopt, ""}, volumes, gvfs).value_or("(none)");
}

// A remote bookmark leads into the network volume that mounts its place, whatever the kind.
TEST(NodeBookmarksTest, RemotePlacesLeadIntoTheVolumesThatMountThem) {
    std::vector<Volume> volumes = {
        {"/mnt/ssh", "fuse.sshfs", "bob@host.example:/data", 0, true, false},
        {"/mnt/team", "cifs", "//Server/team", 0, true, false},
        {"/mnt/nfs", "nfs4", "nas:/export", 0, true, false},
        {"/media/usb", "vfat", "/dev/sdb1", 0, false, true},
    };
    EXPECT_EQ(Local("sftp://host.example/data/projects/a%20b", volumes), "/mnt/ssh/projects/a b");
    EXPECT_EQ(Local("sftp://bob@host.example/data", volumes), "/mnt/ssh");
    EXPECT_EQ(Local("sftp://alice@host.example/data", volumes), "(none)") << "another user";
    EXPECT_EQ(Local("sftp://host.example/database", volumes), "(none)") << "not inside /data";
    EXPECT_EQ(Local("sftp://other.example/data", volumes), "(none)");
    EXPECT_EQ(Local("smb://server/team/docs/", volumes), "/mnt/team/docs");
    EXPECT_EQ(Local("smb://server/teamwork", volumes), "(none)");
    EXPECT_EQ(Local("nfs://nas/export/x", volumes), "/mnt/nfs/x");
    EXPECT_EQ(Local("ftp://nas/export/x", volumes), "(none)");
    EXPECT_EQ(Local("file:///already/local", volumes), "(none)") << "not parsed as remote";
    EXPECT_EQ(LocalPathOf({"file:///p", "/p", ""}, volumes, "").value_or(""), "/p");
    EXPECT_EQ(Local("not a uri at all", volumes), "(none)");
    EXPECT_EQ(Local("//host.example/data", volumes), "(none)") << "no scheme";
}

TEST(NodeBookmarksTest, RemotePlacesLeadIntoTheUsersGvfsMounts) {
    auto gvfs = keltest::MakeScratchFolder("gvfs");
    fs::create_directories(gvfs / "sftp:host=gv.example,user=bob");
    fs::create_directories(gvfs / "smb-share:server=fs,share=pub");
    std::string folder = gvfs.string();
    EXPECT_EQ(Local("sftp://bob@gv.example/home/bob", {}, folder),
              folder + "/sftp:host=gv.example,user=bob/home/bob");
    EXPECT_EQ(Local("sftp://gv.example/", {}, folder), folder + "/sftp:host=gv.example,user=bob");
    EXPECT_EQ(Local("sftp://eve@gv.example/", {}, folder), "(none)");
    EXPECT_EQ(Local("sftp://gv.example:2222/", {}, folder), "(none)") << "another port";
    EXPECT_EQ(Local("smb://fs/pub/x", {}, folder), folder + "/smb-share:server=fs,share=pub/x");
    EXPECT_EQ(Local("smb://fs/private/x", {}, folder), "(none)");
}

} // namespace
