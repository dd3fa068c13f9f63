#pragma once

// One place in the browser's history: the target path, the view style, the rows opened by
// disclosure in list view (item ids, not retained: only the values count), and the search that
// belonged to the place.

#include "kel/nodes/TKelNodeArray.h"

#include <vector>

class TViewSnapshot {
public:
    TViewSnapshot(const TKelNodeArray& path, unsigned long viewStyle, const TKelNode& queryNode,
                  const TKelNode& queryScopeNode);

    void RemoveOpenItem(uintptr_t id);
    // Releases local copies of hits containers that the current path no longer shows. The
    // snapshot's own path keeps its nodes, so a hits container in history stays alive.
    void CheckReleaseQueryHitsContainers(TKelNodeArray currentPath) const;
    // Fills a missing first or last path node from the query.
    void CheckReconstituteQueryHitContainers();

    TKelNodeArray path;
    TKelNode queryNode;
    TKelNode queryScopeNode;
    unsigned long viewStyle;
    std::vector<uintptr_t> openItems;
    bool isQuery;
};
