#pragma once

// The instance behind a toolbox object of one of the library's registered view classes. The
// toolbox makes and ends such objects through "btob" events; TObject's class handler turns them
// into the construct function, Initialize and the destructor. The instance lives inside the
// toolbox object and does not count it.

#include "kel/widgets/views/TBasaltEvent.h"

class TObject {
public:
    using ConstructProc = StatusCode (*)(ControlRef object, TObject** out);

    explicit TObject(ControlRef object) : object(object) {}
    TObject(const TObject&) = delete;
    TObject& operator=(const TObject&) = delete;
    virtual ~TObject() = default;

    virtual StatusCode Initialize(TBasaltEvent&) { return noErr; }

    ControlRef GetObjectRef() const { return object; }

    static StatusCode RegisterSubclass(BCStringRef classId, BCStringRef baseClassId,
                                       ConstructProc construct);
    // The construct function of a class whose instances are T.
    template <class T>
    static StatusCode ConstructAs(ControlRef object, TObject** out) {
        *out = new T(object);
        return noErr;
    }
    // A "btob" 2 event stamped now, for BTObjectCreate to pass on; null if none can be had.
    static EventRef CreateInitializationEvent();

private:
    static StatusCode ObjectEventHandler(EventHandlerCallRef call, EventRef event, void* data);

    ControlRef object;
};
