#include "kel/browser/NodeRowOrder.h"

#include "basalt/gridbrowser/GridBrowser.h"
#include "basalt/nodes/NodeQueries.h"
#include "kel/nodes/TKelNodeArray.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

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

namespace {

// A row of a name sort with eight bytes of its key in hand, read big-endian from past the prefix
// all the keys share: most comparisons end there, and the keys themselves lie all over memory.
struct KeyedRow {
    uint64_t word;
    uint32_t index;
};

bool HasPlainKey(const NodeSortRow& row) {
    return row.facts.valid && !row.facts.queryHit && row.facts.displayKey != nullptr;
}

// Keys end in their only zero byte, which no other key's byte matches.
size_t SharedKeyPrefix(std::span<const NodeSortRow> rows) {
    const uint8_t* first = rows.front().facts.displayKey;
    size_t shared = std::strlen(reinterpret_cast<const char*>(first));
    for (const NodeSortRow& row : rows) {
        size_t at = 0;
        while (at < shared && row.facts.displayKey[at] == first[at]) {
            ++at;
        }
        shared = at;
    }
    return shared;
}

// A key that ends within the eight bytes reads as zeros there, which keeps it ahead of the
// longer keys it begins, as the full comparison puts it.
uint64_t WordAt(const uint8_t* key, size_t from) {
    uint64_t word = 0;
    bool ended = false;
    for (size_t at = from; at < from + 8; ++at) {
        ended = ended || key[at] == 0;
        word = word << 8 | (ended ? 0 : key[at]);
    }
    return word;
}

void SortByKeyWords(std::span<NodeSortRow> rows, bool decreasing) {
    const size_t shared = SharedKeyPrefix(rows);
    std::vector<KeyedRow> keyed;
    keyed.reserve(rows.size());
    for (size_t index = 0; index < rows.size(); ++index) {
        keyed.push_back({WordAt(rows[index].facts.displayKey, shared), uint32_t(index)});
    }
    auto tail = [&](const KeyedRow& row) {
        return reinterpret_cast<const char*>(rows[row.index].facts.displayKey + shared);
    };
    auto precedes = [&](const KeyedRow& a, const KeyedRow& b) {
        if (a.word != b.word) {
            return a.word < b.word;
        }
        const int order = std::strcmp(tail(a), tail(b));
        return order != 0 ? order < 0 : RowPrecedes(rows[a.index], rows[b.index], true);
    };
    std::stable_sort(keyed.begin(), keyed.end(), [&](const KeyedRow& a, const KeyedRow& b) {
        return decreasing ? precedes(b, a) : precedes(a, b);
    });
    std::vector<NodeSortRow> sorted;
    sorted.reserve(rows.size());
    for (const KeyedRow& row : keyed) {
        sorted.push_back(rows[row.index]);
    }
    std::copy(sorted.begin(), sorted.end(), rows.begin());
}

} // namespace

void SortRows(std::span<NodeSortRow> rows, bool byName, bool decreasing) {
    if (byName && !rows.empty() && std::all_of(rows.begin(), rows.end(), HasPlainKey)) {
        SortByKeyWords(rows, decreasing);
        return;
    }
    std::stable_sort(rows.begin(), rows.end(), [&](const NodeSortRow& a, const NodeSortRow& b) {
        return decreasing ? RowPrecedes(b, a, byName) : RowPrecedes(a, b, byName);
    });
}
