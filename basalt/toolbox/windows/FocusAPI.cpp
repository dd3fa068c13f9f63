// The content of a window as its controls see it: the root view, controls by id, the keyboard
// focus and the default and cancel buttons.

#include "basalt/toolbox/windows/WindowList.h"

using namespace basalt::toolbox;

namespace {
using windows::Live;
} // namespace

extern "C" {

StatusCode GetRootControl(WindowRef window, ControlRef* outControl) {
    Window* live = Live(window);
    if (live == nullptr || outControl == nullptr)
        return errInvalidWindowRef;
    *outControl = live->Root().Ref();
    return noErr;
}

BTViewRef BTViewGetRoot(WindowRef inWindow) {
    Window* live = Live(inWindow);
    return live != nullptr ? live->Root().Ref() : nullptr;
}

StatusCode GetControlByID(WindowRef inWindow, const ControlID* inID, ControlRef* outControl) {
    Window* live = Live(inWindow);
    if (live == nullptr || inID == nullptr || outControl == nullptr)
        return paramErr;
    View* found = live->Root().FindByID(*inID);
    *outControl = found != nullptr ? found->Ref() : nullptr;
    return found != nullptr ? StatusCode(noErr) : StatusCode(errUnknownControl);
}

StatusCode SetKeyboardFocus(WindowRef inWindow, ControlRef inControl, ControlPartCode inPart) {
    Window* live = Live(inWindow);
    if (live == nullptr)
        return errInvalidWindowRef;
    if (inPart == kControlFocusNoPart || inControl == nullptr)
        return live->SetFocus(nullptr, kControlFocusNoPart);
    return live->SetFocus(View::From(inControl), inPart);
}

StatusCode GetKeyboardFocus(WindowRef inWindow, ControlRef* outControl) {
    Window* live = Live(inWindow);
    if (live == nullptr || outControl == nullptr)
        return errInvalidWindowRef;
    View* focus = live->Focus();
    *outControl = focus != nullptr ? focus->Ref() : nullptr;
    return noErr;
}

StatusCode ClearKeyboardFocus(WindowRef inWindow) {
    return SetKeyboardFocus(inWindow, nullptr, kControlFocusNoPart);
}

StatusCode AdvanceKeyboardFocus(WindowRef inWindow) {
    Window* live = Live(inWindow);
    if (live == nullptr)
        return errInvalidWindowRef;
    live->AdvanceFocus(false);
    return noErr;
}

StatusCode SetWindowDefaultButton(WindowRef inWindow, ControlRef inControl) {
    Window* live = Live(inWindow);
    if (live == nullptr)
        return errInvalidWindowRef;
    live->SetDefaultButton(inControl != nullptr ? View::From(inControl) : nullptr);
    return noErr;
}

StatusCode SetWindowCancelButton(WindowRef inWindow, ControlRef inControl) {
    Window* live = Live(inWindow);
    if (live == nullptr)
        return errInvalidWindowRef;
    live->SetCancelButton(inControl != nullptr ? View::From(inControl) : nullptr);
    return noErr;
}

StatusCode GetWindowDefaultButton(WindowRef inWindow, ControlRef* outControl) {
    Window* live = Live(inWindow);
    if (live == nullptr || outControl == nullptr)
        return errInvalidWindowRef;
    View* button = live->DefaultButton();
    *outControl = button != nullptr ? button->Ref() : nullptr;
    return noErr;
}

StatusCode GetWindowCancelButton(WindowRef inWindow, ControlRef* outControl) {
    Window* live = Live(inWindow);
    if (live == nullptr || outControl == nullptr)
        return errInvalidWindowRef;
    View* button = live->CancelButton();
    *outControl = button != nullptr ? button->Ref() : nullptr;
    return noErr;
}

} // extern "C"
