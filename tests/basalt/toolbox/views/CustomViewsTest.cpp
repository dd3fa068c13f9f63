// A view class of a client's own, registered by id: all it learns arrives as events.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <gtest/gtest.h>
#include <string>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

struct Instance {
    std::string log;
};

std::string* gDestroyed;

// The instance that the later object events carry, null if they carry none.
Instance* InstanceOf(EventRef event) {
    Instance* instance = nullptr;
    GetEventParameter(event, kEventParamObject, typeVoidPtr, nullptr, sizeof instance, nullptr,
                      &instance);
    return instance;
}

StatusCode ClassHandler(EventHandlerCallRef call, EventRef event, void*) {
    if (GetEventClass(event) == kEventClassObject) {
        switch (GetEventKind(event)) {
        case kEventObjectConstruct: {
            auto* instance = new Instance;
            SetEventParameter(event, kEventParamObject, typeVoidPtr, sizeof instance, &instance);
            return noErr;
        }
        case kEventObjectInitialize:
            if (Instance* instance = InstanceOf(event))
                instance->log += "initialised";
            return CallNextEventHandler(call, event);
        case kEventObjectDestruct:
            if (Instance* instance = InstanceOf(event))
                *gDestroyed += "destroyed " + instance->log;
            delete InstanceOf(event);
            return noErr;
        }
    }
    return eventNotHandledErr;
}

StatusCode ViewHandler(EventHandlerCallRef, EventRef event, void* data) {
    auto* log = static_cast<std::string*>(data);
    *log += std::to_string(GetEventKind(event)) + " ";
    return GetEventKind(event) == kEventControlDraw ? noErr : eventNotHandledErr;
}

} // namespace

TEST(CustomViews, ObjectsAreMadeDrawnClickedAndDestroyedThroughEvents) {
    std::string destroyed;
    gDestroyed = &destroyed;
    StringHolder classID(MakeBCString(u"com.example.Swatch"));
    StringHolder base(MakeBCString(u"" kBTViewClassID));
    const EventTypeSpec objectEvents[] = {{kEventClassObject, kEventObjectConstruct},
                                          {kEventClassObject, kEventObjectInitialize},
                                          {kEventClassObject, kEventObjectDestruct}};
    ASSERT_EQ(BTObjectRegisterSubclass(classID.get(), base.get(), 0, ClassHandler, 3, objectEvents,
                                       nullptr, nullptr),
              noErr);
    EXPECT_EQ(BTObjectRegisterSubclass(classID.get(), base.get(), 0, ClassHandler, 3, objectEvents,
                                       nullptr, nullptr),
              eventHandlerAlreadyInstalledErr);

    BTObjectRef object = nullptr;
    ASSERT_EQ(BTObjectCreate(classID.get(), nullptr, &object), noErr);
    auto* instance = static_cast<Instance*>(BTObjectDynamicCast(object, classID.get()));
    ASSERT_NE(instance, nullptr);
    StringHolder other(MakeBCString(u"com.example.Other"));
    EXPECT_EQ(BTObjectDynamicCast(object, other.get()), nullptr);

    auto view = reinterpret_cast<ControlRef>(object);
    std::string events;
    const EventTypeSpec viewEvents[] = {{kEventClassControl, kEventControlDraw},
                                        {kEventClassControl, kEventControlHit},
                                        {kEventClassControl, kEventControlValueFieldChanged}};
    InstallEventHandler(GetControlEventTarget(view), ViewHandler, 3, viewEvents, &events, nullptr);

    Rect bounds = {100, 100, 200, 300};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ControlRef root = nullptr;
    GetRootControl(window, &root);
    BTViewAddSubview(root, view);
    BGRect frame = BGRectMake(10, 10, 50, 30);
    BTViewSetFrame(view, &frame);
    ShowWindow(window);
    HeadlessDriver::RunUntilIdle();
    BTViewSetValue(view, 1);
    HeadlessDriver::Click(view);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(events, "4 151 1 4 ");

    DisposeControl(view);
    EXPECT_EQ(destroyed, "destroyed initialised");
    DisposeWindow(window);
}

TEST(CustomViews, UnknownClassesAreRefused) {
    StringHolder classID(MakeBCString(u"com.example.Missing"));
    BTObjectRef object = nullptr;
    EXPECT_EQ(BTObjectCreate(classID.get(), nullptr, &object), eventClassInvalidErr);
    EXPECT_EQ(object, nullptr);
}

TEST(CustomViews, AViewThatAnswersTheFocusEventTakesTheFocus) {
    Rect bounds = {100, 100, 200, 300};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ShowWindow(window);
    Rect paneBounds = {10, 10, 40, 100};
    ControlRef plain = nullptr, focusable = nullptr;
    BTCreateControl(window, &paneBounds, kControlKindUserPane, nullptr, &plain);
    BTCreateControl(window, &paneBounds, kControlKindUserPane, nullptr, &focusable);
    const EventTypeSpec focus = {kEventClassControl, kEventControlSetFocusPart};
    InstallEventHandler(
        GetControlEventTarget(focusable),
        [](EventHandlerCallRef, EventRef, void*) -> StatusCode { return noErr; }, 1, &focus,
        nullptr, nullptr);
    EXPECT_EQ(SetKeyboardFocus(window, plain, kControlEditTextPart), errControlHiddenOrDisabled);
    EXPECT_EQ(SetKeyboardFocus(window, focusable, kControlEditTextPart), noErr);
    ControlRef current = nullptr;
    GetKeyboardFocus(window, &current);
    EXPECT_EQ(current, focusable);
    DisposeWindow(window);
}
