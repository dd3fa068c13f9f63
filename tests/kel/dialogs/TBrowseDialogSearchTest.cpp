// Searching from an open dialog, typed into its search field on real folders: the pause before
// a search, the cancel mark, the three scopes, history out of and back into a search, and the
// toolbar row and scope bar that a search brings.

#include "basalt/nodes/NodeQueries.h"
#include "basalt/types/BUTypes.h"
#include "kel/browser/BrowserNodes.h"
#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/browser/BrowserWindow.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;
using Names = std::vector<std::string>;

namespace {

bool Shows(TBrowseDialog& dialog, int16_t item) {
    return BTViewIsVisible(ControlOf(dialog, item));
}

std::string TextOf(TBrowseDialog& dialog, int16_t item) {
    TStringRef text(BTViewCopyText(ControlOf(dialog, item)), false);
    return text.IsNil() ? std::string() : basalt::types::Utf8(text.AsBCStringRef());
}

TKelNode TargetOf(TBrowseDialog& dialog) {
    TKelNode target;
    dialog.Target(target);
    return target;
}

// The names of the hits shown, in order; empty when no search shows.
Names Hits(TBrowseDialog& dialog) {
    TKelNode target = TargetOf(dialog);
    TKelNodeArray rows;
    if (!IsHitsContainer(target) || dialog.Browser()->GetItems(&target, false, 0, rows) != noErr) {
        return {};
    }
    Names names = NamesOf(rows);
    std::sort(names.begin(), names.end());
    return names;
}

bool ArrowsTurn(TBrowseDialog& dialog) {
    Boolean animating = false;
    GetControlData(ControlOf(dialog, kBrowsePathArrows), 0, kControlChasingArrowsAnimatingTag,
                   sizeof animating, &animating, nullptr);
    return animating;
}

class TBrowseDialogSearchTest : public ::testing::Test {
protected:
    void SetUp() override {
        ForgetDialogPrefs();
        tree = MakeScratchFolder("search");
        WriteFile(tree / "report alpha.txt", "a");
        WriteFile(tree / "notes.txt", "n");
        WriteFile(tree / "deeper" / "report beta.txt", "b");
        fs::create_directories(tree / "other");
        SetScope(TKelPrefs::kQueryScopeCurrentFolder);
        UseListView(false);
    }
    void TearDown() override { SetScope(TKelPrefs::kQueryScopeEverywhere); }

    static void SetScope(TKelPrefs::QueryScope scope) {
        TKelPrefs prefs;
        prefs.SetQueryScope(scope);
    }

    static void Type(TBrowseDialog& dialog, const std::string& text) {
        HeadlessDriver::Click(ControlOf(dialog, kBrowseSearchField));
        HeadlessDriver::TypeText(text);
        HeadlessDriver::RunUntilIdle();
    }

    // Types a search and waits for its hits.
    static void Search(TBrowseDialog& dialog, const std::string& text, const Names& hits) {
        Type(dialog, text);
        ASSERT_TRUE(RunUntil([&] { return Hits(dialog) == hits; }))
            << "the search for " << text << " never showed its hits";
    }

    static constexpr int16_t kBackPart = 1;
    static constexpr int16_t kForwardPart = 2;

    static void ClickHistory(TBrowseDialog& dialog, int16_t part) {
        HeadlessDriver::Click(dialog.GetWindow(),
                              ControlID{kKelControlSignature, kBrowseBackForward}, 0, part);
        HeadlessDriver::RunUntilIdle();
    }

    static void ClickCancelMark(TBrowseDialog& dialog) {
        const BGRect field = FrameIn(dialog, kBrowseSearchField);
        HeadlessDriver::ClickAt(dialog.GetWindow(),
                                BGPoint{BGRectGetMaxX(field) - 12, BGRectGetMidY(field)});
        HeadlessDriver::RunUntilIdle();
    }

    fs::path tree;
};

TEST_F(TBrowseDialogSearchTest, EachKeyRestartsThePauseAndOneSearchTakesTheWholeText) {
    WithModelessDialog(tree, [&](TBrowseDialog& dialog) {
        HeadlessDriver::Click(ControlOf(dialog, kBrowseSearchField));
        // Five keys 0.06 seconds apart: longer than the pause in all, shorter between two.
        for (const char* key : {"r", "e", "p", "o", "r"}) {
            HeadlessDriver::TypeText(key);
            HeadlessDriver::RunFor(0.06);
            ASSERT_FALSE(IsHitsContainer(TargetOf(dialog))) << "searched before the typing paused";
        }
        // "r" or "re" would find the folders "other" and "deeper" as well.
        EXPECT_TRUE(RunUntil([&] {
            return Hits(dialog) == Names{"report alpha.txt", "report beta.txt"};
        }));
    });
}

TEST_F(TBrowseDialogSearchTest, TheCancelMarkDropsAPendingSearchAndGoesBackToTheFolder) {
    WithModelessDialog(tree / "other", [&](TBrowseDialog& dialog) {
        // With a place to go back to, a cancel that has no search to leave still stays.
        ASSERT_EQ(dialog.SetTargetCommand(NodeOf(tree), TKelNode()), noErr);
        HeadlessDriver::RunUntilIdle();
        Type(dialog, "notes");
        ClickCancelMark(dialog); // before the pause ends: no search ever shows
        HeadlessDriver::RunFor(0.4);
        EXPECT_EQ(TargetOf(dialog), NodeOf(tree)) << "stays where it was";
        EXPECT_EQ(TextOf(dialog, kBrowseSearchField), "");

        Search(dialog, "report", {"report alpha.txt", "report beta.txt"});
        Type(dialog, "x"); // a refinement still waits for its pause
        ClickCancelMark(dialog);
        EXPECT_EQ(TargetOf(dialog), NodeOf(tree)) << "back to where the search began";
        HeadlessDriver::RunFor(0.4);
        EXPECT_EQ(TargetOf(dialog), NodeOf(tree)) << "the refinement never ran";
        EXPECT_EQ(TextOf(dialog, kBrowseSearchField), "");
    });
}

TEST_F(TBrowseDialogSearchTest, EachScopeFindsItsOwnHitsAndChoosingOneSearchesAgain) {
    const fs::path outside = MakeScratchFolder("outside");
    WriteFile(outside / "report outside.txt", "o");
    WriteFile(ScratchHome() / "Documents" / "report at home.txt", "h");
    TKelPrefs prefs;
    WithModelessDialog(tree / "deeper", [&](TBrowseDialog& dialog) {
        Search(dialog, "report", {"report beta.txt"});
        EXPECT_EQ(BTViewGetValue(ControlOf(dialog, kBrowseScopeFolder)), 1);
        EXPECT_EQ(TextOf(dialog, kBrowseScopeFolder), "\u201Cdeeper\u201D");

        ClickItem(dialog, kBrowseScopeHome);
        EXPECT_EQ(prefs.GetQueryScope(), TKelPrefs::kQueryScopeHome);
        EXPECT_TRUE(RunUntil([&] { return Hits(dialog) == Names{"report at home.txt"}; }));
        EXPECT_EQ(BTViewGetValue(ControlOf(dialog, kBrowseScopeHome)), 1);
        EXPECT_EQ(BTViewGetValue(ControlOf(dialog, kBrowseScopeFolder)), 0);

        ClickItem(dialog, kBrowseScopeEverywhere);
        EXPECT_EQ(prefs.GetQueryScope(), TKelPrefs::kQueryScopeEverywhere);
        EXPECT_TRUE(RunUntil(
            [&] {
                return std::ranges::includes(
                    Hits(dialog),
                    Names{"report at home.txt", "report beta.txt", "report outside.txt"});
            },
            std::chrono::seconds(60)));

        ClickItem(dialog, kBrowseScopeFolder);
        EXPECT_TRUE(RunUntil([&] { return Hits(dialog) == Names{"report beta.txt"}; }))
            << "the folder is still the one the first search began in";
    });
}

TEST_F(TBrowseDialogSearchTest, HistoryBackIntoASearchShowsItsTextAgain) {
    WithModelessDialog(tree, [&](TBrowseDialog& dialog) {
        Search(dialog, "alpha", {"report alpha.txt"});
        ASSERT_EQ(dialog.SetTargetCommand(NodeOf(tree / "other"), TKelNode()), noErr);
        HeadlessDriver::RunUntilIdle();
        EXPECT_EQ(TextOf(dialog, kBrowseSearchField), "") << "a folder has no search text";
        EXPECT_FALSE(Shows(dialog, kBrowseScopeBar));

        ClickHistory(dialog, kBackPart);
        ASSERT_TRUE(RunUntil([&] { return Hits(dialog) == Names{"report alpha.txt"}; }));
        EXPECT_EQ(TextOf(dialog, kBrowseSearchField), "alpha");
        EXPECT_TRUE(Shows(dialog, kBrowseScopeBar));
        EXPECT_FALSE(dialog.SearchTextStale());
    });
}

// Back leaves a search as the cancel mark does, for the folder it began in; forward goes back
// into it, with its text, its count and its scope bar.
TEST_F(TBrowseDialogSearchTest, BackLeavesASearchForItsFolderAndForwardReturnsToIt) {
    WithModelessDialog(tree, [&](TBrowseDialog& dialog) {
        const BGRect idleBrowser = FrameIn(dialog, kBrowseBrowser);
        Search(dialog, "alpha", {"report alpha.txt"});
        ClickHistory(dialog, kBackPart);
        ASSERT_TRUE(RunUntil([&] { return TargetOf(dialog) == NodeOf(tree); }));
        EXPECT_EQ(TextOf(dialog, kBrowseSearchField), "");
        EXPECT_TRUE(Shows(dialog, kBrowsePathPopup));
        EXPECT_FALSE(Shows(dialog, kBrowseScopeBar));
        EXPECT_EQ(FrameIn(dialog, kBrowseCountText).size.width, 0);
        EXPECT_EQ(FrameIn(dialog, kBrowseBrowser).origin.y, idleBrowser.origin.y);

        ClickHistory(dialog, kForwardPart);
        ASSERT_TRUE(RunUntil([&] { return Hits(dialog) == Names{"report alpha.txt"}; }));
        EXPECT_EQ(TextOf(dialog, kBrowseSearchField), "alpha");
        EXPECT_TRUE(RunUntil([&] { return TextOf(dialog, kBrowseCountText) == "Found: 1"; }));
        EXPECT_FALSE(Shows(dialog, kBrowsePathPopup));
        EXPECT_TRUE(Shows(dialog, kBrowseScopeBar));
    });
}

TEST_F(TBrowseDialogSearchTest, ASearchReplacesThePathPopupWithArrowsCountAndTheScopeBar) {
    WithModelessDialog(tree, [&](TBrowseDialog& dialog) {
        const BGRect popup = FrameIn(dialog, kBrowsePathPopup);
        const BGRect idleField = FrameIn(dialog, kBrowseSearchField);
        const BGRect idleBrowser = FrameIn(dialog, kBrowseBrowser);
        EXPECT_EQ(FrameIn(dialog, kBrowseCountText).size.width, 0);

        Search(dialog, "report", {"report alpha.txt", "report beta.txt"});
        ASSERT_TRUE(RunUntil([&] { return TextOf(dialog, kBrowseCountText) == "Found: 2"; }));
        EXPECT_FALSE(Shows(dialog, kBrowsePathPopup));
        const BGRect field = FrameIn(dialog, kBrowseSearchField);
        const BGRect count = FrameIn(dialog, kBrowseCountText);
        const BGRect arrows = FrameIn(dialog, kBrowsePathArrows);
        EXPECT_EQ(BGRectGetMinX(field), std::floor(BGRectGetMidX(popup)));
        EXPECT_EQ(BGRectGetMaxX(field), BGRectGetMaxX(idleField)) << "the right edge stays";
        EXPECT_EQ(BGRectGetMinX(field) - BGRectGetMaxX(count), 8);
        EXPECT_EQ(BGRectGetMinX(count) - BGRectGetMaxX(arrows), 8);
        // Two hits take the width of four digits, as the most a count shows would.
        BGRect best = BGRectZero;
        BTViewGetOptimalBounds(ControlOf(dialog, kBrowseCountText), &best, nullptr);
        EXPECT_LT(best.size.width, count.size.width);

        // The scope bar takes its room from the browser, whose bottom stays.
        const BGRect bar = FrameIn(dialog, kBrowseScopeBar);
        const BGRect browser = FrameIn(dialog, kBrowseBrowser);
        EXPECT_TRUE(Shows(dialog, kBrowseScopeBar));
        EXPECT_EQ(BGRectGetMinY(browser), BGRectGetMaxY(bar) - 2);
        EXPECT_EQ(BGRectGetMaxY(browser), BGRectGetMaxY(idleBrowser));

        // The list view keeps the bar; the arrows stop once the search has walked its folder.
        HeadlessDriver::Click(dialog.GetWindow(), ControlID{kKelControlSignature, kBrowseViewStyle},
                              0, 1);
        HeadlessDriver::RunUntilIdle();
        ASSERT_EQ(dialog.Browser()->ViewStyle(), kListViewStyle);
        EXPECT_TRUE(Shows(dialog, kBrowseScopeBar));
        EXPECT_FALSE(Shows(dialog, kBrowsePathPopup));
        EXPECT_TRUE(RunUntil([&] {
            return !NodeQueryIsGathering(TargetOf(dialog).PeekNodeRef()) && !ArrowsTurn(dialog);
        }));

        ClickCancelMark(dialog);
        EXPECT_TRUE(Shows(dialog, kBrowsePathPopup));
        EXPECT_FALSE(Shows(dialog, kBrowseScopeBar));
        EXPECT_EQ(FrameIn(dialog, kBrowseBrowser).origin.y, idleBrowser.origin.y);
        EXPECT_EQ(FrameIn(dialog, kBrowseCountText).size.width, 0);
    });
}

// A search with hits and the scope bar, drawn at 1x and 2x for people to look at.
class TBrowseDialogSearchSnapshotTest : public TBrowseDialogSearchTest,
                                        public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        TBrowseDialogSearchTest::SetUp();
        for (const char* name : {"report draft.odt", "Report 2026.pdf", "photo report.png"}) {
            WriteFile(tree / "other" / name, "r");
        }
        HeadlessDriver::SetScale(GetParam());
    }
    void TearDown() override {
        HeadlessDriver::SetScale(1);
        TBrowseDialogSearchTest::TearDown();
    }

    // The grey of a picture's pixel at a point of the window's content.
    int GreyAt(const fs::path& png, BGPoint point) const {
        cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
        const int stride = cairo_image_surface_get_stride(image) / 4;
        const auto* pixels = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(image));
        const int scale = GetParam();
        const int y = (int(point.y) + int(kBTWindowTitleBarHeight)) * scale;
        const uint32_t pixel = pixels[y * stride + int(point.x) * scale];
        cairo_surface_destroy(image);
        return int((pixel >> 8) & 0xFF);
    }
};

TEST_P(TBrowseDialogSearchSnapshotTest, HitsUnderTheScopeBar) {
    UseListView(true);
    WithModelessDialog(tree, [&](TBrowseDialog& dialog) {
        Search(dialog, "report",
               {"Report 2026.pdf", "photo report.png", "report alpha.txt", "report beta.txt",
                "report draft.odt"});
        ASSERT_TRUE(RunUntil([&] { return !ArrowsTurn(dialog); }));
        const fs::path png = fs::path(KEL_TEST_BINARY_DIR) /
                             ("open-dialog-search-" + std::to_string(GetParam()) + "x.png");
        ASSERT_EQ(HeadlessDriver::WritePNG(dialog.GetWindow(), png), noErr);
        // The bar's own grey shows to the right of its buttons.
        const BGRect bar = FrameIn(dialog, kBrowseScopeBar);
        EXPECT_NEAR(GreyAt(png, BGPoint{BGRectGetMaxX(bar) - 20, BGRectGetMidY(bar)}), 166, 3);
    });
}

INSTANTIATE_TEST_SUITE_P(Scales, TBrowseDialogSearchSnapshotTest, ::testing::Values(1, 2));

} // namespace
