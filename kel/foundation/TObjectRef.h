#pragma once

// The root of the holders of core objects. A holder keeps one counted reference, or none: a nil
// holder, which most operations accept and treat as empty.

#include <basalt/BasaltCore.h>

class TObjectRef {
public:
    TObjectRef() = default;
    // Keeps the reference; counts it up when retain is set, else takes over the caller's count.
    TObjectRef(const void* object, bool retain);
    TObjectRef(const TObjectRef& other);
    TObjectRef& operator=(const TObjectRef& other);
    virtual ~TObjectRef();

    bool IsNil() const { return ref == nullptr; }
    // Holds object in place of the current one; nothing happens if it is the one held.
    void Set(const void* object);
    BCTypeRef Get() const { return ref; }

protected:
    const void* ref = nullptr;
};
