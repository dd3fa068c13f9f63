// The standard window handler: the bottom of every window's chain. It turns clicks into
// tracking and "cntl" hits, routes keys (menu keys, tab, the default and cancel buttons, text
// for the focus), and closes the window on "wind" 72.

#include "basalt/toolbox/controls/ScrollView.h"
#include "basalt/toolbox/dialogs/Dialog.h"
#include "basalt/toolbox/menus/MenuBar.h"
#include "basalt/toolbox/windows/PointerCursor.h"
#include "basalt/toolbox/windows/TrackingAreas.h"
#include "basalt/toolbox/windows/Window.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>

namespace basalt::toolbox {
namespace {

constexpr BGRect kCloseBox = {{8, -17}, {12, 12}};

ControlPartCode AskHitTest(View& view, BGPoint local) {
    EventHolder event(kEventClassControl, kEventControlHitTest);
    SetParam(event.get(), kEventParamMouseLocation, typeBTPoint, local);
    ControlPartCode part = kControlNoPart;
    if (SendEventToEventTargetWithOptions(event.get(), view.Target(), kEventTargetDontPropagate) ==
        noErr)
        GetParam(event.get(), kEventParamControlPart, typeControlPartCode, &part);
    return part;
}

// A custom view may track the mouse itself ("cntl" 51); true when it did.
bool CustomTrack(View& view, EventRef mouse, BGPoint local, uint32_t modifiers) {
    EventHolder event(CopyEvent(mouse));
    event.get()->eventClass = kEventClassControl;
    event.get()->kind = kEventControlTrack;
    SetParam(event.get(), kEventParamMouseLocation, typeBTPoint, local);
    if (SendEventToEventTargetWithOptions(event.get(), view.Target(), kEventTargetDontPropagate) !=
        noErr)
        return false;
    ControlPartCode part = kControlNoPart;
    GetParam(event.get(), kEventParamControlPart, typeControlPartCode, &part);
    if (part != kControlNoPart)
        SendControlHit(view, part, modifiers);
    return true;
}

StatusCode MouseDown(Window& window, EventRef event, BGPoint local, uint32_t modifiers) {
    if (local.y < 0) {
        window.tracking = {};
        window.tracking.closeBox =
            (window.attributes & kWindowCloseBoxAttribute) && BGRectContainsPoint(kCloseBox, local);
        return noErr;
    }
    View* hit = window.Root().HitView(local);
    if (hit == nullptr || hit == &window.Root() || !hit->IsEnabledInTree())
        return noErr;
    auto keep = hit->Shared();
    BGPoint inView = hit->FromWindow(local);
    if (CustomTrack(*hit, event, inView, modifiers))
        return noErr;
    ControlPartCode part = AskHitTest(*hit, inView);
    if (part == kControlNoPart)
        return noErr;
    if (hit->AcceptsFocus())
        window.SetFocus(hit, kControlEditTextPart);
    if (hit->ActsOnPress()) {
        ControlPartCode result = hit->PerformClick(part, modifiers);
        if (result != kControlNoPart)
            SendControlHit(*hit, result, modifiers);
        return noErr;
    }
    window.tracking = {hit->Shared(), part, false};
    hit->SetHilite(part);
    return noErr;
}

StatusCode MouseUp(Window& window, BGPoint local, uint32_t modifiers) {
    Window::Tracking tracking = window.tracking;
    window.tracking = {};
    if (tracking.closeBox) {
        if (BGRectContainsPoint(kCloseBox, local)) {
            EventHolder close(kEventClassWindow, kEventWindowClose);
            WindowRef ref = window.Ref();
            SetParam(close.get(), kEventParamDirectObject, typeWindowRef, ref);
            SendEventToEventTarget(close.get(), window.Target());
        }
        return noErr;
    }
    auto view = tracking.view.lock();
    if (view == nullptr)
        return noErr;
    view->SetHilite(kControlNoPart);
    if (view->OwnerWindow() != &window ||
        AskHitTest(*view, view->FromWindow(local)) != tracking.part)
        return noErr;
    ControlPartCode result = view->PerformClick(tracking.part, modifiers);
    if (result != kControlNoPart)
        SendControlHit(*view, result, modifiers);
    return noErr;
}

// The wheel scrolls the innermost view under the mouse that scrolls itself, or scroll view,
// by lines, on the wheel's axis; by the exact amount a smooth device moved, when it says.
StatusCode Wheel(Window& window, EventRef event, BGPoint local) {
    int32_t lines = 0;
    GetParam(event, kEventParamMouseWheelDelta, typeSInt32, &lines);
    double delta = lines;
    GetParam(event, kEventParamMouseWheelSmoothDelta, typeIEEE64BitFloatingPoint, &delta);
    EventMouseWheelAxis axis = kEventMouseWheelAxisY;
    GetParam(event, kEventParamMouseWheelAxis, typeMouseWheelAxis, &axis);
    bool sideways = axis == kEventMouseWheelAxisX;
    for (View* view = window.Root().HitView(local); view != nullptr; view = view->Superview()) {
        BGPoint point = view->FromWindow(local);
        if (sideways ? view->WheelSideways(point, delta) : view->Wheel(point, delta))
            return noErr;
        if (auto* scroll = dynamic_cast<ScrollView*>(view)) {
            ScrollView::Info info = scroll->Query();
            if (sideways)
                scroll->ScrollBy(-delta * info.line.width, 0);
            else
                scroll->ScrollBy(0, -delta * info.line.height);
            return noErr;
        }
    }
    return eventNotHandledErr;
}

void ShowCursorAt(Window& window, BGPoint local) {
    View* view = window.Root().HitView(local);
    bool live = view != nullptr && view->IsEnabledInTree() && windows::AcceptsInput(&window);
    ShowPointerCursor(live ? view->Cursor(view->FromWindow(local)) : uint32_t(kThemeArrowCursor));
}

StatusCode HandleMouse(Window& window, EventRef event) {
    BGPoint global{};
    if (!GetParam(event, kEventParamMouseLocation, typeBTPoint, &global))
        return eventNotHandledErr;
    const Rect& content = window.ContentBounds();
    BGPoint local = {global.x - content.left, global.y - content.top};
    uint32_t modifiers = 0;
    GetParam(event, kEventParamKeyModifiers, typeUInt32, &modifiers);
    switch (event->kind) {
    case kEventMouseDown:
        return MouseDown(window, event, local, modifiers);
    case kEventMouseUp:
        return MouseUp(window, local, modifiers);
    case kEventMouseWheelMoved:
        return Wheel(window, event, local);
    case kEventMouseMoved:
    case kEventMouseDragged: {
        UpdateTrackingAreas(window.Root(), local);
        if (event->kind == kEventMouseMoved)
            ShowCursorAt(window, local);
        if (auto tracked = window.tracking.view.lock()) {
            if (event->kind == kEventMouseDragged && tracked->Drag(tracked->FromWindow(local)))
                return noErr;
            bool inside = AskHitTest(*tracked, tracked->FromWindow(local)) == window.tracking.part;
            tracked->SetHilite(inside ? window.tracking.part : ControlPartCode(kControlNoPart));
        }
        return noErr;
    }
    default:
        return eventNotHandledErr;
    }
}

bool ClickButton(View* button) {
    if (button == nullptr || !button->IsEnabledInTree() || !button->IsVisibleInWindow())
        return false;
    ClickView(*button, kControlButtonPart, 0);
    return true;
}

StatusCode SendTextInput(Window& window, EventRef key) {
    std::u16string text;
    size_t size = 0;
    if (GetEventParameter(key, kEventParamKeyUnicodes, typeUnicodeText, nullptr, 0, &size,
                          nullptr) == noErr) {
        text.resize(size / 2);
        GetEventParameter(key, kEventParamKeyUnicodes, typeUnicodeText, nullptr, size, nullptr,
                          text.data());
    }
    EventHolder event(kEventClassTextInput, kEventTextInputUnicodeForKeyEvent);
    SetEventParameter(event.get(), kEventParamTextInputSendText, typeUnicodeText, text.size() * 2,
                      text.data());
    SetParam(event.get(), kEventParamTextInputSendKeyboardEvent, typeEventRef, key);
    View* focus = window.Focus();
    return SendEventToEventTarget(event.get(),
                                  focus != nullptr ? focus->Target() : window.Target());
}

StatusCode HandleKey(Window& window, EventRef event) {
    if (event->kind != kEventRawKeyDown && event->kind != kEventRawKeyRepeat)
        return eventNotHandledErr;
    uint32_t code = 0, modifiers = 0;
    char character = 0;
    GetParam(event, kEventParamKeyCode, typeUInt32, &code);
    GetParam(event, kEventParamKeyModifiers, typeUInt32, &modifiers);
    GetParam(event, kEventParamKeyMacCharCodes, typeChar, &character);
    if ((modifiers & cmdKey) && menus::DispatchMenuKey(event) == noErr)
        return noErr;
    if (code == kVK_Tab) {
        window.AdvanceFocus((modifiers & shiftKey) != 0);
        return noErr;
    }
    if ((code == kVK_Return || code == kVK_ANSI_KeypadEnter) && ClickButton(window.DefaultButton()))
        return noErr;
    bool cancelKey = code == kVK_Escape || ((modifiers & cmdKey) && character == '.');
    if (cancelKey && ClickButton(window.CancelButton()))
        return noErr;
    return SendTextInput(window, event);
}

// The user asks for new bounds ("crct"); the window's handlers say how small it may get
// ("wind" 81 answers "dims", height in v and width in h).
StatusCode ResizeByUser(Window& window, EventRef event) {
    Rect wanted{};
    if (!GetParam(event, kEventParamCurrentBounds, typeQDRectangle, &wanted))
        return eventNotHandledErr;
    if (!(window.attributes & kWindowResizableAttribute))
        return noErr;
    EventHolder ask(kEventClassWindow, kEventWindowGetMinimumSize);
    WindowRef ref = window.Ref();
    SetParam(ask.get(), kEventParamDirectObject, typeWindowRef, ref);
    Point minimum{0, 0};
    if (SendEventToEventTargetWithOptions(ask.get(), window.Target(), kEventTargetDontPropagate) ==
        noErr)
        GetParam(ask.get(), kEventParamDimensions, typeQDPoint, &minimum);
    wanted.right = std::max<int16_t>(wanted.right, int16_t(wanted.left + minimum.h));
    wanted.bottom = std::max<int16_t>(wanted.bottom, int16_t(wanted.top + minimum.v));
    window.SetContentBounds(wanted);
    return noErr;
}

} // namespace

StatusCode Window::HandleStandardEvent(EventHandlerCallRef, EventRef event) {
    auto keep = Shared();
    switch (event->eventClass) {
    case kEventClassMouse:
        return HandleMouse(*this, event);
    case kEventClassKeyboard:
        return HandleKey(*this, event);
    case kEventClassWindow:
        if (event->kind == kEventWindowClose) {
            DisposeWindow(Ref());
            return noErr;
        }
        if (event->kind == kEventWindowBoundsChanging)
            return ResizeByUser(*this, event);
        return eventNotHandledErr;
    case kEventClassControl:
        if (event->kind == kEventControlHit && dialog != nullptr) {
            ControlRef control = nullptr;
            GetParam(event, kEventParamDirectObject, typeControlRef, &control);
            dialog->NoteControlHit(View::From(control));
        }
        return eventNotHandledErr;
    default:
        return eventNotHandledErr;
    }
}

} // namespace basalt::toolbox
