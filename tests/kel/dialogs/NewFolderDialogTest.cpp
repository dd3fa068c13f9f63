// The window that asks for a new folder's name, run modally on a real temporary folder: what it
// starts with, what accepting and cancelling answer, and the two names it questions.

#include "kel/dialogs/NewFolderDialog.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "tests/kel/dialogs/AlertTesting.h"
#include "tests/kel/foundation/StringTesting.h"
#include "tests/kel/nodes/KelNodeTesting.h"
#include "tests/support/TestEnvironment.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;

namespace {

constexpr int16_t kCreateButton = 2;
constexpr int16_t kCancelButton = 1;
constexpr int16_t kNameField = 4;

ControlRef Control(WindowRef window, int16_t id) {
    const ControlID controlID{0x6B656C73, id};
    ControlRef control = nullptr;
    GetControlByID(window, &controlID, &control);
    return control;
}

std::string Text(WindowRef window, int16_t id) {
    return keltest::Utf8(TStringRef(BTViewCopyText(Control(window, id)), false));
}

// Acts on the alert in front of window once it has come up.
void WhenAlertShows(WindowRef window, std::function<void(WindowRef)> answer) {
    HeadlessDriver::Soon(
        [window, answer] {
            if (FrontWindow() == window) {
                WhenAlertShows(window, answer);
            } else {
                answer(FrontWindow());
            }
        },
        0.01);
}

class NewFolderDialogTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder = keltest::MakeScratchFolder("new-folder");
        std::filesystem::create_directory(folder / "Reports");
    }

    // Runs the window over the folder; steps acts on it once it shows.
    bool Run(const std::function<void(WindowRef)>& steps) {
        TKelClient client(nullptr, nullptr, nullptr, nullptr, 0);
        NewFolderDialog dialog(client);
        dialog.AllocateDialogFromLayout(BCSTR("New Folder"));
        WindowRef window = dialog.GetWindow();
        EXPECT_NE(window, nullptr);
        if (window == nullptr) {
            return false;
        }
        HeadlessDriver::Soon([window, steps] { steps(window); });
        TStringRef name;
        const bool accepted = dialog.StartCreateNewFolder(kelnodetest::NodeAt(folder), name);
        answered = keltest::Utf8(name);
        stillShown = IsWindowVisible(window);
        return accepted;
    }

    static void TypeAndCreate(WindowRef window, const std::string& name) {
        HeadlessDriver::TypeText(name);
        HeadlessDriver::Click(window, "kels", kCreateButton);
    }

    std::filesystem::path folder;
    std::string answered;
    bool stillShown = true;
};

TEST_F(NewFolderDialogTest, OffersAnUntitledNameAllSelectedThatTypingReplaces) {
    std::string shown;
    bool createOn = false;
    EXPECT_TRUE(Run([&](WindowRef window) {
        shown = Text(window, kNameField);
        createOn = IsControlActive(Control(window, kCreateButton));
        TypeAndCreate(window, "Drafts");
    }));
    EXPECT_EQ(shown, "Untitled Folder");
    EXPECT_TRUE(createOn);
    EXPECT_EQ(answered, "Drafts");
    EXPECT_FALSE(stillShown);
    // The window only names the folder; making it is the caller's part.
    EXPECT_FALSE(std::filesystem::exists(folder / "Drafts"));
}

TEST_F(NewFolderDialogTest, CancelAnswersNoName) {
    EXPECT_FALSE(
        Run([](WindowRef window) { HeadlessDriver::Click(window, "kels", kCancelButton); }));
    EXPECT_FALSE(Run([](WindowRef) { HeadlessDriver::PressKey(kVK_Escape); }));
}

TEST_F(NewFolderDialogTest, AnEmptyNameTurnsCreateOffAndIsNotAccepted) {
    bool createOn = true;
    bool stayed = false;
    EXPECT_FALSE(Run([&](WindowRef window) {
        HeadlessDriver::PressKey(kVK_Delete);
        HeadlessDriver::RunUntilIdle();
        createOn = IsControlActive(Control(window, kCreateButton));
        HeadlessDriver::PressKey(kVK_Return);
        HeadlessDriver::RunUntilIdle();
        stayed = IsWindowVisible(window);
        HeadlessDriver::Click(window, "kels", kCancelButton);
    }));
    EXPECT_FALSE(createOn);
    EXPECT_TRUE(stayed);
}

TEST_F(NewFolderDialogTest, ATakenNameIsRefusedWithAnAlertAndTheWindowStays) {
    std::string alert;
    EXPECT_TRUE(Run([&](WindowRef window) {
        WhenAlertShows(window, [&, window](WindowRef shown) {
            alert = keltest::AlertText(shown);
            HeadlessDriver::PressKey(kVK_Return);
            // Names differ by case only on a file system that tells them apart, as here.
            HeadlessDriver::Soon([window] {
                ControlEditTextSelectionRec all{0, 0x7FFF};
                SetControlData(Control(window, kNameField), kControlNoPart,
                               kControlEditTextSelectionTag, sizeof all, &all);
                TypeAndCreate(window, "reports");
            });
        });
        TypeAndCreate(window, "Reports");
    }));
    EXPECT_NE(alert.find("“Reports” is already taken"), std::string::npos) << alert;
    EXPECT_EQ(answered, "reports");
}

TEST_F(NewFolderDialogTest, ANameWithALeadingDotIsAskedAboutFirst) {
    int alerts = 0;
    EXPECT_TRUE(Run([&](WindowRef window) {
        WhenAlertShows(window, [&, window](WindowRef first) {
            ++alerts;
            // Cancelling keeps the window up for another name.
            HeadlessDriver::PressKey(kVK_Escape);
            HeadlessDriver::Soon([&, window, first] {
                EXPECT_NE(FrontWindow(), first);
                WhenAlertShows(window, [&](WindowRef second) {
                    ++alerts;
                    keltest::PressAlertItem(second, 1);
                });
                HeadlessDriver::Click(window, "kels", kCreateButton);
            });
        });
        TypeAndCreate(window, ".hidden");
    }));
    EXPECT_EQ(alerts, 2);
    EXPECT_EQ(answered, ".hidden");
}

} // namespace
