#include "tools/kelpick/ScriptRunner.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/backend/x11/X11Snapshot.h"
#include "tools/kelpick/DialogDriving.h"

#include <algorithm>
#include <cstdio>

using basalt::headless::HeadlessDriver;

namespace {

// Long enough for the loop to dispatch what a step posted.
constexpr double kStepDelay = 0.05;
// A folder is listed while the dialog shows, so a step that looks for a row or a button looks
// again for this long, as a person waits for a list to fill, before it gives up.
constexpr double kLookFor = 10;
// Looking reads every row's name, so the pauses between looks grow (doubling up to the last)
// to leave the loop free to list.
constexpr double kFirstLookAgain = 0.02;
constexpr double kLastLookAgain = 0.32;
// An alert that does not go when answered is left to the dialog's end after this many tries.
constexpr int kMostAlertsAnswered = 3;

bool LooksForSomething(const ScriptStep& step) {
    switch (step.kind) {
    case ScriptStep::Kind::select:
    case ScriptStep::Kind::open:
    case ScriptStep::Kind::side:
    case ScriptStep::Kind::popup:
    case ScriptStep::Kind::clickLabel:
        return true;
    default:
        return false;
    }
}

} // namespace

ScriptRunner::ScriptRunner(KelDialogRef dialog, std::vector<ScriptStep> steps, std::string snapshot,
                           double timeout)
    : dialog(dialog), steps(std::move(steps)), snapshot(std::move(snapshot)), timeout(timeout) {}

void ScriptRunner::Start() {
    HeadlessDriver::Soon([this] {
        if (!snapshot.empty()) {
            if (Refusal why = Snapshot(snapshot)) {
                std::fprintf(stderr, "kelpick: %s\n", why->c_str());
                Abandon();
                return;
            }
        }
        RunStep(0);
    });
}

void ScriptRunner::RunStep(size_t index, double lookedFor) {
    if (index == steps.size()) {
        ArmTimeout();
        return;
    }
    if (Refusal why = Perform(steps[index])) {
        if (LooksForSomething(steps[index]) && lookedFor < kLookFor) {
            const double pause = std::clamp(lookedFor, kFirstLookAgain, kLastLookAgain);
            HeadlessDriver::Soon(
                [this, index, lookedFor, pause] { RunStep(index, lookedFor + pause); }, pause);
            return;
        }
        std::fprintf(stderr, "kelpick: step %zu: %s\n", index + 1, why->c_str());
        Abandon();
        return;
    }
    const ScriptStep& step = steps[index];
    const double delay = step.kind == ScriptStep::Kind::wait ? step.seconds : kStepDelay;
    HeadlessDriver::Soon([this, index] { RunStep(index + 1); }, delay);
}

// A step that cannot be done ends the run at once: what follows it would act on the wrong state.
void ScriptRunner::Abandon() {
    failed = true;
    EndDialog(nullptr);
}

// A dialog cannot end while an alert it put up waits in its own loop: the alert is answered
// first, with its Cancel button (or its only one), which never replaces or loses anything.
void ScriptRunner::EndDialog(bool* ended, int alertsAnswered) {
    WindowRef window = KelDialogGetWindow(dialog);
    WindowRef alert = window != nullptr ? AlertOver(window) : nullptr;
    if (alert != window && alertsAnswered < kMostAlertsAnswered && AnswerCancel(alert)) {
        HeadlessDriver::Soon(
            [this, ended, alertsAnswered] { EndDialog(ended, alertsAnswered + 1); }, kStepDelay);
        return;
    }
    const bool terminated = KelCustomControl(dialog, kKelCtlTerminate, nullptr) == noErr;
    if (ended != nullptr) {
        *ended = terminated;
    }
}

Refusal ScriptRunner::Perform(const ScriptStep& step) {
    switch (step.kind) {
    case ScriptStep::Kind::key:
        if (HeadlessDriver::PressKey(step.keyCode, step.modifiers, step.character) != noErr) {
            return "the key could not be pressed";
        }
        return std::nullopt;
    case ScriptStep::Kind::type:
        if (HeadlessDriver::TypeText(step.text) != noErr) {
            return "could not type \"" + step.text + "\"";
        }
        return std::nullopt;
    case ScriptStep::Kind::wait:
    case ScriptStep::Kind::waitIdle:
        return std::nullopt;
    case ScriptStep::Kind::snapshot:
        return Snapshot(step.text);
    default:
        break;
    }
    WindowRef window = KelDialogGetWindow(dialog);
    if (window == nullptr) {
        return "the dialog has no window";
    }
    return PerformOnWindow(step, window);
}

Refusal ScriptRunner::PerformOnWindow(const ScriptStep& step, WindowRef window) {
    switch (step.kind) {
    case ScriptStep::Kind::click:
        return ClickItem(AlertOver(window), step.item);
    case ScriptStep::Kind::clickLabel:
        return ClickButton(AlertOver(window), step.text);
    case ScriptStep::Kind::select:
        return ClickBrowserRow(window, step.text, step.modifiers, 1);
    case ScriptStep::Kind::open:
        return ClickBrowserRow(window, step.text, 0, 2);
    case ScriptStep::Kind::side:
        return ClickSidebarRow(window, step.text);
    case ScriptStep::Kind::popup:
        return ChooseTypeItem(window, step.text);
    case ScriptStep::Kind::view:
        return ChooseView(window, step.columnView);
    default:
        return "the step cannot be done here";
    }
}

void ScriptRunner::StartOnDisplay(bool closeAtTimeout) {
    if (closeAtTimeout) {
        ArmTimeout();
    }
    if (snapshot.empty()) {
        return;
    }
    HeadlessDriver::Soon([this] {
        if (Refusal why = Snapshot(snapshot)) {
            std::fprintf(stderr, "kelpick: %s\n", why->c_str());
            failed = true;
        }
    });
}

Refusal ScriptRunner::Snapshot(const std::string& path) {
    WindowRef window = KelDialogGetWindow(dialog);
    if (window == nullptr) {
        return "no window to take a snapshot of for " + path;
    }
    // What the person sees: an alert the dialog put up, when there is one.
    window = AlertOver(window);
    // On a display the picture is what the server shows; headless it is our own drawing.
    StatusCode status = HeadlessDriver::Available() ? HeadlessDriver::WritePNG(window, path)
                                                    : basalt::x11::WriteWindowPNG(window, path);
    if (status != noErr) {
        return "could not write the snapshot " + path;
    }
    return std::nullopt;
}

void ScriptRunner::ArmTimeout() {
    HeadlessDriver::Soon([this] { EndDialog(&timedOut); }, timeout);
}
