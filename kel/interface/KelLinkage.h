#pragma once

// Run-time lookup of symbols already loaded in the process, for libraries the library may use
// but does not link.

// The address of the symbol, or null when it is not loaded.
void* LookupSymbol(const char* name);
// The same, and on failure says so on standard error: a missing symbol is worth a line there.
void* LookupOrNullSymbol(const char* name);
