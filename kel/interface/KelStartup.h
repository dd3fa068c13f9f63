#pragma once

// Library start-up. There are no static initialisers: every process-wide value is made by
// _InitializeKel, which the create, blocking and preview-making calls run on first use, or made
// on first use by its owner. Everything here is set once on the main thread and never reset.

#include "kel/foundation/TStringRef.h"

extern bool gKelInitialized;
// The one-character strings "/", "~", "-" and ":".
extern TStringRef* kSlashStr;
extern TStringRef* kTildeStr;
extern TStringRef* kHyphenStr;
extern TStringRef* kColonStr;
// The localised keyboard command characters, one a position; null without the bundle.
extern TStringRef* gCommandKeys;

void _InitializeKel();

inline void EnsureKelInitialized() {
    if (!gKelInitialized) {
        _InitializeKel();
    }
}
