#include "basalt/backend/x11/X11KeyCodes.h"

#include <basalt/BasaltToolbox.h>
#include <utility>
#include <xcb/xproto.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace basalt::x11 {
namespace {

constexpr xkb_keycode_t kEvdevOffset = 8;

// Toolbox codes by evdev code, for the keys of the main block (a US keyboard's places).
constexpr std::pair<uint16_t, uint16_t> kPositions[] = {
    {2, 0x12},  {3, 0x13},  {4, 0x14},  {5, 0x15},  {6, 0x17},  {7, 0x16},  {8, 0x1A},
    {9, 0x1C},  {10, 0x19}, {11, 0x1D}, {12, 0x1B}, {13, 0x18}, {16, 0x0C}, {17, 0x0D},
    {18, 0x0E}, {19, 0x0F}, {20, 0x11}, {21, 0x10}, {22, 0x20}, {23, 0x22}, {24, 0x1F},
    {25, 0x23}, {26, 0x21}, {27, 0x1E}, {30, 0x00}, {31, 0x01}, {32, 0x02}, {33, 0x03},
    {34, 0x05}, {35, 0x04}, {36, 0x26}, {37, 0x28}, {38, 0x25}, {39, 0x29}, {40, 0x27},
    {41, 0x32}, {43, 0x2A}, {44, 0x06}, {45, 0x07}, {46, 0x08}, {47, 0x09}, {48, 0x0B},
    {49, 0x2D}, {50, 0x2E}, {51, 0x2B}, {52, 0x2F}, {53, 0x2C}, {57, 0x31}, {86, 0x0A},
};

constexpr std::pair<xkb_keysym_t, uint16_t> kSymbols[] = {
    {XKB_KEY_Return, 0x24},  {XKB_KEY_KP_Enter, 0x4C},     {XKB_KEY_Escape, 0x35},
    {XKB_KEY_Tab, 0x30},     {XKB_KEY_ISO_Left_Tab, 0x30}, {XKB_KEY_BackSpace, 0x33},
    {XKB_KEY_Delete, 0x75},  {XKB_KEY_KP_Delete, 0x75},    {XKB_KEY_Home, 0x73},
    {XKB_KEY_KP_Home, 0x73}, {XKB_KEY_End, 0x77},          {XKB_KEY_KP_End, 0x77},
    {XKB_KEY_Prior, 0x74},   {XKB_KEY_KP_Prior, 0x74},     {XKB_KEY_Next, 0x79},
    {XKB_KEY_KP_Next, 0x79}, {XKB_KEY_Left, 0x7B},         {XKB_KEY_KP_Left, 0x7B},
    {XKB_KEY_Right, 0x7C},   {XKB_KEY_KP_Right, 0x7C},     {XKB_KEY_Down, 0x7D},
    {XKB_KEY_KP_Down, 0x7D}, {XKB_KEY_Up, 0x7E},           {XKB_KEY_KP_Up, 0x7E},
    {XKB_KEY_Help, 0x72},    {XKB_KEY_Insert, 0x72},       {XKB_KEY_F1, 0x7A},
    {XKB_KEY_F2, 0x78},      {XKB_KEY_F3, 0x63},           {XKB_KEY_F4, 0x76},
    {XKB_KEY_F5, 0x60},      {XKB_KEY_F6, 0x61},           {XKB_KEY_F7, 0x62},
    {XKB_KEY_F8, 0x64},      {XKB_KEY_F9, 0x65},           {XKB_KEY_F10, 0x6D},
    {XKB_KEY_F11, 0x67},     {XKB_KEY_F12, 0x6F},
};

} // namespace

uint16_t KeyCodeForSymbol(xkb_keysym_t symbol) {
    for (const auto& [known, code] : kSymbols)
        if (known == symbol)
            return code;
    return kNoKeyCode;
}

uint16_t KeyCodeForPosition(xkb_keycode_t keycode) {
    for (const auto& [evdev, code] : kPositions)
        if (evdev + kEvdevOffset == keycode)
            return code;
    return kNoKeyCode;
}

uint32_t ModifiersFromState(uint16_t state) {
    uint32_t modifiers = 0;
    if (state & XCB_MOD_MASK_SHIFT)
        modifiers |= shiftKey;
    if (state & XCB_MOD_MASK_CONTROL)
        modifiers |= cmdKey;
    if (state & XCB_MOD_MASK_1)
        modifiers |= optionKey;
    if (state & XCB_MOD_MASK_LOCK)
        modifiers |= alphaLock;
    if (state & XCB_MOD_MASK_4)
        modifiers |= controlKey;
    return modifiers;
}

} // namespace basalt::x11
