#include "kel/interface/KelDialogRules.h"

#include "kel/foundation/KelBundle.h"

namespace KelDialogKind {
const KelDialogRules kGetFile{0xFFD7, 0, {0x15, 0x14, 0x01, 0x15}, nullptr, nullptr};
const KelDialogRules kPutFile{0x3B525, 0, {0x14, 0x14, 0x14, 0}, nullptr, nullptr};
const KelDialogRules kChooseFile{
    0xF7C0, 0, {0x15, 0x14, 0x01, 0x15}, "Choose File Title", "Choose Button"};
const KelDialogRules kChooseFolder{
    0xF780, 0, {0x14, 0x14, 0x14, 0x14}, "Choose Folder Title", nullptr};
const KelDialogRules kChooseVolume{
    0xF380, kKelOptSelectDefault, {0x14, 0x14, 0x10, 0x14}, "Choose Volume Title", "Choose Button"};
const KelDialogRules kChooseObject{
    0xF7C0, 0, {0x15, 0x14, 0x15, 0x15}, "Choose Object Title", nullptr};
const KelDialogRules kNewFolder{0xF500, 0, {0x14, 0x14, 0x14, 0}, "New Folder Title", nullptr};
} // namespace KelDialogKind

namespace {

// The configuration releases what it holds; the bundle's string carries the reference for it.
BCStringRef BundleString(const char* key) {
    return KelBundle::GetStringResource(TStringRef::Create(key, kBCStringEncodingUTF8))
        .AsBCStringRef();
}

} // namespace

void ApplyDialogRules(TDialogConfiguration& configuration, const KelDialogRules& rules) {
    configuration.optionFlags = (configuration.optionFlags & rules.flagMask) | rules.forcedFlags;
    configuration.filterMasks = rules.masks;
    if (rules.defaultTitleKey != nullptr && configuration.eventProc != nullptr &&
        configuration.windowTitle == nullptr) {
        configuration.windowTitle = BundleString(rules.defaultTitleKey);
    }
    if (rules.defaultActionLabelKey != nullptr && configuration.actionButtonLabel == nullptr) {
        configuration.actionButtonLabel = BundleString(rules.defaultActionLabelKey);
    }
}
