#pragma once

// The steps of a --script: what each word asks for, read from "STEP;STEP;...".

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct ScriptStep {
    enum class Kind {
        key,        // key:[cmd-|shift-|option-]NAME
        type,       // type:TEXT, to what has the keyboard focus
        click,      // click:N, an alert's item
        clickLabel, // click:LABEL, the button with that title
        select,     // select:NAME, and select+:NAME with the command key
        open,       // open:NAME, a double click
        side,       // side:NAME, a sidebar row
        popup,      // popup:TITLE, an item of the type or format popup
        view,       // view:list, view:column
        wait,       // wait:MS
        waitIdle,   // wait:idle
        snapshot    // snapshot:FILE.png
    } kind;
    std::string text;     // what the step names: text, label, row, file
    uint16_t keyCode = 0; // key:
    uint32_t modifiers = 0;
    char16_t character = 0;
    int16_t item = 0;        // click:N
    bool columnView = false; // view:
    double seconds = 0;      // wait:MS
};

// The steps of a script, or nothing with "kelpick: step N: why" on standard error.
std::optional<std::vector<ScriptStep>> ParseScript(const std::string& script);
