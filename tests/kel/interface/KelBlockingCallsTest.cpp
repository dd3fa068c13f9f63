#include "basalt/backend/headless/HeadlessDriver.h"

#include <cstring>
#include <gtest/gtest.h>
#include <kel/KelServices.h>

using basalt::headless::HeadlessDriver;

namespace {

void SetPascal(unsigned char* field, const char* text) {
    field[0] = static_cast<unsigned char>(std::strlen(text));
    std::memcpy(field + 1, text, field[0]);
}

void AnswerSoon(uint16_t keyCode, uint32_t modifiers = 0, char16_t character = 0) {
    HeadlessDriver::Soon([=] { HeadlessDriver::PressKey(keyCode, modifiers, character); }, 0.05);
}

// An ask call without the text its alert is about fails before any dialog is made, and leaves
// the answer alone.
TEST(KelBlockingCalls, AskCallsNeedTheTextTheirAlertIsAbout) {
    KelDialogOptions options;
    KelGetDefaultDialogOptions(&options);
    uint32_t answer = 99;
    EXPECT_EQ(KelAskSaveChanges(nullptr, 1, &answer, nullptr, nullptr), paramErr);
    EXPECT_EQ(KelAskSaveChanges(&options, 1, &answer, nullptr, nullptr), paramErr);
    EXPECT_EQ(KelAskDiscardChanges(&options, &answer, nullptr, nullptr), paramErr);
    EXPECT_EQ(KelCustomAskSaveChanges(&options, &answer, nullptr, nullptr), paramErr);
    EXPECT_EQ(answer, 99u);
}

// The answers: 1 save or discard, 2 cancel, 3 don't save.
TEST(KelBlockingCalls, AskCallsRunModallyAndMapTheAnswer) {
    KelDialogOptions options;
    KelGetDefaultDialogOptions(&options);
    SetPascal(options.savedFileName, "Plan");
    uint32_t answer = 0;

    AnswerSoon(kVK_Return);
    EXPECT_EQ(KelAskSaveChanges(&options, 1, &answer, nullptr, nullptr), noErr);
    EXPECT_EQ(answer, 1u);
    AnswerSoon(kVK_ANSI_D, cmdKey, u'd');
    EXPECT_EQ(KelAskSaveChanges(&options, 2, &answer, nullptr, nullptr), noErr);
    EXPECT_EQ(answer, 3u);
    AnswerSoon(kVK_Escape);
    EXPECT_EQ(KelAskDiscardChanges(&options, &answer, nullptr, nullptr), noErr);
    EXPECT_EQ(answer, 2u);
    AnswerSoon(kVK_Return);
    EXPECT_EQ(KelAskDiscardChanges(&options, &answer, nullptr, nullptr), noErr);
    EXPECT_EQ(answer, 1u);

    // The custom call needs a message, not a name.
    KelGetDefaultDialogOptions(&options);
    SetPascal(options.message, "Keep the changes to the layout?");
    AnswerSoon(kVK_ANSI_D, 0, u'd');
    EXPECT_EQ(KelCustomAskSaveChanges(&options, &answer, nullptr, nullptr), noErr);
    EXPECT_EQ(answer, 3u);
}

// A client that ends the alert from its callback leaves the answer alone: no action occurred.
TEST(KelBlockingCalls, AnAlertEndedByTheClientGivesNoAnswer) {
    KelDialogOptions options;
    KelGetDefaultDialogOptions(&options);
    SetPascal(options.savedFileName, "Plan");
    uint32_t answer = 99;
    const auto endAtOnce = [](long selector, KelCBRec* record, void*) {
        if (selector == kKelCBEvent) {
            KelCustomControl(record->context, kKelCtlTerminate, nullptr);
        }
    };
    EXPECT_EQ(KelAskSaveChanges(&options, 1, &answer, endAtOnce, nullptr), noErr);
    EXPECT_EQ(answer, 99u);
}

} // namespace
