#pragma once

// The connection to the X server: the screen, the atoms and the extensions the backend needs.
// XKB is required (the keyboard is read through it); RandR is used when present, else the
// whole screen counts as one monitor; XInput 2.1 adds smooth scrolling when present.

#include "basalt/backend/x11/X11Atoms.h"

#include <memory>
#include <string>
#include <xcb/xcb.h>

namespace basalt::x11 {

class X11Connection {
public:
    // Connects to DISPLAY; null with the reason in `failure` when that is not possible.
    static std::unique_ptr<X11Connection> Open(std::string& failure);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    xcb_connection_t* get() const { return xcb_; }
    xcb_screen_t* Screen() const { return screen_; }
    xcb_window_t Root() const { return screen_->root; }
    const std::string& DisplayName() const { return displayName_; }
    // True once the server has gone away or broke the stream.
    bool Broken() const { return xcb_connection_has_error(xcb_) != 0; }

    Atoms atoms{};
    uint8_t xkbEventBase = 0;
    int32_t xkbDevice = -1;
    bool hasRandR = false;
    uint8_t randrEventBase = 0;
    bool hasXInput2 = false;
    uint8_t xinputOpcode = 0;

private:
    X11Connection(xcb_connection_t* xcb, xcb_screen_t* screen, std::string displayName)
        : xcb_(xcb), screen_(screen), displayName_(std::move(displayName)) {}
    bool SetUpExtensions(std::string& failure);
    void SetUpXInput2();

    xcb_connection_t* xcb_;
    xcb_screen_t* screen_;
    std::string displayName_;
};

// The bytes of an 8-bit property, empty if it has none; `take` deletes it once read, as the
// receiver of a selection does. `type` (may be null) receives the property's type.
std::string ReadTextProperty(xcb_connection_t* xcb, xcb_window_t window, xcb_atom_t property,
                             bool take, xcb_atom_t* type = nullptr);

// Words for the errors of xcb_connection_has_error.
const char* DescribeConnectionError(int error);

} // namespace basalt::x11
