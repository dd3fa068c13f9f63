#include "kel/browser/NodeSortMemo.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t kSmallest = 64;
constexpr uintptr_t kValid = 1, kQueryHit = 2, kKeyKnown = 4;
constexpr uintptr_t kFlags = kValid | kQueryHit | kKeyKnown;

uintptr_t NodeOf(uintptr_t nodeAndFlags) {
    return nodeAndFlags & ~kFlags;
}

// As the node service counts it: with the closing zero, and 0 for a key it could not make.
uint32_t LengthOf(const uint8_t* key) {
    if (key == nullptr || key[0] == 0) {
        return 0;
    }
    return uint32_t(std::strlen(reinterpret_cast<const char*>(key)) + 1);
}

} // namespace

// Node addresses share their low bits; a multiplicative hash spreads them over the table.
size_t NodeSortMemo::Home(uintptr_t node) const {
    return size_t((node * 0x9E3779B97F4A7C15ull) >> 7) & (slots.size() - 1);
}

// The slot that holds node, or the empty one where it would go.
size_t NodeSortMemo::SlotOf(uintptr_t node) const {
    size_t at = Home(node);
    while (slots[at].nodeAndFlags != 0 && NodeOf(slots[at].nodeAndFlags) != node) {
        at = (at + 1) & (slots.size() - 1);
    }
    return at;
}

std::optional<NodeSortFacts> NodeSortMemo::Find(const OpaqueNodeRef* node) {
    const auto key = reinterpret_cast<uintptr_t>(node);
    if (slots.empty() || key == 0) {
        return std::nullopt;
    }
    size_t at = lastFound;
    if (at >= slots.size() || NodeOf(slots[at].nodeAndFlags) != key) {
        at = SlotOf(key);
        if (slots[at].nodeAndFlags == 0) {
            return std::nullopt;
        }
        lastFound = at;
    }
    const Slot& slot = slots[at];
    return NodeSortFacts{(slot.nodeAndFlags & kValid) != 0, (slot.nodeAndFlags & kQueryHit) != 0,
                         (slot.nodeAndFlags & kKeyKnown) != 0, LengthOf(slot.displayKey),
                         slot.displayKey};
}

void NodeSortMemo::Keep(const OpaqueNodeRef* node, const NodeSortFacts& facts) {
    const auto key = reinterpret_cast<uintptr_t>(node);
    if (key == 0) {
        return;
    }
    // At most four fifths full: a lookup, which mostly finds its node, probes two or three
    // slots, and a large folder's table takes few more slots than it has rows.
    if (5 * (used + 1) > 4 * slots.size()) {
        Grow(std::max(kSmallest, 2 * slots.size()));
    }
    Slot& slot = slots[SlotOf(key)];
    used += slot.nodeAndFlags == 0 ? 1 : 0;
    slot = {key | (facts.valid ? kValid : 0) | (facts.queryHit ? kQueryHit : 0) |
                (facts.keyKnown ? kKeyKnown : 0),
            facts.displayKey};
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
        if (slot.nodeAndFlags != 0) {
            Slot& into = slots[SlotOf(NodeOf(slot.nodeAndFlags))];
            into = slot;
            ++used;
        }
    }
}
