#include "kel/interface/KelCommandKeys.h"

#include "kel/interface/KelStartup.h"

#include <cctype>

uint8_t GetCommandCharCode(uint32_t message) {
    uint32_t state = 0;
    const auto keyCode = static_cast<uint16_t>((message & keyCodeMask) >> 8);
    const uint32_t translated = KeyTranslate(nullptr, keyCode, &state);
    if (translated > 0xFFFF) {
        return 1;
    }
    const auto character = static_cast<uint8_t>(translated & 0xFF);
    if (character == 0) {
        return 0;
    }
    return static_cast<uint8_t>(std::toupper(character));
}

uint8_t CommandKeyAt(int32_t index) {
    EnsureKelInitialized();
    if (gCommandKeys == nullptr || index >= gCommandKeys->Length()) {
        return 0;
    }
    const UniChar character = gCommandKeys->CharacterAtIndex(index);
    return character < 0x100 ? static_cast<uint8_t>(character) : 0;
}
