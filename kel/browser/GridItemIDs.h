#pragma once

// The control's item ids of a node array, held for the length of one call to the control, and
// the way back from a handle of ids the control filled.

#include "basalt/gridbrowser/GridBrowser.h"
#include "kel/nodes/TKelNodeArray.h"

#include <cstdlib>

class GridItemIDs {
public:
    explicit GridItemIDs(const TKelNodeArray& nodes)
        : items(nodes.MallocItems()), count(uint32_t(nodes.size())) {}
    ~GridItemIDs() { free(items); }
    GridItemIDs(const GridItemIDs&) = delete;
    GridItemIDs& operator=(const GridItemIDs&) = delete;

    const GridBrowserItemID* IDs() const {
        return reinterpret_cast<const GridBrowserItemID*>(items);
    }
    uint32_t Count() const { return count; }
    GridBrowserItemID Last() const { return count == 0 ? 0 : IDs()[count - 1]; }

private:
    OpaqueNodeRef** items;
    uint32_t count;
};

// Replaces out with the nodes whose ids fill the handle.
void CopyHandleItems(Handle handle, TKelNodeArray& out);
