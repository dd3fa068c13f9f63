// The blocking browse calls run the library's own dialogs in the call: the older options
// record, a first location given as a descriptor, and the reply or the cancel that comes back.

#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/support/TestEnvironment.h"

#include <basalt/files/BEDesc.h>
#include <basalt/files/BFRef.h>
#include <cstring>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

// A client that acts on its browse dialog once the dialog has started and shows.
struct ActingClient {
    explicit ActingClient(std::function<void(TBrowseDialog&)> work) {
        recorder.onEvent = [this, work](long selector, KelCBRec* record) {
            if (selector != kKelCBStart) {
                return;
            }
            KelDialogRef dialog = nullptr;
            std::memcpy(&dialog, reinterpret_cast<char*>(record) + offsetof(KelCBRec, context),
                        sizeof dialog);
            When(
                [dialog] {
                    const WindowRef window = KelDialogGetWindow(dialog);
                    return window != nullptr && IsWindowVisible(window);
                },
                [dialog, work] { work(*static_cast<TBrowseDialog*>(dialog)); });
        };
    }

    EventRecorder recorder;
};

std::vector<std::string> ReplyPathsOf(const KelReplyRecord& reply) {
    const BEDescList list = reply.selection;
    return PathsOf(list);
}

class KelBlockingBrowseCallsTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("blocking");
        WriteFile(tree / "a.txt", "a");
        std::filesystem::create_directory(tree / "folder");
        UseListView(true);
    }

    std::filesystem::path tree;
};

TEST_F(KelBlockingBrowseCallsTest, AChooseFolderCallRunsInTheCallAndAnswersFileSpecs) {
    BEDesc location = DescOf(tree);
    KelReplyRecord reply{};
    ActingClient client([](TBrowseDialog& dialog) {
        ClickListRow(dialog, 1);
        ClickItem(dialog, kBrowseDefaultButton);
    });
    EXPECT_EQ(KelChooseFolder(&location, &reply, nullptr, EventRecorder::Record, nullptr,
                              &client.recorder),
              noErr);
    BEDisposeDesc(&location);
    EXPECT_EQ(reply.validRecord, 1);
    BEDesc selection = reply.selection;
    BEDesc first{typeNull, nullptr};
    EXPECT_EQ(BEGetNthDesc(&selection, 1, typeWildCard, nullptr, &first), noErr);
    EXPECT_EQ(first.descriptorType, FourCharCode{typeFileSpec});
    BEDisposeDesc(&first);
    EXPECT_EQ(ReplyPathsOf(reply), std::vector<std::string>{(tree / "folder").string()});
    KelDisposeReply(&reply);
}

TEST_F(KelBlockingBrowseCallsTest, ACancelledOpenCallAnswersCancelWithAnEmptyReply) {
    BEDesc location = DescOf(tree / "a.txt");
    KelReplyRecord reply{};
    std::vector<std::string> selected;
    ActingClient client([&](TBrowseDialog& dialog) {
        // A file given as the location is selected in its folder.
        selected = SelectedNames(dialog);
        HeadlessDriver::PressKey(kVK_Escape);
    });
    EXPECT_EQ(KelGetFile(&location, &reply, nullptr, EventRecorder::Record, nullptr, nullptr,
                         nullptr, &client.recorder),
              userCanceledErr);
    BEDisposeDesc(&location);
    EXPECT_EQ(selected, std::vector<std::string>{"a.txt"});
    EXPECT_EQ(reply.validRecord, 0);
    EXPECT_TRUE(ReplyPathsOf(reply).empty());
    KelDisposeReply(&reply);
}

} // namespace
