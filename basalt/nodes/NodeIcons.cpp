// Icons of nodes. Kinds with an icon of their own (the computer, volumes, special folders,
// folders, packages) use the system icons, which exist even without an icon theme; files use
// the icon of their type from the themes, with the type's generic icon behind it.

#include "basalt/files/BFFindFolder.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeTable.h"
#include "basalt/nodes/NodeVolumes.h"
#include "basalt/types/MimeDatabase.h"

#include <algorithm>

namespace basalt::nodes {
namespace {

OSType FolderIcon(NodeRef folder) {
    std::string path = PathOf(folder);
    if (path == files::HomePath())
        return kBTIconHome;
    for (auto [type, icon] : {std::pair{NodeCode("desk"), kBTIconDesktop},
                              std::pair{NodeCode("docs"), kBTIconDocumentsFolder},
                              std::pair{NodeCode("down"), kBTIconDownloadsFolder}}) {
        if (files::FolderPathForType(type) == path)
            return static_cast<OSType>(icon);
    }
    if (NodeIsApplication(folder))
        return kBTIconGenericApplication;
    return NodeIsPackage(folder) ? kBTIconPackage : kBTIconGenericFolder;
}

// The system icon for the node, or 0 when its type's icon is wanted.
OSType SystemIcon(NodeRef node) {
    const SpecialNodes& special = Special();
    if (node == special.root)
        return kBTIconComputer;
    if (node == special.network)
        return kBTIconGenericNetwork;
    if (!node->IsFileSystem())
        return kBTIconGenericFolder;
    if (IsVolumeNode(node)) {
        auto volume = VolumeAtPath(PathOf(node));
        if (volume && volume->network)
            return kBTIconGenericServer;
        return volume && volume->removable ? kBTIconRemovableDisk : kBTIconHardDisk;
    }
    return SettledKind(node) == NodeKind::Folder ? FolderIcon(node) : 0;
}

StatusCode TypeIcon(NodeRef node, IconRef* icon) {
    UniChar buffer[256];
    BCIndex length = 0;
    GetNodePropertyAsStringNew(node, NodeCode("utid"), 256, &length, buffer, 0);
    std::string type(buffer, buffer + std::min<BCIndex>(length, 256));
    std::string name = type;
    std::replace(name.begin(), name.end(), '/', '-');
    std::string generic = types::MimeDatabase::Shared().GenericIcon(type);
    return GetIconRefFromIconName(name.c_str(), generic.c_str(), icon);
}

} // namespace
} // namespace basalt::nodes

using namespace basalt::nodes;

StatusCode GetNodePropertyAsIconRef(NodeRef node, FourCharCode code, IconRef* icon, uint32_t) {
    if (node == nullptr || icon == nullptr)
        return paramErr;
    if (code != NodeCode("icon"))
        return kNodePropertyNotSupportedErr;
    node = PropertySubject(node);
    if (NodeIsAlias(node)) {
        NodeRef original = nullptr;
        if (NodeFollowAlias(node, false, &original) != noErr)
            return GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconAlias, icon);
        NodeHolder held(original);
        return GetNodePropertyAsIconRef(original, code, icon, 0);
    }
    if (OSType system = SystemIcon(node))
        return GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, system, icon);
    return TypeIcon(node, icon);
}

StatusCode GetIconRefFromFileInfo(const BFRef* ref, BCIndex, const UniChar*, uint32_t,
                                  const BFCatalogInfo*, uint32_t, IconRef* icon,
                                  int16_t* outLabel) {
    if (ref == nullptr || icon == nullptr)
        return paramErr;
    NodeHolder node(GetBFRefAsNode(ref));
    if (!node)
        return fnfErr;
    if (outLabel != nullptr)
        *outLabel = 0;
    return GetNodePropertyAsIconRef(node.Get(), NodeCode("icon"), icon, 0);
}
