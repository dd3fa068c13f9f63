#include "kel/browser/NodeValidityMemo.h"

#include <algorithm>

namespace {

constexpr size_t kSmallest = 64;
constexpr uintptr_t kValidBit = 1;

} // namespace

// Node addresses share their low bits; a multiplicative hash spreads them over the table.
size_t NodeValidityMemo::Home(uintptr_t key) const {
    return size_t((key * 0x9E3779B97F4A7C15ull) >> 7) & (slots.size() - 1);
}

// The slot that holds key, or the empty one where it would go.
size_t NodeValidityMemo::SlotOf(uintptr_t key) const {
    size_t at = Home(key);
    while (slots[at] != 0 && (slots[at] & ~kValidBit) != key) {
        at = (at + 1) & (slots.size() - 1);
    }
    return at;
}

std::optional<bool> NodeValidityMemo::Find(const OpaqueNodeRef* node) const {
    const auto key = reinterpret_cast<uintptr_t>(node);
    if (slots.empty() || key == 0) {
        return std::nullopt;
    }
    const uintptr_t slot = slots[SlotOf(key)];
    if (slot == 0) {
        return std::nullopt;
    }
    return (slot & kValidBit) != 0;
}

void NodeValidityMemo::Set(const OpaqueNodeRef* node, bool valid) {
    const auto key = reinterpret_cast<uintptr_t>(node);
    if (key == 0) {
        return;
    }
    // At most half full, so a probe ends soon at an empty slot.
    if (2 * (used + 1) > slots.size()) {
        Grow(std::max(kSmallest, 2 * slots.size()));
    }
    const size_t at = SlotOf(key);
    used += slots[at] == 0 ? 1 : 0;
    slots[at] = key | (valid ? kValidBit : 0);
}

void NodeValidityMemo::clear() {
    slots.clear();
    slots.shrink_to_fit();
    used = 0;
}

void NodeValidityMemo::Grow(size_t capacity) {
    std::vector<uintptr_t> old = std::move(slots);
    slots.assign(capacity, 0);
    used = 0;
    for (const uintptr_t slot : old) {
        if (slot != 0) {
            Set(reinterpret_cast<const OpaqueNodeRef*>(slot & ~kValidBit), (slot & kValidBit) != 0);
        }
    }
}
