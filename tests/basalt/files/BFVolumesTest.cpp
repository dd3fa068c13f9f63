#include "basalt/files/BFVolumes.h"

#include <gtest/gtest.h>
#include <sys/sysmacros.h>

using namespace basalt::files;

TEST(BFVolumesTest, ParsesMountInfoWithEscapesAndOptionalFields) {
    std::string text =
        "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
        "40 22 8:17 / /media/me/My\\040Disk rw shared:5 master:2 - vfat /dev/sdb1 rw\n"
        "garbage line\n";
    std::vector<MountInfo> mounts = ParseMountTable(text);
    ASSERT_EQ(mounts.size(), 2u);
    EXPECT_EQ(mounts[0].mountPoint, "/");
    EXPECT_EQ(mounts[0].fsType, "ext4");
    EXPECT_EQ(mounts[1].mountPoint, "/media/me/My Disk");
    EXPECT_EQ(mounts[1].fsType, "vfat");
    EXPECT_EQ(mounts[1].device, makedev(8, 17));
}
