#include "kel/nodes/NodeRefOperations.h"

#include "basalt/files/BFFindFolder.h"
#include "kel/foundation/TStringRef.h"

#include <algorithm>
#include <vector>

namespace NodeRefOps {

namespace {

TStringRef Chars(BCStringRef text, std::vector<UniChar>& out) {
    BCIndex length = text == nullptr ? 0 : BCStringGetLength(text);
    out.resize(size_t(length));
    if (length > 0) {
        BCStringGetCharacters(text, BCRange{0, length}, out.data());
    }
    return TStringRef(text);
}

BCStringRef Literal(const char* text) {
    return BCStringCreateWithCString(nullptr, text, kBCStringEncodingUTF8);
}

} // namespace

OpaqueNodeRef* RootNode() {
    static OpaqueNodeRef* root = GetRootNode();
    return root;
}

OpaqueNodeRef* BootNode() {
    static OpaqueNodeRef* boot = GetBootNode();
    return boot;
}

OpaqueNodeRef* NetworkNode() {
    static OpaqueNodeRef* network = nullptr;
    if (network == nullptr) {
        const std::u16string name = u"Network";
        NodeRef found = nullptr;
        if (NodeFindChildNew(BootNode(), BCIndex(name.size()),
                             reinterpret_cast<const UniChar*>(name.data()), &found) == noErr) {
            network = found;
        }
    }
    return network;
}

OpaqueNodeRef* PrivateNode() {
    static RetainedMutableRef<OpaqueNodeRef> privateNode = [] {
        TStringRef name(Literal("private"), false);
        return RetainedMutableRef<OpaqueNodeRef>::Adopt(
            CopyChildWithName(BootNode(), name.AsBCStringRef()));
    }();
    return privateNode.Get();
}

OpaqueNodeRef* CopyChildWithName(OpaqueNodeRef* node, BCStringRef name) {
    if (node == BootNode()) {
        TStringRef network(Literal("Network"), false);
        if (CompareNamesInContext(node, name, network.AsBCStringRef()) == 0) {
            return nullptr;
        }
    }
    std::vector<UniChar> chars;
    Chars(name, chars);
    NodeRef child = nullptr;
    if (NodeFindChildNew(node, BCIndex(chars.size()), chars.data(), &child) != noErr) {
        return nullptr;
    }
    return child;
}

OpaqueNodeRef* CopyParent(OpaqueNodeRef* node) {
    if (node != nullptr && node == NetworkNode()) {
        return CopyNodeRef(RootNode());
    }
    return GetNodeParent(node);
}

OpaqueNodeRef* CopyAliasOriginal(OpaqueNodeRef* node, bool flag) {
    NodeRef original = nullptr;
    return NodeGetOriginal(node, flag, &original) == noErr ? original : nullptr;
}

OpaqueNodeRef* CopyAliasOriginalFollowingChains(OpaqueNodeRef* node, bool flag) {
    NodeRef original = nullptr;
    return NodeFollowAlias(node, flag, &original) == noErr ? original : nullptr;
}

BCStringRef CopyName(OpaqueNodeRef* node, unsigned long style) {
    UniChar chars[256];
    BCIndex length = 0;
    if (GetNodePropertyAsStringNew(node, NodeCode("pnam"), 256, &length, chars, 0) != noErr) {
        return nullptr;
    }
    length = std::min<BCIndex>(length, 256);
    if (style == kNameWithColons) {
        std::replace(chars, chars + length, UniChar('/'), UniChar(':'));
    }
    return BCStringCreateWithCharacters(nullptr, chars, length);
}

BCURLRef CopyURL(OpaqueNodeRef* node) {
    BFRef ref;
    if (GetNodeAsBFRef(node, &ref) != noErr) {
        return nullptr;
    }
    return BCURLCreateFromBFRef(nullptr, &ref);
}

uint32_t NameSyntaxClass(OpaqueNodeRef* node) {
    uint32_t hint = 0;
    NodeGetNameSyntaxHint(node, &hint);
    return hint;
}

int CompareNamesInContext(OpaqueNodeRef* node, BCStringRef a, BCStringRef b) {
    std::vector<UniChar> charsA, charsB;
    Chars(a, charsA);
    Chars(b, charsB);
    if (charsA.empty() || charsB.empty()) {
        return charsA.empty() ? (charsB.empty() ? 0 : -1) : 1;
    }
    UCCollateOptions options = kUCCollateStandardOptions;
    if (NameSyntaxClass(node) == 0) {
        options |= kUCCollateCaseInsensitiveMask;
    }
    Boolean equivalent = false;
    int32_t order = 0;
    UCCompareTextDefault(options, charsA.data(), BCIndex(charsA.size()), charsB.data(),
                         BCIndex(charsB.size()), &equivalent, &order);
    return (order > 0) - (order < 0);
}

} // namespace NodeRefOps

OpaqueNodeRef* KelCopyDesktopNode() {
    BFRef ref;
    if (BFFindFolder(-32763, NodeCode("desk"), true, &ref) != noErr) {
        return nullptr;
    }
    return GetBFRefAsNode(&ref);
}
