#pragma once

// Single-pointer holders of counted platform objects. RetainedRef holds a read-only reference,
// RetainedMutableRef a writable one. How a kind of object is counted comes from RetainTraits:
// core objects use BCRetain/BCRelease; another kind of counted object (a file-system node, say)
// specialises RetainTraits for its type.
//
// Assignment releases the old value before it retains the new one and does not compare them, so
// assigning a holder's own sole reference to it frees the object. Callers never assign a value to
// itself; the order is kept because callers rely on the release happening first.

#include <basalt/BasaltCore.h>
#include <utility>

template <class T>
struct RetainTraits {
    static void Retain(const T* object) { BCRetain(object); }
    static void Release(const T* object) { BCRelease(object); }
};

namespace kel_detail {

// The shared body of both holders; Pointer is const T* or T*.
template <class T, class Pointer>
class RetainedHolder {
public:
    RetainedHolder() = default;
    RetainedHolder(Pointer value) : value_(value) { RetainIfSet(); } // NOLINT: holders convert
    RetainedHolder(const RetainedHolder& other) : value_(other.value_) { RetainIfSet(); }
    RetainedHolder(RetainedHolder&& other) noexcept
        : value_(std::exchange(other.value_, nullptr)) {}
    ~RetainedHolder() { ReleaseIfSet(); }

    RetainedHolder& operator=(const RetainedHolder& other) { return operator=(other.value_); }
    RetainedHolder& operator=(RetainedHolder&& other) noexcept {
        ReleaseIfSet();
        value_ = std::exchange(other.value_, nullptr);
        return *this;
    }
    RetainedHolder& operator=(Pointer value) {
        ReleaseIfSet();
        value_ = value;
        RetainIfSet();
        return *this;
    }

    // Takes over a reference the caller owns, without counting it up.
    static RetainedHolder Adopt(Pointer value) {
        RetainedHolder holder;
        holder.value_ = value;
        return holder;
    }
    // Gives up the reference to the caller, who must release it.
    Pointer Detach() { return std::exchange(value_, nullptr); }

    Pointer Get() const { return value_; }
    operator Pointer() const { return value_; } // NOLINT: used where the raw reference is taken
    explicit operator bool() const { return value_ != nullptr; }

private:
    void RetainIfSet() {
        if (value_ != nullptr) {
            RetainTraits<T>::Retain(value_);
        }
    }
    void ReleaseIfSet() {
        if (value_ != nullptr) {
            RetainTraits<T>::Release(value_);
        }
    }

    Pointer value_ = nullptr;
};

} // namespace kel_detail

template <class T>
using RetainedRef = kel_detail::RetainedHolder<T, const T*>;

template <class T>
using RetainedMutableRef = kel_detail::RetainedHolder<T, T*>;
