#pragma once

// What a sort needs to know of each node, kept until it is cleared. A sort of a large folder
// compares every node many times; asking the node each time costs a trip to its memory (and
// to the file system for validity), so the answers are kept in a flat table with open
// addressing: one probe into contiguous memory per lookup.
//
// A slot is 16 bytes: the three flags ride in the low bits of the node's address, which is
// that of a heap object holding pointers and so a multiple of 8, and the key's length is read
// again from the key, which ends in its only zero byte.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

struct OpaqueNodeRef;

struct NodeSortFacts {
    bool valid = false;
    bool queryHit = false;
    bool keyKnown = false; // the display name's key was asked for
    uint32_t keyLength = 0;
    const uint8_t* displayKey = nullptr; // null when the node service has none
};

class NodeSortMemo {
public:
    // The facts kept for node, if any.
    std::optional<NodeSortFacts> Find(const OpaqueNodeRef* node);
    // Keeps facts for node, replacing what was kept.
    void Keep(const OpaqueNodeRef* node, const NodeSortFacts& facts);
    void clear();

private:
    struct Slot {
        uintptr_t nodeAndFlags = 0; // 0: empty; nodes are never null here
        const uint8_t* displayKey = nullptr;
    };

    size_t Home(uintptr_t node) const;
    size_t SlotOf(uintptr_t node) const;
    void Grow(size_t capacity);

    std::vector<Slot> slots;
    size_t used = 0;
    // The slot found last: a check of rows in order asks for each node twice in a row.
    size_t lastFound = 0;
};
