#pragma once

// The window of an open popup menu: override-redirect, so no window manager frames or moves
// it, above everything, and holding the pointer and keyboard grabs while it is shown, so that
// every press, motion and key reaches the menu wherever the pointer is. The X events arrive
// through the backend's event thread like any others, as toolbox events on the main queue.
//
// Each finished frame goes into a pixmap that becomes the window's background, so the server
// repaints exposed parts by itself and the event thread never needs to know about the menu.

#include "basalt/toolbox/backend/Backend.h"

#include <memory>
#include <xcb/xcb.h>

namespace basalt::x11 {

class X11Backend;

class X11MenuWindow final : public toolbox::BackendWindow {
public:
    static std::unique_ptr<toolbox::BackendWindow> Open(X11Backend& backend, const Rect& frame);
    X11MenuWindow(X11Backend& backend, const Rect& frame);
    ~X11MenuWindow() override;
    X11MenuWindow(const X11MenuWindow&) = delete;
    X11MenuWindow& operator=(const X11MenuWindow&) = delete;

    cairo_surface_t* Surface() override { return back_; }
    double Scale() const override { return scale_; }
    void SetContentBounds(const Rect& globalBounds) override;
    void SetVisible(bool visible) override;
    void SetTitle(const std::string&) override {}
    void Present() override;

private:
    void SetProperties();
    bool Grab();
    void Ungrab();

    X11Backend& backend_;
    double scale_;
    xcb_window_t id_;
    xcb_pixmap_t front_;
    cairo_surface_t* back_;
    bool grabbed_ = false;
};

} // namespace basalt::x11
