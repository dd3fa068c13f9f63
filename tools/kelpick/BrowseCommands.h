#pragma once

#include "tools/kelpick/KelpickOptions.h"

// Runs open, save, file, folder, volume, object or new-folder: prints the chosen items' paths,
// one per line (joined by the separator for the zenity-compatible front), and gives the exit
// status: 0 chosen, 1 cancel, 2 an error or a timeout (5 for the front's timeout).
int RunBrowseCommand(const KelpickOptions& options);
