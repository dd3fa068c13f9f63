#include "BrowserWindow.h"
#include "kel/nodes/TNodePathHelper.h"

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using Calls = std::vector<std::string>;

namespace keltest {
namespace {

class TNodeBrowserControlTargetTest : public BrowserWindow {
protected:
    void SetUp() override {
        BrowserWindow::SetUp();
        fs::create_directories(tree / "one" / "two" / "three");
        fs::create_directories(tree / "one" / ".secret" / "deep");
        fs::create_directories(tree / "other");
        WriteFile(tree / "one" / "two" / "file.txt", "f");
        WriteFile(tree / "one" / "note.txt", "n");
    }

    TKelNodeArray PathTo(const fs::path& path) {
        TNodePathHelper helper(At(path).PeekNodeRef());
        return helper.NodePath();
    }
    TKelNode Target() {
        TKelNode target;
        browser->GetTarget(target);
        return target;
    }
};

TEST_F(TNodeBrowserControlTargetTest, ListViewTellsTheDialogInItsOrderAndOnlyOnChange) {
    MakeBrowser(kListViewStyle);
    observer.Take();
    ASSERT_EQ(browser->SetTargetPath(PathTo(tree / "one"), TKelNode()), noErr);
    EXPECT_EQ(observer.Take(), (Calls{"root:one", "selection", "target:one", "history:1/1"}));
    EXPECT_EQ(browser->SetTargetPath(PathTo(tree / "one"), TKelNode()), noErr);
    EXPECT_EQ(browser->SetTarget(At(tree / "one"), At(tree), TKelNode()), noErr);
    EXPECT_TRUE(observer.Take().empty()) << "the same target again is no change";
}

TEST_F(TNodeBrowserControlTargetTest, ColumnViewTellsTheRootAndShowsEveryLevel) {
    MakeBrowser(kColumnViewStyle);
    observer.Take();
    TKelNode top = At(tree);
    ASSERT_EQ(browser->SetTarget(At(tree / "one" / "two"), top, TKelNode()), noErr);
    const std::string name = NameOf(top);
    EXPECT_EQ(observer.Take(), (Calls{"root:" + name, "selection", "target:two", "history:1/1"}));
    EXPECT_EQ(NamesOf(browser->TargetPath()), (std::vector<std::string>{name, "one", "two"}));
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(browser->Containers().size(), 3u) << "one open container per column";
    EXPECT_EQ(Rows(tree / "one"), (std::vector<std::string>{"note.txt", "two"}));
}

TEST_F(TNodeBrowserControlTargetTest, ATargetOutsideTheViewRootBecomesTheWholePath) {
    MakeBrowser(kColumnViewStyle);
    ASSERT_EQ(browser->SetTarget(At(tree / "one"), At(tree / "one"), TKelNode()), noErr);
    ASSERT_EQ(browser->SetTarget(At(tree / "other"), TKelNode(), TKelNode()), noErr);
    EXPECT_EQ(NamesOf(browser->TargetPath()), (std::vector<std::string>{"other"}));
    TKelNode root;
    browser->GetViewRoot(root);
    EXPECT_EQ(NameOf(root), "other");
    TKelNodeArray full;
    browser->GetFullTargetPath(full);
    EXPECT_EQ(full.back(), At(tree / "other"));
    EXPECT_EQ(full.size(), PathTo(tree / "other").size());
}

TEST_F(TNodeBrowserControlTargetTest, APathEndingInAFileTargetsItsFolder) {
    MakeBrowser(kColumnViewStyle);
    TKelNodeArray path = PathTo(tree / "one" / "two" / "file.txt");
    EXPECT_TRUE(browser->SynchronizeTargetPath(path));
    EXPECT_EQ(Target(), At(tree / "one" / "two"));
    EXPECT_FALSE(browser->SynchronizeTargetPath(path)) << "nothing changed the second time";
}

TEST_F(TNodeBrowserControlTargetTest, ALeafTheFilterCannotTargetIsRefusedAndChangesNothing) {
    NodeFilterMaskSet masks;
    masks.target = kNodeSpeciesVolume | kNodeSpeciesRoot | kNodeSpeciesFolder;
    filter = std::make_unique<TNodeFilter>(client, 0, masks, nullptr, 0);
    MakeBrowser(kListViewStyle);
    Show(tree / "one");
    observer.Take();
    EXPECT_EQ(browser->SetTargetPath(PathTo(tree / "one" / "note.txt"), TKelNode()), paramErr);
    EXPECT_EQ(Target(), At(tree / "one"));
    EXPECT_TRUE(observer.Take().empty());
}

TEST_F(TNodeBrowserControlTargetTest, AHiddenFolderGetsARowOfItsOwnWhenAProgramGoesThere) {
    MakeBrowser(kColumnViewStyle);
    ASSERT_EQ(browser->SetTarget(At(tree / "one"), At(tree), TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Rows(tree / "one"), (std::vector<std::string>{"note.txt", "two"}));
    ASSERT_EQ(browser->SetTarget(At(tree / "one" / ".secret" / "deep"), TKelNode(), TKelNode()),
              noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Rows(tree / "one"), (std::vector<std::string>{".secret", "note.txt", "two"}));
    EXPECT_EQ(Target(), At(tree / "one" / ".secret" / "deep"));
}

TEST_F(TNodeBrowserControlTargetTest, AnEmptySelectionMeansTheTarget) {
    MakeBrowser(kListViewStyle);
    TKelNodeArray selection;
    browser->GetSelection(selection);
    EXPECT_TRUE(selection.empty()) << "no target yet";
    Show(tree / "one");
    EXPECT_EQ(Selection(), (std::vector<std::string>{"one"}));
    TKelNodeArray note;
    note.push_back(At(tree / "one" / "note.txt"));
    ASSERT_EQ(browser->SetSelection(note, kGridBrowserItemsAssign), noErr);
    EXPECT_EQ(Selection(), (std::vector<std::string>{"note.txt"}));
}

TEST_F(TNodeBrowserControlTargetTest, SelectAllTakesWhatMayBeChosenAndNeedsTheTargetsRecord) {
    MakeBrowser(kListViewStyle);
    EXPECT_EQ(browser->SelectAll(), noErr) << "no target, no record: nothing to do";
    Show(tree / "one");
    // As a dialog with multiple selection would have it.
    ASSERT_EQ(SetGridBrowserSelectionFlags(control, 0), noErr);
    ASSERT_EQ(browser->SelectAll(), noErr);
    EXPECT_EQ(Selection(), (std::vector<std::string>{"note.txt", "two"}))
        << "the invisible folder was never listed, so it is not chosen";
}

TEST_F(TNodeBrowserControlTargetTest, AColumnClickMovesTheTargetAndDropsOnlyLaterEchoes) {
    MakeBrowser(kColumnViewStyle);
    ASSERT_EQ(browser->SetTarget(At(tree / "one"), At(tree), TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
    observer.Take();
    // "two" is the second row of the second column.
    ASSERT_EQ(HeadlessDriver::ClickAt(window, ColumnRowPoint(1, 1)), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Target(), At(tree / "one" / "two"));
    EXPECT_EQ(observer.Take(), (Calls{"selection", "target:two", "history:2/2", "selection"}))
        << "the first check does not drop the selection message after it";
    // "three" follows "file.txt" in the third column.
    ASSERT_EQ(HeadlessDriver::ClickAt(window, ColumnRowPoint(2, 1)), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Target(), At(tree / "one" / "two" / "three"));
    EXPECT_EQ(observer.Take(), (Calls{"selection", "target:three", "history:3/3"}));
}

} // namespace
} // namespace keltest
