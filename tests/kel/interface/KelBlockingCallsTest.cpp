#include <cstring>
#include <gtest/gtest.h>
#include <kel/KelServices.h>

namespace {

void SetPascal(unsigned char* field, const char* text) {
    field[0] = static_cast<unsigned char>(std::strlen(text));
    std::memcpy(field + 1, text, field[0]);
}

// An ask call without the text its alert is about fails before any dialog is made, and leaves
// the answer alone.
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
