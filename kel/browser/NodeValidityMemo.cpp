#include "kel/browser/NodeValidityMemo.h"

#include <algorithm>

namespace {

constexpr size_t kSmallest = 64;

} // namespace

// Node addresses share their low bits; a multiplicative hash spreads them over the table.
size_t NodeValidityMemo::Home(uintptr_t key) const {
    return size_t((key * 0x9E3779B97F4A7C15ull) >> 7) & (slots.size() - 1);
}

std::optional<bool> NodeValidityMemo::Find(const OpaqueNodeRef* node) const {
    const auto key = reinterpret_cast<uintptr_t>(node);
    if (slots.empty() || key == 0) {
        return std::nullopt;
    }
    for (size_t at = Home(key);; at = (at + 1) & (slots.size() - 1)) {
        if (slots[at].key == key) {
            return slots[at].valid;
        }
        if (slots[at].key == 0) {
            return std::nullopt;
        }
    }
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
    size_t at = Home(key);
    while (slots[at].key != 0 && slots[at].key != key) {
        at = (at + 1) & (slots.size() - 1);
    }
    used += slots[at].key == 0 ? 1 : 0;
    slots[at] = {key, valid};
}

void NodeValidityMemo::clear() {
    slots.clear();
    slots.shrink_to_fit();
    used = 0;
}

void NodeValidityMemo::Grow(size_t capacity) {
    std::vector<Slot> old = std::move(slots);
    slots.assign(capacity, Slot{});
    used = 0;
    for (const Slot& slot : old) {
        if (slot.key != 0) {
            Set(reinterpret_cast<const OpaqueNodeRef*>(slot.key), slot.valid);
        }
    }
}
