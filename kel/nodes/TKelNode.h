#pragma once

// A value that owns one counted reference to a node of the node service, plus the rules the
// service does not know: the top of the tree, the Network node lifted out of the boot volume,
// species, the classification of aliases by what they lead to, and text paths from segments.
// Node identity is pointer identity; the special nodes are cached and compared by pointer.

#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeService.h"
#include "kel/foundation/RetainedRef.h"
#include "kel/foundation/TUniString.h"

#include <cstdint>
#include <vector>

template <>
struct RetainTraits<OpaqueNodeRef> {
    static void Retain(const OpaqueNodeRef* node) { CopyNodeRef(const_cast<OpaqueNodeRef*>(node)); }
    static void Release(const OpaqueNodeRef* node) {
        DisposeNode(const_cast<OpaqueNodeRef*>(node));
    }
};

enum NodeSpecies : uint32_t {
    kNodeSpeciesFile = 1,
    kNodeSpeciesAlias = 2,
    kNodeSpeciesFolder = 4,
    kNodeSpeciesPackage = 8,
    kNodeSpeciesVolume = 16,
    kNodeSpeciesRoot = 32,
    kNodeSpeciesAll = 63,
};

// Holds one icon reference; assigning acquires the new one and releases the old.
class TIcon {
public:
    TIcon() = default;
    TIcon(const TIcon& other);
    TIcon& operator=(const TIcon& other);
    ~TIcon();
    // Takes over a reference the caller owns.
    void Adopt(IconRef icon);
    IconRef Get() const { return icon; }
    explicit operator bool() const { return icon != nullptr; }

private:
    IconRef icon = nullptr;
};

class TKelNode {
public:
    TKelNode() = default;
    TKelNode(const TKelNode& other);
    TKelNode(TKelNode&& other) noexcept;
    explicit TKelNode(const RetainedMutableRef<OpaqueNodeRef>& ref);
    // Adopts the reference unless retain is set, which counts it up.
    TKelNode(OpaqueNodeRef* node, bool retain);
    // The id a browser control knows the node by: the reference itself.
    explicit TKelNode(uintptr_t itemID);
    // A URL string; empty text gives an empty node.
    explicit TKelNode(const TUniString& url);
    // A path made of segments, relative to base unless the first segment is empty or "~...".
    TKelNode(const std::vector<TUniString>& segments, const TKelNode& base);
    ~TKelNode();

    // Assigning the same reference keeps savedQueryRef as it is.
    TKelNode& operator=(const TKelNode& other);
    bool operator==(const TKelNode& other) const { return nodeRef == other.nodeRef; }
    bool operator==(const OpaqueNodeRef* other) const { return nodeRef == other; }

    static StatusCode InitializeCatalog();
    static OpaqueNodeRef* GetRootNodeRef();
    // What the boot volume's "Network" child leads to.
    static OpaqueNodeRef* GetNetworkNodeRef();
    static TKelNode GetBootNode();
    static TKelNode GetHomeNode();
    static TKelNode GetVolumesNode();
    static int16_t FindContainer(int16_t domain, uint32_t folderType, uint8_t create,
                                 TKelNode& out);

    OpaqueNodeRef* PeekNodeRef() const { return nodeRef; }
    uintptr_t AsItemID() const { return reinterpret_cast<uintptr_t>(nodeRef); }
    bool IsEmpty() const { return nodeRef == nullptr; }
    bool IsRoot() const { return nodeRef != nullptr && nodeRef == GetRootNodeRef(); }
    bool IsNetwork() const { return nodeRef != nullptr && nodeRef == GetNetworkNodeRef(); }
    void Release();
    bool Validate() const { return NodeValidate(nodeRef); }
    bool IsVisible() const;
    bool IsContainer() const { return NodeIsContainer(nodeRef); }

    // Reads at most out's capacity; out is left alone on failure.
    StatusCode GetPropertyAsString(FourCharCode code, TUniString& out) const;
    StatusCode GetPropertyAsIcon(FourCharCode code, TIcon& out, bool badged) const;
    TIcon CopyBadgedIcon() const;
    StatusCode GetAsBFRef(BFRef& ref) const;
    StatusCode GetAsBEDesc(BEDesc& desc, uint32_t descType) const;

    TKelNode GetParent() const;
    TKelNode GetChild(const TUniString& name) const;
    TKelNode GetChildStartsWith(const TUniString& prefix, bool containersOnly,
                                bool caseSensitive) const;
    StatusCode GetOriginal(bool flag, TKelNode& out) const;
    StatusCode FollowAlias(bool flag, TKelNode& out) const;

    NodeSpecies GetSpecies(uint32_t mask) const;
    // What the node counts as, looking through aliases. *typeIdentifier (if given) gets an
    // owned string or null.
    StatusCode GetOriginalInfo(NodeSpecies& species, uint32_t& creator, uint32_t& type,
                               BCStringRef* typeIdentifier) const;

    // "MooV" when the movie library would play the file, "rbif" when it would import it as an
    // image, hint (or the library's preference) when both, 0 when neither or unknown.
    FourCharCode MetaType(FourCharCode hint) const;

    // The absolute path as segments; the first segment is empty.
    void GetPathName(std::vector<TUniString>& out) const;

    // Searches. This value holds the query node: empty before the first search, which creates
    // it; later searches renew it. The result is the hits container. Anything other than an
    // empty value or a query node is left alone, and the result is empty.
    TKelNode PerformQuery(BCStringRef text, unsigned long sortProperty, bool ascending,
                          TKelNode scope, BCArrayRef typeIdentifiers);
    // The same for a saved search file; the result's savedQueryRef is savedQuery.
    TKelNode PerformSavedQuery(TKelNode savedQuery, unsigned long sortProperty, bool ascending);

    OpaqueNodeRef* savedQueryRef = nullptr; // not counted

private:
    StatusCode ClassifyAlias(NodeSpecies& species, uint32_t& creator, uint32_t& type,
                             BCStringRef* typeIdentifier) const;
    StatusCode ClassifyAliasTarget(BCStringRef* typeIdentifier) const;
    FourCharCode ReadFourCharCode(FourCharCode code) const;

    OpaqueNodeRef* nodeRef = nullptr;
};

// Text for a segment list, the inverse of GetPathName (see TKelNode(segments, base)).
void GetPathNameString(const std::vector<TUniString>& segments, const TKelNode& base,
                       TUniString& out);

// Asks the movie library whether it can import (as an image) or play a file. The library is
// reached through a pointer that the preview subsystem's linkage sets once it has loaded it;
// until then the answer is kReelboxUnavailableErr with all three results cleared.
typedef StatusCode (*CanReelboxOpenFileProc)(const BFSpec* file, FourCharCode type,
                                             FourCharCode reserved, Boolean* canImport,
                                             Boolean* canPlay, Boolean* preferImport,
                                             uint32_t flags);
enum : StatusCode { kReelboxUnavailableErr = -32766 };
extern CanReelboxOpenFileProc gCanReelboxOpenFile;
