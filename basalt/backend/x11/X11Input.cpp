#include "basalt/backend/x11/X11Input.h"

#include "basalt/backend/x11/X11Backend.h"
#include "basalt/backend/x11/X11KeyCodes.h"
#include "basalt/backend/x11/X11Window.h"
#include "basalt/toolbox/events/Event.h"

#include <cstdlib>

namespace basalt::x11 {
namespace {

using toolbox::EventHolder;
using toolbox::SetParam;

// The desktop's usual double-click interval and distance.
constexpr uint32_t kDoubleClickMs = 400;
constexpr int kDoubleClickSlop = 4;

// X buttons 4 to 7 are one notch of the wheel: up, down (5), left, right.
constexpr uint8_t kWheelUp = 4, kWheelLeft = 6, kWheelRight = 7;

// The toolbox numbers buttons primary 1, secondary 2, middle 3.
uint16_t ToolboxButton(uint8_t detail) {
    return detail == 3 ? 2 : detail == 2 ? 3 : detail;
}

} // namespace

uint32_t ClickCounter::Press(uint8_t button, uint32_t timeMs, int x, int y) {
    bool again = count_ > 0 && button == button_ && timeMs - time_ <= interval_ &&
                 std::abs(x - x_) <= slop_ && std::abs(y - y_) <= slop_;
    count_ = again ? count_ + 1 : 1;
    button_ = button;
    time_ = timeMs;
    x_ = x;
    y_ = y;
    return count_;
}

X11Input::X11Input(X11Backend& backend, std::unique_ptr<X11Keyboard> keyboard)
    : backend_(backend), keyboard_(std::move(keyboard)), clicks_(kDoubleClickMs, kDoubleClickSlop) {
    if (backend_.Connection().hasXInput2)
        ReadScrollAxes();
}

void X11Input::PostMouse(EventKind kind, xcb_window_t window, int rootX, int rootY, uint16_t state,
                         uint16_t button, uint32_t clicks, const WheelTurn& turn) {
    WindowRef ref = backend_.WindowRefFor(window);
    double scale = backend_.Scale();
    EventHolder event(kEventClassMouse, kind);
    BGPoint global = {rootX / scale, rootY / scale};
    SetParam(event.get(), kEventParamMouseLocation, typeBTPoint, global);
    uint32_t modifiers = ModifiersFromState(state);
    SetParam(event.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    if (ref != nullptr)
        SetParam(event.get(), kEventParamWindowRef, typeWindowRef, ref);
    SetParam(event.get(), kEventParamMouseButton, typeMouseButton, button);
    if (clicks > 0)
        SetParam(event.get(), kEventParamClickCount, typeUInt32, clicks);
    if (kind == kEventMouseWheelMoved) {
        SetParam(event.get(), kEventParamMouseWheelDelta, typeSInt32, turn.lines);
        SetParam(event.get(), kEventParamMouseWheelAxis, typeMouseWheelAxis, turn.axis);
        if (turn.exact)
            SetParam(event.get(), kEventParamMouseWheelSmoothDelta, typeIEEE64BitFloatingPoint,
                     *turn.exact);
    }
    PostEventToQueue(GetMainEventQueue(), event.get(), kEventPriorityStandard);
}

void X11Input::Button(const xcb_button_press_event_t& event, bool press) {
    if (event.detail >= kWheelUp && event.detail <= kWheelRight) {
        bool smooth = scroll_.Scrolls(pointer_) && backend_.WindowRefFor(event.event) != nullptr;
        if (press && !smooth)
            Wheel(event.event, event.root_x, event.root_y, event.state,
                  {event.detail == kWheelUp || event.detail == kWheelLeft ? 1 : -1, std::nullopt,
                   EventMouseWheelAxis(event.detail >= kWheelLeft ? kEventMouseWheelAxisX
                                                                  : kEventMouseWheelAxisY)});
        return;
    }
    uint16_t button = ToolboxButton(event.detail);
    uint32_t clicks =
        press ? clicks_.Press(event.detail, event.time, event.root_x, event.root_y) : 0;
    PostMouse(press ? kEventMouseDown : kEventMouseUp, event.event, event.root_x, event.root_y,
              event.state, button, clicks);
}

void X11Input::Wheel(xcb_window_t window, int rootX, int rootY, uint16_t state,
                     const WheelTurn& turn) {
    PostMouse(kEventMouseWheelMoved, window, rootX, rootY, state, 0, 0, turn);
}

void X11Input::Motion(const xcb_motion_notify_event_t& event) {
    MotionAt(event.event, event.root_x, event.root_y, event.state);
}

void X11Input::MotionAt(xcb_window_t window, int rootX, int rootY, uint16_t state) {
    constexpr uint16_t kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    bool dragging = (state & kButtons) != 0;
    PostMouse(dragging ? kEventMouseDragged : kEventMouseMoved, window, rootX, rootY, state,
              dragging ? 1 : 0, 0);
}

void X11Input::Key(const xcb_key_press_event_t& event, bool press) {
    KeyStroke stroke = press ? keyboard_->Press(event.detail) : keyboard_->Release(event.detail);
    if (!stroke.deliver)
        return;
    EventKind kind = !press          ? kEventRawKeyUp
                     : stroke.repeat ? kEventRawKeyRepeat
                                     : kEventRawKeyDown;
    PostKey(kind, stroke.keyCode, ModifiersFromState(event.state), stroke.text);
}

void PostKey(EventKind kind, uint16_t keyCode, uint32_t modifiers, const std::u16string& text) {
    EventHolder key(kEventClassKeyboard, kind);
    uint32_t code = keyCode;
    SetParam(key.get(), kEventParamKeyCode, typeUInt32, code);
    SetParam(key.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    char16_t first = text.empty() ? 0 : text[0];
    char legacy = first < 0x80 ? char(first) : '?';
    SetParam(key.get(), kEventParamKeyMacCharCodes, typeChar, legacy);
    if (!text.empty())
        SetEventParameter(key.get(), kEventParamKeyUnicodes, typeUnicodeText,
                          text.size() * sizeof(char16_t), text.data());
    PostEventToQueue(GetMainEventQueue(), key.get(), kEventPriorityStandard);
}

} // namespace basalt::x11
