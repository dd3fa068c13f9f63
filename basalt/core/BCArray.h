#pragma once

// An array of values kept with the callbacks it was made with: core objects are retained with
// kBCTypeArrayCallBacks, raw pointers are kept as they are with null callbacks.

#include "basalt/core/BCObject.h"

#include <vector>

namespace basalt {

class Array final : public BCObject {
public:
    static constexpr TypeID kType = TypeID::Array;

    Array(const BCArrayCallBacks* callBacks, bool isMutable);
    ~Array() override;

    const std::vector<const void*>& Values() const { return values_; }
    const BCArrayCallBacks& CallBacks() const { return callBacks_; }
    bool IsMutable() const { return mutable_; }

    void Insert(size_t index, const void* value);
    void Set(size_t index, const void* value);
    void Remove(size_t index);
    void Clear();
    std::vector<const void*>& Storage() { return values_; }
    bool SameValue(const void* a, const void* b) const;

    bool Equals(const BCObject& other) const override;
    // Cheap and consistent with Equals: equal collections have equal counts.
    BCHashCode Hash() const override { return values_.size(); }
    std::string Describe() const override;

private:
    const void* Retained(const void* value) const;
    void Released(const void* value) const;

    std::vector<const void*> values_;
    BCArrayCallBacks callBacks_{};
    const bool mutable_;
};

} // namespace basalt
