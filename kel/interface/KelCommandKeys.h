#pragma once

// The keyboard command characters the dialogs share: which character a key makes, and the
// localised character at each position of "Command Keys".

#include <basalt/BasaltToolbox.h>
#include <cstdint>

// The upper-case character the key code in bits 8 to 15 of an event message makes with no
// modifiers; 0 when it makes none, 1 when it makes more than one byte.
uint8_t GetCommandCharCode(uint32_t message);

// The character at that position of "Command Keys", 0 when there is none.
uint8_t CommandKeyAt(int32_t index);
