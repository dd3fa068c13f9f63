// Saving over a name that is taken, on real temporary folders: a file is replaced only after
// the user's yes in the replace alert, whose default is Cancel; folders, locked files and files
// the user may not write are refused; packages and aliases follow their own rules; and a client
// that asks for no questions gets none.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/SaveDialogTesting.h"
#include "tests/kel/interface/AlertIconTesting.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/Unprivileged.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

constexpr int16_t kReplace = 1;
constexpr int16_t kCancel = 2;
constexpr uint16_t kKeyR = 0x0F; // the R key of the ANSI layout

// What happened when the user tried to save under a name.
struct Attempt {
    std::string alert;
    std::vector<uint32_t> alertIcon;
    bool saved = false;
    bool replacing = false;
};

// A key the user presses in the alert.
struct Key {
    uint16_t code = 0;
    uint32_t modifiers = 0;
    char16_t character = 0;
};

// Accepts the name, answers the alert that comes (if one does) with answer (a key press when
// key is set), and cancels a dialog that stays up.
Attempt TrySave(const fs::path& folder, const SaveSetup& setup, int16_t answer, Key key = {}) {
    SaveRun run(folder, setup);
    Attempt attempt;
    run.RunModal([&] {
        WhenAlertShows(run, [&](WindowRef alert) {
            attempt.alert = AlertText(alert);
            attempt.alertIcon = AlertIconPixels(alert);
            if (key.code != 0) {
                HeadlessDriver::PressKey(key.code, key.modifiers, key.character);
            } else {
                PressAlertItem(alert, answer);
            }
        });
        ClickItem(run.Save(), kBrowseDefaultButton);
        if (run.Save().IsRunning()) {
            ClickItem(run.Save(), kBrowseCancelButton);
        }
    });
    attempt.saved = KelDialogGetUserAction(run.dialog) == kKelUserActionSaveAs;
    attempt.replacing = attempt.saved && ReplyOf(run).replacing;
    return attempt;
}

// Sets or clears the file system's immutable flag; false where the process may not.
bool SetImmutable(const fs::path& path, bool immutable) {
    const int fd = ::open(path.c_str(), O_RDONLY);
    int flags = 0;
    bool done = fd >= 0 && ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
    flags = immutable ? (flags | FS_IMMUTABLE_FL) : (flags & ~FS_IMMUTABLE_FL);
    done = done && ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
    if (fd >= 0) {
        ::close(fd);
    }
    return done;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class KelSaveDocumentDialogReplaceTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("replace");
        WriteFile(tree / "notes.txt", "old notes");
        fs::create_directory(tree / "Archive");
        fs::create_directory(tree / "Tool.bundle");
        fs::create_directory_symlink(tree / "Archive", tree / "Shortcut");
        RememberSaveForm(true, true);
    }

    fs::path tree;
};

TEST_F(KelSaveDocumentDialogReplaceTest, AFileIsReplacedOnlyAfterTheUserSaysSo) {
    // Return presses Cancel, the default button, as enter, escape and command-period do.
    const Attempt returned = TrySave(tree, {"notes.txt"}, 0, {kVK_Return});
    EXPECT_TRUE(Contains(returned.alert, "“notes.txt” already exists"));
    EXPECT_FALSE(returned.saved);
    for (Key key :
         {Key{kVK_ANSI_KeypadEnter}, Key{kVK_Escape}, Key{kVK_ANSI_Period, cmdKey, u'.'}}) {
        const Attempt attempt = TrySave(tree, {"notes.txt"}, 0, key);
        EXPECT_NE(attempt.alert, "") << key.code;
        EXPECT_FALSE(attempt.saved) << key.code;
    }
    EXPECT_FALSE(TrySave(tree, {"notes.txt"}, kCancel).saved);
    // Command-R is the Replace button's key.
    EXPECT_TRUE(TrySave(tree, {"notes.txt"}, 0, {kKeyR, cmdKey, u'r'}).saved);

    const Attempt replaced = TrySave(tree, {"notes.txt"}, kReplace);
    EXPECT_TRUE(replaced.saved);
    EXPECT_TRUE(replaced.replacing);
    // The dialog never writes: the client does, after the reply.
    EXPECT_EQ(ReadFile(tree / "notes.txt"), "old notes");

    const Attempt fresh = TrySave(tree, {"fresh.txt"}, kReplace);
    EXPECT_EQ(fresh.alert, "");
    EXPECT_TRUE(fresh.saved);
    EXPECT_FALSE(fresh.replacing);
}

TEST_F(KelSaveDocumentDialogReplaceTest, TheAlertNamesAFileWhoseExtensionIsShownInFull) {
    RememberSaveForm(true, false);
    const Attempt shown = TrySave(tree, {"notes.txt"}, kCancel);
    EXPECT_TRUE(Contains(shown.alert, "“notes.txt” already exists"));
    const Attempt plain = TrySave(tree, {"Archive.old", kKelOptDefaults}, kCancel);
    EXPECT_EQ(plain.alert, "");
}

TEST_F(KelSaveDocumentDialogReplaceTest, AFileShownWithoutItsExtensionIsNamedWithItOnce) {
    WriteFile(tree / "minutes.txt", "old minutes");
    ASSERT_EQ(::setxattr((tree / "minutes.txt").c_str(), "user.kel.hide-extension", "1", 1, 0), 0);
    // The list shows "minutes": the alert adds the extension, and takes nothing off the stem.
    const Attempt hidden = TrySave(tree, {"minutes.txt"}, kCancel);
    EXPECT_TRUE(Contains(hidden.alert, "“minutes.txt” already exists")) << hidden.alert;
    const Attempt shown = TrySave(tree, {"notes.txt"}, kCancel);
    EXPECT_TRUE(Contains(shown.alert, "“notes.txt” already exists")) << shown.alert;
}

TEST_F(KelSaveDocumentDialogReplaceTest, FoldersArentReplacedButAliasesAndChosenPackagesAre) {
    const Attempt folder = TrySave(tree, {"Archive"}, 1);
    EXPECT_TRUE(Contains(folder.alert, "because it is a folder"));
    EXPECT_FALSE(folder.saved);

    const Attempt package = TrySave(tree, {"Tool.bundle"}, 1);
    EXPECT_TRUE(Contains(package.alert, "because it is a folder"));
    EXPECT_FALSE(package.saved);
    SaveSetup packages{"Tool.bundle", kSaveOptions | kKelOptPackagesSelectable};
    const Attempt chosen = TrySave(tree, packages, kReplace);
    EXPECT_TRUE(Contains(chosen.alert, "already exists"));
    EXPECT_TRUE(chosen.saved);

    // The question is about the alias itself, not the folder it leads to.
    const Attempt alias = TrySave(tree, {"Shortcut"}, kReplace);
    EXPECT_TRUE(Contains(alias.alert, "“Shortcut” already exists"));
    EXPECT_TRUE(alias.saved);
    EXPECT_TRUE(alias.replacing);
}

TEST_F(KelSaveDocumentDialogReplaceTest, RefusalsAndQuestionsAllShowTheCautionIcon) {
    const std::vector<uint32_t> caution = AlertIconPixelsOfType(kAlertCautionAlert);
    ASSERT_FALSE(caution.empty());
    // A refusal is a note: without the save dialog's choice it would show this.
    ASSERT_NE(AlertIconPixelsOfType(kAlertNoteAlert), caution);
    const Attempt folder = TrySave(tree, {"Archive"}, 1);
    EXPECT_TRUE(Contains(folder.alert, "because it is a folder"));
    EXPECT_EQ(folder.alertIcon, caution);
    const Attempt taken = TrySave(tree, {"notes.txt"}, kCancel);
    EXPECT_TRUE(Contains(taken.alert, "already exists"));
    EXPECT_EQ(taken.alertIcon, caution);
}

TEST_F(KelSaveDocumentDialogReplaceTest, NoQuestionsMeansNoAlertAtAll) {
    SaveSetup quiet{"notes.txt", kSaveOptions | kKelOptNoReplaceConfirm};
    const Attempt attempt = TrySave(tree, quiet, kCancel);
    EXPECT_EQ(attempt.alert, "");
    EXPECT_TRUE(attempt.saved);
    EXPECT_TRUE(attempt.replacing);
}

TEST_F(KelSaveDocumentDialogReplaceTest, ALockedFileIsRefusedUnlessTheClientAsksNoQuestions) {
    const fs::path locked = tree / "notes.txt";
    if (!SetImmutable(locked, true)) {
        GTEST_SKIP() << "only root may lock a file here";
    }
    const Attempt attempt = TrySave(tree, {"notes.txt"}, 1);
    const Attempt quiet = TrySave(tree, {"notes.txt", kSaveOptions | kKelOptNoReplaceConfirm}, 1);
    SetImmutable(locked, false);
    EXPECT_TRUE(Contains(attempt.alert, "because it is locked"));
    EXPECT_FALSE(attempt.saved);
    // The client that asked for no questions gets none, and learns that the name is taken.
    EXPECT_EQ(quiet.alert, "");
    EXPECT_TRUE(quiet.saved);
    EXPECT_TRUE(quiet.replacing);
}

TEST_F(KelSaveDocumentDialogReplaceTest, AFileTheUserMayNotWriteIsRefusedInAFolderTheUserMay) {
    ::chmod((tree / "notes.txt").c_str(), 0444);
    // Root writes through any mode bits: the check runs as an ordinary user.
    const int failures = RunUnprivileged(tree, [&] {
        const Attempt attempt = TrySave(tree, {"notes.txt"}, 1);
        int failed = Contains(attempt.alert, "do not have permission") ? 0 : 1;
        failed |= attempt.saved ? 2 : 0;
        failed |= ReadFile(tree / "notes.txt") == "old notes" ? 0 : 4;
        // The folder itself lies in one the user can't write: saving into it is fine.
        failed |= TrySave(tree, {"fresh.txt"}, kCancel).saved ? 0 : 8;
        return failed;
    });
    EXPECT_EQ(failures, 0);
}

} // namespace
