#include "basalt/toolbox/menus/PopupMenuSession.h"

#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/menus/MenuDrawing.h"
#include "basalt/toolbox/menus/MenuTracker.h"

namespace basalt::toolbox::menus {
namespace {

void Render(BackendWindow& window, const Menu& menu, const MenuLayout& layout,
            const MenuTracker& tracker, BGFloat maxScroll) {
    const Rect& frame = tracker.Frame();
    MenuAppearance appearance;
    appearance.frame = {BGFloat(frame.right - frame.left), BGFloat(frame.bottom - frame.top)};
    appearance.scroll = tracker.Scroll();
    appearance.maxScroll = maxScroll;
    appearance.highlighted = tracker.Highlighted();
    BGContextRef context = CreateFlippedContext(window, appearance.frame.height);
    if (context == nullptr)
        return;
    DrawMenu(context, menu, layout, appearance);
    BGContextRelease(context);
    window.Present();
}

bool IsInput(EventRef event) {
    return event->eventClass == kEventClassMouse || event->eventClass == kEventClassKeyboard;
}

} // namespace

MenuItemIndex RunPopupMenu(Menu& menu, Point where, MenuItemIndex current, const Rect& screen,
                           const MenuWindowFactory& makeWindow, std::optional<BGPoint> pointer) {
    MenuLayout layout = MenuLayout::Measure(menu);
    MenuPlacement placement = PlaceMenu(layout, where, current, screen);
    std::unique_ptr<BackendWindow> window = makeWindow(placement.frame);
    if (window == nullptr)
        return 0;
    MenuTracker tracker(menu, layout, placement, current, GetCurrentEventTime(), pointer);
    Render(*window, menu, layout, tracker, placement.maxScroll);
    window->SetVisible(true);
    while (!tracker.Done()) {
        EventTimeout wait =
            tracker.Autoscroll() != 0 ? MenuTracker::kScrollInterval : kEventDurationForever;
        EventRef received = nullptr;
        StatusCode status = ReceiveNextEvent(0, nullptr, wait, true, &received);
        if (status == eventLoopTimedOutErr) {
            if (tracker.Tick())
                Render(*window, menu, layout, tracker, placement.maxScroll);
            continue;
        }
        if (status != noErr)
            break;
        EventHolder event(received);
        if (!IsInput(event.get()))
            SendEventToEventTarget(event.get(), GetEventDispatcherTarget());
        else if (tracker.Handle(event.get()) && !tracker.Done())
            Render(*window, menu, layout, tracker, placement.maxScroll);
    }
    window->SetVisible(false);
    return tracker.Choice();
}

} // namespace basalt::toolbox::menus
