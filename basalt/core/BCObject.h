#pragma once

// The base of every core object. A core reference (BCTypeRef) points at a BCObject; the count is
// atomic because node events and preview loads touch objects from other threads. Objects made
// as process-wide constants are immortal: retain and release leave them alone.

#include "basalt/BasaltCore.h"

#include <atomic>
#include <string>

namespace basalt {

// Type ids, fixed so that they read the same in every process.
enum class TypeID : BCTypeID {
    String = 7,
    Array = 19,
    Dictionary = 18,
    Data = 20,
    Number = 22,
    Boolean = 21,
    Date = 42,
    URL = 29,
    Bundle = 31,
    RunLoop = 43,
};

class BCObject {
public:
    explicit BCObject(TypeID type) : type_(type) {}
    BCObject(const BCObject&) = delete;
    BCObject& operator=(const BCObject&) = delete;
    virtual ~BCObject() = default;

    TypeID Type() const { return type_; }
    void Retain() const;
    // Deletes the object when the last reference goes.
    void Release() const;
    BCIndex RetainCount() const;
    void MakeImmortal() { immortal_ = true; }

    virtual bool Equals(const BCObject& other) const { return this == &other; }
    virtual BCHashCode Hash() const { return reinterpret_cast<BCHashCode>(this); }
    virtual std::string Describe() const;

private:
    const TypeID type_;
    mutable std::atomic<BCIndex> count_{1};
    bool immortal_ = false;
};

// Casts a core reference to its object when it has the expected type, else null.
template <class T>
const T* As(BCTypeRef ref) {
    auto* object = static_cast<const BCObject*>(ref);
    return object != nullptr && object->Type() == T::kType ? static_cast<const T*>(object)
                                                           : nullptr;
}

template <class T>
T* AsMutable(BCTypeRef ref) {
    return const_cast<T*>(As<T>(ref));
}

} // namespace basalt
