// Where the loops' events go: mouse events to the window under the mouse (or the window that
// took the button down), keys to the focus of the user focus window, commands to the user
// focus, everything else to the application. Windows that the modal state or a sheet shuts
// out get a beep instead.

#include "basalt/toolbox/events/ApplicationTarget.h"
#include "basalt/toolbox/events/EventLoop.h"
#include "basalt/toolbox/windows/WindowList.h"

namespace basalt::toolbox {
namespace {

std::weak_ptr<Window> gMouseDownWindow;
uint32_t gModifiers = 0;

void NoteModifiers(EventRef event) {
    uint32_t modifiers = 0;
    if (GetParam(event, kEventParamKeyModifiers, typeUInt32, &modifiers))
        gModifiers = modifiers;
}

Window* MouseWindow(EventRef event) {
    WindowRef ref = nullptr;
    if (GetParam(event, kEventParamWindowRef, typeWindowRef, &ref) && windows::IsValid(ref))
        return Window::From(ref);
    if (event->kind == kEventMouseUp || event->kind == kEventMouseDragged)
        if (auto down = gMouseDownWindow.lock(); down != nullptr && !down->disposed)
            return down.get();
    BGPoint global{};
    if (!GetParam(event, kEventParamMouseLocation, typeBTPoint, &global))
        return nullptr;
    return windows::AtPoint({int16_t(global.y), int16_t(global.x)});
}

StatusCode RouteMouse(EventRef event) {
    Window* window = MouseWindow(event);
    if (window == nullptr)
        return SendEventToEventTarget(event, GetApplicationEventTarget());
    auto keep = window->Shared();
    if (event->kind == kEventMouseDown) {
        if (!windows::AcceptsInput(window)) {
            CurrentBackend().Beep();
            return noErr;
        }
        gMouseDownWindow = keep;
        if (!window->IsActive())
            windows::BringToFront(window);
    }
    return SendEventToEventTarget(event, window->Target());
}

EventTargetRef FocusTarget() {
    Window* window = windows::UserFocus();
    if (window == nullptr)
        return GetApplicationEventTarget();
    View* focus = window->Focus();
    return focus != nullptr ? focus->Target() : window->Target();
}

} // namespace

uint32_t CurrentModifiers() {
    return gModifiers;
}

StatusCode RouteDispatchedEvent(EventHandlerCallRef, EventRef event) {
    if (event->eventClass == kEventClassMouse || event->eventClass == kEventClassKeyboard)
        NoteModifiers(event);
    switch (event->eventClass) {
    case kEventClassMouse:
        return RouteMouse(event);
    case kEventClassKeyboard:
    case kEventClassTextInput:
    case kEventClassCommand:
        return SendEventToEventTarget(event, FocusTarget());
    case kEventClassWindow:
        if (WindowRef window = nullptr;
            GetParam(event, kEventParamDirectObject, typeWindowRef, &window) &&
            windows::IsValid(window))
            return SendEventToEventTarget(event, Window::From(window)->Target());
        return SendEventToEventTarget(event, GetApplicationEventTarget());
    default:
        if (EventTargetRef target = nullptr;
            GetParam(event, kEventParamPostTarget, typeEventTargetRef, &target) &&
            IsLiveTarget(target))
            return SendEventToEventTarget(event, target);
        return SendEventToEventTarget(event, GetApplicationEventTarget());
    }
}

void FlushWindowsBeforeWaiting() {
    for (const auto& window : std::vector(windows::All()))
        window->Flush();
}

} // namespace basalt::toolbox
