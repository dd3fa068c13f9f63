#include "basalt/backend/x11/X11MenuWindow.h"

#include "basalt/backend/x11/X11Backend.h"
#include "basalt/backend/x11/X11Upload.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <thread>
#include <unistd.h>

namespace basalt::x11 {
namespace {

constexpr uint32_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
// Another client may hold a grab for a moment (a pressed key of a window manager's); the menu
// waits this long for it before it gives up.
constexpr auto kGrabPatience = std::chrono::milliseconds(500);

PixelRect ToPixels(const Rect& frame, double scale) {
    return {int(std::lround(frame.left * scale)), int(std::lround(frame.top * scale)),
            std::max(1, int(std::lround((frame.right - frame.left) * scale))),
            std::max(1, int(std::lround((frame.bottom - frame.top) * scale)))};
}

} // namespace

std::unique_ptr<toolbox::BackendWindow> X11MenuWindow::Open(X11Backend& backend,
                                                            const Rect& frame) {
    return std::make_unique<X11MenuWindow>(backend, frame);
}

X11MenuWindow::X11MenuWindow(X11Backend& backend, const Rect& frame)
    : backend_(backend), scale_(backend.Scale()) {
    X11Connection& connection = backend_.Connection();
    xcb_connection_t* xcb = connection.get();
    PixelRect pixels = ToPixels(frame, scale_);
    id_ = xcb_generate_id(xcb);
    front_ = xcb_generate_id(xcb);
    const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, 1, 1, kPointerEvents,
                               backend_.Cursor(kThemeArrowCursor)};
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, id_, connection.Root(), int16_t(pixels.x),
                      int16_t(pixels.y), uint16_t(pixels.width), uint16_t(pixels.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_SAVE_UNDER |
                          XCB_CW_EVENT_MASK | XCB_CW_CURSOR,
                      values);
    xcb_create_pixmap(xcb, connection.Screen()->root_depth, front_, id_, uint16_t(pixels.width),
                      uint16_t(pixels.height));
    back_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels.width, pixels.height);
    SetProperties();
}

X11MenuWindow::~X11MenuWindow() {
    xcb_connection_t* xcb = backend_.Connection().get();
    Ungrab();
    xcb_destroy_window(xcb, id_);
    xcb_free_pixmap(xcb, front_);
    xcb_flush(xcb);
    cairo_surface_destroy(back_);
}

// What a compositor and a screenshot tool read: a popup menu of this process.
void X11MenuWindow::SetProperties() {
    xcb_connection_t* xcb = backend_.Connection().get();
    const Atoms& atoms = backend_.Connection().atoms;
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id_, atoms._NET_WM_WINDOW_TYPE, XCB_ATOM_ATOM,
                        32, 1, &atoms._NET_WM_WINDOW_TYPE_POPUP_MENU);
    uint32_t pid = uint32_t(getpid());
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id_, atoms._NET_WM_PID, XCB_ATOM_CARDINAL, 32,
                        1, &pid);
}

void X11MenuWindow::SetContentBounds(const Rect& globalBounds) {
    PixelRect pixels = ToPixels(globalBounds, scale_);
    const uint32_t values[] = {uint32_t(pixels.x), uint32_t(pixels.y)};
    xcb_configure_window(backend_.Connection().get(), id_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
}

void X11MenuWindow::SetVisible(bool visible) {
    xcb_connection_t* xcb = backend_.Connection().get();
    if (visible) {
        const uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(xcb, id_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        xcb_map_window(xcb, id_);
        grabbed_ = Grab();
    } else {
        Ungrab();
        xcb_unmap_window(xcb, id_);
    }
    xcb_flush(xcb);
}

// Without the grabs the menu still works inside its window; a press elsewhere just never
// reaches it, so a key or a click inside has to close it.
bool X11MenuWindow::Grab() {
    xcb_connection_t* xcb = backend_.Connection().get();
    auto deadline = std::chrono::steady_clock::now() + kGrabPatience;
    bool pointer = false, keyboard = false;
    for (;;) {
        if (!pointer) {
            xcb_grab_pointer_reply_t* reply = xcb_grab_pointer_reply(
                xcb,
                xcb_grab_pointer(xcb, 0, id_, kPointerEvents, XCB_GRAB_MODE_ASYNC,
                                 XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                nullptr);
            pointer = reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
            std::free(reply);
        }
        if (!keyboard) {
            xcb_grab_keyboard_reply_t* reply =
                xcb_grab_keyboard_reply(xcb,
                                        xcb_grab_keyboard(xcb, 0, id_, XCB_CURRENT_TIME,
                                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                        nullptr);
            keyboard = reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
            std::free(reply);
        }
        if ((pointer && keyboard) || std::chrono::steady_clock::now() >= deadline ||
            backend_.Connection().Broken())
            return pointer || keyboard;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void X11MenuWindow::Ungrab() {
    if (!grabbed_)
        return;
    grabbed_ = false;
    xcb_connection_t* xcb = backend_.Connection().get();
    xcb_ungrab_pointer(xcb, XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(xcb, XCB_CURRENT_TIME);
}

// Setting the background again after each upload makes every server show the new frame, also
// those that copy a background pixmap when it is set.
void X11MenuWindow::Present() {
    xcb_connection_t* xcb = backend_.Connection().get();
    UploadSurface(xcb, front_, backend_.Connection().Screen()->root_depth, back_);
    xcb_change_window_attributes(xcb, id_, XCB_CW_BACK_PIXMAP, &front_);
    xcb_clear_area(xcb, 0, id_, 0, 0, 0, 0);
    xcb_flush(xcb);
}

} // namespace basalt::x11
