// The open containers: opening, listing (at once, deferred, or on the node service's open
// completion), the refresh timer, and the change events that add, remove and redraw rows.

#include "kel/browser/BrowserNodes.h"
#include "kel/browser/GridItemIDs.h"
#include "kel/browser/NodeRowOrder.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/nodes/TKelNodeContainerIterator.h"

namespace {

constexpr double kSyncInterval = 15.0;

} // namespace

TKelNode TNodeBrowserControl::ListedNode(const TKelNode& node) {
    if (!node.IsEmpty() &&
        (NodeIsQueryHit(node.PeekNodeRef()) || NodeIsAlias(node.PeekNodeRef()))) {
        TKelNode original;
        node.GetOriginal(false, original);
        return original;
    }
    return node;
}

// The volume a node lies on: itself if it is one, else its nearest volume ancestor.
TKelNode TNodeBrowserControl::VolumeOf(const TKelNode& node) {
    for (TKelNode step = node; !step.IsEmpty() && !step.IsRoot(); step = step.GetParent()) {
        if (NodeIsVolume(step.PeekNodeRef())) {
            return step;
        }
    }
    return TKelNode();
}

TContainerData* TNodeBrowserControl::FindContainer(const TKelNode& node) const {
    for (const auto& data : containers) {
        if (data->node == node) {
            return data.get();
        }
    }
    return nullptr;
}

bool TNodeBrowserControl::OpenContainer(TKelNode& node) {
    if (node.IsEmpty()) {
        return true;
    }
    TKelNode copy = node;
    if (NodeIsQueryHit(copy.PeekNodeRef())) {
        TKelNode original;
        copy.GetOriginal(false, original);
        copy = original;
        if (copy.IsEmpty()) {
            return true;
        }
    }
    bool followed = true;
    if (NodeIsAlias(copy.PeekNodeRef())) {
        TKelNode resolved;
        StatusCode first = copy.FollowAlias(false, resolved);
        if (first != noErr) {
            observer->NodeBrowserControlNodeOpen(*this, copy);
        }
        StatusCode second = copy.FollowAlias(true, resolved);
        if (second != noErr) {
            observer->NodeBrowserControlHandleError(*this, copy, second);
        }
        if (first != noErr) {
            observer->NodeBrowserControlNodeOpenDone(*this, resolved);
        }
        // An alias that needed the second attempt counts as failed even when it worked.
        followed = first == noErr && second == noErr;
    }
    containers.push_back(std::make_unique<TContainerData>(*this, node));
    if (deferPopulation) {
        populationDeferred = true;
    } else {
        RequestPopulateContainerData(*containers.back());
    }
    return followed;
}

void TNodeBrowserControl::CloseContainer(TKelNode& node) {
    if (node.IsEmpty()) {
        return;
    }
    for (auto record = containers.begin(); record != containers.end(); ++record) {
        if ((*record)->node == node) {
            sortMemo.clear(); // its rows' nodes may go, and their addresses be reused
            std::unique_ptr<TContainerData> data = std::move(*record);
            containers.erase(record);
            observatory.UnregisterContainerObserver(ListedNode(data->node), *data);
            return;
        }
    }
}

void TNodeBrowserControl::RequestPopulateContainerData(TContainerData& data) {
    data.populated = true;
    if (observatory.RegisterContainerObserver(ListedNode(data.node), data) == noErr) {
        PopulateContainerData(data);
        RequestSynchronizeContainerData(data);
    } else {
        data.syncInProgress = true;
    }
}

void TNodeBrowserControl::PopulateContainerData(TContainerData& data) {
    TKelNode source = ListedNode(data.node);
    const bool hits = IsHitsContainer(source);
    TKelNodeContainerIterator iterator(source, false);
    if (!iterator.IsValid() && (source.IsEmpty() || !hits)) {
        return;
    }
    TKelNode child = iterator.First();
    if (hits) {
        // A query's population replaces its rows.
        RemoveItems(data.node, data.children, kGridBrowserItemSelfIdentityProperty);
        data.children.clear();
    }
    for (; !child.IsEmpty(); child = iterator.Next()) {
        if (filter->CanSee(child)) {
            data.children.push_back(child);
            // The folder was just read: asking the file system again per row for the sort that
            // follows would stat every entry of a large folder.
            sortMemo.Keep(child.PeekNodeRef(), {true, NodeIsQueryHit(child.PeekNodeRef()) != 0});
        }
    }
    if (!data.children.empty()) {
        AddItems(data.node, data.children,
                 hits ? GridBrowserPropertyID(kGridBrowserItemSelfIdentityProperty) : 0);
    }
    InstallSyncTimer();
    if (hits) {
        observer->NodeBrowserControlNodeOpenDone(*this, source);
    }
}

void TNodeBrowserControl::InstallSyncTimer() {
    if (syncTimer == nullptr) {
        InstallEventLoopTimer(GetMainEventLoop(), kSyncInterval, kSyncInterval,
                              &TNodeBrowserControl::SynchronizeContainers, this, &syncTimer);
    }
}

void TNodeBrowserControl::PopulateDeferredContainers() {
    if (!populationDeferred) {
        return;
    }
    // A request may run node events that open or close containers: read the end anew each time.
    for (size_t index = 0; index < containers.size(); ++index) {
        if (!containers[index]->populated) {
            RequestPopulateContainerData(*containers[index]);
        }
    }
    populationDeferred = false;
}

void TNodeBrowserControl::RequestSynchronizeContainerData(TContainerData& data) {
    // Volumes arrive at the root as child additions: the root is never refreshed this way.
    if (data.node.IsRoot() || !data.populated || data.syncInProgress) {
        return;
    }
    data.syncInProgress = true;
    NodeSync(data.node.PeekNodeRef());
}

void TNodeBrowserControl::SynchronizeContainers(EventLoopTimerRef, void* control) {
    auto* self = static_cast<TNodeBrowserControl*>(control);
    for (size_t index = 0; index < self->containers.size(); ++index) {
        self->RequestSynchronizeContainerData(*self->containers[index]);
    }
}

void TNodeBrowserControl::NoteChildAddition(TContainerData& data, TKelNode& child) {
    sortMemo.clear();
    if (!filter->CanSee(child)) {
        return;
    }
    TKelNodeArray one;
    one.push_back(child);
    if (AddItems(data.node, one, 0) != noErr) {
        return;
    }
    data.children.push_back(child);
    if (!data.node.IsRoot()) {
        return;
    }
    // A local disk that arrives while the user looks at the top is entered; a network one isn't.
    TKelNode volume = VolumeOf(child);
    if ((!volume.IsEmpty() && !VolumeIsLocal(volume.PeekNodeRef())) || !filter->CanTarget(child)) {
        return;
    }
    SetTarget(child, TKelNode(), TKelNode());
}

void TNodeBrowserControl::NoteChildDeletion(TContainerData& data, TKelNode& child) {
    sortMemo.clear();
    TKelNodeArray one;
    one.push_back(child);
    if (RemoveItems(data.node, one, 0) == noErr) {
        data.children.RemoveNode(child);
    }
}

void TNodeBrowserControl::NoteChildPropertyChange(TContainerData& data, TKelNode& child,
                                                  unsigned long property) {
    sortMemo.clear();
    const GridBrowserItemID id = child.AsItemID();
    const GridBrowserItemID container = data.node.AsItemID();
    if (property == NodeCode("asty") || property == NodeCode("icon")) {
        _UpdateGridBrowserItemsNoSort(control, container, 1, &id, 0, ItemProperty());
    } else if (property == NodeCode("pnam")) {
        // A renamed row moves to its place.
        UpdateGridBrowserItems(control, container, 1, &id, 0, ItemProperty());
    }
}

StatusCode TNodeBrowserControl::AddItems(const TKelNode& container, const TKelNodeArray& nodes,
                                         unsigned long preSortProperty) {
    if (preSortProperty == 0 && nodes.size() > 1) {
        std::vector<GridBrowserItemID> ids = InControlOrder(nodes);
        return AddGridBrowserItems(control, container.AsItemID(), uint32_t(ids.size()), ids.data(),
                                   0);
    }
    GridItemIDs ids(nodes);
    return AddGridBrowserItems(control, container.AsItemID(), ids.Count(), ids.IDs(),
                               preSortProperty);
}

// Rows handed over in the control's order cost it one pass to check them, where its own sort
// would call back for every comparison, with a lookup of both nodes' facts each time.
std::vector<GridBrowserItemID> TNodeBrowserControl::InControlOrder(const TKelNodeArray& nodes) {
    GridBrowserPropertyID property = 0;
    GridBrowserSortOrder order = kGridBrowserOrderIncreasing;
    GetGridBrowserSortProperty(control, &property);
    GetGridBrowserSortOrder(control, &order);
    const bool byName = IsNameSortProperty(property);
    std::vector<NodeSortRow> rows;
    rows.reserve(nodes.size());
    for (const TKelNode& node : nodes) {
        rows.push_back({node.PeekNodeRef(), SortFactsOf(node.PeekNodeRef(), byName)});
    }
    if (IsSortProperty(property)) {
        SortRows(rows, byName, order == kGridBrowserOrderDecreasing);
    }
    std::vector<GridBrowserItemID> ids;
    ids.reserve(rows.size());
    for (const NodeSortRow& row : rows) {
        ids.push_back(GridBrowserItemID(row.node));
    }
    return ids;
}

StatusCode TNodeBrowserControl::RemoveItems(const TKelNode& container, const TKelNodeArray& nodes,
                                            unsigned long preSortProperty) {
    GridItemIDs ids(nodes);
    // The control reads a count of 0 as every row of the container.
    if (ids.Count() == 0) {
        return noErr;
    }
    return RemoveGridBrowserItems(control, container.AsItemID(), ids.Count(), ids.IDs(),
                                  preSortProperty);
}
