#pragma once

// Copying fixed-size values in and out of the untyped buffers of control data by tag.

#include <basalt/BasaltCore.h>
#include <cstddef>
#include <cstring>

namespace basalt::toolbox {

// Writes value when the buffer can hold it, and always reports the size it needs.
template <class T>
StatusCode PutControlValue(const T& value, size_t size, void* data, size_t* actual) {
    if (data != nullptr && size >= sizeof(T))
        std::memcpy(data, &value, sizeof(T));
    if (actual != nullptr)
        *actual = sizeof(T);
    return noErr;
}

// Reads a value only from a buffer of exactly its size.
template <class T>
StatusCode TakeControlValue(T* value, size_t size, const void* data) {
    if (data == nullptr || size != sizeof(T))
        return paramErr;
    std::memcpy(value, data, sizeof(T));
    return noErr;
}

} // namespace basalt::toolbox
