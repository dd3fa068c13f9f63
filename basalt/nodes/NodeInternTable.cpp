#include "basalt/nodes/NodeInternTable.h"

#include <bit>
#include <functional>
#include <utility>

namespace basalt::nodes {

// Folded to 32 bits, which the node keeps: more buckets than that are never needed.
uint32_t NodeInternTable::HashOf(const OpaqueNodeRef* parent, std::string_view name) {
    const uint64_t hash = std::hash<std::string_view>()(name) ^
                          (reinterpret_cast<uintptr_t>(parent) * 0x9E3779B97F4A7C15ull);
    return static_cast<uint32_t>(hash ^ (hash >> 32));
}

OpaqueNodeRef* NodeInternTable::Find(const OpaqueNodeRef* parent, std::string_view name,
                                     uint32_t hash) const {
    OpaqueNodeRef* node = buckets_[hash & (buckets_.size() - 1)];
    while (node != nullptr &&
           (node->tableHash != hash || node->parent != parent || node->Name() != name))
        node = node->tableNext;
    return node;
}

void NodeInternTable::Insert(OpaqueNodeRef* node) {
    if (count_ + 1 > buckets_.size())
        Rehash(buckets_.size() * 2);
    OpaqueNodeRef*& head = HeadOf(node->tableHash);
    node->tableNext = head;
    head = node;
    ++count_;
}

void NodeInternTable::Erase(OpaqueNodeRef* node) {
    OpaqueNodeRef** link = &HeadOf(node->tableHash);
    while (*link != nullptr && *link != node)
        link = &(*link)->tableNext;
    if (*link == nullptr)
        return;
    *link = node->tableNext;
    node->tableNext = nullptr;
    --count_;
}

void NodeInternTable::Reserve(size_t more) {
    if (count_ + more > buckets_.size())
        Rehash(std::bit_ceil(count_ + more));
}

void NodeInternTable::Rehash(size_t bucketCount) {
    std::vector<OpaqueNodeRef*> old = std::exchange(buckets_, {});
    buckets_.assign(bucketCount, nullptr);
    for (OpaqueNodeRef* head : old) {
        while (head != nullptr) {
            OpaqueNodeRef* next = head->tableNext;
            OpaqueNodeRef*& into = HeadOf(head->tableHash);
            head->tableNext = into;
            into = head;
            head = next;
        }
    }
}

} // namespace basalt::nodes
