#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>

namespace basalt::toolbox::windows {
namespace {

struct State {
    std::vector<std::shared_ptr<Window>> windows;
    std::vector<std::weak_ptr<Window>> modal;
    std::weak_ptr<Window> active;
    bool applicationActive = true;
};

State& TheState() {
    static auto* state = new State; // windows may outlive static destruction order
    return *state;
}

void SetViewsActive(View& view, bool active) {
    view.Notify(active ? kEventControlActivate : kEventControlDeactivate);
    view.SetNeedsDisplay();
    for (const auto& child : view.Subviews())
        SetViewsActive(*child, active);
}

void SendActivation(Window& window, bool active) {
    EventHolder event(kEventClassWindow, active ? kEventWindowActivated : kEventWindowDeactivated);
    WindowRef ref = window.Ref();
    SetParam(event.get(), kEventParamDirectObject, typeWindowRef, ref);
    SendEventToEventTargetWithOptions(event.get(), window.Target(), kEventTargetDontPropagate);
    SetViewsActive(window.Root(), active);
}

} // namespace

void Add(const std::shared_ptr<Window>& window) {
    TheState().windows.insert(TheState().windows.begin(), window);
}

void Remove(Window* window) {
    auto& state = TheState();
    std::erase_if(state.modal, [&](const auto& weak) {
        auto locked = weak.lock();
        return locked == nullptr || locked.get() == window;
    });
    auto keep = window->Shared();
    std::erase_if(state.windows, [&](const auto& w) { return w.get() == window; });
    UpdateActivation();
}

bool IsValid(WindowRef ref) {
    const auto& windows = TheState().windows;
    return ref != nullptr && std::any_of(windows.begin(), windows.end(),
                                         [&](const auto& w) { return w->Ref() == ref; });
}

const std::vector<std::shared_ptr<Window>>& All() {
    return TheState().windows;
}

void BringToFront(Window* window) {
    auto& windows = TheState().windows;
    auto it = std::find_if(windows.begin(), windows.end(),
                           [&](const auto& w) { return w.get() == window; });
    if (it == windows.end())
        return;
    auto moved = *it;
    windows.erase(it);
    windows.insert(windows.begin(), moved);
    UpdateActivation();
}

Window* FrontVisible() {
    for (const auto& window : TheState().windows)
        if (window->IsVisible() && window->windowClass != kSheetWindowClass)
            return window.get();
    return nullptr;
}

Window* TopModal() {
    auto& modal = TheState().modal;
    while (!modal.empty() && modal.back().expired())
        modal.pop_back();
    return modal.empty() ? nullptr : modal.back().lock().get();
}

Window* UserFocus() {
    Window* window = TopModal();
    if (window == nullptr)
        window = FrontVisible();
    if (window != nullptr)
        if (Window* sheet = window->VisibleSheet())
            return sheet;
    return window;
}

Window* AtPoint(Point global) {
    for (const auto& window : TheState().windows) {
        Rect structure = window->StructureBounds();
        if (window->IsVisible() && PtInRect(global, &structure))
            return window.get();
    }
    return nullptr;
}

void PushModal(Window* window) {
    TheState().modal.push_back(window->Shared());
    UpdateActivation();
}

void PopModal(Window* window) {
    auto& modal = TheState().modal;
    for (auto it = modal.rbegin(); it != modal.rend(); ++it)
        if (it->lock().get() == window) {
            modal.erase(std::next(it).base());
            break;
        }
    UpdateActivation();
}

bool AcceptsInput(Window* window) {
    if (window == nullptr || !window->IsVisible())
        return false;
    if (window->VisibleSheet() != nullptr)
        return false;
    Window* modal = TopModal();
    if (modal == nullptr)
        return true;
    if (window == modal)
        return true;
    auto parent = window->sheetParent.lock();
    return parent != nullptr && parent.get() == modal;
}

Window* Active() {
    return TheState().active.lock().get();
}

void SetApplicationActive(bool active) {
    TheState().applicationActive = active;
    UpdateActivation();
}

void UpdateActivation() {
    auto& state = TheState();
    Window* now = state.applicationActive ? UserFocus() : nullptr;
    auto before = state.active.lock();
    if (before.get() == now)
        return;
    state.active = now != nullptr ? now->Shared() : std::weak_ptr<Window>();
    if (before != nullptr && !before->disposed)
        SendActivation(*before, false);
    if (now != nullptr)
        SendActivation(*now, true);
}

} // namespace basalt::toolbox::windows
