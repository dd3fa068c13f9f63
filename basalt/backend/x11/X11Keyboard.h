#pragma once

// The user's keyboard through xkbcommon: the keymap and its state (kept in step with the
// server's XKB state events), dead keys and compose sequences from the locale's compose
// table, and which keys are down, so a second press without a release reads as a repeat.
// Used on the backend's event thread only.

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

namespace basalt::x11 {

struct KeyStroke {
    // False for keys that give the toolbox nothing: modifiers, a dead key awaiting the next.
    bool deliver = false;
    bool repeat = false;
    uint16_t keyCode = 0;
    std::u16string text;
};

class X11Keyboard {
public:
    // The server's keyboard, or null with the reason.
    static std::unique_ptr<X11Keyboard> FromServer(xcb_connection_t* xcb, int32_t device,
                                                   std::string& failure);
    // A keymap by layout name ("us", "de", "fr"...), as the user's configuration would name it.
    static std::unique_ptr<X11Keyboard> FromNames(const char* layout, const char* variant,
                                                  std::string& failure);
    ~X11Keyboard();
    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;

    // Takes the server's keymap again, after the user changed layouts.
    bool Reload(xcb_connection_t* xcb, int32_t device);
    void UpdateMask(xkb_mod_mask_t depressed, xkb_mod_mask_t latched, xkb_mod_mask_t locked,
                    xkb_layout_index_t depressedLayout, xkb_layout_index_t latchedLayout,
                    xkb_layout_index_t lockedLayout);
    // The mask bit of a modifier by its xkb name ("Shift", "Lock"), 0 if the map lacks it.
    xkb_mod_mask_t ModifierMask(const char* name) const;

    KeyStroke Press(xkb_keycode_t keycode);
    KeyStroke Release(xkb_keycode_t keycode);
    // The keys the server says are held (a bit for each keycode, from 8 up), as it does each
    // time one of our windows gets the keyboard: keys released while it was elsewhere are
    // down no longer, and one still held after a move between our windows still is.
    void KeysHeld(const uint8_t (&keys)[31]);
    // The keyboard went to another program: a half-typed compose sequence is dropped.
    void FocusLeft();

private:
    X11Keyboard(xkb_context* context, xkb_keymap* keymap);
    void Adopt(xkb_keymap* keymap);
    bool ShiftDown() const;

    xkb_context* context_;
    xkb_keymap* keymap_ = nullptr;
    xkb_state* state_ = nullptr;
    xkb_compose_table* composeTable_ = nullptr;
    xkb_compose_state* compose_ = nullptr;
    std::set<xkb_keycode_t> down_;
};

} // namespace basalt::x11
