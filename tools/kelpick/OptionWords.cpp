#include "tools/kelpick/OptionWords.h"

#include <cstdio>

bool Fail(const char* format, const char* what) {
    std::fprintf(stderr, "kelpick: ");
    std::fprintf(stderr, format, what);
    std::fprintf(stderr, "\n");
    return false;
}

bool ParseTimeout(const char* text, double& seconds) {
    double parsed = 0;
    if (!ParseNumber(text, parsed) || !(parsed > 0)) {
        return Fail("the timeout needs a positive number of seconds, not \"%s\"", text);
    }
    seconds = parsed;
    return true;
}
