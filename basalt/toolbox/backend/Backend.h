#pragma once

// What a backend supplies to the toolbox: window surfaces, the display, the beep, popup menu
// tracking and the system clipboard. The toolbox core never knows which backend runs.
//
// Input does not go through this interface: a backend posts mouse and key events to the main
// event queue (PostEventToQueue, from any thread), and the standard handlers take it from
// there. Mouse events carry "mloc" (global, y down) and, when the backend knows it, "wind".

#include <basalt/BasaltToolbox.h>
#include <cairo.h>
#include <functional>
#include <memory>
#include <string>

namespace basalt::toolbox {

class BackendWindow {
public:
    virtual ~BackendWindow() = default;
    // The pixels of the content area: (content size x Scale()) device pixels.
    virtual cairo_surface_t* Surface() = 0;
    virtual double Scale() const = 0;
    virtual void SetContentBounds(const Rect& globalBounds) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetTitle(const std::string& title) = 0;
    // The surface holds a finished frame; show it.
    virtual void Present() = 0;
};

// A context over the window's surface in flipped coordinates (origin top left, y down, points),
// as views and menus draw; the caller releases it. Null when Cairo fails.
BGContextRef CreateFlippedContext(BackendWindow& window, BGFloat heightInPoints);

class Backend {
public:
    virtual ~Backend() = default;
    virtual std::string Name() const = 0;
    virtual std::unique_ptr<BackendWindow> CreateWindow(WindowRef window, WindowClass windowClass,
                                                        const Rect& contentBounds) = 0;
    // The main display, global coordinates.
    virtual Rect DisplayBounds() const = 0;
    // The display showing most of the window's content (global coordinates).
    virtual Rect GreatestAreaDisplay(const Rect&) const { return DisplayBounds(); }
    virtual int16_t MenuBarHeight() const = 0;
    // What windows may take of the main display: all but the menu bar, and the strips that
    // panels and docks keep for themselves.
    virtual Rect AvailableBounds() const {
        Rect available = DisplayBounds();
        available.top = int16_t(available.top + MenuBarHeight());
        return available;
    }
    virtual void Beep() = 0;
    // Shows the menu at a global point and lets the user pick; the item, or 0 for none.
    virtual MenuItemIndex TrackPopupMenu(MenuRef menu, Point where, MenuItemIndex current) = 0;
    virtual void SetClipboardText(const std::string& utf8) = 0;
    virtual std::string ClipboardText() = 0;
    // The pointer's shape over the process's windows (the theme cursor numbers).
    virtual void SetCursor(uint32_t) {}
};

// Makes the backend, or returns null and says why in `failure` (no display, say).
using BackendFactory = std::function<std::unique_ptr<Backend>(std::string& failure)>;

// Backends register themselves when the library loads. preferWhenDisplay marks the backend that
// serves a real display (chosen when DISPLAY is set).
void RegisterBackend(const std::string& name, bool preferWhenDisplay, BackendFactory factory);

// The backend of this process, chosen at first use: KEL_BACKEND names one; otherwise the
// display backend when DISPLAY is set and one is registered; otherwise "headless". A chosen
// backend that cannot start is not replaced by another: the user asked for a display.
// Null when it failed, with the reason in `failure`.
Backend* TryCurrentBackend(std::string* failure = nullptr);

// The backend of this process; when it cannot start, the process ends with status 2 and the
// reason on standard error, as a desktop program does without its display.
Backend& CurrentBackend();

} // namespace basalt::toolbox
