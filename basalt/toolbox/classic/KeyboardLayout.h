#pragma once

// The keyboard layout: virtual key codes (the positions of a US keyboard) and the characters
// they give. Backends map their key symbols to these codes; KeyTranslate reads them back.

#include <cstdint>

namespace basalt::toolbox {

// The key that types the character (shift is needed for upper case and the shifted symbols);
// 0xFFFF when no key types it.
uint16_t KeyCodeForCharacter(char16_t character, bool* needsShift = nullptr);
// The character of a key, 0 for keys that type none.
char16_t CharacterForKeyCode(uint16_t keyCode, bool shift);

} // namespace basalt::toolbox
