#pragma once

// The table that finds a node by (parent, name). It is intrusive: each node carries its own
// hash and the link to the next node of its bucket, so a large listing costs one allocation
// per node rather than two, and a node leaves the table without being looked up again.
// Not locked: the node table's lock guards every call.

#include "basalt/nodes/OpaqueNodeRef.h"

#include <string_view>
#include <vector>

namespace basalt::nodes {

class NodeInternTable {
public:
    static uint32_t HashOf(const OpaqueNodeRef* parent, std::string_view name);

    // The node named so under parent, null if there is none; hash is HashOf(parent, name).
    OpaqueNodeRef* Find(const OpaqueNodeRef* parent, std::string_view name, uint32_t hash) const;
    // Adds a node that Find does not know yet.
    void Insert(OpaqueNodeRef* node);
    void Erase(OpaqueNodeRef* node);
    // Room for more nodes without growing on the way.
    void Reserve(size_t more);
    // Calls visit for each node in the table.
    template <typename Visit>
    void ForEach(Visit visit) const {
        for (OpaqueNodeRef* head : buckets_)
            for (OpaqueNodeRef* node = head; node != nullptr; node = node->tableNext)
                visit(node);
    }

private:
    OpaqueNodeRef*& HeadOf(uint32_t hash) { return buckets_[hash & (buckets_.size() - 1)]; }
    void Rehash(size_t bucketCount);

    std::vector<OpaqueNodeRef*> buckets_ = std::vector<OpaqueNodeRef*>(256);
    size_t count_ = 0;
};

} // namespace basalt::nodes
