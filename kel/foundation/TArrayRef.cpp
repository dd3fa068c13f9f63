#include "kel/foundation/TArrayRef.h"

TArrayRef::TArrayRef(BCArrayRef array) : TObjectRef(array, true) {}

TArrayRef::TArrayRef(BCArrayRef array, bool retain) : TObjectRef(array, retain) {}

TArrayRef& TArrayRef::operator=(const TArrayRef& other) {
    Set(other.ref);
    return *this;
}

int32_t TArrayRef::Count() const {
    return IsNil() ? 0 : static_cast<int32_t>(BCArrayGetCount(AsBCArrayRef()));
}

TStringRef TArrayRef::IndexAsSafeString(int32_t index) const {
    if (index < 0 || index >= Count()) {
        return {};
    }
    BCTypeRef element = BCArrayGetValueAtIndex(AsBCArrayRef(), index);
    if (element == nullptr || BCGetTypeID(element) != BCStringGetTypeID()) {
        return {};
    }
    return TStringRef(static_cast<BCStringRef>(element));
}
