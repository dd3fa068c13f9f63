#pragma once

#include "tools/kelpick/KelpickOptions.h"

// Runs ask-save, ask-discard or ask-review, prints the answer, and gives the exit status:
// 0 an answer, 1 cancel, 2 an error or a timeout.
int RunAskCommand(const KelpickOptions& options);
