#include "basalt/backend/x11/X11Window.h"

#include "basalt/backend/x11/X11Backend.h"
#include "basalt/backend/x11/X11Input.h"
#include "basalt/backend/x11/X11Upload.h"
#include "basalt/toolbox/windows/Window.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <cmath>
#include <cstring>
#include <unistd.h>

namespace basalt::x11 {
namespace {

constexpr uint32_t kEventMask =
    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_KEY_PRESS |
    XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
    XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_KEYMAP_STATE;

// ICCCM size hint flags and the gravity that makes positions name the content's corner.
enum : uint32_t { kUSPosition = 1, kPMinSize = 16, kPMaxSize = 32, kPWinGravity = 512 };
constexpr uint32_t kStaticGravity = 10;

bool IsModalClass(WindowClass windowClass) {
    return windowClass == kAlertWindowClass || windowClass == kMovableAlertWindowClass ||
           windowClass == kModalWindowClass || windowClass == kMovableModalWindowClass ||
           windowClass == kSheetWindowClass;
}

void SetProperty(xcb_connection_t* xcb, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                 uint8_t format, const void* data, size_t count) {
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, property, type, format, uint32_t(count),
                        data);
}

std::string HostName() {
    char name[256] = {};
    gethostname(name, sizeof name - 1);
    return name;
}

} // namespace

X11Window::X11Window(X11Backend& backend, WindowRef window, WindowClass windowClass,
                     const Rect& contentBounds)
    : backend_(backend), window_(window), windowClass_(windowClass), scale_(backend.Scale()) {
    xcb_connection_t* xcb = backend_.Connection().get();
    geometry_ = ToPixels(contentBounds);
    id_ = xcb_generate_id(xcb);
    // No background: the server leaves the old pixels in place until we present.
    const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, XCB_GRAVITY_NORTH_WEST, kEventMask};
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, id_, backend_.Connection().Root(),
                      int16_t(geometry_.x), int16_t(geometry_.y), uint16_t(geometry_.width),
                      uint16_t(geometry_.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_BIT_GRAVITY | XCB_CW_EVENT_MASK, values);
    if (backend_.Connection().hasXInput2)
        SelectSmoothScrolling(xcb, id_);
    ResizeBackBuffer(geometry_.width, geometry_.height);
    SetFixedProperties();
    backend_.Register(this);
    xcb_flush(xcb);
}

X11Window::~X11Window() {
    backend_.Unregister(this);
    xcb_connection_t* xcb = backend_.Connection().get();
    {
        std::lock_guard lock(mutex_);
        if (front_ != XCB_NONE)
            xcb_free_pixmap(xcb, front_);
    }
    xcb_destroy_window(xcb, id_);
    xcb_flush(xcb);
    if (shared_ == nullptr)
        cairo_surface_destroy(back_);
}

PixelRect X11Window::ToPixels(const Rect& bounds) const {
    return {int(std::lround(bounds.left * scale_)), int(std::lround(bounds.top * scale_)),
            std::max(1, int(std::lround((bounds.right - bounds.left) * scale_))),
            std::max(1, int(std::lround((bounds.bottom - bounds.top) * scale_)))};
}

Rect X11Window::ToPoints(const PixelRect& pixels) const {
    Rect bounds;
    bounds.left = int16_t(std::lround(pixels.x / scale_));
    bounds.top = int16_t(std::lround(pixels.y / scale_));
    bounds.right = int16_t(bounds.left + std::lround(pixels.width / scale_));
    bounds.bottom = int16_t(bounds.top + std::lround(pixels.height / scale_));
    return bounds;
}

void X11Window::ResizeBackBuffer(int width, int height) {
    if (back_ != nullptr && cairo_image_surface_get_width(back_) == width &&
        cairo_image_surface_get_height(back_) == height)
        return;
    if (shared_ == nullptr && back_ != nullptr)
        cairo_surface_destroy(back_);
    shared_ = SharedImage::Create(backend_.Connection().get(), width, height);
    back_ = shared_ != nullptr ? shared_->Surface()
                               : cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
}

void X11Window::SetFixedProperties() {
    xcb_connection_t* xcb = backend_.Connection().get();
    const Atoms& atoms = backend_.Connection().atoms;
    const xcb_atom_t protocols[] = {atoms.WM_DELETE_WINDOW, atoms._NET_WM_PING};
    SetProperty(xcb, id_, atoms.WM_PROTOCOLS, XCB_ATOM_ATOM, 32, protocols, 2);
    uint32_t pid = uint32_t(getpid());
    SetProperty(xcb, id_, atoms._NET_WM_PID, XCB_ATOM_CARDINAL, 32, &pid, 1);
    std::string host = HostName();
    SetProperty(xcb, id_, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, 8, host.data(), host.size());
    xcb_window_t leader = backend_.Leader();
    SetProperty(xcb, id_, atoms.WM_CLIENT_LEADER, XCB_ATOM_WINDOW, 32, &leader, 1);
    // WM_CLASS: instance and class, each ending in a nul.
    std::string name = program_invocation_short_name;
    std::string className = name;
    if (!className.empty())
        className[0] = char(std::toupper(static_cast<unsigned char>(className[0])));
    std::string wmClass = name + '\0' + className + '\0';
    SetProperty(xcb, id_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, wmClass.data(), wmClass.size());
    // WM_HINTS: flags (input), input = true, so the window manager gives us the keyboard.
    const uint32_t hints[9] = {1, 1, 0, 0, 0, 0, 0, 0, 0};
    SetProperty(xcb, id_, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32, hints, 9);
    xcb_atom_t type = windowClass_ == kDocumentWindowClass ? atoms._NET_WM_WINDOW_TYPE_NORMAL
                                                           : atoms._NET_WM_WINDOW_TYPE_DIALOG;
    SetProperty(xcb, id_, atoms._NET_WM_WINDOW_TYPE, XCB_ATOM_ATOM, 32, &type, 1);
    const uint32_t xdndVersion = 5;
    SetProperty(xcb, id_, atoms.XdndAware, XCB_ATOM_ATOM, 32, &xdndVersion, 1);
    SetSizeHints(geometry_);
}

void X11Window::SetSizeHints(const PixelRect& geometry) {
    uint32_t hints[18] = {};
    hints[0] = kUSPosition | kPMinSize | kPWinGravity;
    auto* live = toolbox::windows::Live(window_);
    bool resizable = live != nullptr && (live->attributes & kWindowResizableAttribute);
    Point minimum{0, 0};
    if (live != nullptr && resizable) {
        toolbox::EventHolder ask(kEventClassWindow, kEventWindowGetMinimumSize);
        WindowRef ref = window_;
        toolbox::SetParam(ask.get(), kEventParamDirectObject, typeWindowRef, ref);
        if (SendEventToEventTargetWithOptions(ask.get(), live->Target(),
                                              kEventTargetDontPropagate) == noErr)
            toolbox::GetParam(ask.get(), kEventParamDimensions, typeQDPoint, &minimum);
    }
    hints[5] = resizable ? uint32_t(std::lround(minimum.h * scale_)) : uint32_t(geometry.width);
    hints[6] = resizable ? uint32_t(std::lround(minimum.v * scale_)) : uint32_t(geometry.height);
    if (!resizable) {
        hints[0] |= kPMaxSize;
        hints[7] = uint32_t(geometry.width);
        hints[8] = uint32_t(geometry.height);
    }
    hints[17] = kStaticGravity;
    SetProperty(backend_.Connection().get(), id_, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS,
                32, hints, 18);
}

// A modal window or sheet stays above the window it belongs to: its sheet parent, else the
// frontmost other window of the process. A sheet hangs from the top of its parent's content,
// so it has a border but no title bar, which would cover the parent's.
void X11Window::SetModalProperties() {
    xcb_connection_t* xcb = backend_.Connection().get();
    const Atoms& atoms = backend_.Connection().atoms;
    auto* live = toolbox::windows::Live(window_);
    if (live == nullptr || !IsModalClass(windowClass_))
        return;
    xcb_window_t owner = XCB_NONE;
    if (auto parent = live->sheetParent.lock()) {
        owner = backend_.XWindowFor(parent->Ref());
        // Flags (decorations given), functions, decorations (the border alone), input mode,
        // status.
        const uint32_t borderOnly[5] = {2, 0, 2, 0, 0};
        SetProperty(xcb, id_, atoms._MOTIF_WM_HINTS, atoms._MOTIF_WM_HINTS, 32, borderOnly, 5);
    }
    for (const auto& other : toolbox::windows::All())
        if (owner == XCB_NONE && other.get() != live && other->IsVisible())
            owner = backend_.XWindowFor(other->Ref());
    if (owner != XCB_NONE)
        SetProperty(xcb, id_, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, &owner, 1);
    SetProperty(xcb, id_, atoms._NET_WM_STATE, XCB_ATOM_ATOM, 32, &atoms._NET_WM_STATE_MODAL, 1);
}

void X11Window::MoveOntoAMonitor() {
    PixelRect placed = PlaceOnNearestMonitor(geometry_, backend_.Monitors());
    if (!(placed == geometry_))
        MoveTo(placed);
}

// Goes somewhere the toolbox did not ask for; the toolbox learns the new place from its own
// loop.
void X11Window::MoveTo(const PixelRect& placed) {
    Rect bounds = ToPoints(placed);
    WindowRef ref = window_;
    backend_.OnMainThread([ref, bounds] {
        if (auto* live = toolbox::windows::Live(ref))
            live->SetContentBounds(bounds);
    });
    Configure(placed);
}

void X11Window::SetVisible(bool visible) {
    xcb_connection_t* xcb = backend_.Connection().get();
    if (visible) {
        shown_ = true;
        MoveOntoAMonitor();
        SetSizeHints(geometry_);
        SetModalProperties();
        xcb_map_window(xcb, id_);
    } else {
        shown_ = false;
        xcb_unmap_window(xcb, id_);
    }
    xcb_flush(xcb);
}

void X11Window::SetTitle(const std::string& title) {
    xcb_connection_t* xcb = backend_.Connection().get();
    const Atoms& atoms = backend_.Connection().atoms;
    SetProperty(xcb, id_, atoms._NET_WM_NAME, atoms.UTF8_STRING, 8, title.data(), title.size());
    SetProperty(xcb, id_, XCB_ATOM_WM_NAME, atoms.UTF8_STRING, 8, title.data(), title.size());
    xcb_flush(xcb);
}

// A shown window that grows, as a dialog does when it discloses more, stays whole on its
// monitor rather than running off the bottom of the screen.
void X11Window::SetContentBounds(const Rect& globalBounds) {
    PixelRect wanted = ToPixels(globalBounds);
    PixelRect now;
    {
        std::lock_guard lock(mutex_);
        now = geometry_;
    }
    if (shown_ && (wanted.width > now.width || wanted.height > now.height)) {
        PixelRect kept = KeepWholeOnMonitor(wanted, backend_.Monitors());
        if (!(kept == wanted)) {
            MoveTo(kept);
            return;
        }
    }
    Configure(wanted);
}

void X11Window::Configure(const PixelRect& wanted) {
    ResizeBackBuffer(wanted.width, wanted.height);
    std::lock_guard lock(mutex_);
    if (wanted == geometry_)
        return;
    geometry_ = wanted;
    const uint32_t values[] = {uint32_t(wanted.x), uint32_t(wanted.y), uint32_t(wanted.width),
                               uint32_t(wanted.height)};
    const uint16_t mask = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                          XCB_CONFIG_WINDOW_HEIGHT;
    xcb_void_cookie_t request =
        xcb_configure_window(backend_.Connection().get(), id_, mask, values);
    lastConfigure_ = uint16_t(request.sequence);
    xcb_flush(backend_.Connection().get());
}

PixelRect X11Window::Geometry() {
    std::lock_guard lock(mutex_);
    return geometry_;
}

bool X11Window::NoteGeometry(const PixelRect& geometry, uint16_t sequence) {
    std::lock_guard lock(mutex_);
    // Sequence numbers wrap at 16 bits.
    if (lastConfigure_ && int16_t(uint16_t(sequence - *lastConfigure_)) < 0)
        return false;
    if (geometry == geometry_)
        return false;
    geometry_ = geometry;
    return true;
}

void X11Window::Present() {
    xcb_connection_t* xcb = backend_.Connection().get();
    int width = cairo_image_surface_get_width(back_);
    int height = cairo_image_surface_get_height(back_);
    std::lock_guard lock(mutex_);
    if (front_ == XCB_NONE || frontWidth_ != width || frontHeight_ != height) {
        if (front_ != XCB_NONE)
            xcb_free_pixmap(xcb, front_);
        front_ = xcb_generate_id(xcb);
        xcb_create_pixmap(xcb, backend_.Connection().Screen()->root_depth, front_, id_,
                          uint16_t(width), uint16_t(height));
        frontWidth_ = width;
        frontHeight_ = height;
    }
    uint8_t depth = backend_.Connection().Screen()->root_depth;
    if (shared_ != nullptr)
        shared_->PutInto(front_, depth);
    else
        UploadSurface(xcb, front_, depth, back_);
    CopyFrontLocked(0, 0, width, height);
}

void X11Window::Expose(int x, int y, int width, int height) {
    std::lock_guard lock(mutex_);
    if (front_ != XCB_NONE)
        CopyFrontLocked(x, y, width, height);
}

void X11Window::CopyFrontLocked(int x, int y, int width, int height) {
    xcb_connection_t* xcb = backend_.Connection().get();
    xcb_gcontext_t gc = xcb_generate_id(xcb);
    const uint32_t noExposures = 0;
    xcb_create_gc(xcb, gc, id_, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    xcb_copy_area(xcb, front_, id_, gc, int16_t(x), int16_t(y), int16_t(x), int16_t(y),
                  uint16_t(width), uint16_t(height));
    xcb_free_gc(xcb, gc);
    xcb_flush(xcb);
}

void X11Window::SetCursor(xcb_cursor_t cursor) {
    xcb_change_window_attributes(backend_.Connection().get(), id_, XCB_CW_CURSOR, &cursor);
}

} // namespace basalt::x11
