#include "basalt/toolbox/menus/MenuTracker.h"

#include "basalt/core/Collation.h"
#include "basalt/toolbox/events/Event.h"

#include <algorithm>
#include <cmath>

namespace basalt::toolbox::menus {
namespace {

bool IsPrintable(char16_t character) {
    return character >= 0x20 && character != 0x7F;
}

} // namespace

MenuTracker::MenuTracker(Menu& menu, const MenuLayout& layout, const MenuPlacement& placement,
                         MenuItemIndex current, EventTime openedAt, std::optional<BGPoint> pointer)
    : menu_(menu), layout_(layout), placement_(placement), openedAt_(openedAt),
      scroll_(placement.scroll) {
    if (Choosable(current))
        highlighted_ = current;
    if (pointer) {
        seenPointer_ = true;
        firstPointer_ = pointer_ = *pointer;
    }
}

bool MenuTracker::Handle(EventRef event) {
    if (done_)
        return false;
    if (event->eventClass == kEventClassMouse)
        return Mouse(event);
    if (event->eventClass == kEventClassKeyboard &&
        (event->kind == kEventRawKeyDown || event->kind == kEventRawKeyRepeat))
        return Key(event);
    return false;
}

bool MenuTracker::Mouse(EventRef event) {
    BGPoint global{};
    if (!GetParam(event, kEventParamMouseLocation, typeBTPoint, &global))
        return false;
    switch (event->kind) {
    case kEventMouseDown:
        return Press(global);
    case kEventMouseUp:
        return Release(global, event->time);
    case kEventMouseMoved:
    case kEventMouseDragged:
        return PointerAt(global);
    case kEventMouseWheelMoved: {
        int32_t delta = 0;
        EventMouseWheelAxis axis = kEventMouseWheelAxisY;
        GetParam(event, kEventParamMouseWheelAxis, typeMouseWheelAxis, &axis);
        if (axis == kEventMouseWheelAxisX)
            return PointerAt(global);
        GetParam(event, kEventParamMouseWheelDelta, typeSInt32, &delta);
        bool scrolled = ScrollBy(-delta * MenuMetrics::kRowHeight);
        return PointerAt(global) || scrolled;
    }
    default:
        return false;
    }
}

// The item under the pointer is highlighted; on an arrow band the menu scrolls instead.
bool MenuTracker::PointerAt(BGPoint global) {
    if (!seenPointer_) {
        seenPointer_ = true;
        firstPointer_ = global;
    }
    moved_ = moved_ ||
             std::hypot(global.x - firstPointer_.x, global.y - firstPointer_.y) > kStillDistance;
    pointer_ = global;
    autoscroll_ = 0;
    if (!InFrame(global))
        return Highlight(0, false);
    BGFloat y = global.y - placement_.frame.top;
    if (CanScrollUp() && y < MenuMetrics::kArrowBand)
        autoscroll_ = -1;
    else if (CanScrollDown() &&
             y >= placement_.frame.bottom - placement_.frame.top - MenuMetrics::kArrowBand)
        autoscroll_ = 1;
    if (autoscroll_ != 0)
        return Highlight(0, false);
    MenuItemIndex item = layout_.ItemAt(y + scroll_);
    return Highlight(Choosable(item) ? item : MenuItemIndex(0), false);
}

bool MenuTracker::Press(BGPoint global) {
    opening_ = false;
    if (!InFrame(global))
        return Finish(0);
    return PointerAt(global);
}

bool MenuTracker::Release(BGPoint global, EventTime time) {
    bool changed = PointerAt(global);
    if (opening_) {
        opening_ = false;
        if (time - openedAt_ < kClickTime && !moved_)
            return changed; // a click opened the menu; it waits for the next
        return Finish(highlighted_);
    }
    if (highlighted_ != 0)
        return Finish(highlighted_);
    return changed;
}

bool MenuTracker::Key(EventRef event) {
    uint32_t code = 0;
    GetParam(event, kEventParamKeyCode, typeUInt32, &code);
    switch (code) {
    case kVK_Escape:
        return Finish(0);
    case kVK_Return:
    case kVK_ANSI_KeypadEnter:
        return Finish(highlighted_);
    case kVK_DownArrow:
        return Move(1);
    case kVK_UpArrow:
        return Move(-1);
    case kVK_Home:
        return MoveToEnd(-1);
    case kVK_End:
        return MoveToEnd(1);
    default:
        break;
    }
    uint32_t modifiers = 0;
    GetParam(event, kEventParamKeyModifiers, typeUInt32, &modifiers);
    char16_t character = 0;
    if ((modifiers & cmdKey) ||
        !GetParam(event, kEventParamKeyUnicodes, typeUnicodeText, &character) ||
        !IsPrintable(character))
        return false;
    return TypeSelect(character, event->time);
}

// The next choosable item that way, staying put at the end; from none, the first or last.
bool MenuTracker::Move(int direction) {
    long count = long(menu_.items.size());
    long at = highlighted_ != 0 ? highlighted_ : (direction > 0 ? 0 : count + 1);
    for (long item = at + direction; item >= 1 && item <= count; item += direction)
        if (Choosable(MenuItemIndex(item)))
            return Highlight(MenuItemIndex(item), true);
    return false;
}

bool MenuTracker::MoveToEnd(int direction) {
    MenuItemIndex keep = highlighted_;
    highlighted_ = 0;
    if (Move(-direction) || highlighted_ != 0)
        return true;
    highlighted_ = keep;
    return false;
}

bool MenuTracker::TypeSelect(char16_t character, EventTime time) {
    if (time - lastTyped_ > kTypePause)
        prefix_.clear();
    lastTyped_ = time;
    prefix_.push_back(character);
    for (MenuItemIndex item = 1; item <= menu_.items.size(); ++item) {
        const std::u16string& text = menu_.items[item - 1].text;
        if (Choosable(item) && CompareCollated(text.substr(0, prefix_.size()), prefix_, true) == 0)
            return Highlight(item, true);
    }
    return false;
}

bool MenuTracker::Highlight(MenuItemIndex item, bool reveal) {
    bool changed = item != highlighted_;
    highlighted_ = item;
    if (!reveal || item == 0)
        return changed;
    // Keep the row clear of the arrow bands that a long menu shows.
    BGRect row = layout_.Row(item);
    BGFloat band = placement_.maxScroll > 0 ? MenuMetrics::kArrowBand : 0;
    BGFloat height = placement_.frame.bottom - placement_.frame.top;
    BGFloat scroll = scroll_;
    if (row.origin.y - band < scroll)
        scroll = row.origin.y - band;
    if (BGRectGetMaxY(row) + band > scroll + height)
        scroll = BGRectGetMaxY(row) + band - height;
    return ScrollBy(scroll - scroll_) || changed;
}

bool MenuTracker::ScrollBy(BGFloat delta) {
    BGFloat scroll = std::clamp(scroll_ + delta, BGFloat(0), placement_.maxScroll);
    bool changed = scroll != scroll_;
    scroll_ = scroll;
    return changed;
}

bool MenuTracker::Tick() {
    if (autoscroll_ == 0 || done_)
        return false;
    bool scrolled = ScrollBy(autoscroll_ * kScrollStep);
    PointerAt(pointer_);
    return scrolled;
}

bool MenuTracker::Finish(MenuItemIndex choice) {
    done_ = true;
    choice_ = Choosable(choice) ? choice : 0;
    return true;
}

bool MenuTracker::Choosable(MenuItemIndex item) const {
    const Menu::Item* entry = menu_.At(item);
    return entry != nullptr && menu_.enabled && entry->enabled &&
           !(entry->attributes &
             (kMenuItemAttrSeparator | kMenuItemAttrHidden | kMenuItemAttrSectionHeader));
}

bool MenuTracker::InFrame(BGPoint global) const {
    const Rect& frame = placement_.frame;
    return global.x >= frame.left && global.x < frame.right && global.y >= frame.top &&
           global.y < frame.bottom;
}

} // namespace basalt::toolbox::menus
