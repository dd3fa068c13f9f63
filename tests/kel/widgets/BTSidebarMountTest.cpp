// A removable volume mounted while the sidebar shows gets a row with an eject button, and the
// button takes it away. Mounting needs root and is done in a private mount namespace, so
// nothing outside the test sees it: the test runs itself again in a child process that first
// enters a namespace of its own, since a namespace is only whole for a process that enters it
// before it has threads.

#include "SidebarWindow.h"
#include "tests/kel/nodes/KelNodeTesting.h"

#include <cstdlib>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using basalt::headless::HeadlessDriver;
using kelnodetest::NodeAt;
using namespace keltest;

namespace {

constexpr const char* kInNamespace = "KEL_SIDEBAR_TEST_IN_MOUNT_NAMESPACE";
constexpr int kNoNamespace = 125;

class BTSidebarMountTest : public SidebarWindow {
protected:
    // Runs this test again in a child with a mount namespace of its own; its exit status.
    static int RunInNamespace() {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string filter =
            std::string("--gtest_filter=") + test->test_suite_name() + "." + test->name();
        std::string marker = std::string(kInNamespace) + "=1";
        std::vector<char*> environment;
        for (char** at = environ; *at != nullptr; ++at)
            environment.push_back(*at);
        environment.push_back(marker.data());
        environment.push_back(nullptr);
        pid_t child = fork();
        if (child == 0) {
            if (unshare(CLONE_NEWNS) != 0 ||
                mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
                _exit(kNoNamespace);
            execle("/proc/self/exe", "/proc/self/exe", filter.c_str(), nullptr, environment.data());
            _exit(126);
        }
        int status = 0;
        while (waitpid(child, &status, 0) < 0) {
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    int RowOf(const TKelNode& node) {
        for (int index = 0; index < sidebar->CountTopItems(); ++index)
            if (sidebar->GetItem(index)->node == node)
                return index + 1;
        return 0;
    }
};

} // namespace

TEST_F(BTSidebarMountTest, AMountedVolumeAppearsAndItsEjectButtonTakesItAway) {
    if (std::getenv(kInNamespace) == nullptr) {
        if (geteuid() != 0)
            GTEST_SKIP() << "mounting a volume needs root";
        int status = RunInNamespace();
        if (status == kNoNamespace)
            GTEST_SKIP() << "no mount namespace here";
        EXPECT_EQ(status, 0) << "the run in the mount namespace failed; its output is above";
        return;
    }
    // At twice the density, for a picture of the eject button.
    HeadlessDriver::SetScale(2);
    DisposeWindow(window);
    const Rect content{80, 80, 480, 380};
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &content, &window), noErr);
    ShowWindow(window);
    HeadlessDriver::SetScale(1);
    MakeSidebar(BGRectMake(10, 10, 200, 380));
    // A tmpfs over /media hides what is there, and the volume is mounted in it.
    ASSERT_EQ(mount("kel-test", "/media", "tmpfs", 0, nullptr), 0);
    ASSERT_EQ(mkdir("/media/KelDisk", 0755), 0);
    ASSERT_EQ(mount("kel-test", "/media/KelDisk", "tmpfs", 0, "size=1m"), 0);
    TKelNode disk = NodeAt("/media/KelDisk");
    ASSERT_TRUE(RunUntil([&] { return RowOf(disk) != 0; }));
    int row = RowOf(disk);
    const SidebarItem* item = sidebar->GetItem(row - 1);
    ASSERT_TRUE(item->IsEjectable());
    EXPECT_EQ(ToText(item->name.AsBCStringRef()), "KelDisk");

    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(HeadlessDriver::WritePNG(window, KEL_TEST_BINARY_DIR "/sidebar-volume-2x.png"),
              noErr);

    BGRect rowRect{}, button{};
    items->GetItemBounds(row, &rowRect);
    items->GetItemButtonBounds(item, rowRect, &button);
    ASSERT_GT(button.size.width, 0);
    BTViewConvertRect(&button, items->GetViewRef(), nullptr);
    HeadlessDriver::ClickAt(window, {BGRectGetMidX(button), BGRectGetMidY(button)});
    ASSERT_TRUE(RunUntil([&] { return RowOf(disk) == 0; }));
    for (const std::string& message : told)
        EXPECT_EQ(message, "asked") << "ejecting is not choosing the row";
    umount("/media");
}
