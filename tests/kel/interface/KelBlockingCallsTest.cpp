#include "tests/kel/interface/PackedField.h"

#include <cstring>
#include <gtest/gtest.h>
#include <kel/KelServices.h>

namespace {

void SetPascal(unsigned char* field, const char* text) {
    field[0] = static_cast<unsigned char>(std::strlen(text));
    std::memcpy(field + 1, text, field[0]);
}

// No dialog can be shown yet: the calls must still check their arguments, leave an empty reply
// and an untouched answer, and say that nothing was shown.
TEST(KelBlockingCalls, BrowseCallsNeedAReplyAndLeaveItEmpty) {
    EXPECT_EQ(KelGetFile(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
              paramErr);
    KelReplyRecord reply;
    std::memset(&reply, 0xCD, sizeof reply);
    EXPECT_EQ(KelChooseFolder(nullptr, &reply, nullptr, nullptr, nullptr, nullptr), -4);
    EXPECT_EQ(keltest::ValueOf(reply.version), 2);
    EXPECT_EQ(keltest::ValueOf(reply.validRecord), 0);
    EXPECT_EQ(keltest::ValueOf(reply.saveFileName), nullptr);
}

TEST(KelBlockingCalls, AskCallsNeedTheTextTheirAlertIsAbout) {
    KelDialogOptions options;
    KelGetDefaultDialogOptions(&options);
    uint32_t answer = 99;
    EXPECT_EQ(KelAskSaveChanges(nullptr, 1, &answer, nullptr, nullptr), paramErr);
    EXPECT_EQ(KelAskDiscardChanges(&options, &answer, nullptr, nullptr), paramErr);
    EXPECT_EQ(KelCustomAskSaveChanges(&options, &answer, nullptr, nullptr), paramErr);

    SetPascal(options.message, "Keep the changes to the layout?");
    EXPECT_EQ(KelCustomAskSaveChanges(&options, &answer, nullptr, nullptr), -4);
    SetPascal(options.savedFileName, "Plan");
    EXPECT_EQ(KelAskDiscardChanges(&options, &answer, nullptr, nullptr), -4);
    EXPECT_EQ(answer, 99u);
}

} // namespace
