#include "kel/browser/NodeRowOrder.h"

#include "basalt/gridbrowser/GridBrowser.h"
#include "basalt/nodes/NodeQueries.h"
#include "kel/nodes/TKelNodeArray.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr FourCharCode kDisplayName = NodeCode("dnam");
constexpr FourCharCode kModified = NodeCode("modd");

// The collating order of a string property, through the sort keys the node service caches per
// node, so that sorting a large folder collates each name once.
int CompareKeys(const uint8_t* keyA, BCIndex lengthA, const uint8_t* keyB, BCIndex lengthB) {
    int order = memcmp(keyA, keyB, size_t(std::min(lengthA, lengthB)));
    return order != 0 ? order : int(lengthA > lengthB) - int(lengthA < lengthB);
}

int CompareByKey(OpaqueNodeRef* a, OpaqueNodeRef* b, FourCharCode property) {
    const uint8_t* keyA = nullptr;
    const uint8_t* keyB = nullptr;
    BCIndex lengthA = 0, lengthB = 0;
    if (NodeGetSortKey(a, property, &keyA, &lengthA) != noErr ||
        NodeGetSortKey(b, property, &keyB, &lengthB) != noErr) {
        return NodeStringCompare(a, b, property, CompareStrings);
    }
    return CompareKeys(keyA, lengthA, keyB, lengthB);
}

int CompareNames(const NodeSortRow& a, const NodeSortRow& b) {
    int order = a.facts.displayKey != nullptr && b.facts.displayKey != nullptr
                    ? CompareKeys(a.facts.displayKey, a.facts.keyLength, b.facts.displayKey,
                                  b.facts.keyLength)
                    : NodeStringCompare(a.node, b.node, kDisplayName, CompareStrings);
    return order != 0 ? order : CompareByKey(a.node, b.node, NodeCode("pnam"));
}

// True when a is later than b; equal dates are not.
bool IsLater(const UTCDateTime& a, const UTCDateTime& b) {
    if (a.highSeconds != b.highSeconds) {
        return a.highSeconds > b.highSeconds;
    }
    if (a.lowSeconds != b.lowSeconds) {
        return a.lowSeconds > b.lowSeconds;
    }
    return a.fraction > b.fraction;
}

} // namespace

// The key stays good while the node lives, which the row's record sees to.
void ReadDisplayKey(OpaqueNodeRef* node, NodeSortFacts& facts) {
    const uint8_t* key = nullptr;
    BCIndex length = 0;
    facts.keyKnown = true;
    if (NodeGetSortKey(node, kDisplayName, &key, &length) == noErr) {
        facts.displayKey = key;
        facts.keyLength = uint32_t(length);
    }
}

// A query hit is compared with nothing, so only its validity is asked.
NodeSortFacts ReadSortFacts(OpaqueNodeRef* node, bool wantKey) {
    NodeSortFacts facts;
    facts.queryHit = NodeIsQueryHit(node) != 0;
    facts.valid = NodeValidate(node) != 0;
    if (wantKey && !facts.queryHit) {
        ReadDisplayKey(node, facts);
    }
    return facts;
}

bool IsNameSortProperty(unsigned long property) {
    return property == 0 || property == kGridBrowserItemSelfIdentityProperty ||
           property == kGridBrowserNameProperty || property == kGridBrowserNameTextProperty;
}

bool IsSortProperty(unsigned long property) {
    return IsNameSortProperty(property) || property == kGridBrowserDateProperty;
}

bool RowPrecedes(const NodeSortRow& a, const NodeSortRow& b, bool byName) {
    if (a.facts.queryHit || b.facts.queryHit || !a.facts.valid) {
        return false;
    }
    if (!b.facts.valid) {
        return true;
    }
    if (byName) {
        return CompareNames(a, b) < 0;
    }
    UTCDateTime dateA{}, dateB{};
    GetNodePropertyAsUTCDateTime(a.node, kModified, &dateA, 0);
    GetNodePropertyAsUTCDateTime(b.node, kModified, &dateB, 0);
    // Ascending by date starts with the newest file.
    return IsLater(dateA, dateB);
}

void SortRows(std::span<NodeSortRow> rows, bool byName, bool decreasing) {
    std::stable_sort(rows.begin(), rows.end(), [&](const NodeSortRow& a, const NodeSortRow& b) {
        return decreasing ? RowPrecedes(b, a, byName) : RowPrecedes(a, b, byName);
    });
}
