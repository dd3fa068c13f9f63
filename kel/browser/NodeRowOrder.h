#pragma once

// The order of a folder's rows by name or by date, from what a sort needs to know of each
// node. The control's sort asks it one pair at a time; a large listing is put in the same
// order at once, so that the control only has to check it.

#include "kel/browser/NodeSortMemo.h"

#include <span>

struct NodeSortRow {
    OpaqueNodeRef* node;
    NodeSortFacts facts;
};

// Asks the node service; the display name's key only when wantKey.
NodeSortFacts ReadSortFacts(OpaqueNodeRef* node, bool wantKey);
// Fills in the display name's key of facts.
void ReadDisplayKey(OpaqueNodeRef* node, NodeSortFacts& facts);

bool IsNameSortProperty(unsigned long property);
bool IsSortProperty(unsigned long property);
// True when a goes before b in an increasing sort by name (byName) or by date. Query hits keep
// the order the query gave and nodes that are gone go last.
bool RowPrecedes(const NodeSortRow& a, const NodeSortRow& b, bool byName);
// Sorts rows as the control would: stable, increasing or decreasing.
void SortRows(std::span<NodeSortRow> rows, bool byName, bool decreasing);
