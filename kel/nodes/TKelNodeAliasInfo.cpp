// How an alias counts for the filter: by the type the alias itself records ("asty"), and then
// by what it leads to. A broken alias fails the whole classification, except a server volume
// alias ("slua") when a type identifier is asked for: that one still counts as a volume.

#include "basalt/types/BUTypes.h"
#include "kel/nodes/TKelNode.h"

#include <algorithm>
#include <array>

namespace {

constexpr FourCharCode kTypeCode = NodeCode("asty");
constexpr FourCharCode kHostCreator = NodeCode("host");

constexpr std::array kFolderAliasTypes = {
    NodeCode("drop"), NodeCode("dtpa"), NodeCode("faam"), NodeCode("fact"), NodeCode("fadr"),
    NodeCode("faet"), NodeCode("faex"), NodeCode("famn"), NodeCode("fapf"), NodeCode("fapn"),
    NodeCode("fash"), NodeCode("fast"), NodeCode("fasy"), NodeCode("fdrp"), NodeCode("trsh")};
constexpr std::array kDiskAliasTypes = {NodeCode("cddr"), NodeCode("flpy"), NodeCode("hdsk"),
                                        NodeCode("srvr")};
constexpr std::array kServerAliasTypes = {NodeCode("slca"), NodeCode("slcn"), NodeCode("slmt"),
                                          NodeCode("slua"), NodeCode("slun")};

template <class Table>
bool Contains(const Table& table, FourCharCode code) {
    return std::find(table.begin(), table.end(), code) != table.end();
}

} // namespace

StatusCode TKelNode::ClassifyAlias(NodeSpecies& species, uint32_t& creator, uint32_t& type,
                                   BCStringRef* typeIdentifier) const {
    const FourCharCode aliasType = type;
    StatusCode status = noErr;
    bool skipTypeTest = false;
    if (Contains(kFolderAliasTypes, aliasType)) {
        species = kNodeSpeciesFolder;
        creator = kHostCreator;
        type = NodeCode("fldr");
    } else if (aliasType == NodeCode("fapa")) {
        species = kNodeSpeciesPackage;
        type = NodeCode("APPL");
    } else if (aliasType == NodeCode("fpka")) {
        species = kNodeSpeciesPackage;
        TKelNode original;
        status = FollowAlias(false, original);
        if (status == noErr) {
            type = ReadFourCharCode(kTypeCode);
        }
    } else if (Contains(kDiskAliasTypes, aliasType) || aliasType == NodeCode("lcmt")) {
        species = kNodeSpeciesVolume;
        creator = kHostCreator;
        type = aliasType == NodeCode("lcmt") ? NodeCode("hdsk") : aliasType;
        skipTypeTest = true;
    } else if (Contains(kServerAliasTypes, aliasType)) {
        species = kNodeSpeciesVolume;
        creator = kHostCreator;
        type = NodeCode("srvr");
    } else if (aliasType == NodeCode("slnk")) {
        TKelNode original;
        status = FollowAlias(false, original);
        if (status == noErr) {
            status = original.GetOriginalInfo(species, creator, type, nullptr);
        }
    } else {
        species = kNodeSpeciesFile;
    }
    if (!skipTypeTest && (aliasType == 0 || aliasType == NodeCode("slun"))) {
        return status;
    }
    return ClassifyAliasTarget(typeIdentifier);
}

// The status of following the alias, which replaces whatever the table said.
StatusCode TKelNode::ClassifyAliasTarget(BCStringRef* typeIdentifier) const {
    TKelNode original;
    StatusCode status = FollowAlias(false, original);
    if (status == noErr) {
        TUniString identifier;
        if (typeIdentifier != nullptr &&
            original.GetPropertyAsString(NodeCode("utid"), identifier) == noErr &&
            identifier.Length() != 0) {
            *typeIdentifier = BCStringCreateWithCharacters(nullptr, identifier.Characters(),
                                                           BCIndex(identifier.Length()));
        }
        return noErr;
    }
    if (typeIdentifier != nullptr && ReadFourCharCode(kTypeCode) == NodeCode("slua")) {
        *typeIdentifier = BCStringCreateCopy(nullptr, kBUTypeVolume);
        return noErr;
    }
    return status;
}
