#pragma once

// Moves an older options record to the current form for the routed road of the blocking calls.
// The converted record owns its strings; ReleaseConvertedDialogOptions gives them back.

#include <kel/KelServices.h>

// Fills to with the second implementation's defaults, then what from says. The status is the
// default fetch's.
StatusCode ConvertDialogOptions(const KelDialogOptions* from, KelDialogCreationOptions* to);
void ReleaseConvertedDialogOptions(KelDialogCreationOptions* options);
