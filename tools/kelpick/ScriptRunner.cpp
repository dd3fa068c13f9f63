#include "tools/kelpick/ScriptRunner.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/classic/KeyboardLayout.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <sstream>

using basalt::headless::HeadlessDriver;

namespace {

// Long enough for the loop to dispatch what a step posted.
constexpr double kStepDelay = 0.05;

struct NamedKey {
    const char* name;
    uint16_t keyCode;
    char16_t character;
};

constexpr NamedKey kNamedKeys[] = {
    {"return", kVK_Return, u'\r'}, {"enter", kVK_ANSI_KeypadEnter, 3}, {"escape", kVK_Escape, 27},
    {"tab", kVK_Tab, u'\t'},       {"space", kVK_Space, u' '},         {"delete", kVK_Delete, 8},
    {"left", kVK_LeftArrow, 28},   {"right", kVK_RightArrow, 29},      {"up", kVK_UpArrow, 30},
    {"down", kVK_DownArrow, 31},
};

bool Fail(const std::string& message) {
    std::fprintf(stderr, "kelpick: %s\n", message.c_str());
    return false;
}

bool ParseKey(std::string text, ScriptStep& step) {
    const std::pair<const char*, uint32_t> prefixes[] = {
        {"cmd-", cmdKey}, {"shift-", shiftKey}, {"opt-", optionKey}};
    for (bool found = true; found;) {
        found = false;
        for (const auto& [prefix, bit] : prefixes) {
            if (text.size() > std::strlen(prefix) && text.starts_with(prefix)) {
                step.modifiers |= bit;
                text.erase(0, std::strlen(prefix));
                found = true;
            }
        }
    }
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

bool ParseStep(const std::string& text, ScriptStep& step) {
    const size_t colon = text.find(':');
    const std::string verb = text.substr(0, colon);
    const std::string argument = colon == std::string::npos ? "" : text.substr(colon + 1);
    if (verb == "key") {
        step.kind = ScriptStep::Kind::key;
        return ParseKey(argument, step) || Fail("no such key in step \"" + text + "\"");
    }
    if (verb == "type") {
        step.kind = ScriptStep::Kind::type;
        step.text = argument;
        return true;
    }
    if (verb == "click") {
        step.kind = ScriptStep::Kind::click;
        const char* end = argument.data() + argument.size();
        auto [stop, error] = std::from_chars(argument.data(), end, step.item);
        return (error == std::errc() && stop == end && step.item > 0) ||
               Fail("click needs an item number: \"" + text + "\"");
    }
    if (verb == "wait" && argument == "idle") {
        step.kind = ScriptStep::Kind::waitIdle;
        return true;
    }
    if (verb == "snapshot" && !argument.empty()) {
        step.kind = ScriptStep::Kind::snapshot;
        step.text = argument;
        return true;
    }
    return Fail("unknown step \"" + text + "\"");
}

} // namespace

std::optional<std::vector<ScriptStep>> ParseScript(const std::string& script) {
    std::vector<ScriptStep> steps;
    std::stringstream stream(script);
    for (std::string text; std::getline(stream, text, ';');) {
        if (text.empty()) {
            continue;
        }
        ScriptStep step{};
        if (!ParseStep(text, step)) {
            return std::nullopt;
        }
        steps.push_back(step);
    }
    return steps;
}

ScriptRunner::ScriptRunner(KelDialogRef dialog, std::vector<ScriptStep> steps, std::string snapshot,
                           double timeout)
    : dialog(dialog), steps(std::move(steps)), snapshot(std::move(snapshot)), timeout(timeout) {}

void ScriptRunner::Start() {
    HeadlessDriver::Soon([this] {
        if (!snapshot.empty() && !Snapshot(snapshot)) {
            Abandon();
            return;
        }
        RunStep(0);
    });
}

void ScriptRunner::RunStep(size_t index) {
    if (index == steps.size()) {
        ArmTimeout();
        return;
    }
    if (!Perform(steps[index])) {
        Abandon();
        return;
    }
    HeadlessDriver::Soon([this, index] { RunStep(index + 1); }, kStepDelay);
}

// A step that cannot be done ends the run at once: what follows it would act on the wrong state.
void ScriptRunner::Abandon() {
    failed = true;
    KelCustomControl(dialog, kKelCtlTerminate, nullptr);
}

bool ScriptRunner::Perform(const ScriptStep& step) {
    switch (step.kind) {
    case ScriptStep::Kind::key:
        return HeadlessDriver::PressKey(step.keyCode, step.modifiers, step.character) == noErr ||
               Fail("the key of a key: step could not be pressed");
    case ScriptStep::Kind::type:
        return HeadlessDriver::TypeText(step.text) == noErr ||
               Fail("could not type \"" + step.text + "\"");
    case ScriptStep::Kind::click: {
        WindowRef window = KelDialogGetWindow(dialog);
        ControlRef control = nullptr;
        if (window == nullptr ||
            GetDialogItemAsControl(GetDialogFromWindow(window), step.item, &control) != noErr ||
            control == nullptr) {
            return Fail("the dialog has no item " + std::to_string(step.item));
        }
        return HeadlessDriver::Click(control) == noErr;
    }
    case ScriptStep::Kind::waitIdle:
        return true;
    case ScriptStep::Kind::snapshot:
        return Snapshot(step.text);
    }
    return false;
}

bool ScriptRunner::Snapshot(const std::string& path) {
    WindowRef window = KelDialogGetWindow(dialog);
    if (window == nullptr) {
        return Fail("no window to take a snapshot of for " + path);
    }
    return HeadlessDriver::WritePNG(window, path) == noErr ||
           Fail("could not write the snapshot " + path);
}

void ScriptRunner::ArmTimeout() {
    HeadlessDriver::Soon(
        [this] { timedOut = KelCustomControl(dialog, kKelCtlTerminate, nullptr) == noErr; },
        timeout);
}
