// Custom view classes. A registered class is a handler (with its data) for the events the
// class answers; an object of the class is a view whose target carries that handler below any
// installed later. Making one sends "btob" 1 (construct: the handler stores its instance in
// "btoi") and "btob" 2 (initialise); disposing of it sends "btob" 3. The later events carry the
// instance in "btoi" (type "void"), since a class handler's data is the class's, not the
// object's.

#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/views/View.h"

#include <algorithm>
#include <map>

namespace basalt::toolbox {

namespace {

struct ViewClass {
    std::u16string base;
    EventHandlerUPP proc;
    std::vector<EventTypeSpec> events;
    void* data;
};

std::map<std::u16string, ViewClass>& Classes() {
    static auto* classes = new std::map<std::u16string, ViewClass>;
    return *classes;
}

// Views of custom classes take clicks everywhere in their bounds unless their class says
// otherwise through "cntl" 3.
class CustomView final : public View {
public:
    CustomView() : View(kControlKindUserPane) {}
    bool AcceptsFocus() const override { return acceptsFocus; }
    bool acceptsFocus = false;
};

std::vector<std::u16string> ChainOf(const std::u16string& id) {
    std::vector<std::u16string> chain;
    for (std::u16string at = id; Classes().count(at) != 0 && chain.size() < 32;
         at = Classes()[at].base)
        chain.push_back(at);
    return chain;
}

} // namespace

void SendDestruct(View& view) {
    if (view.classChain.empty())
        return;
    view.classChain.clear();
    EventHolder destruct(kEventClassObject, kEventObjectDestruct);
    SetParam(destruct.get(), kEventParamObject, typeVoidPtr, view.objectInstance);
    SendEventToEventTargetWithOptions(destruct.get(), view.Target(), kEventTargetDontPropagate);
    view.objectInstance = nullptr;
}

} // namespace basalt::toolbox

using namespace basalt::toolbox;

extern "C" {

StatusCode BTObjectRegisterSubclass(BCStringRef inClassID, BCStringRef inBaseClassID, OptionBits,
                                    EventHandlerUPP inConstructProc, unsigned long inNumEvents,
                                    const EventTypeSpec* inEventList, void* inConstructData,
                                    BTObjectClassRef* outClassRef) {
    if (inClassID == nullptr || inConstructProc == nullptr ||
        (inNumEvents != 0 && inEventList == nullptr))
        return paramErr;
    std::u16string id = FromBCString(inClassID);
    if (Classes().count(id) != 0)
        return eventHandlerAlreadyInstalledErr;
    ViewClass& entry = Classes()[id];
    entry = {FromBCString(inBaseClassID), inConstructProc,
             std::vector<EventTypeSpec>(inEventList, inEventList + inNumEvents), inConstructData};
    if (outClassRef != nullptr)
        *outClassRef = reinterpret_cast<BTObjectClassRef>(&entry);
    return noErr;
}

StatusCode BTObjectCreate(BCStringRef inClassID, EventRef inConstructData, BTObjectRef* outObject) {
    if (inClassID == nullptr || outObject == nullptr)
        return paramErr;
    std::vector<std::u16string> chain = ChainOf(FromBCString(inClassID));
    if (chain.empty())
        return eventClassInvalidErr;
    auto view = std::make_shared<CustomView>();
    view->classChain.assign(chain.begin(), chain.end());
    // Base classes first, so that a subclass's handler runs before its base's.
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        const ViewClass& entry = Classes()[*it];
        InstallEventHandler(view->Target(), entry.proc, entry.events.size(), entry.events.data(),
                            entry.data, nullptr);
    }
    ControlRef ref = view->Ref();
    EventHolder construct(kEventClassObject, kEventObjectConstruct);
    SetParam(construct.get(), kEventParamObject, typeObjectRef, ref);
    StatusCode status = SendEventToEventTargetWithOptions(construct.get(), view->Target(),
                                                          kEventTargetDontPropagate);
    if (status != noErr) {
        view->classChain.clear();
        return status;
    }
    GetParam(construct.get(), kEventParamObject, typeVoidPtr, &view->objectInstance);
    EventRef initializeEvent = nullptr;
    if (inConstructData != nullptr)
        initializeEvent = CopyEvent(inConstructData);
    else
        CreateEvent(nullptr, kEventClassObject, kEventObjectInitialize, 0, 0, &initializeEvent);
    EventHolder initialize(initializeEvent);
    initialize.get()->eventClass = kEventClassObject;
    initialize.get()->kind = kEventObjectInitialize;
    SetParam(initialize.get(), kEventParamObject, typeVoidPtr, view->objectInstance);
    status = SendEventToEventTargetWithOptions(initialize.get(), view->Target(),
                                               kEventTargetDontPropagate);
    if (status != noErr && status != eventNotHandledErr) {
        SendDestruct(*view);
        return status;
    }
    HoldLoose(view);
    *outObject = reinterpret_cast<BTObjectRef>(ref);
    return noErr;
}

void* BTObjectDynamicCast(BTObjectRef inObject, BCStringRef inClassID) {
    if (inObject == nullptr || inClassID == nullptr)
        return nullptr;
    View* view = View::From(reinterpret_cast<ControlRef>(inObject));
    std::u16string id = FromBCString(inClassID);
    const auto& chain = view->classChain;
    return std::find(chain.begin(), chain.end(), id) != chain.end() ? view->objectInstance
                                                                    : nullptr;
}

Boolean BTObjectIsOfClass(BTObjectRef inObject, BCStringRef inClassID) {
    if (inObject == nullptr || inClassID == nullptr)
        return false;
    View* view = View::From(reinterpret_cast<ControlRef>(inObject));
    std::u16string id = FromBCString(inClassID);
    if (id == u"" kBTViewClassID)
        return true;
    return std::find(view->classChain.begin(), view->classChain.end(), id) !=
           view->classChain.end();
}

} // extern "C"
