#include "tools/kelpick/DialogSession.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/backend/Backend.h"

#include <cstdio>
#include <cstdlib>

using basalt::headless::HeadlessDriver;

OwnedString::OwnedString(const std::optional<std::string>& text)
    : string(text ? BCStringCreateWithCString(nullptr, text->c_str(), kBCStringEncodingUTF8)
                  : nullptr) {}

OwnedString::~OwnedString() {
    if (string != nullptr) {
        BCRelease(string);
    }
}

std::optional<std::vector<ScriptStep>> PrepareDialogSession(const KelpickOptions& options) {
    if (options.headless || std::getenv("DISPLAY") == nullptr) {
        setenv("KEL_BACKEND", "headless", 1);
    }
    std::optional<std::vector<ScriptStep>> steps = ParseScript(options.script);
    if (!steps) {
        return std::nullopt;
    }
    if (std::string failure; basalt::toolbox::TryCurrentBackend(&failure) == nullptr) {
        std::fprintf(stderr, "kelpick: %s\n", failure.c_str());
        return std::nullopt;
    }
    return steps;
}

void StartScript(ScriptRunner& runner, const KelpickOptions& options) {
    if (HeadlessDriver::Available()) {
        runner.Start();
    } else {
        runner.StartOnDisplay(options.fileSelection && options.timeoutGiven);
    }
}

int CreationFailed(StatusCode status) {
    std::fprintf(stderr, "kelpick: the dialog could not be made (status %d)\n",
                 static_cast<int>(status));
    return kError;
}
