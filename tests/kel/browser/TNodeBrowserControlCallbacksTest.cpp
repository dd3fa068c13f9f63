#include "BrowserWindow.h"

#include <sys/time.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using Calls = std::vector<std::string>;

namespace keltest {
namespace {

// Sets a file's modification time, in seconds since the epoch.
void SetModified(const fs::path& path, time_t seconds) {
    const timeval times[2] = {{seconds, 0}, {seconds, 0}};
    ASSERT_EQ(utimes(path.c_str(), times), 0);
}

// Asks a cell as the control does, with a cell record the control's setters fill.
class TNodeBrowserControlCallbacksTest : public BrowserWindow {
protected:
    void SetUp() override {
        BrowserWindow::SetUp();
        WriteFile(tree / "old.txt", "o");
        WriteFile(tree / "new.txt", "n");
        WriteFile(tree / "Same", "1");
        fs::create_directory(tree / "sub");
        SetModified(tree / "old.txt", 1000000000);
        SetModified(tree / "new.txt", 1700000000);
        MakeBrowser(kListViewStyle);
        Show(tree);
    }

    bool Before(const fs::path& a, const fs::path& b, unsigned long property) {
        return TNodeBrowserControl::CompareNotification(control, At(a).AsItemID(), At(b).AsItemID(),
                                                        property);
    }
    StatusCode Cell(const fs::path& path, unsigned long property, bool set = false) {
        GridBrowserItemDataRef unused = nullptr;
        return TNodeBrowserControl::GetSetItemDataNotification(control, At(path).AsItemID(),
                                                               property, unused, set);
    }
};

TEST_F(TNodeBrowserControlCallbacksTest, NamesSortByCollationAndDatesNewestFirst) {
    EXPECT_TRUE(Before(tree / "new.txt", tree / "old.txt", kNameProperty));
    EXPECT_FALSE(Before(tree / "old.txt", tree / "new.txt", kNameProperty));
    EXPECT_TRUE(Before(tree / "old.txt", tree / "Same", 8));
    EXPECT_TRUE(Before(tree / "new.txt", tree / "old.txt", kDateProperty));
    EXPECT_FALSE(Before(tree / "old.txt", tree / "new.txt", kDateProperty));
    EXPECT_FALSE(Before(tree / "old.txt", tree / "old.txt", kNameProperty)) << "same item";
    EXPECT_FALSE(Before(tree / "old.txt", tree / "new.txt", 12)) << "no order by label";
}

TEST_F(TNodeBrowserControlCallbacksTest, ANodeThatIsGoneSortsLastAndShowsNothing) {
    TKelNode gone = At(tree / "old.txt");
    TKelNode kept = At(tree / "new.txt");
    fs::remove(tree / "old.txt");
    // A sort trusts what it learnt of a node until the change event says otherwise.
    ASSERT_TRUE(RunUntil([&] { return Rows(tree).size() == 3u; }));
    EXPECT_FALSE(TNodeBrowserControl::CompareNotification(control, gone.AsItemID(), kept.AsItemID(),
                                                          kNameProperty));
    EXPECT_TRUE(TNodeBrowserControl::CompareNotification(control, kept.AsItemID(), gone.AsItemID(),
                                                         kNameProperty));
    GridBrowserItemDataRef unused = nullptr;
    EXPECT_EQ(TNodeBrowserControl::GetSetItemDataNotification(control, gone.AsItemID(),
                                                              kNameProperty, unused, false),
              kNodePropertyNotSupportedErr);
}

TEST_F(TNodeBrowserControlCallbacksTest, CellsTheBrowserDoesNotServeAreRefused) {
    EXPECT_EQ(Cell(tree / "sub", 9), kNodePropertyNotSupportedErr);
    EXPECT_EQ(Cell(tree / "sub", 10), kNodePropertyNotSupportedErr);
    EXPECT_EQ(Cell(tree / "sub", 0x73697A65), kNodePropertyNotSupportedErr);
    EXPECT_EQ(Cell(tree / "sub", 1, true), kNodePropertyNotSupportedErr) << "nothing is set";
    GridBrowserItemDataRef unused = nullptr;
    EXPECT_EQ(TNodeBrowserControl::GetSetItemDataNotification(nullptr, At(tree / "sub").AsItemID(),
                                                              1, unused, false),
              kNodePropertyNotSupportedErr);
}

TEST_F(TNodeBrowserControlCallbacksTest, SelectionMessagesNeedNoItemAndRowMessagesDo) {
    observer.Take();
    TNodeBrowserControl::ItemNotification(control, 0, kGridBrowserSelectionChanged);
    TNodeBrowserControl::ItemNotification(control, 0, kGridBrowserItemDoubleClicked);
    EXPECT_EQ(observer.Take(), (Calls{"selection"}));
    TNodeBrowserControl::ItemNotification(control, At(tree / "new.txt").AsItemID(),
                                          kGridBrowserUnselectableItemClicked);
    EXPECT_EQ(observer.Take(), (Calls{"disabled:new.txt"}));
}

TEST_F(TNodeBrowserControlCallbacksTest, DoubleClickingAFolderOpensItAndTheDialogEntersIt) {
    observer.Take();
    TNodeBrowserControl::ItemNotification(control, At(tree / "sub").AsItemID(),
                                          kGridBrowserItemDoubleClicked);
    HeadlessDriver::RunUntilIdle();
    const Calls calls = observer.Take();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "double:sub");
    TKelNode target;
    browser->GetTarget(target);
    EXPECT_EQ(target, At(tree / "sub"));
    EXPECT_EQ(browser->SnapshotCount(), 2) << "a double click makes a place, not an open row";
}

TEST_F(TNodeBrowserControlCallbacksTest, ThePreviewCellIsOfferedToTheDialogFirst) {
    const Rect cell{0, 200, 300, 500};
    observer.drawsPreview = true;
    observer.Take();
    TNodeBrowserControl::DrawItemNotification(control, At(tree / "new.txt").AsItemID(), 10, 0,
                                              &cell, 32, true);
    TNodeBrowserControl::DrawItemNotification(control, At(tree / "new.txt").AsItemID(),
                                              kNameProperty, 0, &cell, 32, true);
    EXPECT_EQ(observer.Take(), (Calls{"preview:new.txt"})) << "only the preview column";
    EXPECT_EQ(TNodeBrowserControl::TrackItemNotification(control, At(tree / "new.txt").AsItemID(),
                                                         10, &cell, Point{10, 210}, 0),
              -1);
}

} // namespace
} // namespace keltest
