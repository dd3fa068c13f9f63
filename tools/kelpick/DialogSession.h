#pragma once

// What every kelpick command does around its dialog: choose the backend, read the script, run
// the dialog under the script runner, and give back the exit status.

#include "tools/kelpick/KelpickOptions.h"
#include "tools/kelpick/ScriptRunner.h"

#include <basalt/BasaltCore.h>
#include <kel/KelServices.h>
#include <optional>
#include <string>
#include <vector>

enum ExitStatus { kAnswered = 0, kCancelled = 1, kError = 2 };
// The zenity-compatible front's own codes for a timeout and an error.
enum FrontExitStatus { kFrontTimedOut = 5, kFrontError = 255 };

// A string the options record borrows for the length of the command.
class OwnedString {
public:
    explicit OwnedString(const std::optional<std::string>& text);
    OwnedString(const OwnedString&) = delete;
    OwnedString& operator=(const OwnedString&) = delete;
    ~OwnedString();
    BCStringRef get() const { return string; }

private:
    BCStringRef string;
};

// Picks the headless backend when asked or when there is no display, and reads the script.
// Nothing, with a message on standard error, when the command cannot go on.
std::optional<std::vector<ScriptStep>> PrepareDialogSession(const KelpickOptions& options);

// Starts the runner the way the backend allows: the whole script headless, only the snapshot on
// a display, where a person answers; there only the zenity-compatible front's --timeout holds,
// as that tool's does.
void StartScript(ScriptRunner& runner, const KelpickOptions& options);

// Says that a create call failed and gives the error exit status.
int CreationFailed(StatusCode status);
