#include "kel/browser/TViewSnapshot.h"

#include "kel/browser/BrowserNodes.h"

#include <algorithm>

TViewSnapshot::TViewSnapshot(const TKelNodeArray& path, unsigned long viewStyle,
                             const TKelNode& queryNode, const TKelNode& queryScopeNode)
    : path(path), queryNode(queryNode), queryScopeNode(queryScopeNode), viewStyle(viewStyle),
      isQuery(!path.empty() && IsHitsContainer(path.back())) {}

void TViewSnapshot::RemoveOpenItem(uintptr_t id) {
    auto found = std::find(openItems.begin(), openItems.end(), id);
    if (found != openItems.end()) {
        openItems.erase(found);
    }
}

void TViewSnapshot::CheckReleaseQueryHitsContainers(TKelNodeArray currentPath) const {
    if (path.empty()) {
        return;
    }
    // The copies go when this returns; the snapshot's own path is left alone on purpose.
    TKelNode first = path.front();
    TKelNode last = path.back();
    if (IsHitsContainer(first) && (currentPath.empty() || !(first == currentPath.front()))) {
        first.Release();
    }
    if (IsHitsContainer(last) && (currentPath.empty() || !(last == currentPath.back()))) {
        last.Release();
    }
}

void TViewSnapshot::CheckReconstituteQueryHitContainers() {
    if (queryNode.IsEmpty() || path.empty()) {
        return;
    }
    for (TKelNode* end : {&path.front(), &path.back()}) {
        if (end->IsEmpty()) {
            queryNode.FollowAlias(false, *end);
        }
    }
}
