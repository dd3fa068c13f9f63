#include "basalt/toolbox/classic/KeyboardLayout.h"
#include "tools/kelpick/ScriptStep.h"

#include <basalt/BasaltToolbox.h>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace {

struct NamedKey {
    const char* name;
    uint16_t keyCode;
    char16_t character;
};

constexpr NamedKey kNamedKeys[] = {
    {"return", kVK_Return, u'\r'}, {"enter", kVK_ANSI_KeypadEnter, 3},
    {"escape", kVK_Escape, 27},    {"tab", kVK_Tab, u'\t'},
    {"space", kVK_Space, u' '},    {"delete", kVK_Delete, 8},
    {"left", kVK_LeftArrow, 28},   {"right", kVK_RightArrow, 29},
    {"up", kVK_UpArrow, 30},       {"down", kVK_DownArrow, 31},
    {"home", kVK_Home, 1},         {"end", kVK_End, 4},
    {"pageup", kVK_PageUp, 11},    {"pagedown", kVK_PageDown, 12},
};

// "opt-" came first and stays; "option-" is the word people write.
constexpr std::pair<const char*, uint32_t> kModifierPrefixes[] = {
    {"cmd-", cmdKey}, {"shift-", shiftKey}, {"option-", optionKey}, {"opt-", optionKey}};

void TakeModifiers(std::string& text, ScriptStep& step) {
    for (bool found = true; found;) {
        found = false;
        for (const auto& [prefix, bit] : kModifierPrefixes) {
            if (text.size() > std::strlen(prefix) && text.starts_with(prefix)) {
                step.modifiers |= bit;
                text.erase(0, std::strlen(prefix));
                found = true;
            }
        }
    }
}

bool ParseKey(std::string text, ScriptStep& step) {
    TakeModifiers(text, step);
    for (const NamedKey& key : kNamedKeys) {
        if (text == key.name) {
            step.keyCode = key.keyCode;
            step.character = key.character;
            return true;
        }
    }
    if (text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80) {
        bool shift = false;
        step.keyCode = basalt::toolbox::KeyCodeForCharacter(char16_t(text[0]), &shift);
        step.character = char16_t(text[0]);
        step.modifiers |= shift ? shiftKey : 0;
        return step.keyCode != 0xFFFF;
    }
    return false;
}

template <class Number>
bool ParseWhole(const std::string& text, Number& out) {
    const char* end = text.data() + text.size();
    auto [stop, error] = std::from_chars(text.data(), end, out);
    return !text.empty() && error == std::errc() && stop == end;
}

// click:N presses an alert's item; any other word is a button's title.
const char* ParseClick(const std::string& argument, ScriptStep& step) {
    if (argument.empty()) {
        return "click needs an item number or a button's title";
    }
    if (argument.find_first_not_of("0123456789") != std::string::npos) {
        step.kind = ScriptStep::Kind::clickLabel;
        step.text = argument;
        return nullptr;
    }
    step.kind = ScriptStep::Kind::click;
    return ParseWhole(argument, step.item) && step.item > 0 ? nullptr : "no such item number";
}

const char* ParseWait(const std::string& argument, ScriptStep& step) {
    if (argument == "idle") {
        step.kind = ScriptStep::Kind::waitIdle;
        return nullptr;
    }
    unsigned milliseconds = 0;
    step.kind = ScriptStep::Kind::wait;
    if (!ParseWhole(argument, milliseconds) || milliseconds > 600000) {
        return "wait takes idle or milliseconds up to 600000";
    }
    step.seconds = milliseconds / 1000.0;
    return nullptr;
}

// Steps that name a row or an item: select:, select+:, open:, side:, popup:.
bool ParseRowStep(const std::string& verb, const std::string& argument, ScriptStep& step) {
    if (verb == "select" || verb == "select+") {
        step.kind = ScriptStep::Kind::select;
        step.modifiers = verb == "select+" ? cmdKey : 0;
    } else if (verb == "open") {
        step.kind = ScriptStep::Kind::open;
    } else if (verb == "side") {
        step.kind = ScriptStep::Kind::side;
    } else if (verb == "popup") {
        step.kind = ScriptStep::Kind::popup;
    } else {
        return false;
    }
    step.text = argument;
    return true;
}

// Why the step cannot be read, or null when it can.
const char* ParseStep(const std::string& verb, const std::string& argument, ScriptStep& step) {
    if (verb == "key") {
        step.kind = ScriptStep::Kind::key;
        return ParseKey(argument, step) ? nullptr : "no such key";
    }
    if (verb == "type") {
        step.kind = ScriptStep::Kind::type;
        step.text = argument;
        return nullptr;
    }
    if (verb == "click") {
        return ParseClick(argument, step);
    }
    if (verb == "wait") {
        return ParseWait(argument, step);
    }
    if (verb == "view" && (argument == "list" || argument == "column")) {
        step.kind = ScriptStep::Kind::view;
        step.columnView = argument == "column";
        return nullptr;
    }
    if (ParseRowStep(verb, argument, step)) {
        return argument.empty() ? "the step needs a name" : nullptr;
    }
    if (verb == "snapshot" && !argument.empty()) {
        step.kind = ScriptStep::Kind::snapshot;
        step.text = argument;
        return nullptr;
    }
    return "unknown step";
}

} // namespace

std::optional<std::vector<ScriptStep>> ParseScript(const std::string& script) {
    std::vector<ScriptStep> steps;
    std::stringstream stream(script);
    for (std::string text; std::getline(stream, text, ';');) {
        if (text.empty()) {
            continue;
        }
        const size_t colon = text.find(':');
        const std::string verb = text.substr(0, colon);
        const std::string argument = colon == std::string::npos ? "" : text.substr(colon + 1);
        ScriptStep step{};
        if (const char* why = ParseStep(verb, argument, step)) {
            std::fprintf(stderr, "kelpick: step %zu: %s: \"%s\"\n", steps.size() + 1, why,
                         text.c_str());
            return std::nullopt;
        }
        steps.push_back(step);
    }
    return steps;
}
