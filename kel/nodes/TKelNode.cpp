#include "kel/nodes/TKelNode.h"

#include "basalt/files/BFFindFolder.h"
#include "kel/foundation/TSystemLocaleCollator.h"
#include "kel/nodes/TKelNodeContainerIterator.h"

#include <mutex>

namespace {

constexpr FourCharCode kNameCode = NodeCode("pnam");
constexpr FourCharCode kDisplayNameCode = NodeCode("dnam");
constexpr FourCharCode kTypeIdentifierCode = NodeCode("utid");
constexpr FourCharCode kTypeCode = NodeCode("asty");
constexpr FourCharCode kCreatorCode = NodeCode("fcrt");

TUniString Literal(const char* text) {
    return TUniString(text, kTextEncodingMacRoman);
}

} // namespace

// ---- TIcon ----------------------------------------------------------------------------------

TIcon::TIcon(const TIcon& other) : icon(other.icon) {
    if (icon != nullptr) {
        AcquireIconRef(icon);
    }
}

TIcon& TIcon::operator=(const TIcon& other) {
    if (other.icon != icon) {
        if (other.icon != nullptr) {
            AcquireIconRef(other.icon);
        }
        Adopt(other.icon);
    }
    return *this;
}

TIcon::~TIcon() {
    if (icon != nullptr) {
        ReleaseIconRef(icon);
    }
}

void TIcon::Adopt(IconRef newIcon) {
    if (icon != nullptr && icon != newIcon) {
        ReleaseIconRef(icon);
    }
    icon = newIcon;
}

// ---- Construction ---------------------------------------------------------------------------

TKelNode::TKelNode(const TKelNode& other)
    : savedQueryRef(other.savedQueryRef), nodeRef(other.nodeRef) {
    if (nodeRef != nullptr) {
        CopyNodeRef(nodeRef);
    }
}

TKelNode::TKelNode(TKelNode&& other) noexcept
    : savedQueryRef(other.savedQueryRef), nodeRef(std::exchange(other.nodeRef, nullptr)) {}

TKelNode::TKelNode(const RetainedMutableRef<OpaqueNodeRef>& ref) : TKelNode(ref.Get(), true) {}

TKelNode::TKelNode(OpaqueNodeRef* node, bool retain) : nodeRef(node) {
    if (retain && nodeRef != nullptr) {
        CopyNodeRef(nodeRef);
    }
}

TKelNode::TKelNode(uintptr_t itemID) : TKelNode(reinterpret_cast<OpaqueNodeRef*>(itemID), true) {}

TKelNode::TKelNode(const TUniString& url) {
    if (url.Length() == 0) {
        return;
    }
    TStringRef text = url.AsBCString();
    TObjectRef made(BCURLCreateWithString(nullptr, text.AsBCStringRef(), nullptr), false);
    if (!made.IsNil()) {
        nodeRef = GetURLAsNode(static_cast<BCURLRef>(made.Get()));
    }
}

TKelNode::TKelNode(const std::vector<TUniString>& segments, const TKelNode& base) {
    TUniString text;
    GetPathNameString(segments, base, text);
    if (text.Length() != 0) {
        nodeRef = GetPathNameAsNode(text.Length(), text.Characters());
    } else {
        nodeRef = CopyNodeRef(GetRootNodeRef());
    }
}

TKelNode::~TKelNode() {
    Release();
}

TKelNode& TKelNode::operator=(const TKelNode& other) {
    if (other.nodeRef == nodeRef) {
        return *this;
    }
    if (other.nodeRef != nullptr) {
        CopyNodeRef(other.nodeRef);
    }
    Release();
    nodeRef = other.nodeRef;
    savedQueryRef = other.savedQueryRef;
    return *this;
}

void TKelNode::Release() {
    if (nodeRef != nullptr) {
        DisposeNode(std::exchange(nodeRef, nullptr));
    }
}

// ---- Special nodes --------------------------------------------------------------------------

StatusCode TKelNode::InitializeCatalog() {
    static StatusCode status = ::InitializeCatalog();
    return status;
}

OpaqueNodeRef* TKelNode::GetRootNodeRef() {
    static OpaqueNodeRef* root = GetRootNode();
    return root;
}

OpaqueNodeRef* TKelNode::GetNetworkNodeRef() {
    static OpaqueNodeRef* network = nullptr;
    if (network == nullptr) {
        TKelNode boot = GetBootNode();
        TKelNode child = boot.GetChild(Literal("Network"));
        NodeRef original = nullptr;
        if (!child.IsEmpty() && NodeFollowAlias(child.nodeRef, false, &original) == noErr) {
            network = original;
        }
    }
    return network;
}

TKelNode TKelNode::GetBootNode() {
    return TKelNode(::GetBootNode(), false);
}

TKelNode TKelNode::GetHomeNode() {
    return TKelNode(::GetHomeNode(), false);
}

TKelNode TKelNode::GetVolumesNode() {
    return TKelNode(std::vector<TUniString>{TUniString(), Literal("Volumes")}, TKelNode());
}

int16_t TKelNode::FindContainer(int16_t domain, uint32_t folderType, uint8_t create,
                                TKelNode& out) {
    BFRef ref;
    StatusCode status = BFFindFolder(domain, folderType, create != 0, &ref);
    if (status == noErr) {
        out = TKelNode(GetBFRefAsNode(&ref), false);
    }
    return static_cast<int16_t>(status);
}

bool TKelNode::IsVisible() const {
    return IsNetwork() || NodeIsVisible(nodeRef);
}

// ---- Properties -----------------------------------------------------------------------------

StatusCode TKelNode::GetPropertyAsString(FourCharCode code, TUniString& out) const {
    std::vector<UniChar> chars(out.Capacity());
    BCIndex length = 0;
    StatusCode status =
        GetNodePropertyAsStringNew(nodeRef, code, BCIndex(chars.size()), &length, chars.data(), 0);
    if (status != noErr) {
        return status;
    }
    length = std::min<BCIndex>(length, BCIndex(chars.size()));
    out.Set(TUniString(uint32_t(length), chars.data()));
    out.AllocateBuffer();
    return noErr;
}

StatusCode TKelNode::GetPropertyAsIcon(FourCharCode code, TIcon& out, bool badged) const {
    IconRef icon = nullptr;
    StatusCode status = noErr;
    if (IsRoot()) {
        status = GetNodePropertyAsIconRef(nodeRef, code, &icon, 0);
        if (icon == nullptr) {
            return GetBootNode().GetPropertyAsIcon(code, out, badged);
        }
    } else if (IsNetwork()) {
        status = GetIconRef(-32768, NodeCode("host"), NodeCode("gnet"), &icon);
        if (icon == nullptr) {
            status = GetNodePropertyAsIconRef(nodeRef, code, &icon, 0);
        }
    } else if (badged) {
        status = GetNodePropertyAsIconRef(nodeRef, code, &icon, 0);
    } else {
        BFRef ref;
        status = GetAsBFRef(ref);
        if (status != noErr) {
            return status;
        }
        status = GetIconRefFromFileInfo(&ref, 0, nullptr, 0, nullptr, 1, &icon, nullptr);
    }
    if (icon != nullptr) {
        out.Adopt(icon);
    }
    return status;
}

TIcon TKelNode::CopyBadgedIcon() const {
    TIcon icon;
    GetPropertyAsIcon(NodeCode("icon"), icon, true);
    return icon;
}

StatusCode TKelNode::GetAsBFRef(BFRef& ref) const {
    if (IsRoot()) {
        return GetBootNode().GetAsBFRef(ref);
    }
    return GetNodeAsBFRef(nodeRef, &ref);
}

StatusCode TKelNode::GetAsBEDesc(BEDesc& desc, uint32_t descType) const {
    BFRef ref;
    StatusCode status = GetAsBFRef(ref);
    if (status != noErr) {
        return status;
    }
    if (desc.dataHandle != nullptr) {
        status = BEReplaceDescData(NodeCode("bfrf"), &ref, sizeof ref, &desc);
    } else {
        status = BECreateDesc(NodeCode("bfrf"), &ref, sizeof ref, &desc);
    }
    if (status != noErr) {
        status = GetNodeAsBEDesc(nodeRef, &desc);
        if (status != noErr || descType != NodeCode("bfs ")) {
            return status;
        }
    }
    if (descType != NodeCode("bfs ") || desc.dataHandle == nullptr) {
        return status;
    }
    BEDesc temporary;
    BEInitializeDesc(&temporary);
    status = BEDuplicateDesc(&desc, &temporary);
    if (status == noErr) {
        BEDisposeDesc(&desc);
        status = BECoerceDesc(&temporary, NodeCode("bfs "), &desc);
        BEDisposeDesc(&temporary);
    }
    return status;
}

// ---- Tree -----------------------------------------------------------------------------------

TKelNode TKelNode::GetParent() const {
    if (IsNetwork()) {
        return TKelNode(GetRootNodeRef(), true);
    }
    return TKelNode(GetNodeParent(nodeRef), false);
}

TKelNode TKelNode::GetChild(const TUniString& name) const {
    NodeRef child = nullptr;
    if (NodeFindChildNew(nodeRef, name.Length(), name.Characters(), &child) != noErr) {
        return TKelNode();
    }
    return TKelNode(child, false);
}

TKelNode TKelNode::GetChildStartsWith(const TUniString& prefix, bool containersOnly,
                                      bool caseSensitive) const {
    static const TSystemLocaleCollator caseless;
    static const TCaseSensitiveSystemLocaleCollator exact;
    const ICollator& collator = caseSensitive ? static_cast<const ICollator&>(exact) : caseless;
    // An empty prefix is the start of every name: completion of nothing offers the first child.
    auto qualifies = [&](const TKelNode& child) {
        if (prefix.Length() == 0) {
            return true;
        }
        TUniString name;
        return child.GetPropertyAsString(kDisplayNameCode, name) == noErr &&
               name.BeginsWith(prefix, collator);
    };

    TKelNode original;
    if (GetOriginal(false, original) != noErr || !original.IsContainer()) {
        return TKelNode();
    }
    TKelNodeContainerIterator children(original, true);
    if (children.IsValid()) {
        for (TKelNode child = children.First(); !child.IsEmpty(); children.Next(child)) {
            if ((!containersOnly || child.IsContainer()) && qualifies(child)) {
                return child;
            }
        }
    }
    if (nodeRef == GetBootNode().nodeRef) {
        TKelNode network(GetNetworkNodeRef(), true);
        if (!network.IsEmpty() && qualifies(network)) {
            return network;
        }
    }
    return TKelNode();
}

StatusCode TKelNode::GetOriginal(bool flag, TKelNode& out) const {
    NodeRef original = nullptr;
    StatusCode status = NodeGetOriginal(nodeRef, flag, &original);
    out = TKelNode(status == noErr ? original : nullptr, false);
    return status;
}

StatusCode TKelNode::FollowAlias(bool flag, TKelNode& out) const {
    NodeRef original = nullptr;
    StatusCode status = NodeFollowAlias(nodeRef, flag, &original);
    out = TKelNode(status == noErr ? original : nullptr, false);
    return status;
}

// ---- Paths ----------------------------------------------------------------------------------

void TKelNode::GetPathName(std::vector<TUniString>& out) const {
    out.clear();
    BCIndex length = 0;
    std::vector<UniChar> chars(1024);
    StatusCode status = GetNodeAsPathName(nodeRef, 1, BCIndex(chars.size()), &length, chars.data());
    // Linux paths may run past any fixed buffer; the service tells how much it needs.
    if (status == basalt::files::kBFRefPathTooLongErr && length > BCIndex(chars.size())) {
        chars.resize(size_t(length));
        status = GetNodeAsPathName(nodeRef, 1, length, &length, chars.data());
    }
    if (status != noErr) {
        return;
    }
    TUniString(uint32_t(length), chars.data()).Tokenize(out, '/');
    out.insert(out.begin(), TUniString());
}

namespace {

// The node a leading "~" or "~user" segment stands for; empty when there is no such home.
TKelNode HomeOfSegment(const TUniString& segment) {
    TStringRef user;
    if (segment.Length() > 1) {
        user = segment.GetSubString(2, segment.Length()).AsBCString();
    }
    TObjectRef url(BCCopyHomeDirectoryURLForUser(user.AsBCStringRef()), false);
    if (url.IsNil()) {
        return TKelNode();
    }
    return TKelNode(GetURLAsNode(static_cast<BCURLRef>(url.Get())), false);
}

} // namespace

void GetPathNameString(const std::vector<TUniString>& segments, const TKelNode& base,
                       TUniString& out) {
    out = TUniString();
    if (segments.empty()) {
        return;
    }
    uint32_t start = segments.front().Length() == 0 ? 1 : 0;
    TKelNode anchor;
    bool anchored = false;
    if (segments.front().Length() != 0) {
        if (segments.front().Characters()[0] == '~' && base.IsEmpty()) {
            anchor = HomeOfSegment(segments.front());
            start = 1;
            anchored = true;
        } else if (!base.IsEmpty() && !base.IsRoot()) {
            anchor = base;
            start = 0;
            anchored = true;
        }
    }
    if (!anchored && base.IsRoot()) {
        TUniString bootName;
        TKelNode::GetBootNode().GetPropertyAsString(kNameCode, bootName);
        out.Append(bootName);
    }
    if (!anchor.IsEmpty()) {
        std::vector<TUniString> anchorSegments;
        anchor.GetPathName(anchorSegments);
        TUniString anchorText;
        GetPathNameString(anchorSegments, TKelNode(), anchorText);
        out.Append(anchorText);
    }
    out.Append(uint16_t('/'));
    if (start < segments.size()) {
        TUniString rest;
        rest.Set(segments, start, uint32_t(segments.size() - 1), '/');
        out.Append(rest);
    }
}

// ---- Classification -------------------------------------------------------------------------

NodeSpecies TKelNode::GetSpecies(uint32_t mask) const {
    if ((mask & kNodeSpeciesAlias) != 0 && NodeIsAlias(nodeRef)) {
        return kNodeSpeciesAlias;
    }
    if (!NodeIsContainer(nodeRef)) {
        return kNodeSpeciesFile;
    }
    if ((mask & kNodeSpeciesRoot) != 0 && IsRoot()) {
        return kNodeSpeciesRoot;
    }
    if ((mask & kNodeSpeciesVolume) != 0 && NodeIsVolume(nodeRef)) {
        return kNodeSpeciesVolume;
    }
    if ((mask & kNodeSpeciesPackage) != 0 && NodeIsPackage(nodeRef)) {
        return kNodeSpeciesPackage;
    }
    return kNodeSpeciesFolder;
}

FourCharCode TKelNode::ReadFourCharCode(FourCharCode code) const {
    FourCharCode value = 0;
    GetNodePropertyAsFourCharCode(nodeRef, code, &value, 0);
    return value;
}

namespace {

BCStringRef CreateNonEmpty(const TUniString& text) {
    return text.Length() == 0
               ? nullptr
               : BCStringCreateWithCharacters(nullptr, text.Characters(), BCIndex(text.Length()));
}

} // namespace

StatusCode TKelNode::GetOriginalInfo(NodeSpecies& species, uint32_t& creator, uint32_t& type,
                                     BCStringRef* typeIdentifier) const {
    if (typeIdentifier != nullptr) {
        *typeIdentifier = nullptr;
    }
    creator = 0;
    type = 0;
    TUniString identifier;
    if (!IsRoot()) {
        creator = ReadFourCharCode(kCreatorCode);
        type = ReadFourCharCode(kTypeCode);
        if (typeIdentifier != nullptr) {
            GetPropertyAsString(kTypeIdentifierCode, identifier);
        }
    }
    if (NodeIsQueryHit(nodeRef)) {
        TKelNode original;
        StatusCode status = FollowAlias(false, original);
        return status != noErr ? status : original.GetOriginalInfo(species, creator, type, nullptr);
    }
    if (NodeIsAlias(nodeRef)) {
        // A link's type comes from what it points to; when that can't be read the link is
        // broken, and it fails here rather than passing as an untyped file.
        FourCharCode aliasType = 0;
        StatusCode status = GetNodePropertyAsFourCharCode(nodeRef, kTypeCode, &aliasType, 0);
        if (status != noErr) {
            species = kNodeSpeciesAlias;
            return status;
        }
        return ClassifyAlias(species, creator, type, typeIdentifier);
    }
    species = GetSpecies(kNodeSpeciesAll);
    if (typeIdentifier != nullptr) {
        *typeIdentifier = CreateNonEmpty(identifier);
    }
    return noErr;
}
