#include "kel/browser/NodeSortMemo.h"

#include <algorithm>

namespace {

constexpr size_t kSmallest = 64;

} // namespace

// Node addresses share their low bits; a multiplicative hash spreads them over the table.
size_t NodeSortMemo::Home(const OpaqueNodeRef* node) const {
    const auto key = reinterpret_cast<uintptr_t>(node);
    return size_t((key * 0x9E3779B97F4A7C15ull) >> 7) & (slots.size() - 1);
}

// The slot that holds node, or the empty one where it would go.
size_t NodeSortMemo::SlotOf(const OpaqueNodeRef* node) const {
    size_t at = Home(node);
    while (slots[at].node != nullptr && slots[at].node != node) {
        at = (at + 1) & (slots.size() - 1);
    }
    return at;
}

NodeSortFacts* NodeSortMemo::Find(const OpaqueNodeRef* node) {
    if (slots.empty() || node == nullptr) {
        return nullptr;
    }
    if (lastFound < slots.size() && slots[lastFound].node == node) {
        return &slots[lastFound].facts;
    }
    const size_t at = SlotOf(node);
    if (slots[at].node == nullptr) {
        return nullptr;
    }
    lastFound = at;
    return &slots[at].facts;
}

void NodeSortMemo::Keep(const OpaqueNodeRef* node, const NodeSortFacts& facts) {
    if (node == nullptr) {
        return;
    }
    // At most half full, so a probe ends soon at an empty slot.
    if (2 * (used + 1) > slots.size()) {
        Grow(std::max(kSmallest, 2 * slots.size()));
    }
    Slot& slot = slots[SlotOf(node)];
    used += slot.node == nullptr ? 1 : 0;
    slot = {node, facts};
}

void NodeSortMemo::clear() {
    slots.clear();
    slots.shrink_to_fit();
    used = 0;
}

void NodeSortMemo::Grow(size_t capacity) {
    std::vector<Slot> old = std::move(slots);
    slots.assign(capacity, Slot{});
    used = 0;
    for (const Slot& slot : old) {
        if (slot.node != nullptr) {
            Keep(slot.node, slot.facts);
        }
    }
}
