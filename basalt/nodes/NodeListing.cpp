#include "basalt/nodes/NodeListing.h"

#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeIterator.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeSortKeys.h"
#include "basalt/nodes/NodeVolumes.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <functional>
#include <iterator>
#include <memory>
#include <sys/syscall.h>

namespace basalt::nodes {
namespace {

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

// Each getdents64 buffer is interned and handed to `keys` as it comes, so that its sort keys
// are made while the rest of a large folder is read.
StatusCode ListFolder(NodeRef folder, std::vector<NodeRef>& children, DisplaySortKeyMaker* keys) {
    const bool boot = folder == Special().boot;
    std::vector<NodeRef> listed;
    StatusCode status = ReadFolderEntryBatches(PathOf(folder), [&](std::vector<NodeEntry>& batch) {
        // The virtual folders stand in for any real ones of the same name. Volumes is reached
        // by name only, for text paths: listed, it would show up in "/" for anyone who shows
        // invisible files.
        if (boot) {
            std::erase_if(batch, [](const NodeEntry& e) {
                return e.name == "Network" || e.name == "Volumes";
            });
        }
        std::vector<NodeRef> nodes = InternAll(folder, std::move(batch));
        if (keys != nullptr)
            keys->Add(nodes);
        listed.insert(listed.end(), nodes.begin(), nodes.end());
    });
    if (status != noErr) {
        // The keys being made still read these nodes.
        if (keys != nullptr)
            keys->Finish();
        ReleaseAll(listed);
        return status;
    }
    if (boot)
        children.push_back(CopyNodeRef(Special().network));
    children.insert(children.end(), listed.begin(), listed.end());
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

StatusCode ReadFolderEntryBatches(const std::string& path,
                                  const std::function<void(std::vector<NodeEntry>&)>& take) {
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
        std::vector<NodeEntry> batch;
        for (long at = 0; at < got;) {
            auto* entry = reinterpret_cast<LinuxDirent64*>(buffer + at);
            at += entry->d_reclen;
            std::string_view name = entry->d_name;
            if (name != "." && name != "..")
                batch.push_back({std::string(name), KindOfDirentType(entry->d_type)});
        }
        take(batch);
    }
    return noErr;
}

StatusCode ReadFolderEntries(const std::string& path, std::vector<NodeEntry>& entries) {
    return ReadFolderEntryBatches(path, [&](std::vector<NodeEntry>& batch) {
        std::move(batch.begin(), batch.end(), std::back_inserter(entries));
    });
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
    // A folder hands its nodes over as they are read; any other listing comes whole.
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
