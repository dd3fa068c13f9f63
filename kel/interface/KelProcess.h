#pragma once

// Process-wide answers about the client application, each worked out once.

#include <basalt/BasaltCore.h>

// The main bundle's identifier; null when the process has none.
BCStringRef MainBundleIdentifier();
// The main bundle's identifier, or an empty string when the process has none. Not owned.
BCStringRef KelGetProcessID();
// True for the clients known to run their own event loop while a preview draws.
bool ShouldExpectClientToRunEventLoopDuringPreviewDraw();
