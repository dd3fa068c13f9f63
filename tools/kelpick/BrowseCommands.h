#pragma once

#include "tools/kelpick/KelpickOptions.h"

// Runs open, file, folder, volume, object or new-folder: prints the chosen items' paths, one
// per line, and gives the exit status: 0 chosen, 1 cancel, 2 an error or a timeout.
int RunBrowseCommand(const KelpickOptions& options);
