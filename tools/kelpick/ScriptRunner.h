#pragma once

// Drives a running dialog without a display: the first snapshot, then the script's steps one
// by one from inside the dialog's own loop, then the timeout that cancels a dialog nobody
// answered. A step that cannot be done ends the dialog at once, as a failure. Each step runs a
// moment after the previous one, so the loop dispatches what a step posted before the next one
// looks.

#include <basalt/BasaltToolbox.h>
#include <kel/KelServices.h>
#include <optional>
#include <string>
#include <vector>

struct ScriptStep {
    enum class Kind { key, type, click, waitIdle, snapshot } kind;
    std::string text;     // type:, snapshot:
    uint16_t keyCode = 0; // key:
    uint32_t modifiers = 0;
    char16_t character = 0;
    int16_t item = 0; // click:
};

// The steps of a script, or nothing with a message on standard error.
std::optional<std::vector<ScriptStep>> ParseScript(const std::string& script);

class ScriptRunner {
public:
    ScriptRunner(KelDialogRef dialog, std::vector<ScriptStep> steps, std::string snapshot,
                 double timeout);

    // Schedules the work; it runs once the dialog's loop runs.
    void Start();
    bool TimedOut() const { return timedOut; }
    bool Failed() const { return failed; }

private:
    void RunStep(size_t index);
    bool Perform(const ScriptStep& step);
    bool Snapshot(const std::string& path);
    void ArmTimeout();
    void Abandon();

    KelDialogRef dialog;
    std::vector<ScriptStep> steps;
    std::string snapshot;
    double timeout;
    bool timedOut = false;
    bool failed = false;
};
