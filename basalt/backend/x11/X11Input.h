#pragma once

// Pointer and keyboard events from the server, turned into the toolbox's mouse and key events
// and posted to the main queue. Runs on the backend's event thread.

#include "basalt/backend/x11/X11Keyboard.h"
#include "basalt/backend/x11/X11Scroll.h"

#include <basalt/BasaltToolbox.h>
#include <memory>
#include <optional>
#include <string>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace basalt::x11 {

class X11Backend;

// Counts the clicks of a double or triple click: a press of the same button, soon after the
// last and near it, counts one more.
class ClickCounter {
public:
    ClickCounter(uint32_t intervalMs, int slopPixels) : interval_(intervalMs), slop_(slopPixels) {}
    uint32_t Press(uint8_t button, uint32_t timeMs, int x, int y);

private:
    uint32_t interval_;
    int slop_;
    uint8_t button_ = 0;
    uint32_t time_ = 0;
    int x_ = 0, y_ = 0;
    uint32_t count_ = 0;
};

// Posts a key event as the toolbox's standard handlers expect it; any thread.
void PostKey(EventKind kind, uint16_t keyCode, uint32_t modifiers, const std::u16string& text);

// Asks the server for the XInput 2 pointer events that carry smooth scrolling on a window;
// they stand in for its core motion events.
void SelectSmoothScrolling(xcb_connection_t* xcb, xcb_window_t window);

// A turn of the wheel on one axis: whole lines, and the exact amount when a smooth device
// moved by fractions of one.
struct WheelTurn {
    int32_t lines = 0;
    std::optional<double> exact;
    EventMouseWheelAxis axis = kEventMouseWheelAxisY;
};

class X11Input {
public:
    X11Input(X11Backend& backend, std::unique_ptr<X11Keyboard> keyboard);

    void Button(const xcb_button_press_event_t& event, bool press);
    void Motion(const xcb_motion_notify_event_t& event);
    // An XInput 2 event: pointer motion with its scroll valuators, crossings, device changes.
    void XInput2(const xcb_ge_generic_event_t& event);
    void Key(const xcb_key_press_event_t& event, bool press);
    X11Keyboard& Keyboard() { return *keyboard_; }

private:
    void PostMouse(EventKind kind, xcb_window_t window, int rootX, int rootY, uint16_t state,
                   uint16_t button, uint32_t clicks, const WheelTurn& turn = {});

    void MotionAt(xcb_window_t window, int rootX, int rootY, uint16_t state);
    void ScrollMotion(const xcb_input_motion_event_t& event);
    void ReadScrollAxes();
    void Wheel(xcb_window_t window, int rootX, int rootY, uint16_t state, const WheelTurn& turn);

    X11Backend& backend_;
    std::unique_ptr<X11Keyboard> keyboard_;
    ClickCounter clicks_;
    ScrollValuators scroll_;
    // The master pointer XInput 2 speaks of; its core wheel buttons repeat what its scroll
    // valuators said, so they are dropped while it has them.
    uint16_t pointer_ = 0;
};

} // namespace basalt::x11
