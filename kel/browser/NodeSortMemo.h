#pragma once

// What a sort needs to know of each node, kept until it is cleared. A sort of a large folder
// compares every node many times; asking the node each time costs a trip to its memory (and
// to the file system for validity), so the answers are kept in a flat table with open
// addressing: one probe into contiguous memory per lookup.

#include <cstddef>
#include <cstdint>
#include <vector>

struct OpaqueNodeRef;

struct NodeSortFacts {
    bool valid = false;
    bool queryHit = false;
    bool keyKnown = false; // the display name's key was asked for
    // The length before the pointer: a slot of the table takes 24 bytes, not 32.
    uint32_t keyLength = 0;
    const uint8_t* displayKey = nullptr; // null when the node service has none
};

class NodeSortMemo {
public:
    // The facts of node, null when none are kept; good until the next Keep or clear.
    NodeSortFacts* Find(const OpaqueNodeRef* node);
    // Keeps facts for node, replacing what was kept.
    void Keep(const OpaqueNodeRef* node, const NodeSortFacts& facts);
    void clear();

private:
    struct Slot {
        const OpaqueNodeRef* node = nullptr; // null: empty; nodes are never null here
        NodeSortFacts facts;
    };

    size_t Home(const OpaqueNodeRef* node) const;
    size_t SlotOf(const OpaqueNodeRef* node) const;
    void Grow(size_t capacity);

    std::vector<Slot> slots;
    size_t used = 0;
    // The slot found last: a check of rows in order asks for each node twice in a row.
    size_t lastFound = 0;
};
