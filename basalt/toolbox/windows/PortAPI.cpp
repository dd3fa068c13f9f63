// Ports, cursors and the beep. A window's port is the window itself seen through the port
// type; the current port is process-wide state, as the clients that save and restore it expect.

#include "basalt/toolbox/windows/PointerCursor.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <map>
#include <memory>
#include <type_traits>

using namespace basalt::toolbox;

namespace {

using windows::Live;

GrafPtr gCurrentPort = nullptr;

struct RegionDisposer {
    void operator()(RgnHandle region) const { DisposeRgn(region); }
};
using OwnedRegion = std::unique_ptr<std::remove_pointer_t<RgnHandle>, RegionDisposer>;

// The visible region a client set on a port. A port of a window that is gone no longer counts,
// and its region is taken over by the next window that gets the same port.
std::map<CGrafPtr, OwnedRegion>& VisibleRegions() {
    static std::map<CGrafPtr, OwnedRegion> regions;
    return regions;
}

} // namespace

extern "C" {

void GetPort(GrafPtr* port) {
    if (port != nullptr)
        *port = gCurrentPort;
}

void SetPort(GrafPtr port) {
    gCurrentPort = port;
}

// A window's port is the window itself seen through the port type.
CGrafPtr GetWindowPort(WindowRef window) {
    return reinterpret_cast<CGrafPtr>(window);
}

void SetPortWindowPort(WindowRef window) {
    SetPort(GetWindowPort(window));
}

WindowRef GetWindowFromPort(CGrafPtr port) {
    return reinterpret_cast<WindowRef>(port);
}

Rect* GetPortBounds(CGrafPtr port, Rect* rect) {
    Window* live = Live(GetWindowFromPort(port));
    if (rect == nullptr)
        return rect;
    *rect = Rect{0, 0, 0, 0};
    if (live != nullptr) {
        const Rect& content = live->ContentBounds();
        *rect = {0, 0, int16_t(content.bottom - content.top),
                 int16_t(content.right - content.left)};
    }
    return rect;
}

RgnHandle GetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn) {
    if (visRgn == nullptr)
        return visRgn;
    auto it = VisibleRegions().find(port);
    if (it != VisibleRegions().end() && Live(GetWindowFromPort(port)) != nullptr) {
        CopyRgn(it->second.get(), visRgn);
    } else {
        Rect bounds;
        GetPortBounds(port, &bounds);
        RectRgn(visRgn, &bounds);
    }
    return visRgn;
}

void SetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn) {
    if (port == nullptr || visRgn == nullptr)
        return;
    OwnedRegion& stored = VisibleRegions()[port];
    if (stored == nullptr)
        stored.reset(NewRgn());
    CopyRgn(visRgn, stored.get());
}

void InitCursor(void) {
    SetThemeCursor(0);
}

StatusCode SetThemeCursor(uint32_t inCursor) {
    SetApplicationCursor(inCursor);
    return noErr;
}

void AudioServicesPlayAlertSound(uint32_t) {
    CurrentBackend().Beep();
}

} // extern "C"
