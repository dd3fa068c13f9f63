#pragma once

// What sets one kind of browse dialog apart in its configuration: which option flags it keeps,
// what its node filter allows, and its default title and action label.

#include "kel/interface/TDialogConfiguration.h"

struct KelDialogRules {
    uint32_t flagMask;
    uint32_t forcedFlags;
    NodeFilterMaskSet masks;
    // Bundle keys; null for none.
    const char* defaultTitleKey;
    const char* defaultActionLabelKey;
};

namespace KelDialogKind {
extern const KelDialogRules kGetFile;
extern const KelDialogRules kPutFile;
extern const KelDialogRules kChooseFile;
extern const KelDialogRules kChooseFolder;
extern const KelDialogRules kChooseVolume;
extern const KelDialogRules kChooseObject;
extern const KelDialogRules kNewFolder;
} // namespace KelDialogKind

// Keeps the flags of the mask, installs the filter masks, and fills in the default title (only for
// a client with an event callback and no title) and action label (whenever there is none).
void ApplyDialogRules(TDialogConfiguration& configuration, const KelDialogRules& rules);

// A client's popup items are reported through the event callback, so they need one. Both the
// current and the older options record may carry them.
template <class Options>
bool PopupNeedsEventProc(const Options* options, KelEventProc eventProc) {
    return options != nullptr && options->popupExtension != nullptr && eventProc == nullptr;
}
