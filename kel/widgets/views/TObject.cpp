#include "kel/widgets/views/TObject.h"

#include <iterator>

namespace {

TObject* InstanceOf(const TBasaltEvent& event) {
    TObject* instance = nullptr;
    event.GetParameter(kEventParamObject, typeVoidPtr, sizeof instance, &instance);
    return instance;
}

StatusCode Construct(TBasaltEvent& event, TObject::ConstructProc construct) {
    ControlRef object = nullptr;
    if (StatusCode status =
            event.GetParameter(kEventParamObject, typeObjectRef, sizeof object, &object))
        return status;
    TObject* instance = nullptr;
    StatusCode status = construct(object, &instance);
    if (status == noErr)
        event.SetParameter(kEventParamObject, typeVoidPtr, sizeof instance, &instance);
    return status;
}

} // namespace

StatusCode TObject::RegisterSubclass(BCStringRef classId, BCStringRef baseClassId,
                                     ConstructProc construct) {
    static const EventTypeSpec kObjectEvents[] = {{kEventClassObject, kEventObjectConstruct},
                                                  {kEventClassObject, kEventObjectInitialize},
                                                  {kEventClassObject, kEventObjectDestruct}};
    return BTObjectRegisterSubclass(classId, baseClassId, 0, ObjectEventHandler,
                                    std::size(kObjectEvents), kObjectEvents,
                                    reinterpret_cast<void*>(construct), nullptr);
}

EventRef TObject::CreateInitializationEvent() {
    EventRef event = nullptr;
    if (CreateEvent(nullptr, kEventClassObject, kEventObjectInitialize, GetCurrentEventTime(), 0,
                    &event) != noErr)
        return nullptr;
    return event;
}

StatusCode TObject::ObjectEventHandler(EventHandlerCallRef call, EventRef ref, void* data) {
    TBasaltEvent event(ref);
    if (event.Class() != kEventClassObject)
        return eventNotHandledErr;
    switch (event.Kind()) {
    case kEventObjectConstruct:
        return Construct(event, reinterpret_cast<ConstructProc>(data));
    case kEventObjectInitialize: {
        StatusCode status = CallNextEventHandler(call, ref);
        TObject* instance = InstanceOf(event);
        if (status == noErr && instance != nullptr)
            status = instance->Initialize(event);
        return status;
    }
    case kEventObjectDestruct:
        delete InstanceOf(event);
        return noErr;
    default:
        return eventNotHandledErr;
    }
}
