// The standard alert wrapper run modally with its built-in keys: return and enter must answer the
// alert's default button, which is not always item 1 (an alert that could destroy something makes
// Cancel the default), and escape and command-period its Cancel.

#include "kel/interface/CStandardAlert.h"

#include "basalt/backend/headless/HeadlessDriver.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;

namespace {

// Runs an alert with buttons Replace (1) and Cancel (2) whose default is defaultButton, pressing
// the key once it shows; answers the item hit.
int16_t RunPressing(int16_t defaultButton, uint16_t keyCode, uint32_t modifiers = 0,
                    char16_t character = 0) {
    CStandardAlert alert(kAlertCautionAlert, BCSTR("Replace \u201Creport.txt\u201D?"), nullptr,
                         nullptr, kAlertStdAlertCancelButton, false, BCSTR("Replace"), nullptr,
                         defaultButton, kWindowAlertPositionParentWindowScreen, nullptr, false,
                         true, nullptr);
    EXPECT_NE(alert.GetDialog(), nullptr);
    HeadlessDriver::Soon([=] { HeadlessDriver::PressKey(keyCode, modifiers, character); });
    int16_t hit = -1;
    EXPECT_EQ(alert.Run(&hit), noErr);
    return hit;
}

} // namespace

TEST(CStandardAlert, ReturnAndEnterPressTheDefaultButtonWhereverItIs) {
    for (uint16_t key : {kVK_Return, kVK_ANSI_KeypadEnter}) {
        EXPECT_EQ(RunPressing(kAlertStdAlertOKButton, key), kAlertStdAlertOKButton);
        EXPECT_EQ(RunPressing(kAlertStdAlertCancelButton, key), kAlertStdAlertCancelButton);
    }
}

TEST(CStandardAlert, EscapeAndCommandPeriodCancelEvenWhenCancelIsTheDefault) {
    for (int16_t defaultButton : {kAlertStdAlertOKButton, kAlertStdAlertCancelButton}) {
        EXPECT_EQ(RunPressing(defaultButton, kVK_Escape), kAlertStdAlertCancelButton);
        EXPECT_EQ(RunPressing(defaultButton, kVK_ANSI_Period, cmdKey, u'.'),
                  kAlertStdAlertCancelButton);
    }
}
