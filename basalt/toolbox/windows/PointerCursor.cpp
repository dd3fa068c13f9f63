#include "basalt/toolbox/windows/PointerCursor.h"

#include "basalt/toolbox/backend/Backend.h"

#include <basalt/BasaltToolbox.h>

namespace basalt::toolbox {
namespace {

uint32_t gShown = kThemeArrowCursor;
bool gBusy = false;

void Show(uint32_t themeCursor) {
    // Every move of the pointer asks; the backend hears only of changes.
    if (themeCursor != gShown)
        CurrentBackend().SetCursor(themeCursor);
    gShown = themeCursor;
}

} // namespace

void SetApplicationCursor(uint32_t themeCursor) {
    gBusy = themeCursor == kThemeWatchCursor || themeCursor == kThemeSpinningCursor;
    Show(themeCursor);
}

void ShowPointerCursor(uint32_t themeCursor) {
    if (!gBusy)
        Show(themeCursor);
}

} // namespace basalt::toolbox
