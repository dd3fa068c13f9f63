// The save window's two forms on real temporary folders: collapsed with only the name and where
// rows, disclosed with the browser, the form remembered for the next save dialog, the full size
// kept on the screen; and a path typed over the name, which goes to the Go To window.

#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/SaveDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

constexpr WindowRegionCode kContent = 33;

struct Form {
    bool simple = false;
    bool paneShown = false;
    bool whereShown = false;
    int height = 0;
};

Form FormOf(const SaveRun& run) {
    KelSaveDocumentDialog& dialog = run.Save();
    TRect bounds;
    dialog.GetBounds(bounds);
    return Form{dialog.SimpleSaveMode(), IsControlVisible(ControlOf(dialog, kBrowsePane)) != 0,
                IsControlVisible(ControlOf(dialog, kBrowseWherePopup)) != 0,
                bounds.bottom - bounds.top};
}

class KelSaveDocumentDialogDisclosureTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("disclosure");
        fs::create_directory(tree / "Drafts");
        RememberSaveForm(true, true);
    }

    fs::path tree;
};

TEST_F(KelSaveDocumentDialogDisclosureTest, TheDisclosureTogglesTheBrowserAndIsRemembered) {
    Form collapsed;
    Form disclosed;
    bool adjusted = false;
    {
        SaveRun run(tree, {"Report.txt"});
        run.RunModal([&] {
            collapsed = FormOf(run);
            run.recorder.selectors.clear();
            ClickItem(run.Save(), kBrowseDisclosure);
            disclosed = FormOf(run);
            const auto& heard = run.recorder.selectors;
            adjusted = std::find(heard.begin(), heard.end(), kKelCBAdjustRect) != heard.end();
            ClickItem(run.Save(), kBrowseCancelButton);
        });
    }
    EXPECT_TRUE(collapsed.simple);
    EXPECT_FALSE(collapsed.paneShown);
    EXPECT_TRUE(collapsed.whereShown);
    EXPECT_FALSE(disclosed.simple);
    EXPECT_TRUE(disclosed.paneShown);
    EXPECT_FALSE(disclosed.whereShown);
    EXPECT_GT(disclosed.height, collapsed.height + 200);
    EXPECT_TRUE(adjusted);

    Form reopened;
    Form collapsedAgain;
    {
        SaveRun run(tree, {"Report.txt"});
        run.RunModal([&] {
            reopened = FormOf(run);
            ClickItem(run.Save(), kBrowseDisclosure);
            collapsedAgain = FormOf(run);
            ClickItem(run.Save(), kBrowseCancelButton);
        });
    }
    EXPECT_FALSE(reopened.simple);
    EXPECT_TRUE(reopened.paneShown);
    EXPECT_NEAR(reopened.height, disclosed.height, 2);
    EXPECT_TRUE(collapsedAgain.simple);
    EXPECT_FALSE(collapsedAgain.paneShown);
    // Three steps of a third land within two points of the goal.
    EXPECT_NEAR(collapsedAgain.height, collapsed.height, 2);

    SaveRun last(tree, {"Report.txt"});
    Form third;
    last.RunModal([&] {
        third = FormOf(last);
        ClickItem(last.Save(), kBrowseCancelButton);
    });
    EXPECT_TRUE(third.simple);
}

// The gap the user sees between the name row and what comes under it: the where row when
// collapsed, the browser's toolbar when disclosed. Neither form may leave a band empty there.
double GapUnderName(KelSaveDocumentDialog& dialog) {
    const BGRect name = FrameIn(dialog, kBrowseSaveName);
    const BGRect under =
        FrameIn(dialog, dialog.SimpleSaveMode() ? kBrowseWherePopup : kBrowseTopRow);
    return under.origin.y - (name.origin.y + name.size.height);
}

// The lowest visible edge of the rows above the buttons, against the buttons' top.
bool RowsClearTheButtons(KelSaveDocumentDialog& dialog) {
    const int16_t above = dialog.SimpleSaveMode() ? kBrowseWherePopup : kBrowsePane;
    const BGRect row = FrameIn(dialog, above);
    return row.origin.y + row.size.height <= FrameIn(dialog, kBrowseDefaultButton).origin.y;
}

TEST_F(KelSaveDocumentDialogDisclosureTest, NeitherFormLeavesABandEmptyUnderTheName) {
    std::vector<double> collapsedGaps;
    std::vector<double> disclosedGaps;
    int clearings = 0;
    auto look = [&](KelSaveDocumentDialog& dialog) {
        (dialog.SimpleSaveMode() ? collapsedGaps : disclosedGaps).push_back(GapUnderName(dialog));
        clearings += RowsClearTheButtons(dialog) ? 0 : 1;
    };
    {
        SaveRun run(tree, {"Report.txt"});
        run.RunModal([&] {
            look(run.Save());
            ClickItem(run.Save(), kBrowseDisclosure);
            look(run.Save());
            // A larger window, then the smallest the disclosed form allows.
            SizeWindow(run.Save().GetWindow(), 900, 700, true);
            look(run.Save());
            const Point minimum = run.Save().MinimumSize();
            SizeWindow(run.Save().GetWindow(), minimum.h, minimum.v, true);
            look(run.Save());
            ClickItem(run.Save(), kBrowseDisclosure);
            look(run.Save());
            ClickItem(run.Save(), kBrowseDisclosure);
            look(run.Save());
            ClickItem(run.Save(), kBrowseCancelButton);
        });
    }
    // Opened in the disclosed form the dialog last had.
    SaveRun reopened(tree, {"Report.txt"});
    reopened.RunModal([&] {
        look(reopened.Save());
        ClickItem(reopened.Save(), kBrowseCancelButton);
    });
    ASSERT_EQ(collapsedGaps.size(), 2u);
    ASSERT_EQ(disclosedGaps.size(), 5u);
    for (double gap : collapsedGaps) {
        EXPECT_EQ(gap, collapsedGaps.front());
    }
    for (double gap : disclosedGaps) {
        EXPECT_EQ(gap, collapsedGaps.front());
    }
    EXPECT_EQ(clearings, 0);
}

TEST_F(KelSaveDocumentDialogDisclosureTest, TheFullSizeStaysOnTheScreen) {
    TKelPrefs prefs;
    prefs.SetClientKeys(TStringRef(BCSTR("PutFile")), TStringRef(BCSTR("0")));
    prefs.SetDialogSizePref(TRect(0, 0, 900, 5000));
    BGRect screen = BGRectZero;
    BTWindowGetAvailablePositioningBounds(0, &screen);
    SaveRun run(tree, {"Report.txt"});
    Rect content{};
    Point minimum{0, 0};
    run.RunModal([&] {
        ClickItem(run.Save(), kBrowseDisclosure);
        GetWindowBounds(run.Save().GetWindow(), kContent, &content);
        minimum = run.Save().MinimumSize();
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    EXPECT_LE(content.bottom, screen.origin.y + screen.size.height);
    EXPECT_GE(content.bottom - content.top, minimum.v - 2);
    EXPECT_GT(content.bottom - content.top, 300);
}

TEST_F(KelSaveDocumentDialogDisclosureTest, ASlashOverTheNameOpensGoToAndKeepsTheName) {
    SaveRun run(tree, {"Report.txt"});
    std::string field;
    std::string target;
    run.RunModal([&] {
        WindowRef window = run.Save().GetWindow();
        WhenInFront(window, [&](WindowRef) {
            // The slash stands in the Go To field already.
            HeadlessDriver::TypeText((tree / "Drafts").string().substr(1));
            HeadlessDriver::PressKey(kVK_Return);
        });
        HeadlessDriver::TypeText("/");
        HeadlessDriver::RunUntilIdle();
        RunUntil([&] { return TargetName(run.Save()) == "Drafts"; });
        field = run.FieldText();
        target = TargetName(run.Save());
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    EXPECT_EQ(target, "Drafts");
    EXPECT_EQ(field, "Report");
}

} // namespace
