// The sidebar's two sections as virtual containers: 11 holds the computer, the volume of the
// home folder and removable volumes; 12 the places (home and the XDG user dirs that exist)
// and then the user's bookmarks.

#include "basalt/files/BFBookmarks.h"
#include "basalt/files/BFFindFolder.h"
#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeListing.h"
#include "basalt/nodes/NodeVolumes.h"

#include <algorithm>

namespace basalt::nodes {
namespace {

bool IsFolder(const std::string& path) {
    struct statx info {};
    return files::StatxPath(path, STATX_TYPE, info) == 0 && S_ISDIR(info.stx_mode);
}

void AddOnce(std::vector<NodeRef>& nodes, NodeRef node) {
    if (node == nullptr || std::find(nodes.begin(), nodes.end(), node) != nodes.end())
        DisposeNode(node);
    else
        nodes.push_back(node);
}

std::vector<NodeRef> Devices() {
    std::vector<NodeRef> nodes;
    nodes.push_back(CopyNodeRef(Special().root));
    std::string home = files::HomePath();
    std::string holder = "/";
    for (const Volume& volume : Volumes()) {
        const std::string& point = volume.mountPoint;
        if (!volume.network && (home == point || home.starts_with(point + "/")) &&
            point.size() > holder.size())
            holder = point;
    }
    AddOnce(nodes, NodeForPath(holder));
    for (const Volume& volume : Volumes()) {
        if (volume.removable)
            AddOnce(nodes, NodeForPath(volume.mountPoint));
    }
    return nodes;
}

std::vector<NodeRef> Places() {
    std::vector<NodeRef> nodes;
    nodes.push_back(NodeForPath(files::HomePath()));
    for (const char* key : {"DESKTOP", "DOCUMENTS", "DOWNLOAD", "MUSIC", "PICTURES", "VIDEOS"}) {
        auto dir = files::UserDir(key);
        if (dir && IsFolder(*dir))
            AddOnce(nodes, NodeForPath(*dir));
    }
    for (const files::Bookmark& bookmark : files::ReadBookmarks()) {
        if (bookmark.path && IsFolder(*bookmark.path))
            AddOnce(nodes, NodeForPath(*bookmark.path));
    }
    return nodes;
}

} // namespace

std::vector<NodeRef> SidebarChildren(NodeRef sidebar) {
    return sidebar->virtualIndex == kVirtualNodeDevices ? Devices() : Places();
}

} // namespace basalt::nodes

using namespace basalt::nodes;

NodeRef GetVirtualNode(int32_t index) {
    const SpecialNodes& special = Special();
    switch (index) {
    case kVirtualNodeDevices:
        return CopyNodeRef(special.devices);
    case kVirtualNodePlaces:
        return CopyNodeRef(special.places);
    default:
        return nullptr;
    }
}

StatusCode NodeFindVirtualChild(NodeRef container, NodeRef node, NodeRef* found, uint32_t) {
    if (container == nullptr || node == nullptr || found == nullptr)
        return paramErr;
    std::vector<NodeRef> children;
    if (StatusCode status = ListChildren(container, children))
        return status;
    StatusCode status = fnfErr;
    for (NodeRef child : children) {
        if (child == node || child->aliasTarget == node) {
            *found = CopyNodeRef(child);
            status = noErr;
            break;
        }
    }
    ReleaseAll(children);
    return status;
}
