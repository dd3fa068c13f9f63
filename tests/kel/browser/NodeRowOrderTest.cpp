#include "kel/browser/NodeRowOrder.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {

using Key = std::vector<uint8_t>;

// Keys like those of one folder: a long shared start, then short and long tails, some of
// them the beginning of others, some alike for more than eight bytes past the shared start.
// Like the collator's, each ends in its only zero byte.
std::vector<Key> FolderKeys() {
    std::mt19937 random(7);
    const Key start{0x2F, 0x45, 0x41, 0x39, 0x33, 0x41, 0x05, 0x01, 0x2C, 0x51};
    std::set<Key> keys;
    while (keys.size() < 3000) {
        Key key = start;
        const size_t tail = random() % 14;
        const bool alike = random() % 4 == 0;
        for (size_t at = 0; at < tail; ++at) {
            key.push_back(alike && at < 10 ? uint8_t(0x40 + at) : uint8_t(1 + random() % 5));
        }
        keys.insert(key);
    }
    keys.insert(start);
    std::vector<Key> shuffled;
    for (Key key : keys) {
        key.push_back(0);
        shuffled.push_back(key);
    }
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    return shuffled;
}

// Rows of distinct keys are never compared by their nodes, which are only tokens here.
std::vector<NodeSortRow> RowsOf(const std::vector<Key>& keys) {
    std::vector<NodeSortRow> rows;
    for (size_t index = 0; index < keys.size(); ++index) {
        NodeSortFacts facts;
        facts.valid = true;
        facts.keyKnown = true;
        facts.displayKey = keys[index].data();
        rows.push_back({reinterpret_cast<OpaqueNodeRef*>(0x10000 + index * 256), facts});
    }
    return rows;
}

// Byte order, a key before the longer keys it begins.
std::vector<Key> Expected(std::vector<Key> keys, bool decreasing) {
    std::sort(keys.begin(), keys.end());
    if (decreasing) {
        std::reverse(keys.begin(), keys.end());
    }
    return keys;
}

std::vector<Key> KeysOf(const std::vector<NodeSortRow>& rows) {
    std::vector<Key> keys;
    for (const NodeSortRow& row : rows) {
        const size_t length = std::strlen(reinterpret_cast<const char*>(row.facts.displayKey));
        keys.emplace_back(row.facts.displayKey, row.facts.displayKey + length + 1);
    }
    return keys;
}

TEST(NodeRowOrderTest, NameSortOfAFolderFollowsTheKeysEitherWay) {
    const std::vector<Key> keys = FolderKeys();
    for (bool decreasing : {false, true}) {
        std::vector<NodeSortRow> rows = RowsOf(keys);
        SortRows(rows, true, decreasing);
        EXPECT_EQ(KeysOf(rows), Expected(keys, decreasing)) << "decreasing " << decreasing;
    }
}

} // namespace
