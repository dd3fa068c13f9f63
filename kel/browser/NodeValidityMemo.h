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
    struct Slot {
        uintptr_t key = 0; // 0: empty; nodes are never null here
        bool valid = false;
    };

    size_t Home(uintptr_t key) const;
    void Grow(size_t capacity);

    std::vector<Slot> slots;
    size_t used = 0;
};
