#include "basalt/toolbox/classic/KeyboardLayout.h"

#include <array>

namespace basalt::toolbox {
namespace {

struct Key {
    uint16_t code;
    char16_t plain;
    char16_t shifted;
};

// Navigation keys carry the control characters a key's text has always had for them, so a
// view can read home, end and the page keys from the text alone.
constexpr std::array<Key, 60> kKeys = {{
    {0, u'a', u'A'},   {1, u's', u'S'},   {2, u'd', u'D'},   {3, u'f', u'F'},    {4, u'h', u'H'},
    {5, u'g', u'G'},   {6, u'z', u'Z'},   {7, u'x', u'X'},   {8, u'c', u'C'},    {9, u'v', u'V'},
    {11, u'b', u'B'},  {12, u'q', u'Q'},  {13, u'w', u'W'},  {14, u'e', u'E'},   {15, u'r', u'R'},
    {16, u'y', u'Y'},  {17, u't', u'T'},  {18, u'1', u'!'},  {19, u'2', u'@'},   {20, u'3', u'#'},
    {21, u'4', u'$'},  {22, u'6', u'^'},  {23, u'5', u'%'},  {24, u'=', u'+'},   {25, u'9', u'('},
    {26, u'7', u'&'},  {27, u'-', u'_'},  {28, u'8', u'*'},  {29, u'0', u')'},   {30, u']', u'}'},
    {31, u'o', u'O'},  {32, u'u', u'U'},  {33, u'[', u'{'},  {34, u'i', u'I'},   {35, u'p', u'P'},
    {37, u'l', u'L'},  {38, u'j', u'J'},  {39, u'\'', u'"'}, {40, u'k', u'K'},   {41, u';', u':'},
    {42, u'\\', u'|'}, {43, u',', u'<'},  {44, u'/', u'?'},  {45, u'n', u'N'},   {46, u'm', u'M'},
    {47, u'.', u'>'},  {50, u'`', u'~'},  {49, u' ', u' '},  {36, u'\r', u'\r'}, {48, u'\t', u'\t'},
    {51, 0x08, 0x08},  {53, 0x1B, 0x1B},  {76, 0x03, 0x03},  {123, 0x1C, 0x1C},  {124, 0x1D, 0x1D},
    {126, 0x1E, 0x1E}, {115, 0x01, 0x01}, {119, 0x04, 0x04}, {116, 0x0B, 0x0B},  {121, 0x0C, 0x0C},
}};

} // namespace

uint16_t KeyCodeForCharacter(char16_t character, bool* needsShift) {
    for (const Key& key : kKeys) {
        if (key.plain == character || key.shifted == character) {
            if (needsShift != nullptr)
                *needsShift = key.plain != character;
            return key.code;
        }
    }
    if (character == 0x1F)
        return 125;
    return 0xFFFF;
}

char16_t CharacterForKeyCode(uint16_t keyCode, bool shift) {
    if (keyCode == 125)
        return 0x1F;
    for (const Key& key : kKeys)
        if (key.code == keyCode)
            return shift ? key.shifted : key.plain;
    return 0;
}

} // namespace basalt::toolbox
