// Between nodes and the other ways of naming a file: paths as text, URLs, BFRefs and
// descriptors. Text paths are UTF-16 whose units U+DC80..U+DCFF stand for bytes that are not
// UTF-8, so every name survives the trip.

#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeTable.h"
#include "basalt/nodes/NodeVolumes.h"

#include <algorithm>
#include <vector>

namespace basalt::nodes {
namespace {

std::vector<std::u16string> Split(std::u16string_view text) {
    std::vector<std::u16string> parts;
    size_t at = 0;
    while (at <= text.size()) {
        size_t end = std::min(text.find(u'/', at), text.size());
        if (end > at)
            parts.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

// One step down; virtual folders match by name and a volume alias stands for its volume.
NodeRef Step(NodeRef current, const std::u16string& part) {
    if (current->IsFileSystem() &&
        !(current == Special().boot && (part == u"Network" || part == u"Volumes"))) {
        if (part == u".")
            return CopyNodeRef(current);
        if (part == u"..")
            return CopyNodeRef(current == Special().boot ? current : current->parent);
        return Intern(current, files::EncodeName(part), NodeKind::Unknown);
    }
    NodeRef child = nullptr;
    if (NodeFindChildNew(current, static_cast<BCIndex>(part.size()),
                         reinterpret_cast<const UniChar*>(part.data()), &child) != noErr)
        return nullptr;
    if (child->kind == NodeKind::VolumeAlias) {
        NodeRef target = CopyNodeRef(child->aliasTarget.load());
        DisposeNode(child);
        return target;
    }
    return child;
}

std::u16string PathText(NodeRef node) {
    const SpecialNodes& special = Special();
    if (node == special.root || node == special.boot)
        return u"";
    if (node == special.network || node == special.volumes)
        return files::DecodeName(node->Name());
    if (node->kind == NodeKind::VolumeAlias)
        return u"Volumes/" + files::DecodeName(node->Name());
    return files::DecodeName(PathOf(node).substr(1));
}

} // namespace
} // namespace basalt::nodes

using namespace basalt::nodes;

NodeRef GetPathNameAsNode(BCIndex length, const UniChar* chars) {
    if (length <= 0 || chars == nullptr)
        return nullptr;
    std::u16string_view text(reinterpret_cast<const char16_t*>(chars), static_cast<size_t>(length));
    std::u16string bootName = basalt::files::DecodeName(BootVolumeName());
    if (text.front() != u'/') {
        // The other form: the boot volume's name in place of the leading slash.
        if (text.substr(0, bootName.size()) != bootName ||
            (text.size() > bootName.size() && text[bootName.size()] != u'/'))
            return nullptr;
        text.remove_prefix(bootName.size());
    }
    NodeHolder current(CopyNodeRef(Special().boot));
    for (const std::u16string& part : Split(text)) {
        current = NodeHolder(Step(current.Get(), part));
        if (!current)
            return nullptr;
    }
    if (!NodeValidate(current.Get()))
        return nullptr;
    return current.Release();
}

StatusCode GetNodeAsPathName(NodeRef node, int32_t format, BCIndex capacity, BCIndex* length,
                             UniChar* chars) {
    if (node == nullptr || format != 1 || length == nullptr || capacity < 0 ||
        (capacity > 0 && chars == nullptr))
        return paramErr;
    node = PropertySubject(node);
    if (node->kind == NodeKind::Sidebar || node->kind == NodeKind::Bookmark)
        return kNodeBadPathErr;
    std::u16string text = PathText(node);
    *length = static_cast<BCIndex>(text.size());
    if (*length > capacity)
        return basalt::files::kBFRefPathTooLongErr;
    std::copy(text.begin(), text.end(), chars);
    return noErr;
}

NodeRef GetBFRefAsNode(const BFRef* ref) {
    std::string path;
    if (ref == nullptr || basalt::files::PathOfRef(*ref, path) != noErr)
        return nullptr;
    return NodeForPath(path);
}

StatusCode GetNodeAsBFRef(NodeRef node, BFRef* ref) {
    if (node == nullptr || ref == nullptr)
        return paramErr;
    node = PropertySubject(node); // a hit stands for the item found
    if (node == Special().root)
        node = Special().boot;
    if (!node->IsFileSystem())
        return kNodeBadPathErr;
    return basalt::files::MakeRef(PathOf(node), *ref);
}

NodeRef GetURLAsNode(BCURLRef url) {
    if (url == nullptr)
        return nullptr;
    std::string buffer(64 * 1024, '\0');
    if (!BCURLGetFileSystemRepresentation(url, true, reinterpret_cast<uint8_t*>(buffer.data()),
                                          static_cast<BCIndex>(buffer.size())))
        return nullptr;
    NodeHolder node(NodeForPath(buffer.c_str()));
    if (!node || !NodeValidate(node.Get()))
        return nullptr;
    return node.Release();
}

StatusCode GetNodeAsBEDesc(NodeRef node, BEDesc* desc) {
    if (node == nullptr || desc == nullptr)
        return paramErr;
    if (node == Special().root) {
        BEInitializeDesc(desc);
        return noErr;
    }
    BFRef ref;
    if (StatusCode status = GetNodeAsBFRef(node, &ref))
        return status;
    return BECreateDesc(typeBFRef, &ref, sizeof ref, desc);
}

NodeRef GetBEDescAsNode(const BEDesc* desc) {
    if (desc == nullptr)
        return nullptr;
    if (desc->dataHandle == nullptr)
        return Special().root;
    BEDesc coerced;
    if (BECoerceDesc(desc, typeBFRef, &coerced) != noErr)
        return nullptr;
    BFRef ref;
    BEGetDescData(&coerced, &ref, sizeof ref);
    BEDisposeDesc(&coerced);
    return GetBFRefAsNode(&ref);
}
