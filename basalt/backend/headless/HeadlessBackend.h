#pragma once

// The headless backend: windows are offscreen Cairo image surfaces, the display is a fixed
// 1440 x 900 screen, the beep is counted, the pointer's shape is kept, popup menus answer with the
// choices a driver queued (after running the work it queued to do while they are open), and the
// clipboard is a string in the process.

#include "basalt/toolbox/backend/Backend.h"

#include <deque>
#include <functional>

namespace basalt::headless {

class HeadlessBackend final : public toolbox::Backend {
public:
    std::string Name() const override { return "headless"; }
    std::unique_ptr<toolbox::BackendWindow> CreateWindow(WindowRef window, WindowClass windowClass,
                                                         const Rect& contentBounds) override;
    Rect DisplayBounds() const override { return {0, 0, 900, 1440}; }
    int16_t MenuBarHeight() const override { return 0; }
    void Beep() override { ++beeps; }
    MenuItemIndex TrackPopupMenu(MenuRef menu, Point where, MenuItemIndex current) override;
    void SetClipboardText(const std::string& utf8) override { clipboard_ = utf8; }
    std::string ClipboardText() override { return clipboard_; }
    void SetCursor(uint32_t themeCursor) override { cursor = themeCursor; }

    // Device pixels per point for windows made from now on (1 or 2); KEL_SCALE sets the first.
    double scale = 1;
    int beeps = 0;
    uint32_t cursor = kThemeArrowCursor;
    // Answers for the next popup menus; an empty queue dismisses the menu.
    std::deque<MenuItemIndex> menuChoices;
    // Work to run while the next popup menus are open, one for each menu, before it answers.
    std::deque<std::function<void(MenuRef)>> menuWork;
    // The last menu shown and where.
    MenuRef lastMenu = nullptr;
    Point lastMenuLocation{};
    // The menu shown now, while its work runs: what a snapshot draws over the windows.
    struct ShownMenu {
        MenuRef menu = nullptr;
        Point where{};
        MenuItemIndex current = 0;
        // The item the queued choice will pick, drawn as under the pointer.
        MenuItemIndex highlighted = 0;
    };
    const ShownMenu* shownMenu = nullptr;

private:
    std::string clipboard_;
};

// The running backend if it is the headless one, else null.
HeadlessBackend* ActiveHeadlessBackend();

} // namespace basalt::headless
