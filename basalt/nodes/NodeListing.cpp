#include "basalt/nodes/NodeListing.h"

#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeIterator.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeSortKeys.h"
#include "basalt/nodes/NodeVolumes.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <iterator>
#include <memory>
#include <sys/syscall.h>

namespace basalt::nodes {
namespace {

// Enough for the key threads to start on while the rest of a large folder is interned.
constexpr size_t kFirstPart = 2 * kParallelSortKeysFrom;

StatusCode StatusForErrno(int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return permErr;
    case ENOTDIR:
        return kNodeNotContainerErr;
    default:
        return fnfErr;
    }
}

std::vector<NodeRef> VolumeAliases() {
    const SpecialNodes& special = Special();
    std::vector<NodeRef> aliases;
    for (const Volume& volume : Volumes()) {
        NodeRef alias = Intern(special.volumes, VolumeDisplayName(volume), NodeKind::VolumeAlias);
        NodeRef target = NodeForPath(volume.mountPoint);
        NodeRef expected = nullptr;
        if (!alias->aliasTarget.compare_exchange_strong(expected, target))
            DisposeNode(target);
        aliases.push_back(alias);
    }
    return aliases;
}

// A large folder's first entries are interned and handed to `keys` on their own, so that
// their sort keys are being made while the rest is interned in one go, which grows the intern
// table once.
StatusCode ListFolder(NodeRef folder, std::vector<NodeRef>& children, DisplaySortKeyMaker* keys) {
    std::vector<NodeEntry> entries;
    if (StatusCode status = ReadFolderEntries(PathOf(folder), entries))
        return status;
    if (folder == Special().boot) {
        // The virtual folders stand in for any real ones of the same name. Volumes is reached
        // by name only, for text paths: listed, it would show up in "/" for anyone who shows
        // invisible files.
        std::erase_if(
            entries, [](const NodeEntry& e) { return e.name == "Network" || e.name == "Volumes"; });
        children.push_back(CopyNodeRef(Special().network));
    }
    const auto split = entries.begin() + std::ptrdiff_t(std::min(entries.size(), kFirstPart));
    std::vector<NodeEntry> rest(std::make_move_iterator(split),
                                std::make_move_iterator(entries.end()));
    entries.erase(split, entries.end());
    for (std::vector<NodeEntry>* part : {&entries, &rest}) {
        std::vector<NodeRef> nodes = InternAll(folder, std::move(*part));
        if (keys != nullptr)
            keys->Add(nodes);
        children.insert(children.end(), nodes.begin(), nodes.end());
    }
    return noErr;
}

} // namespace

NodeKind KindOfDirentType(unsigned char type) {
    switch (type) {
    case DT_DIR:
        return NodeKind::Folder;
    case DT_REG:
        return NodeKind::File;
    case DT_LNK:
        return NodeKind::Symlink;
    case DT_UNKNOWN:
        return NodeKind::Unknown;
    default:
        return NodeKind::Other;
    }
}

StatusCode ReadFolderEntries(const std::string& path, std::vector<NodeEntry>& entries) {
    files::UniqueFd fd = files::OpenPath(path, O_RDONLY | O_DIRECTORY);
    if (!fd.Valid())
        return StatusForErrno(errno);
    alignas(LinuxDirent64) char buffer[64 * 1024];
    for (;;) {
        long got = ::syscall(SYS_getdents64, fd.Get(), buffer, sizeof buffer);
        if (got < 0)
            return StatusForErrno(errno);
        if (got == 0)
            break;
        for (long at = 0; at < got;) {
            auto* entry = reinterpret_cast<LinuxDirent64*>(buffer + at);
            at += entry->d_reclen;
            std::string_view name = entry->d_name;
            if (name != "." && name != "..")
                entries.push_back({std::string(name), KindOfDirentType(entry->d_type)});
        }
    }
    return noErr;
}

StatusCode ListChildren(NodeRef container, std::vector<NodeRef>& children,
                        DisplaySortKeyMaker* keys) {
    if (container == nullptr)
        return paramErr;
    switch (container->kind.load()) {
    case NodeKind::Root:
        children = VolumeNodes(false);
        return noErr;
    case NodeKind::Network:
        children = VolumeNodes(true);
        return noErr;
    case NodeKind::VolumesFolder:
        children = VolumeAliases();
        return noErr;
    case NodeKind::Sidebar:
        children = SidebarChildren(container);
        return noErr;
    case NodeKind::QueryHits:
        children = QueryHits(container);
        return noErr;
    case NodeKind::VolumeAlias:
        if (NodeRef volume = container->aliasTarget.load())
            return ListChildren(volume, children, keys);
        return fnfErr;
    default:
        break;
    }
    if (SettledKind(container) != NodeKind::Folder)
        return kNodeNotContainerErr;
    return ListFolder(container, children, keys);
}

void ReleaseAll(std::vector<NodeRef>& nodes) {
    for (NodeRef node : nodes)
        DisposeNode(node);
    nodes.clear();
}

} // namespace basalt::nodes

using namespace basalt::nodes;

struct OpaqueNodeIterator {
    std::vector<NodeRef> children;
    size_t next = 0;
};

StatusCode NewNodeIterator(NodeRef container, NodeIteratorRef* iterator, uint32_t, Boolean) {
    if (iterator == nullptr)
        return paramErr;
    auto made = std::make_unique<OpaqueNodeIterator>();
    DisplaySortKeyMaker keys;
    if (StatusCode status = ListChildren(container, made->children, &keys))
        return status;
    // A folder hands its nodes over as they are interned; any other listing comes whole.
    if (keys.Count() == 0)
        keys.Add(made->children);
    keys.Finish();
    *iterator = made.release();
    return noErr;
}

NodeRef NodeIteratorFirst(NodeIteratorRef iterator) {
    if (iterator == nullptr)
        return nullptr;
    iterator->next = 0;
    return NodeIteratorNext(iterator);
}

NodeRef NodeIteratorNext(NodeIteratorRef iterator) {
    if (iterator == nullptr || iterator->next >= iterator->children.size())
        return nullptr;
    return CopyNodeRef(iterator->children[iterator->next++]);
}

void DisposeNodeIterator(NodeIteratorRef iterator) {
    if (iterator == nullptr)
        return;
    ReleaseAll(iterator->children);
    delete iterator;
}
