#pragma once

// Fields of the boundary's records may sit at unaligned offsets, and the test macros bind their
// arguments to references; a field is read by value first.

namespace keltest {

template <class T>
T ValueOf(T value) {
    return value;
}

} // namespace keltest
