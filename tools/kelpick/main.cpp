// kelpick: the library's dialogs from the command line. It prints the answer and exits 0 on an
// answer, 1 on cancel, 2 on an error.

#include "tools/kelpick/AskCommands.h"
#include "tools/kelpick/KelpickOptions.h"

// Fontconfig, Pango and GLib keep their caches for the life of the process; a sanitizer build
// is told not to count them as leaks. Our own allocations are still checked.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\nleak:libpango\nleak:libglib\nleak:libgobject\nleak:libharfbuzz\n";
}

int main(int argc, char** argv) {
    std::optional<KelpickOptions> options = ParseKelpickOptions(argc, argv);
    if (!options) {
        return 2;
    }
    return RunAskCommand(*options);
}
