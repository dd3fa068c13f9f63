/* The graphics header must stay usable from plain C clients. */
#include <basalt/BasaltGraphics.h>

int BasaltGraphicsHeaderCompilesAsC(void);

int BasaltGraphicsHeaderCompilesAsC(void) {
    BGRect r = BGRectMake(0, 0, 1, 1);
    Rect q = {0, 0, 1, 1};
    return r.size.width == 1 && q.bottom == 1;
}
