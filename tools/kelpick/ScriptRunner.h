#pragma once

// Drives a running dialog without a display: the first snapshot, then the script's steps one
// by one from inside the dialog's own loop, then the timeout that cancels a dialog nobody
// answered. A step that cannot be done ends the dialog at once, as a failure, with
// "kelpick: step N: why" on standard error. Each step runs a moment after the previous one (or
// after its wait), so the loop dispatches what a step posted before the next one looks.

#include "tools/kelpick/ScriptStep.h"

#include <basalt/BasaltToolbox.h>
#include <kel/KelServices.h>
#include <optional>
#include <string>
#include <vector>

class ScriptRunner {
public:
    ScriptRunner(KelDialogRef dialog, std::vector<ScriptStep> steps, std::string snapshot,
                 double timeout);

    // Schedules the work; it runs once the dialog's loop runs.
    void Start();
    // On a real display a person answers: only the snapshot is taken, once the window shows,
    // and the dialog is cancelled at the timeout only when closeAtTimeout says so.
    void StartOnDisplay(bool closeAtTimeout);
    bool TimedOut() const { return timedOut; }
    bool Failed() const { return failed; }

private:
    // lookedFor: how long the step has been looking for its row or button.
    void RunStep(size_t index, double lookedFor = 0);
    // Nothing when the step was done, or why it could not be.
    std::optional<std::string> Perform(const ScriptStep& step);
    std::optional<std::string> PerformOnWindow(const ScriptStep& step, WindowRef window);
    std::optional<std::string> Snapshot(const std::string& path);
    void ArmTimeout();
    void Abandon();
    // Ends the dialog, answering an alert over it first; ended tells whether it was running.
    void EndDialog(bool* ended, int alertsAnswered = 0);

    KelDialogRef dialog;
    std::vector<ScriptStep> steps;
    std::string snapshot;
    double timeout;
    bool timedOut = false;
    bool failed = false;
};
