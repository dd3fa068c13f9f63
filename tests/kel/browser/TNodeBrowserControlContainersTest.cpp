#include "BrowserWindow.h"

#include <atomic>
#include <sys/xattr.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;

namespace keltest {
namespace {

// Counts the cells the control asks for, and passes every request on to the browser.
std::atomic<int> gCellRequests{0};

StatusCode CountingItemData(ControlRef control, GridBrowserItemID item,
                            GridBrowserPropertyID property, GridBrowserItemDataRef data,
                            bool setValue) {
    ++gCellRequests;
    return TNodeBrowserControl::GetSetItemDataNotification(control, item, property, data, setValue);
}

void CountCellRequests(ControlRef control) {
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    callbacks.itemDataCallback = &CountingItemData;
    callbacks.itemCompareCallback = &TNodeBrowserControl::CompareNotification;
    callbacks.itemNotificationCallback = &TNodeBrowserControl::ItemNotification;
    SetGridBrowserCallbacks(control, &callbacks);
}

class TNodeBrowserControlContainersTest : public BrowserWindow {
protected:
    void SetUp() override {
        BrowserWindow::SetUp();
        WriteFile(tree / "b.txt", "b");
        WriteFile(tree / "C.txt", "c");
        WriteFile(tree / ".dotted", "x");
        WriteFile(tree / "listed-hidden", "x");
        WriteFile(tree / ".hidden", "listed-hidden\n");
        fs::create_directory(tree / "a folder");
        WriteFile(tree / "a folder" / "inner.txt", "i");
    }

    bool HasRow(const char* name) {
        auto rows = Rows(tree);
        return std::find(rows.begin(), rows.end(), name) != rows.end();
    }
};

TEST_F(TNodeBrowserControlContainersTest, ListsTheVisibleChildrenInNameOrder) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    EXPECT_EQ(Rows(tree), (std::vector<std::string>{"a folder", "b.txt", "C.txt"}));
    ASSERT_EQ(browser->Containers().size(), 1u);
    EXPECT_EQ(browser->Containers()[0]->children.size(), 3u);
    EXPECT_TRUE(browser->SyncTimerInstalled());
}

// A folder large enough that its sort keys are made ahead on other threads: the file whose
// extension is hidden shows without it and sorts by what it shows, ahead of "b a.txt".
TEST_F(TNodeBrowserControlContainersTest, AHiddenExtensionInALargeFolderShowsAndSortsAsShown) {
    const fs::path large = tree / "a folder";
    for (int index = 0; index < 2500; ++index)
        WriteFile(large / ("Entry " + std::to_string(index) + ".dat"), "");
    WriteFile(large / "b.txt", "b");
    WriteFile(large / "b a.txt", "b");
    if (::setxattr((large / "b.txt").c_str(), "user.kel.hide-extension", "1", 1, 0) != 0)
        GTEST_SKIP() << "no user attributes on this file system";
    MakeBrowser(kListViewStyle);
    Show(large);
    const std::vector<std::string> rows = Rows(large);
    ASSERT_EQ(rows.size(), 2503u);
    EXPECT_EQ(std::vector<std::string>(rows.begin(), rows.begin() + 3),
              (std::vector<std::string>{"b", "b a.txt", "Entry 0.dat"}));
}

TEST_F(TNodeBrowserControlContainersTest, AFileCreatedAppearsAndAFileDeletedGoes) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    WriteFile(tree / "new.txt", "n");
    EXPECT_TRUE(RunUntil([&] { return HasRow("new.txt"); }));
    EXPECT_EQ(Rows(tree), (std::vector<std::string>{"a folder", "b.txt", "C.txt", "new.txt"}));
    fs::remove(tree / "b.txt");
    EXPECT_TRUE(RunUntil([&] { return !HasRow("b.txt"); }));
    EXPECT_EQ(browser->Containers()[0]->children.size(), 3u);
}

TEST_F(TNodeBrowserControlContainersTest, AThousandFilesCreatedAtOnceArriveWithoutAFramePerFile) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    CountCellRequests(control);
    gCellRequests = 0;
    for (int i = 0; i < 1000; ++i) {
        WriteFile(tree / ("burst " + std::to_string(1000 + i)), "x");
    }
    ASSERT_TRUE(RunUntil([&] { return Rows(tree).size() == 1003u; }));
    HeadlessDriver::RunUntilIdle();
    const int duringBurst = gCellRequests.exchange(0);
    browser->Refresh();
    HeadlessDriver::RunUntilIdle();
    const int perFrame = gCellRequests.load();
    ASSERT_GT(perFrame, 0);
    // Change events come in a few bursts; a frame for each of the 1,000 files would ask for
    // about 1,000 frames' worth of cells.
    EXPECT_LT(duringBurst, 20 * perFrame);
}

TEST_F(TNodeBrowserControlContainersTest, ADeferredContainerIsListedOnlyWhenPopulationResumes) {
    MakeBrowser(kListViewStyle);
    browser->deferPopulation = true;
    Show(tree);
    ASSERT_EQ(browser->Containers().size(), 1u);
    EXPECT_FALSE(browser->Containers()[0]->populated);
    EXPECT_TRUE(Rows(tree).empty());
    EXPECT_FALSE(browser->SyncTimerInstalled());
    // Not registered with the node service yet: a change now is found by the first listing.
    WriteFile(tree / "while collapsed", "x");
    browser->deferPopulation = false;
    browser->PopulateDeferredContainers();
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(browser->Containers()[0]->populated);
    EXPECT_EQ(Rows(tree).size(), 4u);
    EXPECT_TRUE(HasRow("while collapsed"));
}

TEST_F(TNodeBrowserControlContainersTest, ADisclosureOpensAFolderInPlaceAndClosingForgetsIt) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    TKelNode folder = At(tree / "a folder");
    ASSERT_EQ(OpenGridBrowserContainer(control, folder.AsItemID()), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Rows(tree, true),
              (std::vector<std::string>{"a folder", "inner.txt", "b.txt", "C.txt"}));
    EXPECT_EQ(browser->Containers().size(), 2u);
    // The opened folder is watched like the target.
    WriteFile(tree / "a folder" / "inner2.txt", "i");
    EXPECT_TRUE(RunUntil([&] { return Rows(tree / "a folder").size() == 2u; }));
    ASSERT_EQ(CloseGridBrowserContainer(control, folder.AsItemID()), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(browser->Containers().size(), 1u);
    EXPECT_EQ(Rows(tree, true), (std::vector<std::string>{"a folder", "b.txt", "C.txt"}));
}

TEST_F(TNodeBrowserControlContainersTest, ABrokenAliasOpensEmptyAndReportsItsError) {
    fs::create_symlink(tree / "nowhere", tree / "broken");
    MakeBrowser(kListViewStyle);
    Show(tree);
    TKelNode alias = At(tree / "broken");
    observer.Take();
    EXPECT_FALSE(browser->OpenContainer(alias));
    auto calls = observer.Take();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0], "open:broken");
    EXPECT_EQ(calls[1].rfind("error:broken:", 0), 0u) << calls[1];
    EXPECT_EQ(calls[2], "done:<none>");
    EXPECT_EQ(browser->Containers().size(), 2u) << "the record is made all the same";
    EXPECT_TRUE(browser->Containers()[1]->children.empty());
}

TEST_F(TNodeBrowserControlContainersTest, ARenamedFileMovesToItsPlace) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    fs::rename(tree / "b.txt", tree / "z.txt");
    EXPECT_TRUE(RunUntil([&] { return HasRow("z.txt") && !HasRow("b.txt"); }));
    EXPECT_EQ(Rows(tree), (std::vector<std::string>{"a folder", "C.txt", "z.txt"}));
}

TEST_F(TNodeBrowserControlContainersTest, TheRefreshAsksOnceForEachFolderAndNeverForTheRoot) {
    MakeBrowser(kColumnViewStyle);
    TNodeBrowserControl::SynchronizeContainers(nullptr, browser.get()); // nothing open: no harm
    ASSERT_EQ(browser->SetTarget(At(tree / "a folder"), At(tree), TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
    const auto& containers = browser->Containers();
    ASSERT_EQ(containers.size(), 2u);
    // Settle the refresh that every population starts.
    auto settled = [&] {
        return std::none_of(containers.begin(), containers.end(),
                            [](const auto& data) { return data->syncInProgress; });
    };
    ASSERT_TRUE(RunUntil(settled));
    TNodeBrowserControl::SynchronizeContainers(nullptr, browser.get());
    EXPECT_TRUE(containers.front()->syncInProgress && containers.back()->syncInProgress);
    ASSERT_TRUE(RunUntil(settled));

    TKelNodeArray top;
    top.push_back(TKelNode(TKelNode::GetRootNodeRef(), true));
    ASSERT_EQ(browser->SetTargetPath(top, TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(containers.size(), 1u);
    TNodeBrowserControl::SynchronizeContainers(nullptr, browser.get());
    EXPECT_FALSE(containers.front()->syncInProgress) << "volumes arrive as events instead";
}

} // namespace
} // namespace keltest
