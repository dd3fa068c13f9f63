// The calls around a save on real temporary folders: the blocking KelPutFile runs the save
// dialog in itself and answers with the older record's spec, and KelCompleteSave finishes a
// file the client has written.

#include "basalt/nodes/NodeProperties.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/SaveDialogTesting.h"
#include "tests/kel/nodes/KelNodeTesting.h"
#include "tests/support/TestEnvironment.h"

#include <basalt/files/BEDesc.h>
#include <basalt/files/BFCatalogInfo.h>
#include <cstring>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class KelSaveCallsTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("save-calls");
        RememberSaveForm(true, true);
    }

    fs::path tree;
};

TEST_F(KelSaveCallsTest, KelPutFileRunsTheSaveDialogAndNamesTheFileInsideTheFolder) {
    KelDialogOptions options;
    KelGetDefaultDialogOptions(&options);
    options.optionFlags = kSaveOptions;
    const char name[] = "Quarterly figures.txt";
    options.savedFileName[0] = sizeof name - 1;
    std::memcpy(options.savedFileName + 1, name, sizeof name - 1);
    BEDesc location = DescOf(tree);
    When([] { return FrontWindow() != nullptr && IsWindowVisible(FrontWindow()); },
         [] { HeadlessDriver::Click(FrontWindow(), "kels", kBrowseDefaultButton); });
    KelReplyRecord reply{};
    const StatusCode status = KelPutFile(&location, &reply, &options, nullptr, NodeCode("TEXT"),
                                         NodeCode("****"), nullptr);
    BEDisposeDesc(&location);
    ASSERT_EQ(status, noErr);
    EXPECT_EQ(reply.validRecord, 1);
    BEDesc selection = reply.selection;
    BFSpec spec{};
    DescType type = 0;
    Size size = 0;
    ASSERT_EQ(BEGetNthPtr(&selection, 1, typeFileSpec, nullptr, &type, &spec, sizeof spec, &size),
              noErr);
    EXPECT_EQ(type, DescType(typeFileSpec));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(spec.name + 1), spec.name[0]), name);
    BEDesc folder = DescOf(tree);
    BFRef folderRef{};
    BEGetDescData(&folder, &folderRef, sizeof folderRef);
    BEDisposeDesc(&folder);
    BFCatalogInfo info{};
    ASSERT_EQ(BFGetCatalogInfo(&folderRef, kBFCatInfoNodeID, &info, nullptr, nullptr, nullptr),
              noErr);
    EXPECT_EQ(uint32_t(spec.parID), uint32_t(info.nodeID));
    KelDisposeReply(&reply);
}

TEST_F(KelSaveCallsTest, KelCompleteSaveFinishesTheFileTheClientWrote) {
    SaveRun run(tree, {"Minutes.txt"});
    run.RunModal([&] { ClickItem(run.Save(), kBrowseDefaultButton); });
    KelReplyRecord reply{};
    ASSERT_EQ(KelDialogGetReply(run.dialog, &reply), noErr);
    // The dialog wrote nothing: there is no file to finish yet.
    EXPECT_NE(KelCompleteSave(&reply, 0), noErr);

    WriteFile(tree / "Minutes.txt", "minutes");
    EXPECT_EQ(KelCompleteSave(&reply, 0), noErr);
    KelDisposeReply(&reply);
    Boolean hidden = false;
    const TKelNode file = kelnodetest::NodeAt(tree / "Minutes.txt");
    EXPECT_EQ(GetNodePropertyAsBoolean(file.PeekNodeRef(), NodeCode("hext"), &hidden, 0), noErr);
    EXPECT_TRUE(hidden);
    const std::string recents = ReadFile(ScratchHome() / ".local/share/recently-used.xbel");
    EXPECT_NE(recents.find("Minutes.txt"), std::string::npos);
}

} // namespace
