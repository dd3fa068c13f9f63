#include "BrowserWindow.h"
#include "kel/nodes/TNodePathHelper.h"

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using Calls = std::vector<std::string>;

namespace keltest {
namespace {

class TNodeBrowserControlHistoryTest : public BrowserWindow {
protected:
    void SetUp() override {
        BrowserWindow::SetUp();
        for (const char* name : {"a", "b", "c", "d"}) {
            fs::create_directories(tree / name / "inside");
            WriteFile(tree / name / "file.txt", "f");
            WriteFile(tree / name / "inside" / "deep.txt", "d");
        }
        prefs.SetClientKeys(BCSTR("GetFile"), BCSTR("history"));
    }

    void Go(const char* name) {
        ASSERT_EQ(browser->SetTarget(At(tree / name), At(tree), TKelNode()), noErr);
        HeadlessDriver::RunUntilIdle();
    }
    std::string Target() {
        TKelNode target;
        browser->GetTarget(target);
        return NameOf(target);
    }
    void Back() {
        browser->SetHistoryViewSnapshot(1, prefs);
        HeadlessDriver::RunUntilIdle();
    }
    void Forward() {
        browser->SetHistoryViewSnapshot(0, prefs);
        HeadlessDriver::RunUntilIdle();
    }
};

TEST_F(TNodeBrowserControlHistoryTest, BackAndForwardWalkThePlacesAndStopAtTheEnds) {
    MakeBrowser(kListViewStyle);
    observer.Take();
    Go("a");
    EXPECT_EQ(observer.Take().back(), "history:1/1");
    Go("b");
    Go("c");
    Back();
    EXPECT_EQ(Target(), "b");
    EXPECT_EQ(observer.Take().back(), "history:2/3");
    Back();
    EXPECT_EQ(Target(), "a");
    observer.Take();
    EXPECT_EQ(browser->SetHistoryViewSnapshot(1, prefs), noErr);
    EXPECT_TRUE(observer.Take().empty()) << "back at the first place does nothing";
    Forward();
    Forward();
    EXPECT_EQ(Target(), "c");
    observer.Take();
    browser->SetHistoryViewSnapshot(0, prefs);
    EXPECT_TRUE(observer.Take().empty());
    EXPECT_EQ(browser->SnapshotIndex(), 2);
}

TEST_F(TNodeBrowserControlHistoryTest, ANewPlaceAfterGoingBackCutsTheForwardPlaces) {
    MakeBrowser(kListViewStyle);
    Go("a");
    Go("b");
    Go("c");
    Back();
    Back();
    Go("d");
    EXPECT_EQ(browser->SnapshotCount(), 2);
    EXPECT_EQ(observer.Take().back(), "history:2/2");
    Back();
    EXPECT_EQ(Target(), "a");
}

TEST_F(TNodeBrowserControlHistoryTest, AFolderDeletedWhileInHistoryIsPassedAndForgotten) {
    MakeBrowser(kListViewStyle);
    Go("a");
    Go("b");
    Go("c");
    fs::remove_all(tree / "b");
    observer.Take();
    Back();
    EXPECT_EQ(Target(), "a");
    const Calls calls = observer.Take();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls.front(), "history:2/2") << "told of the loss before the move ends";
    EXPECT_EQ(calls.back(), "history:1/2");
    EXPECT_EQ(browser->SnapshotCount(), 2);
}

TEST_F(TNodeBrowserControlHistoryTest, InColumnViewMovingSidewaysReplacesThePlace) {
    MakeBrowser(kColumnViewStyle);
    Go("a");
    Go("b");
    Go("c");
    EXPECT_EQ(browser->SnapshotCount(), 1);
    EXPECT_EQ(browser->SnapshotIndex(), 0);
    ASSERT_EQ(browser->SetTarget(At(tree / "c" / "inside"), TKelNode(), TKelNode()), noErr);
    EXPECT_EQ(browser->SnapshotCount(), 2) << "going deeper is a new place";
}

TEST_F(TNodeBrowserControlHistoryTest, TheSameFolderByAnotherPathIsNoNewPlaceInListView) {
    MakeBrowser(kListViewStyle);
    Go("a");
    TNodePathHelper helper(At(tree / "a").PeekNodeRef());
    TKelNodeArray full = helper.NodePath();
    ASSERT_EQ(browser->SetTargetPath(full, TKelNode()), noErr);
    EXPECT_EQ(browser->SnapshotCount(), 1);
}

TEST_F(TNodeBrowserControlHistoryTest, ARowOpenedInAPlaceOpensAgainOnReturnWithoutNewRecords) {
    MakeBrowser(kListViewStyle);
    Go("a");
    TKelNode inside = At(tree / "a" / "inside");
    ASSERT_EQ(OpenGridBrowserContainer(control, inside.AsItemID()), noErr);
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(Rows(tree / "a", true), (Calls{"file.txt", "inside", "deep.txt"}));
    Go("b");
    EXPECT_EQ(Rows(tree / "b", true), (Calls{"file.txt", "inside"}));
    Back();
    EXPECT_EQ(Target(), "a");
    EXPECT_EQ(Rows(tree / "a", true), (Calls{"file.txt", "inside", "deep.txt"}));
    Forward();
    EXPECT_EQ(Rows(tree / "b", true), (Calls{"file.txt", "inside"})) << "opened only where it was";
}

TEST_F(TNodeBrowserControlHistoryTest, SwitchingViewsKeepsTheTargetAndTheColumnWidth) {
    MakeBrowser(kColumnViewStyle);
    Go("a");
    ASSERT_EQ(SetGridBrowserTableViewColumnWidth(control, 211), noErr);
    observer.Take();
    EXPECT_EQ(browser->SetBrowserView(kColumnViewStyle, kPrefOptionSaveRestore, prefs), noErr);
    EXPECT_TRUE(observer.Take().empty()) << "the present style again does nothing";
    ASSERT_EQ(browser->SetBrowserView(kListViewStyle, kPrefOptionSaveRestore, prefs), noErr);
    HeadlessDriver::RunUntilIdle();
    uint16_t saved = 0;
    ASSERT_TRUE(prefs.GetDefaultColumnViewColumnWidth(&saved));
    EXPECT_EQ(saved, 211);
    EXPECT_EQ(observer.Take(), (Calls{"style:list", "root:a"}));
    EXPECT_EQ(Target(), "a");
    ASSERT_EQ(SetGridBrowserTableViewColumnWidth(control, 150), noErr);
    ASSERT_EQ(browser->SetBrowserView(kColumnViewStyle, kPrefOptionSaveRestore, prefs), noErr);
    EXPECT_EQ(browser->GetDefaultColumnWidth(), 211);
    EXPECT_EQ(browser->SnapshotCount(), 1) << "a change of view is no new place";
}

} // namespace
} // namespace keltest
