#pragma once

// The root of every dialog: the window it lives in and the commands and item hits it answers.
// The toolbox side (the dialog bound to the window, its controls, keys and the menu bar) joins
// once the toolbox exists; until then a dialog has no window.

#include <cstdint>
#include <kel/KelServices.h>

class KelBaseDialog {
public:
    KelBaseDialog() = default;
    KelBaseDialog(const KelBaseDialog&) = delete;
    KelBaseDialog& operator=(const KelBaseDialog&) = delete;

    virtual bool IsBTCommandAllowed(uint32_t command);
    virtual bool ExecuteBTCommand(uint32_t command);
    virtual ~KelBaseDialog() = default;
    virtual int32_t ItemHit(int16_t item, int16_t part, uint32_t modifiers);
    virtual void SetUpViewLayouts();

    WindowRef GetWindow() const { return windowRef; }

protected:
    WindowRef windowRef = nullptr;
};
