#include <gtest/gtest.h>

namespace keltest {
void InstallScratchEnvironment();
}

// Fontconfig, Pango and the GLib type system keep their caches for the life of the process and
// free them only through calls that are unsafe while fonts may still be held; the leak checker
// is told not to count them. Our own allocations are still checked. It lives beside main so
// that every test program links it.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\nleak:libpango\nleak:libglib\nleak:libgobject\nleak:libharfbuzz\n";
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    keltest::InstallScratchEnvironment();
    return RUN_ALL_TESTS();
}
