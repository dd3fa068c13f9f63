#include "basalt/files/BFCatalogInfo.h"
#include "kel/nodes/TKelNode.h"

namespace {

StatusCode MovieLibraryMissing(const BFSpec*, FourCharCode, FourCharCode, Boolean* canImport,
                               Boolean* canPlay, Boolean* preferImport, uint32_t) {
    *canImport = *canPlay = *preferImport = false;
    return kReelboxUnavailableErr;
}

} // namespace

CanReelboxOpenFileProc gCanReelboxOpenFile = MovieLibraryMissing;

FourCharCode TKelNode::MetaType(FourCharCode hint) const {
    BFRef ref;
    BFSpec fileSpec;
    if (GetAsBFRef(ref) != noErr ||
        BFGetCatalogInfo(&ref, 0, nullptr, nullptr, &fileSpec, nullptr) != noErr) {
        return 0;
    }
    FourCharCode type = ReadFourCharCode(NodeCode("asty"));
    Boolean canImport = false, canPlay = false, preferImport = false;
    if (gCanReelboxOpenFile(&fileSpec, type, 0, &canImport, &canPlay, &preferImport, 3) != noErr) {
        return 0;
    }
    if (canImport && canPlay) {
        return hint != 0 ? hint : preferImport ? NodeCode("rbif") : NodeCode("MooV");
    }
    return canImport ? NodeCode("rbif") : canPlay ? NodeCode("MooV") : 0;
}
