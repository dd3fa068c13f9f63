#pragma once

// One toolbox window shown as an X window. Drawing is double-buffered: the toolbox draws into
// the back buffer (an image surface, points x scale pixels); Present uploads a finished frame
// into the front buffer, a pixmap on the server, and copies it from there onto the window. An
// expose from the server is repainted from the front buffer on the event thread without waking the
// toolbox, and a resize keeps the old frame on screen until the new one is ready.

#include "basalt/backend/x11/X11Screens.h"
#include "basalt/backend/x11/X11SharedImage.h"
#include "basalt/toolbox/backend/Backend.h"

#include <memory>
#include <mutex>
#include <optional>
#include <xcb/xcb.h>

namespace basalt::x11 {

class X11Backend;

class X11Window final : public toolbox::BackendWindow {
public:
    X11Window(X11Backend& backend, WindowRef window, WindowClass windowClass,
              const Rect& contentBounds);
    ~X11Window() override;
    X11Window(const X11Window&) = delete;
    X11Window& operator=(const X11Window&) = delete;

    cairo_surface_t* Surface() override { return back_; }
    double Scale() const override { return scale_; }
    void SetContentBounds(const Rect& globalBounds) override;
    void SetVisible(bool visible) override;
    void SetTitle(const std::string& title) override;
    void Present() override;

    xcb_window_t Id() const { return id_; }
    WindowRef Ref() const { return window_; }
    // Event thread: repaints part of the window from the front buffer.
    void Expose(int x, int y, int width, int height);
    // Event thread: the geometry the server reports, with the number of the last request of
    // ours it had handled; true if it differs from what we set. A notice from before our
    // latest change is stale and says nothing.
    bool NoteGeometry(const PixelRect& geometry, uint16_t sequence);
    // The newest geometry: the last we asked for or the server reported, whichever came later.
    PixelRect Geometry();
    void SetCursor(xcb_cursor_t cursor);

    PixelRect ToPixels(const Rect& bounds) const;
    Rect ToPoints(const PixelRect& pixels) const;

private:
    void SetFixedProperties();
    void SetSizeHints(const PixelRect& geometry);
    void SetModalProperties();
    void MoveOntoAMonitor();
    void MoveTo(const PixelRect& placed);
    void Configure(const PixelRect& wanted);
    void ResizeBackBuffer(int width, int height);
    // Copies part of the front buffer onto the window; the caller holds mutex_.
    void CopyFrontLocked(int x, int y, int width, int height);

    X11Backend& backend_;
    WindowRef window_;
    WindowClass windowClass_;
    double scale_;
    xcb_window_t id_;
    cairo_surface_t* back_ = nullptr;
    // Holds back_ where the server shares our memory; else back_ is our own.
    std::unique_ptr<SharedImage> shared_;
    bool shown_ = false; // main thread only

    std::mutex mutex_; // guards what the event thread reads: front buffer and geometry
    xcb_pixmap_t front_ = XCB_NONE;
    int frontWidth_ = 0, frontHeight_ = 0;
    PixelRect geometry_;
    std::optional<uint16_t> lastConfigure_; // the sequence number of our latest change
};

} // namespace basalt::x11
