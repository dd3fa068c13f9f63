#pragma once

// The headless backend: windows are offscreen Cairo image surfaces, the display is a fixed
// 1440 x 900 screen, the beep is counted, popup menus answer with the choices a driver queued,
// and the clipboard is a string in the process.

#include "basalt/toolbox/backend/Backend.h"

#include <deque>

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

    // Device pixels per point for windows made from now on (1 or 2); KEL_SCALE sets the first.
    double scale = 1;
    int beeps = 0;
    // Answers for the next popup menus; an empty queue dismisses the menu.
    std::deque<MenuItemIndex> menuChoices;
    // The last menu shown and where.
    MenuRef lastMenu = nullptr;
    Point lastMenuLocation{};

private:
    std::string clipboard_;
};

// The running backend if it is the headless one, else null.
HeadlessBackend* ActiveHeadlessBackend();

} // namespace basalt::headless
