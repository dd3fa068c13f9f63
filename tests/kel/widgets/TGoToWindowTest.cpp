// The Go To window run modally on a real temporary tree, typed into as a user would: what it
// opens with, the paths it answers, what it says about a path that leads nowhere, and name
// completion on Tab, on "/" and after a pause in typing.

#include "kel/widgets/TGoToWindow.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/foundation/TStringRef.h"
#include "tests/kel/foundation/StringTesting.h"
#include "tests/kel/nodes/KelNodeTesting.h"
#include "tests/support/TestEnvironment.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using kelnodetest::NodeAt;
namespace fs = std::filesystem;

namespace {

constexpr OSType kGoTo = 0x6B6C6774; // "klgt"
constexpr int32_t kField = 1;
constexpr int32_t kMessage = 2;
constexpr int32_t kGoButton = 3;

ControlRef Control(int32_t id) {
    const ControlID controlID{kGoTo, id};
    ControlRef control = nullptr;
    GetControlByID(GetUserFocusWindow(), &controlID, &control);
    return control;
}

std::string FieldText() {
    BCStringRef text = nullptr;
    GetControlData(Control(kField), 0, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return keltest::Utf8(TStringRef(text, false));
}

// The selection as (start, end).
std::pair<int, int> Selection() {
    ControlEditTextSelectionRec selection{-1, -1};
    GetControlData(Control(kField), 0, kControlEditTextSelectionTag, sizeof selection, &selection,
                   nullptr);
    return {selection.selStart, selection.selEnd};
}

int Length(const std::string& utf8) {
    return int(kelnodetest::PathText(utf8).size());
}

// The path as the user types it.
std::string Typed(const fs::path& path) {
    return keltest::Utf8(TStringRef(
        BCStringCreateWithCharacters(
            nullptr, reinterpret_cast<const UniChar*>(kelnodetest::PathText(path).data()),
            BCIndex(kelnodetest::PathText(path).size())),
        false));
}

void Type(const std::string& text) {
    HeadlessDriver::TypeText(text);
    HeadlessDriver::RunUntilIdle();
}

void Press(uint16_t key) {
    HeadlessDriver::PressKey(key);
    HeadlessDriver::RunUntilIdle();
}

// Runs the loop (timers fire) until the condition holds, for at most a generous deadline.
bool RunUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        HeadlessDriver::RunFor(0.02);
    }
    return true;
}

class TGoToWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(TKelNode::InitializeCatalog(), noErr);
        tree = keltest::MakeScratchFolder("goto");
        fs::create_directories(tree / "Projects" / "Inner");
        fs::create_directory(tree / "a:b");
        fs::create_directory(tree / "caf\xE9 dir");
        keltest::WriteFile(tree / "report.txt", "r");
    }

    // Runs a window opened with first; steps act on it from inside its loop.
    bool Run(char first, const std::function<void()>& steps) {
        HeadlessDriver::Soon([steps] {
            WindowRef shown = GetUserFocusWindow();
            steps();
            // Steps that left the window open (a failure) must not leave the test hanging.
            QuitAppModalLoopForWindow(shown);
        });
        return window.Run(path, first);
    }

    TGoToWindow window;
    TKelNodeArray path;
    fs::path tree;
};

TEST_F(TGoToWindowTest, OpensEmptyWithGoDisabledUntilThereIsTextAndCancelLeavesThePath) {
    path.push_back(NodeAt(tree));
    std::string shown = "?";
    bool goAtFirst = true, goAfterTyping = false, goAfterDeleting = true;
    EXPECT_FALSE(Run(0, [&] {
        shown = FieldText();
        goAtFirst = IsControlEnabled(Control(kGoButton));
        Type("/");
        goAfterTyping = IsControlEnabled(Control(kGoButton));
        Press(kVK_Delete);
        goAfterDeleting = IsControlEnabled(Control(kGoButton));
        HeadlessDriver::Click(GetUserFocusWindow(), "klgt", kGoButton);
        Press(kVK_Escape);
    }));
    EXPECT_EQ(shown, "");
    EXPECT_FALSE(goAtFirst);
    EXPECT_TRUE(goAfterTyping);
    EXPECT_FALSE(goAfterDeleting);
    ASSERT_EQ(path.size(), 1u) << "a cancelled run leaves the caller's path alone";
    EXPECT_EQ(path.front(), NodeAt(tree));
}

TEST_F(TGoToWindowTest, AFirstCharacterStandsInTheFieldAndATildePathStartsAtHome) {
    fs::create_directories(keltest::ScratchHome() / "x");
    std::string shown;
    bool goAtFirst = false;
    std::pair<int, int> caret;
    EXPECT_TRUE(Run('~', [&] {
        shown = FieldText();
        caret = Selection();
        goAtFirst = IsControlEnabled(Control(kGoButton));
        Type("/x");
        Press(kVK_Return);
    }));
    EXPECT_EQ(shown, "~");
    EXPECT_EQ(caret, std::make_pair(1, 1)) << "typing goes on after the character";
    EXPECT_TRUE(goAtFirst);
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.back(), NodeAt(keltest::ScratchHome() / "x"));
}

TEST_F(TGoToWindowTest, AnswersTrimmedPathsFilesAndTheRootItself) {
    EXPECT_TRUE(Run(0, [&] {
        Type(" \t" + Typed(tree / "Projects") + "  ");
        Press(kVK_Return);
    }));
    ASSERT_FALSE(path.empty());
    EXPECT_TRUE(path.front().IsRoot());
    EXPECT_EQ(path.back(), NodeAt(tree / "Projects"));

    path.clear();
    EXPECT_TRUE(Run('/', [] { Press(kVK_Return); }));
    ASSERT_EQ(path.size(), 1u) << "the root alone, not a path through the boot volume";
    EXPECT_TRUE(path.front().IsRoot());

    path.clear();
    EXPECT_TRUE(Run(0, [&] {
        Type(Typed(tree / "report.txt"));
        Press(kVK_Return);
    }));
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.back(), NodeAt(tree / "report.txt"));
}

TEST_F(TGoToWindowTest, APathThatLeadsNowhereKeepsTheWindowOpenAndSaysSo) {
    const std::string nowhere = Typed(tree / "nowhere" / "at all");
    bool messageShown = false, messageAfterKey = true;
    std::pair<int, int> selection;
    std::string replaced;
    int beeps = 0;
    HeadlessDriver::ResetBeepCount();
    EXPECT_FALSE(Run(0, [&] {
        Type(nowhere);
        Press(kVK_Return);
        messageShown = IsControlVisible(Control(kMessage));
        selection = Selection();
        beeps = HeadlessDriver::BeepCount();
        Type("P");
        messageAfterKey = IsControlVisible(Control(kMessage));
        replaced = FieldText();
        // Relative and blank texts lead nowhere either.
        Press(kVK_Return);
        Type(" ");
        Press(kVK_Return);
        beeps = HeadlessDriver::BeepCount() - beeps;
        Press(kVK_Escape);
    }));
    EXPECT_TRUE(messageShown);
    EXPECT_EQ(selection, std::make_pair(0, Length(nowhere))) << "the whole text, for overtyping";
    EXPECT_FALSE(messageAfterKey);
    EXPECT_EQ(replaced, "P");
    EXPECT_EQ(beeps, 2);
    EXPECT_TRUE(path.empty());
}

TEST_F(TGoToWindowTest, TabCompletesAFolderAndLeavesTheCaretBehindIt) {
    std::string first, second, noCompletion, withSlash;
    std::pair<int, int> caret;
    EXPECT_FALSE(Run(0, [&] {
        Type(Typed(tree / "Proj"));
        Press(kVK_Tab);
        first = FieldText();
        caret = Selection();
        Type("In");
        Press(kVK_Tab);
        second = FieldText();
        // Nothing to complete: the slash is typed, and a tab changes nothing in the text.
        Type("zz/");
        withSlash = FieldText();
        Press(kVK_Tab);
        noCompletion = FieldText();
        Press(kVK_Escape);
    }));
    const std::string projects = Typed(tree / "Projects") + "/";
    EXPECT_EQ(first, projects);
    EXPECT_EQ(caret, std::make_pair(Length(projects), Length(projects)));
    EXPECT_EQ(second, projects + "Inner/");
    EXPECT_EQ(withSlash, projects + "Inner/zz/");
    EXPECT_EQ(noCompletion, withSlash);
}

TEST_F(TGoToWindowTest, APauseOffersTheCompletionSelectedInTheFoldersCase) {
    const std::string typed = Typed(tree / "proj");
    const std::string completed = Typed(tree / "Projects") + "/";
    bool offered = false;
    std::pair<int, int> selection, afterSlash;
    std::string afterOvertyping, afterConfirming;
    EXPECT_FALSE(Run(0, [&] {
        Type(typed);
        offered = RunUntil([&] { return FieldText() == completed; });
        selection = Selection();
        Type("e"); // replaces the offer, and the wait starts again
        afterOvertyping = FieldText();
        RunUntil([&] { return FieldText() == completed; });
        Type("/");
        afterConfirming = FieldText();
        afterSlash = Selection();
        Press(kVK_Escape);
    }));
    ASSERT_TRUE(offered) << "no completion within the deadline";
    EXPECT_EQ(selection, std::make_pair(Length(typed), Length(completed)));
    EXPECT_EQ(afterOvertyping, Typed(tree / "Proje"));
    EXPECT_EQ(afterConfirming, completed) << "the slash accepts the offer instead of adding one";
    EXPECT_EQ(afterSlash, std::make_pair(Length(completed), Length(completed)));
}

TEST_F(TGoToWindowTest, CompletesAndFindsNamesWithColonsAndNamesThatAreNotUtf8) {
    std::string colon, legacy;
    EXPECT_TRUE(Run(0, [&] {
        Type(Typed(tree / "a:"));
        Press(kVK_Tab);
        colon = FieldText();
        Press(kVK_Return);
    }));
    EXPECT_EQ(colon, Typed(tree / "a:b") + "/");
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.back(), NodeAt(tree / "a:b"));

    EXPECT_TRUE(Run(0, [&] {
        Type(Typed(tree / "caf"));
        Press(kVK_Tab);
        legacy = FieldText();
        Press(kVK_Return);
    }));
    EXPECT_EQ(legacy, Typed(tree) + "/caf\u00E9 dir/") << "the name as it shows";
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.back(), NodeAt(tree / "caf\xE9 dir"));
}

// Proving that nothing happens takes the whole delay: a wait on a condition can't show it.
TEST_F(TGoToWindowTest, NoCompletionRunsOnceTheWindowIsDown) {
    ControlRef field = nullptr;
    EXPECT_FALSE(Run(0, [&] {
        field = Control(kField);
        Type(Typed(tree / "Proj"));
        Press(kVK_Escape);
    }));
    ASSERT_NE(field, nullptr);
    HeadlessDriver::RunFor(1.5);
    BCStringRef text = nullptr;
    GetControlData(field, 0, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    EXPECT_EQ(keltest::Utf8(TStringRef(text, false)), Typed(tree / "Proj"));
}

} // namespace
