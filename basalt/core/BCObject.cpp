#include "basalt/core/BCObject.h"

#include "basalt/core/BCString.h"

#include <cstdio>

namespace basalt {

void BCObject::Retain() const {
    if (!immortal_)
        count_.fetch_add(1, std::memory_order_relaxed);
}

void BCObject::Release() const {
    if (immortal_)
        return;
    if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete this;
}

BCIndex BCObject::RetainCount() const {
    return immortal_ ? BCIndex(0x7FFFFFFF) : count_.load(std::memory_order_relaxed);
}

std::string BCObject::Describe() const {
    char text[64];
    std::snprintf(text, sizeof text, "<object %p type %lu>", static_cast<const void*>(this),
                  static_cast<unsigned long>(type_));
    return text;
}

} // namespace basalt

using basalt::BCObject;

extern "C" {

BCTypeRef BCRetain(BCTypeRef object) {
    if (object != nullptr)
        static_cast<const BCObject*>(object)->Retain();
    return object;
}

void BCRelease(BCTypeRef object) {
    if (object != nullptr)
        static_cast<const BCObject*>(object)->Release();
}

BCIndex BCGetRetainCount(BCTypeRef object) {
    return object != nullptr ? static_cast<const BCObject*>(object)->RetainCount() : 0;
}

BCTypeID BCGetTypeID(BCTypeRef object) {
    return object != nullptr ? static_cast<BCTypeID>(static_cast<const BCObject*>(object)->Type())
                             : 0;
}

Boolean BCEqual(BCTypeRef a, BCTypeRef b) {
    if (a == b)
        return true;
    if (a == nullptr || b == nullptr)
        return false;
    auto* left = static_cast<const BCObject*>(a);
    auto* right = static_cast<const BCObject*>(b);
    return left->Type() == right->Type() && left->Equals(*right);
}

BCHashCode BCHash(BCTypeRef object) {
    return object != nullptr ? static_cast<const BCObject*>(object)->Hash() : 0;
}

BCStringRef BCCopyDescription(BCTypeRef object) {
    if (object == nullptr)
        return nullptr;
    if (basalt::As<basalt::String>(object) != nullptr)
        return BCStringCreateCopy(kBCAllocatorDefault, static_cast<BCStringRef>(object));
    return basalt::MakeString(basalt::FromUTF8(static_cast<const BCObject*>(object)->Describe()));
}

} // extern "C"
