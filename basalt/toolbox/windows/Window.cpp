#include "basalt/toolbox/windows/Window.h"

#include "basalt/toolbox/dialogs/Dialog.h"
#include "basalt/toolbox/windows/WindowList.h"

namespace basalt::toolbox {

Window::Window(WindowClass windowClass, WindowAttributes attributes, const Rect& contentBounds)
    : windowClass(windowClass), attributes(attributes), content_(contentBounds),
      root_(std::make_shared<View>(kControlKindRoot)) {
    root_->SetFrame(BGRectMake(0, 0, contentBounds.right - contentBounds.left,
                               contentBounds.bottom - contentBounds.top));
}

Window::~Window() = default;

void Window::SetContentBounds(const Rect& bounds) {
    Rect old = content_;
    content_ = bounds;
    if (surface_ != nullptr)
        surface_->SetContentBounds(bounds);
    root_->SetFrame(BGRectMake(0, 0, bounds.right - bounds.left, bounds.bottom - bounds.top));
    Invalidate();
    if (EqualRect(&old, &bounds))
        return;
    EventHolder event(kEventClassWindow, kEventWindowBoundsChanged);
    WindowRef ref = Ref();
    SetParam(event.get(), kEventParamDirectObject, typeWindowRef, ref);
    SetParam(event.get(), kEventParamOriginalBounds, typeQDRectangle, old);
    SetParam(event.get(), kEventParamCurrentBounds, typeQDRectangle, bounds);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
}

bool Window::HasTitleBar() const {
    return windowClass == kDocumentWindowClass || windowClass == kMovableModalWindowClass ||
           windowClass == kMovableAlertWindowClass || windowClass == kUtilityWindowClass ||
           windowClass == kFloatingWindowClass;
}

Rect Window::StructureBounds() const {
    Rect structure = content_;
    if (HasTitleBar())
        structure.top = int16_t(structure.top - kBTWindowTitleBarHeight);
    return structure;
}

void Window::SetVisible(bool visible) {
    if (visible_ == visible)
        return;
    visible_ = visible;
    EnsureSurface();
    if (surface_ != nullptr)
        surface_->SetVisible(visible);
    EventHolder event(kEventClassWindow, visible ? kEventWindowShown : kEventWindowHidden);
    WindowRef ref = Ref();
    SetParam(event.get(), kEventParamDirectObject, typeWindowRef, ref);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
    if (visible)
        Invalidate();
    windows::UpdateActivation();
}

bool Window::IsActive() const {
    return windows::Active() == this;
}

void Window::Dispose() {
    if (disposed)
        return;
    auto keep = Shared();
    if (Window* child = VisibleSheet())
        child->Dispose();
    disposed = true;
    visible_ = false;
    EventHolder event(kEventClassWindow, kEventWindowClosed);
    WindowRef ref = Ref();
    SetParam(event.get(), kEventParamDirectObject, typeWindowRef, ref);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
    windows::Remove(this);
    if (auto parent = sheetParent.lock())
        parent->Invalidate();
    surface_.reset();
    // Handlers go now; the object itself when the dispatches that hold it are done.
    Target()->RemoveAllHandlers();
}

Window* Window::VisibleSheet() const {
    auto child = sheet.lock();
    return child != nullptr && child->IsVisible() && !child->disposed ? child.get() : nullptr;
}

namespace {

// Tells a view its focus part; the view (or its class) may refuse by failing.
StatusCode SendFocusPart(View& target, ControlPartCode part) {
    EventHolder event(kEventClassControl, kEventControlSetFocusPart);
    SetParam(event.get(), kEventParamControlPart, typeControlPartCode, part);
    return SendEventToEventTargetWithOptions(event.get(), target.Target(),
                                             kEventTargetDontPropagate);
}

} // namespace

StatusCode Window::SetFocus(View* view, ControlPartCode part) {
    View* old = Focus();
    if (view == old && part != kControlFocusNoPart)
        return noErr;
    if (view != nullptr &&
        (!view->IsVisibleInWindow() || !view->IsEnabledInTree() || view->OwnerWindow() != this))
        return errControlHiddenOrDisabled;
    std::shared_ptr<View> keepNew = view != nullptr ? view->Shared() : nullptr;
    if (view != nullptr) {
        StatusCode status = SendFocusPart(*view, kControlEditTextPart);
        if (status != noErr)
            return status == eventNotHandledErr ? StatusCode(errControlHiddenOrDisabled) : status;
    }
    focus_.reset();
    if (old != nullptr) {
        auto keepOld = old->Shared();
        old->FocusChanged(false);
        SendFocusPart(*old, kControlFocusNoPart);
        old->SetNeedsDisplay();
    }
    if (view != nullptr) {
        focus_ = keepNew;
        view->FocusChanged(true);
        view->SetNeedsDisplay();
    }
    return noErr;
}

namespace {
void CollectFocusable(View& view, std::vector<View*>& out) {
    if (!view.IsVisible() || !view.IsEnabled())
        return;
    if (view.AcceptsFocus() || (view.features & kBTControlSupportsFocus))
        out.push_back(&view);
    for (const auto& child : view.Subviews())
        CollectFocusable(*child, out);
}
} // namespace

void Window::AdvanceFocus(bool backwards) {
    std::vector<View*> chain;
    CollectFocusable(*root_, chain);
    if (chain.empty())
        return;
    auto it = std::find(chain.begin(), chain.end(), Focus());
    size_t index = 0;
    if (it != chain.end()) {
        size_t at = size_t(it - chain.begin());
        index = backwards ? (at + chain.size() - 1) % chain.size() : (at + 1) % chain.size();
    } else if (backwards) {
        index = chain.size() - 1;
    }
    SetFocus(chain[index], kControlEditTextPart);
}

void Window::SetDefaultButton(View* view) {
    if (View* old = DefaultButton())
        old->SetNeedsDisplay();
    defaultButton_ = view != nullptr ? view->Shared() : std::weak_ptr<View>();
    if (view != nullptr)
        view->SetNeedsDisplay();
}

void Window::SetCancelButton(View* view) {
    cancelButton_ = view != nullptr ? view->Shared() : std::weak_ptr<View>();
}

void Window::ViewLeaving(View* view) {
    if (View* focus = Focus(); focus != nullptr && view->IsAncestorOf(focus))
        SetFocus(nullptr, kControlFocusNoPart);
    if (auto tracked = tracking.view.lock();
        tracked != nullptr && view->IsAncestorOf(tracked.get()))
        tracking = {};
}

void Window::Invalidate() {
    dirty_ = true;
    wholeDirty_ = true;
}

void Window::InvalidateViews() {
    dirty_ = true;
}

void Window::EnsureSurface() {
    if (surface_ == nullptr && !disposed)
        surface_ = CurrentBackend().CreateWindow(Ref(), windowClass, content_);
}

StatusCode SendControlHit(View& view, ControlPartCode part, uint32_t modifiers) {
    EventHolder event(kEventClassControl, kEventControlHit);
    ControlRef ref = view.Ref();
    SetParam(event.get(), kEventParamDirectObject, typeControlRef, ref);
    SetParam(event.get(), kEventParamControlPart, typeControlPartCode, part);
    SetParam(event.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    auto keep = view.Shared();
    StatusCode status = SendEventToEventTarget(event.get(), view.Target());
    if (status != eventNotHandledErr || view.command == 0 || view.OwnerWindow() == nullptr)
        return status;
    BTCommand command{};
    command.attributes = kBTCommandFromControl;
    command.commandID = view.command;
    EventHolder process(kEventClassCommand, kEventCommandProcess);
    SetParam(process.get(), kEventParamDirectObject, typeBTCommand, command);
    return SendEventToEventTarget(process.get(), view.Target());
}

ControlPartCode ClickView(View& view, ControlPartCode part, uint32_t modifiers) {
    auto keep = view.Shared();
    if (!view.IsEnabledInTree() || !view.IsVisibleInWindow())
        return kControlNoPart;
    view.SetHilite(part);
    view.SetHilite(kControlNoPart);
    ControlPartCode result = view.PerformClick(part, modifiers);
    if (result != kControlNoPart)
        SendControlHit(view, result, modifiers);
    return result;
}

} // namespace basalt::toolbox
