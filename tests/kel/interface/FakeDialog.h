#pragma once

// A dialog whose window always comes up and returns at once, like a modeless one, so the shared
// lifecycle can be driven to its end without a toolbox.

#include "kel/interface/__KelDialog.h"

namespace keltest {

class FakeDialog : public __KelDialog {
public:
    using __KelDialog::__KelDialog;

    StatusCode CreateDialog() override {
        ++createCount;
        return createStatus;
    }
    StatusCode StartDialog() override { return noErr; }
    void TerminateDialog() override { actionSeenByTerminate = userAction; }

    StatusCode createStatus = noErr;
    int createCount = 0;
    uint32_t actionSeenByTerminate = 0xFFFF;
};

} // namespace keltest
