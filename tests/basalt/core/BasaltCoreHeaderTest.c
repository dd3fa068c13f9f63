/* The public header must stay usable from C99. */
#include <basalt/BasaltCore.h>

int BasaltCoreHeaderCompilesAsC(void) {
    BCRange range = BCRangeMake(0, 1);
    BCStringRef string = BCSTR("c");
    return (int)range.length + (int)BCStringGetLength(string);
}
