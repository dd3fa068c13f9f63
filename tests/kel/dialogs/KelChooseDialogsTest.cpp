// The choose dialogs and the new folder dialog, made through their public create calls and run
// on real temporary folders: titles, buttons, what may be chosen, where they start, what they
// remember and what they answer.

#include "kel/dialogs/KelChooseDialogs.h"

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/kel/foundation/StringTesting.h"
#include "tests/support/TestEnvironment.h"

#include <cstdlib>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

enum class Kind { file, folder, volume, object, newFolder };

StatusCode Create(Kind kind, const KelDialogCreationOptions& options, PublicDialog& run,
                  bool withCallback = true) {
    const KelEventProc proc = withCallback ? EventRecorder::Record : nullptr;
    void* data = &run.recorder;
    switch (kind) {
    case Kind::file:
        return KelCreateChooseFileDialog(&options, nullptr, proc, nullptr, nullptr, data,
                                         &run.dialog);
    case Kind::folder:
        return KelCreateChooseFolderDialog(&options, proc, nullptr, data, &run.dialog);
    case Kind::volume:
        return KelCreateChooseVolumeDialog(&options, proc, nullptr, data, &run.dialog);
    case Kind::object:
        return KelCreateChooseObjectDialog(&options, proc, nullptr, nullptr, data, &run.dialog);
    case Kind::newFolder:
        return KelCreateNewFolderDialog(&options, proc, data, &run.dialog);
    }
    return paramErr;
}

std::string WindowTitle(WindowRef window) {
    BCStringRef title = nullptr;
    CopyWindowTitleAsBCString(window, &title);
    return Utf8(TStringRef(title, false));
}

std::string ControlTitle(const KelGetFileDialog& dialog, int16_t item) {
    BCStringRef title = nullptr;
    CopyControlTitleAsBCString(dialog.GetControlFromLayout(item), &title);
    return Utf8(TStringRef(title, false));
}

// Every preference key written so far, one per line.
std::string PreferencesText() {
    std::string text;
    const char* config = std::getenv("XDG_CONFIG_HOME");
    const std::filesystem::path folder =
        std::filesystem::path(config != nullptr ? config : (ScratchHome() / ".config").c_str()) /
        "kel" / "preferences";
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
        text += ReadFile(entry.path());
    }
    return text;
}

class KelChooseDialogsTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("choose");
        WriteFile(tree / "letter.txt", "l");
        std::filesystem::create_directory(tree / "archive");
        UseListView(true);
    }

    std::filesystem::path tree;
};

TEST_F(KelChooseDialogsTest, EachDialogHasItsTitleButtonAndPreferencesAndNoTypePopup) {
    struct Case {
        Kind kind;
        const char* title;
        const char* button;
        const char* prefsBase;
    };
    const Case cases[] = {
        {Kind::file, "Choose a File", "Choose", "ChooseFile"},
        {Kind::folder, "Choose a Folder", "Choose", "ChooseFolder"},
        {Kind::volume, "Choose a Disk", "Choose", "ChooseVolume"},
        {Kind::object, "Choose an Item", "Choose", "ChooseObject"},
        {Kind::newFolder, "New Folder", "Create", "NewFolder"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.prefsBase);
        PublicDialog run;
        ASSERT_EQ(Create(c.kind, Options(), run), noErr);
        run.StartIn(tree);
        run.RunModal([&] {
            EXPECT_EQ(WindowTitle(run.Dialog().GetWindow()), c.title);
            EXPECT_EQ(ControlTitle(run.Dialog(), kBrowseDefaultButton), c.button);
            EXPECT_EQ(run.Dialog().TypePopup(), nullptr);
            ClickItem(run.Dialog(), kBrowseCancelButton);
        });
        EXPECT_NE(PreferencesText().find(std::string("VelmoKelServices:") + c.prefsBase + ":"),
                  std::string::npos);
    }
    // A client without a callback gets the open dialog's title.
    PublicDialog quiet;
    ASSERT_EQ(Create(Kind::folder, Options(), quiet, false), noErr);
    quiet.StartIn(tree);
    quiet.RunModal([&] {
        EXPECT_EQ(WindowTitle(quiet.Dialog().GetWindow()), "Open");
        ClickItem(quiet.Dialog(), kBrowseCancelButton);
    });
}

TEST_F(KelChooseDialogsTest, AChooseFolderDialogChoosesFoldersOnlyUnlessTheClientRefuses) {
    PublicDialog run;
    ASSERT_EQ(Create(Kind::folder, Options(), run), noErr);
    run.StartIn(tree);
    const uint32_t action = run.RunModal([&] {
        KelGetFileDialog& dialog = run.Dialog();
        ControlRef choose = dialog.GetControlFromLayout(kBrowseDefaultButton);
        // A file can't even be selected: the selection stays the folder shown.
        ClickListRow(dialog, 1);
        EXPECT_EQ(SelectedNames(dialog), std::vector<std::string>{tree.filename().string()});
        ClickListRow(dialog, 0);
        EXPECT_EQ(SelectedNames(dialog), std::vector<std::string>{"archive"});
        EXPECT_TRUE(IsControlEnabled(choose));
        uint32_t refuseChoose = 4;
        EXPECT_EQ(KelCustomControl(run.dialog, 28, &refuseChoose), noErr);
        EXPECT_FALSE(IsControlEnabled(choose));
        ClickItem(dialog, kBrowseDefaultButton);
        EXPECT_TRUE(run.Dialog().IsRunning());
        uint32_t clear = 0;
        EXPECT_EQ(KelCustomControl(run.dialog, 28, &clear), noErr);
        ClickItem(dialog, kBrowseDefaultButton);
    });
    EXPECT_EQ(action, uint32_t(kKelUserActionChoose));
    EXPECT_EQ(run.ReplyPaths(), std::vector<std::string>{(tree / "archive").string()});
}

TEST_F(KelChooseDialogsTest, AChosenFileGoesToTheRecentListAndAChosenFolderDoesNot) {
    const std::string recents = (ScratchHome() / ".local/share/recently-used.xbel").string();
    PublicDialog folder;
    ASSERT_EQ(Create(Kind::folder, Options(), folder), noErr);
    folder.StartIn(tree);
    folder.RunModal([&] {
        ClickListRow(folder.Dialog(), 0);
        ClickItem(folder.Dialog(), kBrowseDefaultButton);
    });
    EXPECT_EQ(folder.ReplyPaths().size(), 1u);
    EXPECT_EQ(ReadFile(recents).find("archive"), std::string::npos);

    PublicDialog file;
    ASSERT_EQ(Create(Kind::file, Options(), file), noErr);
    file.StartIn(tree);
    file.RunModal([&] {
        ClickListRow(file.Dialog(), 1);
        ClickItem(file.Dialog(), kBrowseDefaultButton);
    });
    EXPECT_EQ(file.ReplyPaths(), std::vector<std::string>{(tree / "letter.txt").string()});
    EXPECT_NE(ReadFile(recents).find("letter.txt"), std::string::npos);
}

TEST_F(KelChooseDialogsTest, AVolumeDialogWithNothingRememberedStartsAtTheTop) {
    PublicDialog run;
    ASSERT_EQ(Create(Kind::volume, Options(), run), noErr);
    run.RunModal([&] {
        TKelNode target;
        EXPECT_EQ(run.Dialog().Target(target), noErr);
        EXPECT_TRUE(target.IsRoot());
        ClickItem(run.Dialog(), kBrowseCancelButton);
    });
    // The other dialogs start in a folder of the user's.
    PublicDialog other;
    ASSERT_EQ(Create(Kind::object, Options(), other), noErr);
    other.RunModal([&] {
        TKelNode target;
        EXPECT_EQ(other.Dialog().Target(target), noErr);
        EXPECT_FALSE(target.IsRoot());
        ClickItem(other.Dialog(), kBrowseCancelButton);
    });
}

} // namespace
