// The sidebar's two sections as virtual containers: 11 holds the computer, the volume of the
// home folder and removable volumes; 12 the places (home and the XDG user dirs that exist)
// and then one row for each of the user's bookmarks, reachable or not.

#include "basalt/files/BFFindFolder.h"
#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeBookmarks.h"
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
    std::vector<NodeRef> bookmarks = BookmarkNodes();
    nodes.insert(nodes.end(), bookmarks.begin(), bookmarks.end());
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
    // A row of the node itself comes before a bookmark that leads to it.
    auto standsFor = [node](NodeRef child, bool followed) {
        if (!followed)
            return child == node || child->aliasTarget == node;
        NodeRef original = nullptr;
        if (child->kind != NodeKind::Bookmark || BookmarkOriginal(child, &original) != noErr)
            return false;
        bool same = original == node;
        DisposeNode(original);
        return same;
    };
    auto match = std::find_if(children.begin(), children.end(),
                              [&](NodeRef child) { return standsFor(child, false); });
    if (match == children.end())
        match = std::find_if(children.begin(), children.end(),
                             [&](NodeRef child) { return standsFor(child, true); });
    *found = match != children.end() ? CopyNodeRef(*match) : nullptr;
    ReleaseAll(children);
    return *found != nullptr ? StatusCode(noErr) : StatusCode(fnfErr);
}
