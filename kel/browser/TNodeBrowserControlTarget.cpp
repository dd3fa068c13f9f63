// The target and the selection: the dialog's wishes (SetTarget, SetTargetPath) and the user's
// changes in the control (CheckTarget) reconciled into one targetPath, which only
// SynchronizeTargetPath writes; what the dialog is told and in which order.

#include "kel/browser/BrowserNodes.h"
#include "kel/browser/GridItemIDs.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/nodes/TNodePathHelper.h"

#include <algorithm>

namespace {

bool SamePath(const TKelNodeArray& a, const TKelNodeArray& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
}

constexpr unsigned long kSelectedState = 1;
constexpr unsigned long kColumnWidthWithoutDisclosure = 257;
constexpr StatusCode kUnknownViewStyleErr = kGridBrowserBadStyle;

} // namespace

StatusCode TNodeBrowserControl::GetTarget(TKelNode& out) const {
    out = targetPath.empty() ? TKelNode() : targetPath.back();
    return noErr;
}

StatusCode TNodeBrowserControl::GetViewRoot(TKelNode& out) const {
    out = viewRoot;
    return noErr;
}

StatusCode TNodeBrowserControl::GetFullTargetPath(TKelNodeArray& out) const {
    TNodePathHelper helper(viewRoot.PeekNodeRef());
    if (helper.IsComplete()) {
        out = helper.NodePath();
        out.insert(out.end(), targetPath.begin() + (targetPath.empty() ? 0 : 1), targetPath.end());
    }
    return noErr;
}

StatusCode TNodeBrowserControl::SetTarget(const TKelNode& target, const TKelNode& root,
                                          TKelNode query) {
    TKelNode current;
    GetTarget(current);
    if (target == current) {
        return noErr;
    }
    TKelNodeArray full;
    if (target.IsEmpty() || target.IsRoot()) {
        full.push_back(TKelNode(TKelNode::GetRootNodeRef(), true));
    } else if (target == root) {
        full.push_back(root);
    } else {
        TNodePathHelper helper(target.PeekNodeRef());
        full = helper.NodePath();
    }
    const TKelNode& top = root.IsEmpty() ? viewRoot : root;
    TKelNodeArray path;
    auto found = std::find(full.begin(), full.end(), top);
    path.assign(found, full.end());
    if (found == full.end()) {
        // A target outside the view root becomes a view root of its own, without ancestors.
        path.push_back(full.empty() ? target.GetParent() : full.back());
    }
    return SetTargetPath(path, std::move(query));
}

StatusCode TNodeBrowserControl::SetTargetPath(const TKelNodeArray& path, TKelNode query) {
    // A move inside the hits of a search keeps the search; any other move without one ends it.
    if (!query.IsEmpty() || path.empty() || !IsHitsContainer(path.front())) {
        queryNode = query;
    }
    if (path.empty() || !filter->CanTarget(OriginalOfHit(path.back()))) {
        return paramErr;
    }
    if (!SynchronizeTargetPath(path)) {
        return noErr;
    }
    SetGridBrowserScrollPosition(control, 0, 0);
    GridItemIDs ids(targetPath);
    StatusCode status = ShowTargetPathInControl(ids);
    if (status != noErr) {
        // Stay true to what the control really shows; the dialog hears nothing.
        TKelNodeArray shown;
        if (ReadColumnViewPath(shown) == noErr) {
            SynchronizeTargetPath(shown);
        }
        BTViewSetNeedsDisplay(control, true);
        return status;
    }
    viewRoot = targetPath.front();
    SendRootChangedNotification();
    RevealTarget();
    observer->NodeBrowserControlSelectionChanged(*this);
    TargetChanged();
    StatusCode result = noErr;
    if (viewStyle == kListViewStyle) {
        result = ShowTargetPathInControl(ids);
        SetDisclosureColumnFromObserver();
    }
    BTViewSetNeedsDisplay(control, true);
    return result;
}

StatusCode TNodeBrowserControl::ShowTargetPathInControl(const GridItemIDs& ids) {
    const bool suppressed = suppressSnapshot;
    suppressSnapshot = true;
    StatusCode status = kUnknownViewStyleErr;
    if (viewStyle == kListViewStyle) {
        status = SetGridBrowserTarget(control, ids.Last());
    } else if (viewStyle == kColumnViewStyle) {
        status = SetGridBrowserColumnViewPath(control, ids.Count(), ids.IDs());
    }
    suppressSnapshot = suppressed;
    return status;
}

void TNodeBrowserControl::SetDisclosureColumnFromObserver() {
    if (observer->NodeBrowserControlWantsDisclosureTrianglesInListView()) {
        SetGridBrowserListViewDisclosureColumn(control, kNameProperty, false);
    } else {
        SetGridBrowserListViewDisclosureColumn(control, 0, false);
        SetGridBrowserTableViewNamedColumnWidth(control, kNameProperty,
                                                kColumnWidthWithoutDisclosure);
    }
}

bool TNodeBrowserControl::SynchronizeTargetPath(const TKelNodeArray& path) {
    TKelNodeArray newPath = path;
    const TKelNode leaf = path.empty() ? TKelNode() : OriginalOfHit(path.back());
    if (!path.empty() && (!leaf.IsContainer() || !filter->CanTarget(leaf))) {
        // A path ending in a file (or somewhere the filter bars) stops above the first such node.
        auto bad = std::find_if(path.begin(), path.end(), [this](const TKelNode& node) {
            return !node.IsContainer() || !filter->CanTarget(node);
        });
        newPath.assign(path.begin(), bad);
    }
    if (!SamePath(newPath, targetPath) && !newPath.empty() && !targetPath.empty() &&
        newPath.front() == targetPath.front()) {
        RevealHiddenBranch(newPath);
    }
    if (SamePath(newPath, targetPath)) {
        return false;
    }
    targetPath = newPath;
    return true;
}

// A program may go to a folder that the filter hides from listing, such as an invisible one:
// the first hidden node below the part both paths share gets a row of its own.
void TNodeBrowserControl::RevealHiddenBranch(const TKelNodeArray& newPath) {
    size_t common = 0;
    while (common + 1 < newPath.size() && common + 1 < targetPath.size() &&
           newPath[common + 1] == targetPath[common + 1]) {
        ++common;
    }
    if (common + 1 >= newPath.size()) {
        return;
    }
    TContainerData* data = FindContainer(newPath[common]);
    const TKelNode& branch = newPath[common + 1];
    if (data == nullptr || filter->CanSee(branch)) {
        return;
    }
    TKelNodeArray one;
    one.push_back(branch);
    if (AddItems(newPath[common], one, 0) == noErr) {
        data->children.push_back(branch);
    }
}

StatusCode TNodeBrowserControl::ReadColumnViewPath(TKelNodeArray& out) const {
    Handle handle = NewHandle(0);
    if (handle == nullptr) {
        return memFullErr;
    }
    StatusCode status = GetGridBrowserColumnViewPath(control, handle);
    if (status == noErr) {
        CopyHandleItems(handle, out);
    }
    DisposeHandle(handle);
    return status;
}

void CopyHandleItems(Handle handle, TKelNodeArray& out) {
    const auto count = size_t(GetHandleSize(handle)) / sizeof(GridBrowserItemID);
    const auto* ids = reinterpret_cast<const GridBrowserItemID*>(*handle);
    out.CopyItems(count, count == 0 ? nullptr : ids);
}

void TNodeBrowserControl::CheckTarget() {
    GridBrowserItemID shown = 0;
    if (GetGridBrowserTarget(control, &shown) != noErr || shown == 0 || targetPath.empty() ||
        shown == targetPath.back().AsItemID()) {
        return;
    }
    TKelNodeArray path;
    if (ReadColumnViewPath(path) != noErr || !SynchronizeTargetPath(path)) {
        return;
    }
    // The dialog hears of the change here, so the selection message that follows is dropped,
    // except after a control's very first check.
    if (!firstTargetCheck) {
        ignoreNextSelectionChange = true;
    }
    firstTargetCheck = false;
    observer->NodeBrowserControlSelectionChanged(*this);
    TargetChanged();
}

void TNodeBrowserControl::TargetChanged() {
    TKelNode target;
    GetTarget(target);
    observer->NodeBrowserControlTargetChanged(*this, target);
    TakeSnapshot();
}

void TNodeBrowserControl::SendRootChangedNotification() {
    // In list view the dialog's location displays follow the target, in column view the root.
    if (viewStyle == kColumnViewStyle) {
        observer->NodeBrowserControlViewRootChanged(*this, viewRoot);
    } else if (!targetPath.empty()) {
        TKelNode target = targetPath.back();
        observer->NodeBrowserControlViewRootChanged(*this, target);
    }
}

StatusCode TNodeBrowserControl::RevealTarget() {
    return RevealSelectedUnderTarget(ItemProperty(), true);
}

StatusCode TNodeBrowserControl::RevealSelection() {
    if (targetPath.empty()) {
        return noErr;
    }
    return RevealSelectedUnderTarget(
        viewStyle == kColumnViewStyle ? kGridBrowserColumnViewPreviewProperty : kNameProperty,
        false);
}

StatusCode TNodeBrowserControl::RevealSelectedUnderTarget(unsigned long property,
                                                          bool fromRevealTarget) {
    Handle handle = NewHandle(0);
    if (handle == nullptr) {
        return memFullErr;
    }
    GridBrowserItemID target = targetPath.empty() ? 0 : targetPath.back().AsItemID();
    GetGridBrowserItems(control, target, false, kSelectedState, handle);
    const bool anySelected = GetHandleSize(handle) >= Size(sizeof(GridBrowserItemID));
    // The control is handed the first byte of the ids, sign-extended, not the row's id: the
    // selected row is deliberately not scrolled to.
    const GridBrowserItemID firstByte =
        anySelected ? GridBrowserItemID(uint32_t(int32_t(int8_t(**handle)))) : 0;
    DisposeHandle(handle);
    if (anySelected) {
        return RevealGridBrowserItem(control, firstByte, property, 1);
    }
    if (!fromRevealTarget) {
        return RevealTarget();
    }
    if (viewStyle == kListViewStyle || targetPath.size() < 2) {
        return noErr;
    }
    return RevealGridBrowserItem(control, target, property, 1);
}

StatusCode TNodeBrowserControl::GetItems(const TKelNode* container, bool recurse,
                                         unsigned long state, TKelNodeArray& out) {
    Handle handle = NewHandle(0);
    if (handle == nullptr) {
        return memFullErr;
    }
    StatusCode status = GetGridBrowserItems(
        control, container == nullptr ? 0 : container->AsItemID(), recurse, state, handle);
    if (status == noErr) {
        CopyHandleItems(handle, out);
    }
    DisposeHandle(handle);
    return status;
}

StatusCode TNodeBrowserControl::GetSelection(TKelNodeArray& out) {
    if (targetPath.empty()) {
        return noErr;
    }
    // An empty selection means the target itself.
    if (GetItems(&targetPath.back(), true, kSelectedState, out) == kGridBrowserItemNotFound ||
        out.empty()) {
        out.assign(1, targetPath.back());
    }
    return noErr;
}

StatusCode TNodeBrowserControl::SetSelection(const TKelNodeArray& nodes, unsigned long operation) {
    // A selection may be set before the target's children are in: wait for its listing. The
    // record is looked up again after each round, as events may close it.
    TKelNode target;
    GetTarget(target);
    StatusCode status = noErr;
    for (TContainerData* data = FindContainer(target);
         data != nullptr && data->syncInProgress && status == noErr; data = FindContainer(target)) {
        status = TKelNodeObservatory::BlockForNodeEvents(0.0);
    }
    if (status != noErr && status != eventLoopTimedOutErr) {
        return status;
    }
    GridItemIDs ids(nodes);
    return SetGridBrowserSelectedItems(control, ids.Count(), ids.IDs(), operation);
}

StatusCode TNodeBrowserControl::SelectAll() {
    TKelNode target;
    GetTarget(target);
    TContainerData* data = FindContainer(target);
    if (data == nullptr) {
        return noErr;
    }
    TKelNodeArray choosable;
    for (const TKelNode& child : data->children) {
        if (child.IsEmpty()) {
            break;
        }
        if (filter->CanChoose(child)) {
            choosable.push_back(child);
        }
    }
    return SetSelection(choosable, 1);
}

void TNodeBrowserControl::Refresh() {
    // Rows are asked again, so the filter's verdicts are new; nothing moves, nothing is re-read.
    BTViewSetNeedsDisplay(control, true);
    sortMemo.clear();
    for (const auto& data : containers) {
        _UpdateGridBrowserItemsNoSort(control, data->node.AsItemID(), 0, nullptr, 0,
                                      ItemProperty());
    }
}
