#include "kel/foundation/TMutableStringRef.h"

TMutableStringRef::TMutableStringRef(BCMutableStringRef string, bool retain)
    : TStringRef(string, retain) {}

TMutableStringRef& TMutableStringRef::operator=(const TMutableStringRef& other) {
    Set(other.ref);
    return *this;
}

TMutableStringRef::operator RetainedMutableRef<BCOpaqueString>() const {
    return RetainedMutableRef<BCOpaqueString>(AsBCMutableStringRef());
}

void TMutableStringRef::Append(const TStringRef& appended) {
    if (IsNil() || appended.IsNil()) {
        return;
    }
    BCStringAppend(AsBCMutableStringRef(), appended.AsBCStringRef());
}

void TMutableStringRef::Delete(TRange range) {
    if (IsNil() || !Contains(range)) {
        return;
    }
    BCStringDelete(AsBCMutableStringRef(), range);
}

void TMutableStringRef::Replace(TRange range, const TStringRef& replacement) {
    if (IsNil() || replacement.IsNil() || !Contains(range)) {
        return;
    }
    BCStringReplace(AsBCMutableStringRef(), range, replacement.AsBCStringRef());
}

bool TMutableStringRef::ReplaceParam(int32_t index, const TStringRef& value) {
    if (IsNil()) {
        return false;
    }
    TStringRef mark = CreateWithFormat("^%ld", static_cast<long>(index));
    if (!value.IsNil()) {
        TRange found = Find(mark, 0);
        if (!found.IsFound()) {
            return false;
        }
        Replace(found, value);
        return true;
    }
    TRange found = Find(CreateWithFormat("^%ld ", static_cast<long>(index)), 0);
    if (!found.IsFound()) {
        found = Find(mark, 0);
    }
    if (!found.IsFound()) {
        return false;
    }
    Delete(found);
    return true;
}
