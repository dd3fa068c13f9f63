#pragma once

// A dictionary of core objects that keeps insertion order; keys are found by hash and BCEqual.
// Mutable string keys are copied so that later edits cannot move them in the table.

#include "basalt/core/BCObject.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace basalt {

class Dictionary final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::Dictionary;

    explicit Dictionary(bool isMutable) : BCObject(kType), mutable_(isMutable) {}
    ~Dictionary() override;

    bool IsMutable() const { return mutable_; }
    const std::vector<std::pair<const void*, const void*>>& Entries() const { return entries_; }
    const void* Find(const void* key) const;
    void Set(const void* key, const void* value);
    void Remove(const void* key);
    void Clear();

    bool Equals(const BCObject& other) const override;
    // Cheap and consistent with Equals: equal collections have equal counts.
    BCHashCode Hash() const override { return entries_.size(); }
    std::string Describe() const override;

private:
    struct KeyHash {
        size_t operator()(const void* key) const { return BCHash(key); }
    };
    struct KeyEqual {
        bool operator()(const void* a, const void* b) const { return BCEqual(a, b); }
    };

    std::vector<std::pair<const void*, const void*>> entries_;
    std::unordered_map<const void*, size_t, KeyHash, KeyEqual> index_;
    const bool mutable_;
};

} // namespace basalt
