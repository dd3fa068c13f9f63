#include "basalt/backend/x11/X11Keyboard.h"

#include "basalt/backend/x11/X11KeyCodes.h"

#include <basalt/BasaltToolbox.h>
#include <gtest/gtest.h>

namespace basalt::x11 {
namespace {

// X key codes (evdev + 8) of some places on the keyboard.
constexpr xkb_keycode_t kKeyY = 21 + 8; // US "y", German "z"
constexpr xkb_keycode_t kKeyA = 30 + 8;
constexpr xkb_keycode_t kKeyApostrophe = 40 + 8; // US "'", German "ä"
constexpr xkb_keycode_t kKeyEqual = 13 + 8;      // German dead acute
constexpr xkb_keycode_t kKeyE = 18 + 8;
constexpr xkb_keycode_t kKeyReturn = 28 + 8;
constexpr xkb_keycode_t kKeyLeftShift = 42 + 8;
constexpr xkb_keycode_t kKeyLeft = 105 + 8;

std::unique_ptr<X11Keyboard> Layout(const char* layout) {
    std::string failure;
    auto keyboard = X11Keyboard::FromNames(layout, "", failure);
    EXPECT_NE(keyboard, nullptr) << failure;
    return keyboard;
}

void HoldShift(X11Keyboard& keyboard, bool down) {
    keyboard.UpdateMask(down ? keyboard.ModifierMask(XKB_MOD_NAME_SHIFT) : 0, 0, 0, 0, 0, 0);
}

TEST(X11KeyboardTest, LettersKeepTheirPlaceAndTypeWhatTheLayoutSays) {
    auto us = Layout("us");
    auto de = Layout("de");
    KeyStroke usY = us->Press(kKeyY);
    KeyStroke deY = de->Press(kKeyY);
    EXPECT_EQ(usY.text, u"y");
    EXPECT_EQ(deY.text, u"z");
    // The same place is the same toolbox key whatever the layout: shortcuts do not move.
    EXPECT_EQ(usY.keyCode, 0x10);
    EXPECT_EQ(deY.keyCode, 0x10);
    EXPECT_EQ(de->Press(kKeyApostrophe).text, u"ä");
    HoldShift(*de, true);
    EXPECT_EQ(de->Press(kKeyA).text, u"A");
}

TEST(X11KeyboardTest, KeysWithoutTextAreNamedBySymbolAndCarryTheirControlCharacter) {
    auto us = Layout("us");
    KeyStroke enter = us->Press(kKeyReturn);
    EXPECT_TRUE(enter.deliver);
    EXPECT_EQ(enter.keyCode, 0x24);
    EXPECT_EQ(enter.text, u"\r");
    KeyStroke left = us->Press(kKeyLeft);
    EXPECT_EQ(left.keyCode, 0x7B);
    EXPECT_EQ(left.text, std::u16string(1, char16_t(0x1C)));
    EXPECT_FALSE(us->Press(kKeyLeftShift).deliver);
}

TEST(X11KeyboardTest, ADeadKeyWaitsAndTheNextKeyGivesTheComposedCharacter) {
    auto de = Layout("de");
    KeyStroke dead = de->Press(kKeyEqual);
    EXPECT_FALSE(dead.deliver);
    de->Release(kKeyEqual);
    KeyStroke composed = de->Press(kKeyE);
    ASSERT_TRUE(composed.deliver);
    EXPECT_EQ(composed.text, u"é");
    EXPECT_EQ(composed.keyCode, kComposedKeyCode);
    de->Release(kKeyE);
    // The sequence is over: the next e is plain.
    EXPECT_EQ(de->Press(kKeyE).text, u"e");
    de->Release(kKeyE);
    // A sequence begun before the keyboard went to another program ends there.
    de->Press(kKeyEqual);
    de->FocusLeft();
    EXPECT_EQ(de->Press(kKeyE).text, u"e");
}

TEST(X11KeyboardTest, ASecondPressWithoutReleaseIsARepeat) {
    auto us = Layout("us");
    EXPECT_FALSE(us->Press(kKeyA).repeat);
    EXPECT_TRUE(us->Press(kKeyA).repeat);
    EXPECT_TRUE(us->Release(kKeyA).deliver);
    EXPECT_FALSE(us->Press(kKeyA).repeat);
    // A release of a key never pressed (its press went to another program) says nothing.
    EXPECT_FALSE(us->Release(kKeyE).deliver);
}

TEST(X11KeyboardTest, TheKeysDownAreTheOnesTheServerSaysAreHeld) {
    auto us = Layout("us");
    // Held while the keyboard was with another program, which heard the release.
    us->Press(kKeyA);
    const uint8_t none[31] = {};
    us->KeysHeld(none);
    EXPECT_FALSE(us->Press(kKeyA).repeat);
    // Still held after a move between windows: the release comes to us.
    uint8_t heldE[31] = {};
    heldE[kKeyE / 8 - 1] = uint8_t(1u << (kKeyE % 8));
    us->KeysHeld(heldE);
    EXPECT_TRUE(us->Press(kKeyE).repeat);
    EXPECT_TRUE(us->Release(kKeyE).deliver);
    EXPECT_FALSE(us->Release(kKeyA).deliver);
}

TEST(X11KeyboardTest, UnknownLayoutsFailWithAReason) {
    std::string failure;
    EXPECT_EQ(X11Keyboard::FromNames("no-such-layout", "", failure), nullptr);
    EXPECT_NE(failure.find("no-such-layout"), std::string::npos);
}

TEST(X11KeyCodesTest, ControlIsTheCommandKeyAndAltIsOption) {
    EXPECT_EQ(ModifiersFromState(XCB_MOD_MASK_CONTROL), uint32_t(cmdKey));
    EXPECT_EQ(ModifiersFromState(XCB_MOD_MASK_1), uint32_t(optionKey));
    EXPECT_EQ(ModifiersFromState(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK),
              uint32_t(shiftKey | alphaLock));
    EXPECT_EQ(ModifiersFromState(XCB_MOD_MASK_4), uint32_t(controlKey));
    EXPECT_EQ(ModifiersFromState(XCB_MOD_MASK_2), 0u); // Num Lock means nothing here
}

TEST(X11KeyCodesTest, KeypadAndMainKeysOfTheSameMeaningShareACode) {
    EXPECT_EQ(KeyCodeForSymbol(XKB_KEY_KP_Left), KeyCodeForSymbol(XKB_KEY_Left));
    EXPECT_EQ(KeyCodeForSymbol(XKB_KEY_ISO_Left_Tab), 0x30);
    EXPECT_EQ(KeyCodeForSymbol(XKB_KEY_KP_Enter), 0x4C);
    EXPECT_EQ(KeyCodeForSymbol(XKB_KEY_a), kNoKeyCode);
    EXPECT_EQ(KeyCodeForPosition(1 + 8), kNoKeyCode); // Escape is named by its symbol
}

} // namespace
} // namespace basalt::x11
