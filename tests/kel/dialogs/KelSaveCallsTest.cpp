// The calls around a save on real temporary folders: the blocking KelPutFile runs the save
// dialog in itself and answers with the file the older reply names, and KelCompleteSave
// finishes a file the client has written.

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

// Runs the blocking KelPutFile on folder with name, types typed into the field if it isn't
// empty, saves, and answers the file the older reply names.
BFSpec PutFile(const fs::path& folder, const std::string& name, const std::string& typed = {}) {
    KelDialogOptions options;
    KelGetDefaultDialogOptions(&options);
    options.optionFlags = kSaveOptions;
    options.savedFileName[0] = uint8_t(name.size());
    std::memcpy(options.savedFileName + 1, name.data(), name.size());
    BEDesc location = DescOf(folder);
    When([] { return FrontWindow() != nullptr && IsWindowVisible(FrontWindow()); },
         [typed] {
             if (!typed.empty()) {
                 HeadlessDriver::TypeText(typed);
                 HeadlessDriver::RunUntilIdle();
             }
             HeadlessDriver::Click(FrontWindow(), "kels", kBrowseDefaultButton);
         });
    KelReplyRecord reply{};
    const StatusCode status = KelPutFile(&location, &reply, &options, nullptr, NodeCode("TEXT"),
                                         NodeCode("****"), nullptr);
    BEDisposeDesc(&location);
    EXPECT_EQ(status, noErr);
    EXPECT_EQ(reply.validRecord, 1);
    BEDesc selection = reply.selection;
    BFSpec spec{};
    DescType type = 0;
    Size size = 0;
    EXPECT_EQ(BEGetNthPtr(&selection, 1, typeFileSpec, nullptr, &type, &spec, sizeof spec, &size),
              noErr);
    EXPECT_EQ(type, DescType(typeFileSpec));
    KelDisposeReply(&reply);
    return spec;
}

std::string NameIn(const BFSpec& spec) {
    return std::string(reinterpret_cast<const char*>(spec.name + 1), spec.name[0]);
}

TEST_F(KelSaveCallsTest, KelPutFileRunsTheSaveDialogAndNamesTheFileInsideTheFolder) {
    const BFSpec spec = PutFile(tree, "Quarterly figures.txt");
    EXPECT_EQ(NameIn(spec), "Quarterly figures.txt");
    BEDesc folder = DescOf(tree);
    BFRef folderRef{};
    BEGetDescData(&folder, &folderRef, sizeof folderRef);
    BEDisposeDesc(&folder);
    BFCatalogInfo info{};
    ASSERT_EQ(BFGetCatalogInfo(&folderRef, kBFCatInfoNodeID, &info, nullptr, nullptr, nullptr),
              noErr);
    EXPECT_EQ(uint32_t(spec.parID), uint32_t(info.nodeID));
}

TEST_F(KelSaveCallsTest, TheOlderRecordsNameTakesAtMost31BytesWithItsExtension) {
    // The hidden ".txt" comes back on the name: the field keeps 27 bytes for the stem.
    EXPECT_EQ(NameIn(PutFile(tree, "Report.txt", std::string(40, 'a'))),
              std::string(27, 'a') + ".txt");
    // Two bytes a letter: 13 letters fit, the fourteenth would pass the limit.
    std::string accents;
    for (int count = 0; count < 20; ++count) {
        accents += "\xC3\xA9";
    }
    const std::string accented = NameIn(PutFile(tree, "Report.txt", accents));
    EXPECT_EQ(accented, accents.substr(0, 26) + ".txt");
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
