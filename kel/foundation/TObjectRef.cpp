#include "kel/foundation/TObjectRef.h"

TObjectRef::TObjectRef(const void* object, bool retain) : ref(object) {
    if (retain && ref != nullptr) {
        BCRetain(ref);
    }
}

TObjectRef::TObjectRef(const TObjectRef& other) : TObjectRef(other.ref, true) {}

TObjectRef& TObjectRef::operator=(const TObjectRef& other) {
    Set(other.ref);
    return *this;
}

TObjectRef::~TObjectRef() {
    if (ref != nullptr) {
        BCRelease(ref);
    }
}

void TObjectRef::Set(const void* object) {
    if (object == ref) {
        return;
    }
    if (ref != nullptr) {
        BCRelease(ref);
    }
    ref = object;
    if (ref != nullptr) {
        BCRetain(ref);
    }
}
