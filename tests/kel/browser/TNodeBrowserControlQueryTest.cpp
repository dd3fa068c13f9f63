#include "BrowserWindow.h"
#include "kel/browser/BrowserNodes.h"

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using Calls = std::vector<std::string>;

namespace keltest {
namespace {

class TNodeBrowserControlQueryTest : public BrowserWindow {
protected:
    void SetUp() override {
        BrowserWindow::SetUp();
        WriteFile(tree / "alpha report.txt", "a");
        WriteFile(tree / "beta.txt", "b");
        WriteFile(tree / "sub" / "report card.txt", "c");
        WriteFile(tree / ".hidden report", "h");
        elsewhere = MakeScratchFolder("elsewhere");
        WriteFile(elsewhere / "report card elsewhere.txt", "e");
        prefs.SetQueryScope(TKelPrefs::kQueryScopeCurrentFolder);
        MakeBrowser(kListViewStyle);
        Show(tree);
    }
    void TearDown() override {
        prefs.SetQueryScope(TKelPrefs::kQueryScopeEverywhere);
        BrowserWindow::TearDown();
    }

    TKelNode Target() {
        TKelNode target;
        browser->GetTarget(target);
        return target;
    }
    bool HitsAre(const Calls& names) {
        return RunUntil([&] { return RowsOf(Target()) == names; });
    }

    fs::path elsewhere;
};

TEST_F(TNodeBrowserControlQueryTest, ASearchShowsTheHitsOfTheFolderAsTheWholePath) {
    observer.Take();
    ASSERT_EQ(browser->SetQueryTarget(BCSTR("report")), noErr);
    ASSERT_EQ(browser->TargetPath().size(), 1u);
    EXPECT_TRUE(IsHitsContainer(Target()));
    EXPECT_TRUE(HitsAre({"alpha report.txt", "report card.txt"}))
        << "hidden names and other folders are left out";
    const Calls calls = observer.Take();
    EXPECT_NE(std::find_if(calls.begin(), calls.end(),
                           [](const std::string& call) { return call.rfind("done:", 0) == 0; }),
              calls.end())
        << "the dialog hears that the hits are in";
}

TEST_F(TNodeBrowserControlQueryTest, ARefinedSearchKeepsItsFolderAndItsPlaceInHistory) {
    ASSERT_EQ(browser->SetQueryTarget(BCSTR("report")), noErr);
    ASSERT_TRUE(HitsAre({"alpha report.txt", "report card.txt"}));
    ASSERT_EQ(browser->SetQueryTarget(BCSTR("card")), noErr);
    EXPECT_EQ(browser->TargetPath().size(), 1u);
    EXPECT_TRUE(HitsAre({"report card.txt"})) << "still the first search's folder only";
    EXPECT_EQ(browser->SnapshotCount(), 2) << "the folder, then one entry for the search";
    browser->SetHistoryViewSnapshot(1, prefs);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Target(), At(tree));
    EXPECT_EQ(Rows(tree), (Calls{"alpha report.txt", "beta.txt", "sub"}));
    browser->SetHistoryViewSnapshot(0, prefs);
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(IsHitsContainer(Target()));
    EXPECT_TRUE(HitsAre({"report card.txt"}));
}

TEST_F(TNodeBrowserControlQueryTest, HitsKeepTheQuerysOrderAndOpenTheirOriginals) {
    ASSERT_EQ(browser->SetQueryTarget(BCSTR("report")), noErr);
    ASSERT_TRUE(HitsAre({"alpha report.txt", "report card.txt"}));
    TKelNodeArray hits;
    ASSERT_EQ(browser->GetItems(&browser->TargetPath().back(), false, 0, hits), noErr);
    ASSERT_EQ(hits.size(), 2u);
    ASSERT_TRUE(IsQueryHit(hits[1]));
    EXPECT_FALSE(TNodeBrowserControl::CompareNotification(control, hits[1].AsItemID(),
                                                          hits[0].AsItemID(), kNameProperty))
        << "hits are unordered: the query's order stands";
    EXPECT_EQ(OriginalOfHit(hits[1]), At(tree / "sub" / "report card.txt"));
}

} // namespace
} // namespace keltest
