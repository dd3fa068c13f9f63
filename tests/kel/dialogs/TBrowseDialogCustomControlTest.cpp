// The client's control messages (KelCustomControl) to an open dialog on real temporary folders,
// in the order of their selectors: before the dialog runs, while it runs, and the three that
// end it.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <basalt/files/BEDesc.h>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

constexpr StatusCode kFailed = kKelBadCustomControlParamErr;
constexpr StatusCode kInvalid = kKelNotApplicableErr;
constexpr StatusCode kNoSaveName = -8738;

// A descriptor list of the nodes at those paths; the caller disposes of it.
BEDesc ListOf(std::initializer_list<std::filesystem::path> paths) {
    BEDesc list{typeNull, nullptr};
    BECreateList(nullptr, 0, false, &list);
    long index = 0;
    for (const std::filesystem::path& path : paths) {
        BEDesc item = DescOf(path);
        BEPutDesc(&list, ++index, &item);
        BEDisposeDesc(&item);
    }
    return list;
}

// The application's text encoding for as long as it lives.
struct ApplicationEncoding {
    explicit ApplicationEncoding(const char* name) { setenv("KEL_TEXT_ENCODING", name, 1); }
    ~ApplicationEncoding() { unsetenv("KEL_TEXT_ENCODING"); }
    ApplicationEncoding(const ApplicationEncoding&) = delete;
    ApplicationEncoding& operator=(const ApplicationEncoding&) = delete;
};

class TBrowseDialogCustomControlTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("messages");
        WriteFile(tree / "a.txt", "a");
        WriteFile(tree / "b.txt", "b");
        std::filesystem::create_directory(tree / "inner");
        WriteFile(tree / "inner" / "c.txt", "c");
        UseListView(true);
        const KelDialogCreationOptions options =
            Options(kKelModalityAppModal, kKelOptDefaults | kKelOptMultipleSelection);
        ASSERT_EQ(KelCreateGetFileDialog(&options, nullptr, EventRecorder::Record, nullptr, nullptr,
                                         &open.recorder, &open.dialog),
                  noErr);
    }

    StatusCode Send(long selector, void* parms = nullptr) {
        return KelCustomControl(open.dialog, selector, parms);
    }

    std::vector<std::string> Location() {
        BEDesc desc{typeNull, nullptr};
        EXPECT_EQ(Send(7, &desc), noErr);
        std::vector<std::string> paths = PathsOf(desc);
        BEDisposeDesc(&desc);
        return paths;
    }

    std::vector<std::string> Selection() {
        BEDesc desc{typeNull, nullptr};
        EXPECT_EQ(Send(9, &desc), noErr);
        std::vector<std::string> paths = PathsOf(desc);
        BEDisposeDesc(&desc);
        return paths;
    }

    std::string Path(const char* name) const { return (tree / name).string(); }

    std::filesystem::path tree;
    PublicDialog open;
};

TEST_F(TBrowseDialogCustomControlTest, BeforeTheRunMessagesSetWhereAndWhatTheDialogShows) {
    uint16_t value = 1;
    EXPECT_EQ(Send(1, &value), kInvalid);
    value = 2;
    EXPECT_EQ(Send(2, &value), kFailed);
    for (long selector : {1, 2, 7, 8, 9, 13, 14, 17, 20, 21, 22, 23, 24, 25, 28}) {
        EXPECT_EQ(Send(selector), paramErr) << selector;
    }
    for (long selector : {3, 4, 5, 6}) {
        EXPECT_EQ(Send(selector), kInvalid) << selector;
    }
    // With no browser yet, the messages that act on it fail.
    for (long selector : {11, 26, 27, 29}) {
        EXPECT_EQ(Send(selector), kFailed) << selector;
    }

    BEDesc folder = DescOf(tree);
    EXPECT_EQ(Send(8, &folder), noErr);
    BEDisposeDesc(&folder);
    EXPECT_EQ(Location(), std::vector<std::string>{tree.string()});
    EXPECT_EQ(Selection(), std::vector<std::string>{tree.string()});

    // A single descriptor works as a list of one; a list sets the location to its first
    // item's folder.
    BEDesc one = DescOf(tree / "inner" / "c.txt");
    EXPECT_EQ(Send(10, &one), noErr);
    BEDisposeDesc(&one);
    EXPECT_EQ(Location(), std::vector<std::string>{(tree / "inner").string()});
    BEDesc two = ListOf({tree / "b.txt", tree / "a.txt"});
    EXPECT_EQ(Send(10, &two), noErr);
    BEDisposeDesc(&two);
    EXPECT_EQ(Location(), std::vector<std::string>{tree.string()});
    EXPECT_EQ(Selection(), (std::vector<std::string>{Path("a.txt"), Path("b.txt")}));

    std::vector<std::string> started;
    open.RunModal([&] {
        started = SelectedNames(open.Dialog());
        ClickItem(open.Dialog(), kBrowseCancelButton);
    });
    EXPECT_EQ(started, (std::vector<std::string>{"a.txt", "b.txt"}));
}

TEST_F(TBrowseDialogCustomControlTest, WhileRunningMessagesMoveSelectAndAnswerInTableOrder) {
    open.StartIn(tree);
    unsigned char showing = 9;
    uint8_t saveName[64] = {};
    ControlEditTextSelectionRec range{0, 1};
    uint32_t state = 0;
    open.RunModal([&] {
        EXPECT_EQ(Send(8, nullptr), paramErr);
        BEDesc inner = DescOf(tree / "inner");
        EXPECT_EQ(Send(8, &inner), noErr);
        BEDisposeDesc(&inner);
        EXPECT_EQ(TargetName(open.Dialog()), "inner");

        BEDesc both = ListOf({tree / "a.txt", tree / "b.txt"});
        EXPECT_EQ(Send(10, &both), noErr);
        BEDisposeDesc(&both);
        EXPECT_EQ(Selection(), (std::vector<std::string>{Path("a.txt"), Path("b.txt")}));
        EXPECT_EQ(Send(10), noErr);
        EXPECT_EQ(Selection(), std::vector<std::string>{tree.string()});
        // Items of two folders: the dialog moves to the first one's folder even though the
        // other item can't be selected there.
        BEDesc mixed = ListOf({tree / "inner" / "c.txt", tree / "a.txt"});
        Send(10, &mixed);
        BEDisposeDesc(&mixed);
        EXPECT_EQ(Location(), std::vector<std::string>{(tree / "inner").string()});
        Send(27);

        // The one node selected is the folder shown, which shows no preview.
        EXPECT_EQ(Send(17, &showing), noErr);
        EXPECT_EQ(Send(23, saveName), kNoSaveName);
        EXPECT_EQ(Send(24, saveName), noErr);
        EXPECT_EQ(Send(25, &range), kKelWrongDialogClassErr);
        EXPECT_EQ(Send(26), noErr);
        const std::vector<std::string> all = SelectedNames(open.Dialog());
        EXPECT_EQ(std::count(all.begin(), all.end(), "a.txt") +
                      std::count(all.begin(), all.end(), "b.txt"),
                  2);
        state = kKelOptDefaults;
        EXPECT_EQ(Send(28, &state), noErr);
        EXPECT_EQ(Send(29), noErr);
        EXPECT_EQ(Send(27), noErr);
        EXPECT_EQ(TargetName(open.Dialog()), tree.parent_path().filename().string());
        EXPECT_EQ(Send(31), kKelWrongDialogClassErr);
        EXPECT_EQ(Send(-1), kKelWrongDialogClassErr);
        ClickItem(open.Dialog(), kBrowseCancelButton);
    });
    EXPECT_EQ(showing, 0);
}

TEST_F(TBrowseDialogCustomControlTest, OpenCancelAndTerminateEndTheDialogEachWithItsAction) {
    open.StartIn(tree);
    StatusCode refused = 0;
    StatusCode accepted = 1;
    EXPECT_EQ(open.RunModal([&] {
        // The folder shown is no file to open.
        refused = Send(12);
        ClickListRow(open.Dialog(), 0);
        accepted = Send(16);
    }),
              uint32_t(kKelUserActionOpen));
    EXPECT_EQ(refused, kFailed);
    EXPECT_EQ(accepted, noErr);
    EXPECT_EQ(open.ReplyPaths(), std::vector<std::string>{Path("a.txt")});

    PublicDialog cancelled;
    const KelDialogCreationOptions options = Options();
    ASSERT_EQ(KelCreateGetFileDialog(&options, nullptr, EventRecorder::Record, nullptr, nullptr,
                                     &cancelled.recorder, &cancelled.dialog),
              noErr);
    EXPECT_EQ(cancelled.RunModal(
                  [&] { EXPECT_EQ(KelCustomControl(cancelled.dialog, 15, nullptr), noErr); }),
              uint32_t(kKelUserActionCancel));
    const std::vector<long>& heard = cancelled.recorder.selectors;
    const auto cancel = std::find(heard.begin(), heard.end(), kKelCBCancel);
    EXPECT_LT(cancel, std::find(heard.begin(), heard.end(), kKelCBTerminate));

    PublicDialog ended;
    ASSERT_EQ(KelCreateGetFileDialog(&options, nullptr, EventRecorder::Record, nullptr, nullptr,
                                     &ended.recorder, &ended.dialog),
              noErr);
    EXPECT_EQ(
        ended.RunModal([&] { EXPECT_EQ(KelCustomControl(ended.dialog, 30, nullptr), noErr); }),
        uint32_t(kKelUserActionNone));
    StatusCode status = 0;
    EXPECT_TRUE(ended.ReplyPaths(&status).empty());
    EXPECT_EQ(status, kKelWrongStateErr);
}

// A client's names come in its own encoding and the name being saved goes back in the system
// script; with windows-1252 as the application's, the two spell "\u00E9" differently.
TEST_F(TBrowseDialogCustomControlTest,
       NamesComeInTheApplicationsEncodingAndLeaveInTheSystemScript) {
    const ApplicationEncoding latin("windows-1252");
    open.StartIn(tree);
    StatusCode made = 1;
    open.RunModal([&] {
        const uint8_t folder[] = "\x05"
                                 "Caf\xE9s";
        made = Send(kKelCtlNewFolder, const_cast<uint8_t*>(folder));
        EXPECT_EQ(Send(kKelCtlCancel), noErr);
    });
    EXPECT_EQ(made, noErr);
    EXPECT_TRUE(std::filesystem::is_directory(tree / "Caf\u00E9s"));

    PublicDialog save;
    const KelDialogCreationOptions options = Options();
    ASSERT_EQ(
        KelCreatePutFileDialog(&options, 0, 0, EventRecorder::Record, &save.recorder, &save.dialog),
        noErr);
    save.StartIn(tree);
    uint8_t name[33] = {};
    StatusCode got = 1;
    save.RunModal([&] {
        const TStringRef cafe(
            BCStringCreateWithCString(nullptr, "Caf\u00E9.txt", kBCStringEncodingUTF8), false);
        KelDialogSetSaveFileName(save.dialog, cafe.AsBCStringRef());
        got = KelCustomControl(save.dialog, kKelCtlGetEditFileName, name);
        EXPECT_EQ(KelCustomControl(save.dialog, kKelCtlCancel, nullptr), noErr);
    });
    EXPECT_EQ(got, noErr);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(name + 1), name[0]), "Caf\x8E.txt");
}

} // namespace
