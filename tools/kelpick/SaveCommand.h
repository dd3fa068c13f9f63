#pragma once

// What the save command adds to a browse command: the name, the format popup's types that give
// the name its extension, the hidden extension and the replace confirmation.

#include "tools/kelpick/BrowseRun.h"

#include <kel/KelServices.h>

StatusCode CreateSaveDialog(KelDialogCreationOptions& creation, BrowseRun& run,
                            KelEventProc eventProc, KelDialogRef* dialog);
// Once the window is up: the type that the name has, or the first, and the extension hidden.
void StartSaveDialog(BrowseRun& run);
// A type of the format popup was chosen: the name takes its extension.
void SaveTypeChosen(BrowseRun& run);
