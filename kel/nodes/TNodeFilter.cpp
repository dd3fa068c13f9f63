#include "kel/nodes/TNodeFilter.h"

#include "basalt/types/BUTypes.h"
#include "kel/foundation/TKelPrefs.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr unsigned long kAnyCreator = NodeCode("****");
constexpr unsigned long kMovieType = NodeCode("MooV");
constexpr unsigned long kImageType = NodeCode("rbif");

} // namespace

TNodeFilter::TNodeFilter(const TKelClient& client, unsigned long flags,
                         const NodeFilterMaskSet& masks, KelTypeList** list, unsigned long creator)
    : client(client), flags(flags), masks(masks), listCreator(kAnyCreator),
      currentCreator(kAnyCreator) {
    mode = list != nullptr ? kTypeList : kNoTypes;
    SetTypes(list, creator);
    this->masks.select |= kNodeSpeciesRoot;
    this->masks.target |= kNodeSpeciesRoot;
    this->masks.choose &= ~static_cast<unsigned long>(kNodeSpeciesRoot);
    this->masks.filter &= ~static_cast<unsigned long>(kNodeSpeciesRoot);
    ApplyPackageProxies();
    PrepareMetaTypeMatching();
    showInvisible = TKelPrefs::GetInvisiblePrefs();
}

TNodeFilter::~TNodeFilter() {
    if (typeIdentifiers != nullptr) {
        BCRelease(typeIdentifiers);
    }
}

std::vector<FourCharCode> TypesOfList(KelTypeList** list) {
    if (list == nullptr || *list == nullptr) {
        return {};
    }
    const auto room = static_cast<int32_t>(
        (GetHandleSize(reinterpret_cast<Handle>(list)) - Size(offsetof(KelTypeList, osTypes))) /
        Size(sizeof(FourCharCode)));
    const int32_t count = std::clamp<int32_t>((*list)->typeCount, 0, std::max(room, 0));
    return std::vector<FourCharCode>((*list)->osTypes, (*list)->osTypes + count);
}

void TNodeFilter::SetTypes(KelTypeList** list, unsigned long creator) {
    listCreator = kAnyCreator;
    types.clear();
    if (list != nullptr && *list != nullptr) {
        listCreator = (*list)->componentSignature;
        const std::vector<FourCharCode> listed = TypesOfList(list);
        types.assign(listed.begin(), listed.end());
    }
    if (creator != 0) {
        listCreator = creator;
    }
}

void TNodeFilter::SetTypeIdentifiers(BCArrayRef identifiers) {
    if (identifiers != nullptr) {
        BCRetain(identifiers);
    }
    if (typeIdentifiers != nullptr) {
        BCRelease(typeIdentifiers);
    }
    typeIdentifiers = identifiers;
    mode = identifiers != nullptr ? kTypeList : kNoTypes;
    currentCreator = kAnyCreator;
    types.clear();
    // A hint armed for the old types must not outlive them.
    PrepareMetaTypeMatching();
}

void TNodeFilter::SetMode(TypeFilterMode newMode, unsigned long creator, unsigned long type,
                          BCStringRef identifier) {
    currentCreator = creator != 0 ? creator : listCreator;
    mode = newMode;
    if (newMode == kTypeListAnyCreator) {
        currentCreator = kAnyCreator;
        mode = kTypeList;
    }
    currentIdentifier = identifier;
    currentType = type;
    PrepareMetaTypeMatching();
}

// A package counts as a folder (when it may be browsed) or as a file, mask by mask.
void TNodeFilter::ApplyPackageProxies() {
    if ((flags & kKelOptPackagesSelectable) == 0) {
        return;
    }
    const unsigned long proxy =
        (flags & kKelOptPackagesBrowsable) != 0 ? kNodeSpeciesFolder : kNodeSpeciesFile;
    for (unsigned long* mask : {&masks.select, &masks.target, &masks.choose, &masks.filter}) {
        if ((*mask & proxy) != 0) {
            *mask |= kNodeSpeciesPackage;
        }
    }
}

void TNodeFilter::PrepareMetaTypeMatching() {
    metaTypeHint = 0;
    useMetaType = false;
    if ((flags & kKelOptNoMetaTypes) != 0 || typeIdentifiers != nullptr) {
        return;
    }
    if (mode == kTypeList) {
        if (TypeMatches(kMovieType, nullptr)) {
            metaTypeHint = kMovieType;
        } else if (TypeMatches(kImageType, nullptr)) {
            metaTypeHint = kImageType;
        }
    } else if (mode == kOneType && (currentType == kImageType || currentType == kMovieType)) {
        metaTypeHint = currentType;
    }
    useMetaType = metaTypeHint != 0;
}

bool TNodeFilter::TypeMatches(unsigned long type, BCStringRef identifier) const {
    if (typeIdentifiers != nullptr) {
        bool matches = false;
        for (BCIndex i = 0; i < BCArrayGetCount(typeIdentifiers); ++i) {
            auto entry = static_cast<BCStringRef>(BCArrayGetValueAtIndex(typeIdentifiers, i));
            matches = matches || (identifier != nullptr && BUTypeConformsTo(identifier, entry));
        }
        return matches;
    }
    return types.empty() || std::find(types.begin(), types.end(), type) != types.end();
}

// ---- The four questions ---------------------------------------------------------------------

bool TNodeFilter::CanSee(const TKelNode& node) const {
    return (flags & kKelOptShowInvisible) != 0 || node.IsVisible() || showInvisible;
}

bool TNodeFilter::SpeciesIn(const TKelNode& node, unsigned long mask) const {
    NodeSpecies species = kNodeSpeciesFile;
    uint32_t creator = 0, type = 0;
    return node.GetOriginalInfo(species, creator, type, nullptr) == noErr && (mask & species) != 0;
}

bool TNodeFilter::CanTarget(const TKelNode& node) const {
    return SpeciesIn(node, masks.target);
}

bool TNodeFilter::CanChoose(const TKelNode& node) const {
    return SpeciesIn(node, masks.choose);
}

bool TNodeFilter::CanSelect(const TKelNode& node, short filterMode) const {
    NodeSpecies species = kNodeSpeciesFile;
    uint32_t creator = 0, type = 0;
    BCStringRef identifier = nullptr;
    if (node.GetOriginalInfo(species, creator, type, &identifier) != noErr) {
        return false;
    }
    TStringRef heldIdentifier(identifier, false);
    if ((masks.select & species) == 0 ||
        !PassesTypeStage(node, species, creator, type, identifier)) {
        return false;
    }
    if ((masks.filter & species) == 0) {
        return true;
    }
    return AskClient(node, species, creator, type, filterMode);
}

// ---- The type stage -------------------------------------------------------------------------

bool TNodeFilter::PassesTypeStage(const TKelNode& node, NodeSpecies species, uint32_t creator,
                                  uint32_t type, BCStringRef identifier) const {
    const bool typed = species == kNodeSpeciesFile ||
                       (species == kNodeSpeciesPackage && (flags & kKelOptPackagesBrowsable) == 0);
    if (!typed) {
        return true;
    }
    switch (mode) {
    case kTypeList:
        return PassesListStage(node, creator, type, identifier);
    case kOneType:
        return PassesOneTypeStage(node, creator, type, identifier);
    default:
        return true;
    }
}

bool TNodeFilter::PassesListStage(const TKelNode& node, uint32_t creator, uint32_t type,
                                  BCStringRef identifier) const {
    if (currentCreator != kAnyCreator && currentCreator != creator) {
        return false;
    }
    // Without an identifier nothing can be matched, query hits included.
    if (identifier == nullptr) {
        return false;
    }
    if (useMetaType && TypeMatches(node.MetaType(FourCharCode(metaTypeHint)), identifier)) {
        return true;
    }
    return TypeMatches(type, identifier);
}

bool TNodeFilter::PassesOneTypeStage(const TKelNode& node, uint32_t creator, uint32_t type,
                                     BCStringRef identifier) const {
    if (currentCreator != kAnyCreator && currentCreator != creator) {
        return false;
    }
    const bool sameType =
        (useMetaType && node.MetaType(FourCharCode(metaTypeHint)) == currentType) ||
        currentType == type;
    if (sameType && typeIdentifiers == nullptr) {
        return true;
    }
    if (typeIdentifiers == nullptr || identifier == nullptr || currentIdentifier == nullptr) {
        return false;
    }
    return BUTypeConformsTo(identifier, currentIdentifier);
}

// ---- The client stage -----------------------------------------------------------------------

bool TNodeFilter::AskClient(const TKelNode& node, NodeSpecies species, uint32_t creator,
                            uint32_t type, short filterMode) const {
    BEDesc desc;
    BEInitializeDesc(&desc);
    node.GetAsBEDesc(desc, client.SelectionType());
    KelFileOrFolderInfo info{};
    FillFileOrFolderInfo(node, species, creator, type, info);
    // Asking the client changes nothing in it; Filter is not const only because it calls out.
    const bool accepted = const_cast<TKelClient&>(client).Filter(&desc, &info, filterMode);
    BEDisposeDesc(&desc);
    return accepted;
}

// ---- Search limits --------------------------------------------------------------------------

namespace {

// The identifier of a four-character type code; owned.
BCStringRef CopyIdentifierOfType(unsigned long type) {
    TStringRef code(BUCreateStringForFourCharCode(OSType(type)), false);
    return BUTypeCreatePreferredIdentifierForTag(kBUTagClassFourCharCode, code.AsBCStringRef(),
                                                 kBUTypeData);
}

void AppendOwned(BCMutableArrayRef array, BCStringRef value) {
    if (value != nullptr) {
        BCArrayAppendValue(array, value);
        BCRelease(value);
    }
}

} // namespace

BCMutableArrayRef TNodeFilter::CopyCurrentFilterIdentifiers() const {
    BCMutableArrayRef result = nullptr;
    if (mode == kTypeList || mode == kTypeListAnyCreator) {
        if (typeIdentifiers != nullptr) {
            result = BCArrayCreateMutableCopy(nullptr, 0, typeIdentifiers);
        } else if (!types.empty()) {
            result = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
            for (unsigned long type : types) {
                AppendOwned(result, CopyIdentifierOfType(type));
            }
        }
    } else if (mode == kOneType) {
        result = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
        if (currentIdentifier != nullptr) {
            BCArrayAppendValue(result, currentIdentifier);
        } else if (currentType != 0) {
            AppendOwned(result, CopyIdentifierOfType(currentType));
        }
    }
    const bool packages = (flags & (kKelOptPackagesSelectable | kKelOptPackagesBrowsable)) != 0;
    if (result != nullptr && packages &&
        !BCArrayContainsValue(result, BCRange{0, BCArrayGetCount(result)}, kBUTypePackage)) {
        BCArrayAppendValue(result, kBUTypePackage);
    }
    return result;
}
