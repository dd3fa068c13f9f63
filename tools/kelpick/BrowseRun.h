#pragma once

// What a browse command keeps while its dialog runs: the event callback's client data.

#include "tools/kelpick/KelpickOptions.h"
#include "tools/kelpick/PopupItems.h"

#include <kel/KelServices.h>

struct BrowseRun {
    const KelpickOptions& options;
    PopupItems popup;
    KelDialogRef dialog = nullptr;
    bool ended = false;
};
