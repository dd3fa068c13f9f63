#pragma once

// What a dialog lets the user see, select, enter and choose. CanSelect is the decision table:
// it looks through aliases, matches types by four-character code, by type identifier, or as a
// movie or image, and finally asks the client's own filter with a KelFileOrFolderInfo.
//
// Modes: 0 no type test; 1 one chosen type (currentCreator, currentType, currentIdentifier);
// 2 the list (types, or typeIdentifiers when set); 3 is accepted by SetMode as mode 2 with any
// creator. The root node can always be selected and entered, never chosen or shown to the
// client's filter.

#include "kel/interface/NodeFilterMaskSet.h"
#include "kel/interface/TKelClient.h"
#include "kel/nodes/TKelNode.h"

#include <kel/KelServices.h>
#include <vector>

// The types of a client's type list, as many as its count says and its block has room for: a
// count may lie.
std::vector<FourCharCode> TypesOfList(KelTypeList** list);

class TNodeFilter {
public:
    enum TypeFilterMode : int32_t {
        kNoTypes = 0,
        kOneType = 1,
        kTypeList = 2,
        kTypeListAnyCreator = 3
    };

    TNodeFilter(const TKelClient& client, unsigned long flags, const NodeFilterMaskSet& masks,
                KelTypeList** types, unsigned long creator);
    TNodeFilter(const TNodeFilter&) = delete;
    TNodeFilter& operator=(const TNodeFilter&) = delete;
    virtual ~TNodeFilter();

    void SetTypes(KelTypeList** list, unsigned long creator);
    void SetTypeIdentifiers(BCArrayRef identifiers);
    void SetMode(TypeFilterMode newMode, unsigned long creator, unsigned long type,
                 BCStringRef identifier);

    bool CanSee(const TKelNode& node) const;
    bool CanSelect(const TKelNode& node, short filterMode) const;
    bool CanTarget(const TKelNode& node) const;
    bool CanChoose(const TKelNode& node) const;

    bool TypeMatches(unsigned long type, BCStringRef identifier) const;
    // The identifiers a search should be limited to; owned by the caller, null for no limit.
    BCMutableArrayRef CopyCurrentFilterIdentifiers() const;

    TypeFilterMode Mode() const { return mode; }
    const NodeFilterMaskSet& Masks() const { return masks; }
    bool UsesMetaType() const { return useMetaType; }

private:
    void ApplyPackageProxies();
    void PrepareMetaTypeMatching();
    bool SpeciesIn(const TKelNode& node, unsigned long mask) const;
    bool PassesTypeStage(const TKelNode& node, NodeSpecies species, uint32_t creator, uint32_t type,
                         BCStringRef identifier) const;
    bool PassesListStage(const TKelNode& node, uint32_t creator, uint32_t type,
                         BCStringRef identifier) const;
    bool PassesOneTypeStage(const TKelNode& node, uint32_t creator, uint32_t type,
                            BCStringRef identifier) const;
    bool AskClient(const TKelNode& node, NodeSpecies species, uint32_t creator, uint32_t type,
                   short filterMode) const;

    const TKelClient& client;
    unsigned long flags;
    NodeFilterMaskSet masks;
    TypeFilterMode mode = kNoTypes;
    BCArrayRef typeIdentifiers = nullptr;
    unsigned long listCreator;
    std::vector<unsigned long> types;
    unsigned long currentCreator;
    BCStringRef currentIdentifier = nullptr; // not retained
    unsigned long currentType = 0;
    unsigned long metaTypeHint = 0;
    bool useMetaType = false;
    bool showInvisible = false;
};

// Fills the first 62 bytes of info for node, which GetOriginalInfo classed as species with
// creator and type.
void FillFileOrFolderInfo(const TKelNode& node, NodeSpecies species, uint32_t creator,
                          uint32_t type, KelFileOrFolderInfo& info);
