#pragma once

// What the user does to an open popup menu, as a state machine over the toolbox's mouse and
// key events; it draws nothing and owns no window, so any backend can run it.
//
// The menu opens on a press. If that button comes up soon and where it went down, the menu
// stays open for a second click (click-click); otherwise the release chooses the item under
// the pointer (press-drag-release). A press outside the menu, Escape, or Return with nothing
// highlighted dismiss it. Arrows, Home and End move the highlight over the items that can be
// chosen; typed characters select by prefix; the wheel and the arrow bands scroll a long menu.

#include "basalt/toolbox/menus/MenuLayout.h"

#include <optional>

namespace basalt::toolbox::menus {

class MenuTracker {
public:
    // A release this soon after opening, with the pointer still, leaves the menu open.
    static constexpr EventTime kClickTime = 0.4;
    static constexpr BGFloat kStillDistance = 4;
    // Characters typed within this pause make one prefix.
    static constexpr EventTime kTypePause = 1.0;
    // The arrow bands scroll this far every tick.
    static constexpr EventTime kScrollInterval = 0.05;
    static constexpr BGFloat kScrollStep = MenuMetrics::kRowHeight / 2;

    // `pointer` is where the pointer was as the menu opened, when the backend knows.
    MenuTracker(Menu& menu, const MenuLayout& layout, const MenuPlacement& placement,
                MenuItemIndex current, EventTime openedAt, std::optional<BGPoint> pointer);

    // Takes one mouse or keyboard event; true when the menu looks different after it.
    bool Handle(EventRef event);
    // Scrolls on while the pointer rests on an arrow band; true when it moved.
    bool Tick();

    bool Done() const { return done_; }
    MenuItemIndex Choice() const { return choice_; }
    MenuItemIndex Highlighted() const { return highlighted_; }
    BGFloat Scroll() const { return scroll_; }
    bool CanScrollUp() const { return scroll_ > 0; }
    bool CanScrollDown() const { return scroll_ < placement_.maxScroll; }
    // Nonzero while the pointer rests on an arrow band: -1 up, 1 down.
    int Autoscroll() const { return autoscroll_; }
    const Rect& Frame() const { return placement_.frame; }

private:
    bool Mouse(EventRef event);
    bool Key(EventRef event);
    bool PointerAt(BGPoint global);
    bool Press(BGPoint global);
    bool Release(BGPoint global, EventTime time);
    bool Move(int direction);
    bool MoveToEnd(int direction);
    bool TypeSelect(char16_t character, EventTime time);
    bool Highlight(MenuItemIndex item, bool reveal);
    bool ScrollBy(BGFloat delta);
    bool Finish(MenuItemIndex choice);
    bool Choosable(MenuItemIndex item) const;
    bool InFrame(BGPoint global) const;

    Menu& menu_;
    const MenuLayout& layout_;
    MenuPlacement placement_;
    EventTime openedAt_;
    BGFloat scroll_;
    MenuItemIndex highlighted_ = 0;
    MenuItemIndex choice_ = 0;
    bool done_ = false;
    // The button that opened the menu may still be down; false once the menu waits for a click.
    bool opening_ = true;
    bool moved_ = false;
    bool seenPointer_ = false;
    BGPoint firstPointer_{};
    BGPoint pointer_{};
    int autoscroll_ = 0;
    std::u16string prefix_;
    EventTime lastTyped_ = -1e9;
};

} // namespace basalt::toolbox::menus
