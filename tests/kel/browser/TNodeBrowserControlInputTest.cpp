// The browser as a person uses it: clicks, keys, the wheel and double clicks reach it through
// the headless driver and the control, as real input would.

#include "BrowserWindow.h"

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using Calls = std::vector<std::string>;

namespace keltest {
namespace {

constexpr uint16_t kDownArrowKey = 125;
constexpr uint16_t kRightArrowKey = 124;

class TNodeBrowserControlInputTest : public BrowserWindow {
protected:
    void SetUp() override {
        BrowserWindow::SetUp();
        fs::create_directory(tree / "folder");
        WriteFile(tree / "folder" / "inside.txt", "i");
        WriteFile(tree / "first.txt", "1");
        WriteFile(tree / "second.txt", "2");
    }

    void Click(BGPoint point, uint32_t modifiers = 0) {
        ASSERT_EQ(HeadlessDriver::ClickAt(window, point, modifiers), noErr);
        HeadlessDriver::RunUntilIdle();
    }
    void Key(uint16_t code) {
        ASSERT_EQ(HeadlessDriver::PressKey(code), noErr);
        HeadlessDriver::RunUntilIdle();
    }
    std::string Target() {
        TKelNode target;
        browser->GetTarget(target);
        return NameOf(target);
    }
};

TEST_F(TNodeBrowserControlInputTest, ClicksAndArrowKeysMoveTheSelectionAndTheDialogHears) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    observer.Take();
    Click(ListRowPoint(1)); // rows: first.txt, folder, second.txt
    EXPECT_EQ(Selection(), (Calls{"folder"}));
    EXPECT_EQ(observer.Take(), (Calls{"selection"}));
    Key(kDownArrowKey);
    EXPECT_EQ(Selection(), (Calls{"second.txt"}));
    EXPECT_EQ(observer.Take(), (Calls{"selection"}));
    // The dialog's single selection holds against a shift-click.
    Click(ListRowPoint(0), 0x200);
    EXPECT_EQ(Selection(), (Calls{"first.txt"}));
}

TEST_F(TNodeBrowserControlInputTest, TheRightArrowOpensAFolderInPlaceAndHistoryRemembersIt) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    Click(ListRowPoint(1));
    Key(kRightArrowKey);
    EXPECT_EQ(Rows(tree, true), (Calls{"first.txt", "folder", "inside.txt", "second.txt"}));
    ASSERT_EQ(browser->SetTarget(At(tree / "folder"), TKelNode(), TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
    browser->SetHistoryViewSnapshot(1, prefs);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Rows(tree, true), (Calls{"first.txt", "folder", "inside.txt", "second.txt"}));
}

TEST_F(TNodeBrowserControlInputTest, ADoubleClickOnAFolderEntersItAndBackReturns) {
    MakeBrowser(kListViewStyle);
    Show(tree);
    observer.Take();
    Click(ListRowPoint(1));
    Click(ListRowPoint(1));
    EXPECT_EQ(Target(), "folder");
    EXPECT_EQ(Rows(tree / "folder"), (Calls{"inside.txt"}));
    const Calls calls = observer.Take();
    EXPECT_NE(std::find(calls.begin(), calls.end(), "double:folder"), calls.end());
    EXPECT_EQ(calls.back(), "history:2/2");
    browser->SetHistoryViewSnapshot(1, prefs);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Target(), NameOf(At(tree)));
    EXPECT_EQ(Rows(tree), (Calls{"first.txt", "folder", "second.txt"}));
    browser->SetHistoryViewSnapshot(0, prefs);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Target(), "folder");
    // A file created while the folder is shown appears in it.
    WriteFile(tree / "folder" / "arrived.txt", "a");
    EXPECT_TRUE(RunUntil([&] { return Rows(tree / "folder").size() == 2u; }));
}

TEST_F(TNodeBrowserControlInputTest, TheWheelScrollsALongList) {
    for (int i = 0; i < 200; ++i) {
        WriteFile(tree / ("item " + std::to_string(100 + i)), "x");
    }
    MakeBrowser(kListViewStyle);
    Show(tree);
    uint32_t top = 0, left = 0;
    GetGridBrowserScrollPosition(control, &top, &left);
    EXPECT_EQ(top, 0u);
    ASSERT_EQ(HeadlessDriver::Scroll(window, ListRowPoint(5), -10), noErr);
    HeadlessDriver::RunUntilIdle();
    GetGridBrowserScrollPosition(control, &top, &left);
    EXPECT_GT(top, 0u);
    // A new target starts at the top.
    ASSERT_EQ(browser->SetTarget(At(tree / "folder"), TKelNode(), TKelNode()), noErr);
    GetGridBrowserScrollPosition(control, &top, &left);
    EXPECT_EQ(top, 0u);
}

TEST_F(TNodeBrowserControlInputTest, SwitchingToColumnViewShowsThePathAndBackToListKeepsIt) {
    MakeBrowser(kListViewStyle);
    ASSERT_EQ(browser->SetTarget(At(tree / "folder"), At(tree), TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
    observer.Take();
    ASSERT_EQ(browser->SetBrowserView(kColumnViewStyle, kPrefOptionSaveRestore, prefs), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(observer.Take().front(), "style:column");
    EXPECT_EQ(Rows(tree / "folder"), (Calls{"inside.txt"}));
    EXPECT_EQ(Rows(tree), (Calls{"first.txt", "folder", "second.txt"}))
        << "the folder's parent is a column too";
    ASSERT_EQ(browser->TargetPath().size(), 2u);
    Click(ColumnRowPoint(1, 0));
    EXPECT_EQ(Selection(), (Calls{"inside.txt"}));
    ASSERT_EQ(browser->SetBrowserView(kListViewStyle, kPrefOptionSaveRestore, prefs), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Target(), "folder");
    EXPECT_EQ(Rows(tree / "folder"), (Calls{"inside.txt"}));
}

} // namespace
} // namespace keltest
