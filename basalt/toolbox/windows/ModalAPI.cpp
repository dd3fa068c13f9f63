// Sheets on their parents, the application modal state and the modal loops.

#include "basalt/toolbox/events/EventLoop.h"
#include "basalt/toolbox/windows/WindowList.h"

using namespace basalt::toolbox;

namespace {

using windows::Live;

struct ModalRun {
    Window* window;
    OpaqueEventLoopRef::RunLevel* level;
};
std::vector<ModalRun> gModalRuns;

} // namespace

extern "C" {

StatusCode ShowSheetWindow(WindowRef inSheet, WindowRef inParentWindow) {
    Window* sheet = Live(inSheet);
    Window* parent = Live(inParentWindow);
    if (sheet == nullptr || parent == nullptr || sheet == parent)
        return errInvalidWindowRef;
    if (parent->VisibleSheet() != nullptr && parent->VisibleSheet() != sheet)
        return paramErr;
    sheet->sheetParent = parent->Shared();
    parent->sheet = sheet->Shared();
    const Rect& host = parent->ContentBounds();
    const Rect& own = sheet->ContentBounds();
    int16_t width = int16_t(own.right - own.left);
    MoveWindow(inSheet, int16_t(host.left + (host.right - host.left - width) / 2), host.top, false);
    sheet->SetVisible(true);
    windows::BringToFront(sheet);
    return noErr;
}

StatusCode HideSheetWindow(WindowRef inSheet) {
    Window* sheet = Live(inSheet);
    if (sheet == nullptr)
        return errInvalidWindowRef;
    sheet->SetVisible(false);
    if (auto parent = sheet->sheetParent.lock())
        parent->Invalidate();
    windows::UpdateActivation();
    return noErr;
}

StatusCode GetSheetWindowParent(WindowRef inSheet, WindowRef* outParentWindow) {
    Window* sheet = Live(inSheet);
    if (sheet == nullptr || outParentWindow == nullptr)
        return errInvalidWindowRef;
    auto parent = sheet->sheetParent.lock();
    *outParentWindow = parent != nullptr ? parent->Ref() : nullptr;
    return noErr;
}

StatusCode BeginAppModalStateForWindow(WindowRef inWindow) {
    Window* live = Live(inWindow);
    if (live == nullptr)
        return errInvalidWindowRef;
    windows::PushModal(live);
    live->savedBarState = _BeginAppModalState();
    return noErr;
}

StatusCode EndAppModalStateForWindow(WindowRef inWindow) {
    Window* window = Window::From(inWindow);
    if (inWindow == nullptr)
        return errInvalidWindowRef;
    windows::PopModal(window);
    if (window != nullptr)
        _EndAppModalState(window->savedBarState);
    return noErr;
}

StatusCode RunAppModalLoopForWindow(WindowRef inWindow) {
    Window* live = Live(inWindow);
    if (live == nullptr)
        return errInvalidWindowRef;
    auto keep = live->Shared();
    BeginAppModalStateForWindow(inWindow);
    OpaqueEventLoopRef::RunLevel level;
    gModalRuns.push_back({live, &level});
    RunLevel(level, kEventDurationForever);
    std::erase_if(gModalRuns, [&](const ModalRun& run) { return run.level == &level; });
    EndAppModalStateForWindow(inWindow);
    return noErr;
}

StatusCode QuitAppModalLoopForWindow(WindowRef inWindow) {
    for (auto it = gModalRuns.rbegin(); it != gModalRuns.rend(); ++it)
        if (it->window == Window::From(inWindow)) {
            it->level->quit = true;
            GetMainEventQueue()->Wake();
            return noErr;
        }
    return errInvalidWindowRef;
}

} // extern "C"
