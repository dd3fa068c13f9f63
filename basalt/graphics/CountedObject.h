#pragma once

// The reference count shared by the graphics objects (contexts, images, providers, icons).
// Counts are atomic: images and icons are made on preview and node threads too.

#include <atomic>

namespace basalt::graphics {

struct CountedObject {
    std::atomic<int> count{1};
};

template <class T>
T* RetainObject(T* object) {
    if (object != nullptr)
        object->count.fetch_add(1, std::memory_order_relaxed);
    return object;
}

// Deletes the object with its last reference.
template <class T>
void ReleaseObject(T* object) {
    if (object != nullptr && object->count.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete object;
}

} // namespace basalt::graphics
