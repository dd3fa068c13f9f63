// The rows of the sidebar: read lazily from the node service's two virtual lists, in the
// service's order (nothing here sorts them), and read again, one section at a time, when the
// service says a list changed.

#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/LocationMenuItems.h"
#include "kel/widgets/views/BTSidebarItemsView.h"

#include <algorithm>

namespace {

constexpr BCIndex kMaxNameLength = 255;

TStringRef CopyDisplayName(const TKelNode& node) {
    UniChar name[kMaxNameLength];
    BCIndex length = 0;
    if (GetNodePropertyAsStringNew(node.PeekNodeRef(), NodeCode("dnam"), kMaxNameLength, &length,
                                   name, 0) != noErr ||
        length == 0)
        return TStringRef();
    return TStringRef(BCStringCreateWithCharacters(nullptr, name, std::min(length, kMaxNameLength)),
                      false);
}

// A row stands for the node itself, or, for a saved search's hits, for the search.
int LocateNodeInArray(const std::vector<SidebarItem>& items, OpaqueNodeRef* node) {
    bool hits = NodeIsQueryHitsContainer(node);
    for (size_t i = 0; i < items.size(); ++i) {
        if (items[i].node == node)
            return int(i) + 1;
        TKelNode original;
        if (hits && items[i].node.FollowAlias(false, original) == noErr && original == node)
            return int(i) + 1;
    }
    return 0;
}

} // namespace

void BTSidebar::AcquireContent() {
    if (acquired)
        return;
    acquired = true;
    TKelNode::InitializeCatalog();
    if (topNode.IsEmpty())
        topNode = TKelNode(GetVirtualNode(kVirtualNodeDevices), false);
    if (bottomNode.IsEmpty())
        bottomNode = TKelNode(GetVirtualNode(kVirtualNodePlaces), false);
    AcquireChildren(topNode, true, topItems);
    AcquireChildren(bottomNode, false, bottomItems);
    observatory.SetTickleControl(GetViewRef());
    observatory.RegisterContainerObserver(topNode, *this);
    observatory.RegisterContainerObserver(bottomNode, *this);
    if (itemsView != nullptr)
        itemsView->RebuildTrackingAreas();
}

StatusCode BTSidebar::AcquireChildren(const TKelNode& parent, bool first,
                                      std::vector<SidebarItem>& items) {
    items.clear();
    if (parent.IsEmpty())
        return noErr;
    std::vector<TKelNode> children;
    if (StatusCode status = CopyChildNodes(parent, children))
        return status;
    for (TKelNode& child : children)
        FetchNodeInfo(std::move(child), first, items.emplace_back());
    return noErr;
}

void BTSidebar::FetchNodeInfo(TKelNode node, bool first, SidebarItem& item) const {
    OpaqueNodeRef* ref = node.PeekNodeRef();
    IconRef icon = nullptr;
    if (GetNodePropertyAsIconRef(ref, NodeCode("icon"), &icon, 0) == noErr)
        item.icon.Adopt(icon);
    item.name = CopyDisplayName(node);
    if (first && VolumeIsEjectable(ref) && NodeIsVolume(ref))
        item.flags |= SidebarItem::kEjectable;
    if (!first && NodeIsApplication(ref))
        item.flags |= SidebarItem::kApplication;
    item.node = std::move(node);
}

SidebarItem* BTSidebar::GetItem(int index) {
    AcquireContent();
    if (index < 0)
        return nullptr;
    if (size_t(index) < topItems.size())
        return &topItems[index];
    size_t below = size_t(index) - topItems.size();
    return below < bottomItems.size() ? &bottomItems[below] : nullptr;
}

int BTSidebar::CountItems() {
    AcquireContent();
    return int(topItems.size() + bottomItems.size());
}

int BTSidebar::CountTopItems() {
    AcquireContent();
    return int(topItems.size());
}

bool BTSidebar::HasBottomItems() {
    AcquireContent();
    return !bottomItems.empty();
}

int BTSidebar::LocateNode(OpaqueNodeRef* node) {
    AcquireContent();
    auto inArrays = [this](OpaqueNodeRef* wanted) {
        if (int row = LocateNodeInArray(topItems, wanted))
            return row;
        int row = LocateNodeInArray(bottomItems, wanted);
        return row != 0 ? row + int(topItems.size()) : 0;
    };
    if (node == nullptr)
        return 0;
    if (int row = inArrays(node))
        return row;
    OpaqueNodeRef* child = nullptr;
    if (NodeFindVirtualChild(topNode.PeekNodeRef(), node, &child, 0) != noErr &&
        NodeFindVirtualChild(bottomNode.PeekNodeRef(), node, &child, 0) != noErr)
        return 0;
    TKelNode entry(child, false);
    return inArrays(entry.PeekNodeRef());
}

// One list changed: read that section again, and keep the selection on the node it was on.
void BTSidebar::NodeObserverNoteVirtualChildListChanged(TKelNode& node) {
    bool top = node == topNode;
    if ((!top && !(node == bottomNode)) || itemsView == nullptr)
        return;
    int selected = itemsView->SelectedRow();
    TKelNode remembered = selected != 0 ? GetItem(selected - 1)->node : CopyCurrentClientRoot();
    itemsView->ReleaseTrackingAreas();
    AcquireChildren(top ? topNode : bottomNode, top, top ? topItems : bottomItems);
    itemsView->ContentsChanged(0);
    itemsView->RebuildTrackingAreas();
    if (int row = LocateNode(remembered.PeekNodeRef()))
        itemsView->SelectItem(row, 0, false);
}
