// Toolbox tests run on the headless backend whatever display the machine has.

#include <cstdlib>

namespace {
[[maybe_unused]] const int kHeadless = setenv("KEL_BACKEND", "headless", 1);
}

// Fontconfig and Pango keep their caches for the life of the process; the leak checker would
// report them at exit. Our own allocations are still checked.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\nleak:libpango\nleak:libglib\nleak:libgobject\nleak:libharfbuzz\n";
}
