// kelpick: the library's dialogs from the command line. It prints the answer or the chosen
// paths and exits 0 on an answer, 1 on cancel, 2 on an error. Its zenity-compatible front
// (--file-selection) exits as that tool does: 5 at the timeout and 255 on an error.

#include "tools/kelpick/AskCommands.h"
#include "tools/kelpick/BrowseCommands.h"
#include "tools/kelpick/DialogSession.h"
#include "tools/kelpick/KelpickOptions.h"

#include <cstdio>

namespace {

int RunFileSelection(int argc, char** argv) {
    std::optional<KelpickOptions> options = ParseFileSelectionOptions(argc, argv);
    if (options && options->request == KelpickOptions::Request::help) {
        PrintKelpickUsage(stdout);
        return 0;
    }
    const int exit = options ? RunBrowseCommand(*options) : kError;
    return exit == kError ? kFrontError : exit;
}

} // namespace

int main(int argc, char** argv) {
    if (IsFileSelection(argc, argv)) {
        return RunFileSelection(argc, argv);
    }
    std::optional<KelpickOptions> options = ParseKelpickOptions(argc, argv);
    if (!options) {
        return kError;
    }
    switch (options->request) {
    case KelpickOptions::Request::help:
        PrintKelpickUsage(stdout);
        return 0;
    case KelpickOptions::Request::version:
        std::printf("kelpick %s\n", KELPICK_VERSION);
        return 0;
    case KelpickOptions::Request::dialog:
        break;
    }
    return IsBrowseCommand(options->command) ? RunBrowseCommand(*options) : RunAskCommand(*options);
}
