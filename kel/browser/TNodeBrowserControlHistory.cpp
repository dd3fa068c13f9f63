// Back and forward. TargetChanged records each place in snapshots; SetHistoryViewSnapshot
// moves through them, skipping and forgetting places whose folders are gone. suppressSnapshot
// keeps a visit, and a change of view style, from recording itself.

#include "kel/browser/BrowserNodes.h"
#include "kel/browser/GridItemIDs.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/foundation/TKelPrefs.h"

namespace {

void CancelQueryOf(const TViewSnapshot& snapshot) {
    if (!snapshot.queryNode.IsEmpty()) {
        NodeCancelQuery(snapshot.queryNode.PeekNodeRef());
    }
}

} // namespace

StatusCode TNodeBrowserControl::TakeSnapshot() {
    if (suppressSnapshot) {
        return noErr;
    }
    TViewSnapshot* current = nullptr;
    if (snapshotIndex >= 0 && !targetPath.empty()) {
        current = snapshots[size_t(snapshotIndex)].get();
        if (!IsSearchRefinement(*current)) {
            CutForwardHistory();
        }
        if (ReplacesCurrentSnapshot(*current)) {
            DeleteSnapshot(snapshotIndex--);
            current = nullptr;
        } else if (viewStyle == kListViewStyle && current->path.back() == targetPath.back()) {
            return noErr;
        }
    }
    if (!targetPath.empty()) {
        ++snapshotIndex;
        snapshots.insert(
            snapshots.begin() + snapshotIndex,
            std::make_unique<TViewSnapshot>(targetPath, viewStyle, queryNode, queryScopeNode));
    }
    if (current != nullptr) {
        current->CheckReleaseQueryHitsContainers(targetPath);
    }
    observer->NodeBrowserControlBackForwardSnapshotChanged(snapshotIndex + 1, SnapshotCount());
    return noErr;
}

// A typed search refined in its own entry keeps the places ahead of it.
bool TNodeBrowserControl::IsSearchRefinement(const TViewSnapshot& current) const {
    return !queryNode.IsEmpty() && current.isQuery && queryNode.savedQueryRef == nullptr &&
           targetPath.back().savedQueryRef == nullptr;
}

void TNodeBrowserControl::CutForwardHistory() {
    while (long(snapshots.size()) - 1 > snapshotIndex) {
        DeleteSnapshot(long(snapshots.size()) - 1);
    }
}

void TNodeBrowserControl::DeleteSnapshot(long index) {
    CancelQueryOf(*snapshots[size_t(index)]);
    snapshots.erase(snapshots.begin() + index);
}

bool TNodeBrowserControl::ReplacesCurrentSnapshot(const TViewSnapshot& current) const {
    if (viewStyle == kColumnViewStyle) {
        // Moving sideways in one column gives no new entry; going deeper or up does.
        return current.path.front() == viewRoot && current.path.size() == targetPath.size();
    }
    // Each refinement of a typed search takes the place of the last; a saved search never.
    return IsHitsContainer(targetPath.back()) && current.isQuery &&
           current.path.back().savedQueryRef == nullptr &&
           targetPath.back().savedQueryRef == nullptr;
}

StatusCode TNodeBrowserControl::SetHistoryViewSnapshot(unsigned long back, TKelPrefs& prefs) {
    TViewSnapshot* next = nullptr;
    while (next == nullptr) {
        if (snapshotIndex < 0 || (back != 0 && snapshotIndex == 0) ||
            (back == 0 && snapshotIndex + 1 >= SnapshotCount())) {
            return noErr;
        }
        const TViewSnapshot& old = *snapshots[size_t(snapshotIndex)];
        snapshotIndex += back != 0 ? -1 : 1;
        TViewSnapshot& candidate = *snapshots[size_t(snapshotIndex)];
        candidate.CheckReconstituteQueryHitContainers();
        old.CheckReleaseQueryHitsContainers(candidate.path);
        if (candidate.path.front().Validate() && candidate.path.back().Validate()) {
            next = &candidate;
            break;
        }
        // A folder of this place is gone: forget it and go on past it.
        DeleteSnapshot(snapshotIndex);
        if (back == 0) {
            --snapshotIndex;
        }
        observer->NodeBrowserControlBackForwardSnapshotChanged(snapshotIndex + 1, SnapshotCount());
    }
    suppressSnapshot = true;
    SetTargetPath(next->path, next->queryNode);
    StatusCode result = SetBrowserView(next->viewStyle, kPrefOptionSaveRestore, prefs);
    queryScopeNode = next->queryScopeNode;
    if (!next->openItems.empty()) {
        result = OpenSnapshotItems(*next);
    }
    suppressSnapshot = false;
    observer->NodeBrowserControlBackForwardSnapshotChanged(snapshotIndex + 1, SnapshotCount());
    return result;
}

StatusCode TNodeBrowserControl::OpenSnapshotItems(const TViewSnapshot& snapshot) {
    StatusCode status = noErr;
    // Opening rows can record them; iterate over a copy.
    const std::vector<uintptr_t> items = snapshot.openItems;
    for (uintptr_t id : items) {
        status = OpenGridBrowserContainer(control, id);
    }
    return status;
}

StatusCode TNodeBrowserControl::ChangeSnapshotView(unsigned long) {
    if (snapshotIndex < 0) {
        return noErr;
    }
    TViewSnapshot& current = *snapshots[size_t(snapshotIndex)];
    current.viewStyle = viewStyle;
    suppressSnapshot = true;
    // A return to list view reopens what the user had opened in this place.
    StatusCode status = viewStyle == kListViewStyle ? OpenSnapshotItems(current) : noErr;
    suppressSnapshot = false;
    return status;
}

bool TNodeBrowserControl::RecordsOpenRows() const {
    return !suppressSnapshot && !inDoubleClick && snapshotIndex >= 0 && viewStyle == kListViewStyle;
}

StatusCode TNodeBrowserControl::AddSnapshotOpenNode(const TKelNode& node) {
    if (RecordsOpenRows()) {
        snapshots[size_t(snapshotIndex)]->openItems.push_back(node.AsItemID());
    }
    return noErr;
}

StatusCode TNodeBrowserControl::RemoveSnapshotOpenNode(const TKelNode& node) {
    if (RecordsOpenRows()) {
        snapshots[size_t(snapshotIndex)]->RemoveOpenItem(node.AsItemID());
    }
    return noErr;
}
