#pragma once

// What Validate said of each node a sort compared, until it is cleared. A sort of a large
// folder looks every node up twice per comparison, so this is a flat table with open
// addressing: one probe into contiguous memory, where a node-based map chases two pointers.

#include <cstdint>
#include <optional>
#include <vector>

struct OpaqueNodeRef;

class NodeValidityMemo {
public:
    std::optional<bool> Find(const OpaqueNodeRef* node) const;
    void Set(const OpaqueNodeRef* node, bool valid);
    void clear();

private:
    size_t Home(uintptr_t key) const;
    size_t SlotOf(uintptr_t key) const;
    void Grow(size_t capacity);

    // A node's address with its lowest bit set when it is valid (nodes are aligned, so the
    // bit is free); 0 is an empty slot. Eight bytes a slot keep the table in cache.
    std::vector<uintptr_t> slots;
    size_t used = 0;
};
