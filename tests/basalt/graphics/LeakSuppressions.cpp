// Fontconfig keeps its configuration and font caches for the life of the process and frees
// them only through a call that is unsafe while Pango may still hold fonts; the leak checker
// is told not to count them.
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}
