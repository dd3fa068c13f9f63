#pragma once

// xcb's XKB header names a member `explicit`, which C++ reserves; it is renamed while the
// header is read.

#define explicit xkb_explicit
#include <xcb/xkb.h>
#undef explicit
