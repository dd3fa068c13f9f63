#pragma once

// What a test reads from and does to an alert window, as the user would.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "tests/kel/foundation/StringTesting.h"

#include <string>

namespace keltest {

// The texts shown in an alert window, each followed by "|".
inline std::string AlertText(WindowRef alert) {
    std::string text;
    ControlRef root = nullptr;
    GetRootControl(alert, &root);
    for (BTViewRef view = BTViewGetFirstSubview(root); view != nullptr;
         view = BTViewGetNextView(view)) {
        text += Utf8(TStringRef(BTViewCopyText(view), false)) + "|";
    }
    return text;
}

// Presses an alert's button by its item, as a click would.
inline void PressAlertItem(WindowRef alert, int16_t item) {
    ControlRef button = nullptr;
    GetDialogItemAsControl(GetDialogFromWindow(alert), item, &button);
    basalt::headless::HeadlessDriver::Click(button);
}

} // namespace keltest
