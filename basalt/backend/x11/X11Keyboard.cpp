#include "basalt/backend/x11/X11Keyboard.h"

#include "basalt/backend/x11/X11KeyCodes.h"
#include "basalt/toolbox/classic/KeyboardLayout.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <cstdlib>
#include <xkbcommon/xkbcommon-x11.h>

namespace basalt::x11 {
namespace {

// The locale whose compose table applies, as setlocale would find it from the environment.
const char* ComposeLocale() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* value = std::getenv(name); value != nullptr && *value != '\0')
            return value;
    return "C";
}

xkb_compose_table* LoadComposeTable(xkb_context* context) {
    xkb_compose_table* table =
        xkb_compose_table_new_from_locale(context, ComposeLocale(), XKB_COMPOSE_COMPILE_NO_FLAGS);
    // The plain C locale has no table of its own; dead keys should still work there.
    if (table == nullptr)
        table =
            xkb_compose_table_new_from_locale(context, "en_US.UTF-8", XKB_COMPOSE_COMPILE_NO_FLAGS);
    return table;
}

std::u16string TextOfSymbol(xkb_keysym_t symbol) {
    char utf8[8] = {};
    int length = xkb_keysym_to_utf8(symbol, utf8, sizeof utf8);
    if (length <= 1)
        return {};
    std::u16string text = toolbox::FromUTF8(utf8);
    // Control characters come from the keys named by symbol, not from text.
    return !text.empty() && text[0] >= 0x20 && text[0] != 0x7F ? text : std::u16string();
}

} // namespace

X11Keyboard::X11Keyboard(xkb_context* context, xkb_keymap* keymap) : context_(context) {
    Adopt(keymap);
    composeTable_ = LoadComposeTable(context_);
    if (composeTable_ != nullptr)
        compose_ = xkb_compose_state_new(composeTable_, XKB_COMPOSE_STATE_NO_FLAGS);
}

X11Keyboard::~X11Keyboard() {
    xkb_compose_state_unref(compose_);
    xkb_compose_table_unref(composeTable_);
    xkb_state_unref(state_);
    xkb_keymap_unref(keymap_);
    xkb_context_unref(context_);
}

std::unique_ptr<X11Keyboard> X11Keyboard::FromServer(xcb_connection_t* xcb, int32_t device,
                                                     std::string& failure) {
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_keymap* keymap =
        context != nullptr
            ? xkb_x11_keymap_new_from_device(context, xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS)
            : nullptr;
    if (keymap == nullptr) {
        failure = "the X server's keyboard map could not be read";
        xkb_context_unref(context);
        return nullptr;
    }
    std::unique_ptr<X11Keyboard> keyboard(new X11Keyboard(context, keymap));
    xkb_state_unref(keyboard->state_);
    keyboard->state_ = xkb_x11_state_new_from_device(keymap, xcb, device);
    return keyboard;
}

std::unique_ptr<X11Keyboard> X11Keyboard::FromNames(const char* layout, const char* variant,
                                                    std::string& failure) {
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_rule_names names{};
    names.layout = layout;
    names.variant = variant;
    xkb_keymap* keymap =
        context != nullptr ? xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS)
                           : nullptr;
    if (keymap == nullptr) {
        failure = std::string("no keyboard layout \"") + layout + "\"";
        xkb_context_unref(context);
        return nullptr;
    }
    return std::unique_ptr<X11Keyboard>(new X11Keyboard(context, keymap));
}

void X11Keyboard::Adopt(xkb_keymap* keymap) {
    xkb_state_unref(state_);
    xkb_keymap_unref(keymap_);
    keymap_ = keymap;
    state_ = xkb_state_new(keymap_);
}

bool X11Keyboard::Reload(xcb_connection_t* xcb, int32_t device) {
    xkb_keymap* keymap =
        xkb_x11_keymap_new_from_device(context_, xcb, device, XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (keymap == nullptr)
        return false;
    Adopt(keymap);
    xkb_state_unref(state_);
    state_ = xkb_x11_state_new_from_device(keymap_, xcb, device);
    return state_ != nullptr;
}

void X11Keyboard::UpdateMask(xkb_mod_mask_t depressed, xkb_mod_mask_t latched,
                             xkb_mod_mask_t locked, xkb_layout_index_t depressedLayout,
                             xkb_layout_index_t latchedLayout, xkb_layout_index_t lockedLayout) {
    xkb_state_update_mask(state_, depressed, latched, locked, depressedLayout, latchedLayout,
                          lockedLayout);
}

xkb_mod_mask_t X11Keyboard::ModifierMask(const char* name) const {
    xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap_, name);
    return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t(1) << index;
}

bool X11Keyboard::ShiftDown() const {
    return xkb_state_mod_name_is_active(state_, XKB_MOD_NAME_SHIFT, XKB_STATE_MODS_EFFECTIVE) > 0;
}

KeyStroke X11Keyboard::Press(xkb_keycode_t keycode) {
    KeyStroke stroke;
    stroke.repeat = !down_.insert(keycode).second;
    xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_, keycode);
    if (uint16_t code = KeyCodeForSymbol(symbol); code != kNoKeyCode) {
        if (compose_ != nullptr)
            xkb_compose_state_reset(compose_);
        stroke.deliver = true;
        stroke.keyCode = code;
        stroke.text = std::u16string(1, toolbox::CharacterForKeyCode(code, ShiftDown()));
        return stroke;
    }
    if (compose_ != nullptr && !stroke.repeat &&
        xkb_compose_state_feed(compose_, symbol) == XKB_COMPOSE_FEED_ACCEPTED) {
        switch (xkb_compose_state_get_status(compose_)) {
        case XKB_COMPOSE_COMPOSING:
            return stroke;
        case XKB_COMPOSE_CANCELLED:
            xkb_compose_state_reset(compose_);
            return stroke;
        case XKB_COMPOSE_COMPOSED: {
            char utf8[64] = {};
            xkb_compose_state_get_utf8(compose_, utf8, sizeof utf8);
            xkb_compose_state_reset(compose_);
            stroke.text = toolbox::FromUTF8(utf8);
            stroke.keyCode = kComposedKeyCode;
            stroke.deliver = !stroke.text.empty();
            return stroke;
        }
        case XKB_COMPOSE_NOTHING:
            break;
        }
    }
    stroke.text = TextOfSymbol(symbol);
    stroke.keyCode = KeyCodeForPosition(keycode);
    if (stroke.keyCode == kNoKeyCode && !stroke.text.empty()) {
        uint16_t typed = toolbox::KeyCodeForCharacter(stroke.text[0]);
        stroke.keyCode = typed != 0xFFFF ? typed : kComposedKeyCode;
    }
    stroke.deliver = stroke.keyCode != kNoKeyCode;
    return stroke;
}

void X11Keyboard::KeysHeld(const uint8_t (&keys)[31]) {
    down_.clear();
    for (xkb_keycode_t keycode = 8; keycode < 256; ++keycode)
        if (keys[keycode / 8 - 1] & (1u << (keycode % 8)))
            down_.insert(keycode);
}

void X11Keyboard::FocusLeft() {
    if (compose_ != nullptr)
        xkb_compose_state_reset(compose_);
}

KeyStroke X11Keyboard::Release(xkb_keycode_t keycode) {
    KeyStroke stroke;
    if (down_.erase(keycode) == 0)
        return stroke;
    xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_, keycode);
    stroke.keyCode = KeyCodeForSymbol(symbol);
    if (stroke.keyCode == kNoKeyCode)
        stroke.keyCode = KeyCodeForPosition(keycode);
    stroke.deliver = stroke.keyCode != kNoKeyCode;
    return stroke;
}

} // namespace basalt::x11
