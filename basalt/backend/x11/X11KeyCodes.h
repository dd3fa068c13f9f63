#pragma once

// From X key events to the toolbox's key codes and modifier bits. Character keys are named by
// their place on the keyboard (the X key code, which is the evdev code plus 8), so a shortcut
// stays on the same key whatever the layout; keys that type no character (return, arrows,
// function keys) are named by their key symbol, wherever the layout puts them.

#include <cstdint>
#include <xkbcommon/xkbcommon.h>

namespace basalt::x11 {

constexpr uint16_t kNoKeyCode = 0xFFFF;
// The key code of text that no single key typed (a composed character).
constexpr uint16_t kComposedKeyCode = 0xFF;

// The toolbox code of a key that types no character, or kNoKeyCode.
uint16_t KeyCodeForSymbol(xkb_keysym_t symbol);
// The toolbox code of the key at that place, or kNoKeyCode.
uint16_t KeyCodeForPosition(xkb_keycode_t keycode);
// Shift, Control (the command key), Mod1 (option), Lock and Mod4 (control) of an X state.
uint32_t ModifiersFromState(uint16_t state);

} // namespace basalt::x11
