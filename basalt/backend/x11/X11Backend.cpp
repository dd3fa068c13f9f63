#include "basalt/backend/x11/X11Backend.h"

#include "basalt/backend/x11/X11Clipboard.h"
#include "basalt/backend/x11/X11Dnd.h"
#include "basalt/backend/x11/X11Input.h"
#include "basalt/backend/x11/X11MenuWindow.h"
#include "basalt/backend/x11/X11Window.h"
#include "basalt/backend/x11/X11Xkb.h"
#include "basalt/graphics/DisplayChanges.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/menus/PopupMenuSession.h"
#include "basalt/toolbox/windows/Window.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <cstdio>
#include <cstdlib>
#include <xcb/randr.h>
#include <xcb/xcb_cursor.h>

namespace basalt::x11 {
namespace {

// Posted to wake the main thread for queued work.
constexpr EventClass kEventClassBackendWork = 0x6B783131; // "kx11"
constexpr EventKind kEventBackendWork = 1;
constexpr uint16_t kEscapeKeyCode = 0x35;
// The display id the callbacks hear of; the monitors together count as one display.
constexpr BGDirectDisplayID kMainDisplay = 1;

StatusCode RunWork(EventHandlerCallRef, EventRef, void* backend) {
    static_cast<X11Backend*>(backend)->OnMainThread(nullptr);
    return noErr;
}

const char* CursorName(uint32_t themeCursor) {
    switch (themeCursor) {
    case kThemeIBeamCursor:
        return "xterm";
    case kThemeCrossCursor:
        return "crosshair";
    case kThemeWatchCursor:
    case kThemeSpinningCursor:
        return "watch";
    case kThemePointingHandCursor:
        return "hand2";
    case kThemeResizeLeftCursor:
    case kThemeResizeRightCursor:
    case kThemeResizeLeftRightCursor:
        return "sb_h_double_arrow";
    case kThemeResizeUpCursor:
    case kThemeResizeDownCursor:
    case kThemeResizeUpDownCursor:
        return "sb_v_double_arrow";
    case kThemeNotAllowedCursor:
        return "crossed_circle";
    default:
        return "left_ptr";
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    toolbox::RegisterBackend("x11", true, [](std::string& failure) {
        std::unique_ptr<toolbox::Backend> backend = X11Backend::Start(failure);
        return backend;
    });
    return true;
}();

} // namespace

X11Backend* ActiveX11Backend() {
    return dynamic_cast<X11Backend*>(toolbox::TryCurrentBackend());
}

std::unique_ptr<X11Backend> X11Backend::Start(std::string& failure) {
    std::unique_ptr<X11Connection> connection = X11Connection::Open(failure);
    if (connection == nullptr)
        return nullptr;
    std::unique_ptr<X11Keyboard> keyboard =
        X11Keyboard::FromServer(connection->get(), connection->xkbDevice, failure);
    if (keyboard == nullptr)
        return nullptr;
    std::unique_ptr<X11Backend> backend(new X11Backend(std::move(connection)));
    backend->input_ = std::make_unique<X11Input>(*backend, std::move(keyboard));
    backend->reader_ = std::thread([raw = backend.get()] { raw->ReadEvents(); });
    return backend;
}

X11Backend::X11Backend(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)) {
    scale_ = ChooseScale(std::getenv("GDK_SCALE"), ReadResourceDatabase(*connection_));
    monitors_ = QueryMonitors(*connection_);
    workArea_ = QueryWorkArea(*connection_);
    CreateLeader();
    SelectRootEvents();
    clipboard_ = std::make_unique<X11Clipboard>(*connection_, leader_);
    dnd_ = std::make_unique<X11Dnd>(*this);
    InstallMainThreadHandler();
    xcb_flush(connection_->get());
}

X11Backend::~X11Backend() {
    stopping_ = true;
    xcb_client_message_event_t wake{};
    wake.response_type = XCB_CLIENT_MESSAGE;
    wake.format = 32;
    wake.window = leader_;
    wake.type = connection_->atoms.KEL_WAKE;
    xcb_send_event(connection_->get(), 0, leader_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&wake));
    xcb_flush(connection_->get());
    if (reader_.joinable())
        reader_.join();
    for (const auto& [theme, cursor] : cursors_)
        xcb_free_cursor(connection_->get(), cursor);
    if (cursorContext_ != nullptr)
        xcb_cursor_context_free(static_cast<xcb_cursor_context_t*>(cursorContext_));
}

// An unmapped window of our own: the clipboard's owner and requestor and the group leader.
void X11Backend::CreateLeader() {
    xcb_connection_t* xcb = connection_->get();
    leader_ = xcb_generate_id(xcb);
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, leader_, connection_->Root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

void X11Backend::SelectRootEvents() {
    xcb_connection_t* xcb = connection_->get();
    const uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                            XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    const uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                              XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_EXPLICIT_COMPONENTS |
                              XCB_XKB_MAP_PART_KEY_ACTIONS | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                              XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(xcb, xcb_xkb_device_spec_t(connection_->xkbDevice), events, 0, events,
                          mapParts, mapParts, nullptr);
    // A held key repeats as presses without releases between them.
    xcb_xkb_per_client_flags(xcb, xcb_xkb_device_spec_t(connection_->xkbDevice),
                             XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                             XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
    // A change of the RandR monitors alone reaches us as the root's configure notice; one of
    // the work area as a change of its property.
    const uint32_t rootEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb, connection_->Root(), XCB_CW_EVENT_MASK, &rootEvents);
    if (connection_->hasRandR)
        xcb_randr_select_input(xcb, connection_->Root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
}

void X11Backend::InstallMainThreadHandler() {
    const EventTypeSpec spec = {kEventClassBackendWork, kEventBackendWork};
    InstallEventHandler(GetApplicationEventTarget(), RunWork, 1, &spec, this, &workHandler_);
}

void X11Backend::OnMainThread(std::function<void()> work) {
    if (work != nullptr) {
        std::lock_guard lock(workMutex_);
        work_.push_back(std::move(work));
        toolbox::EventHolder wake(kEventClassBackendWork, kEventBackendWork);
        PostEventToQueue(GetMainEventQueue(), wake.get(), kEventPriorityStandard);
        return;
    }
    RunMainThreadWork();
}

void X11Backend::RunMainThreadWork() {
    for (;;) {
        std::function<void()> work;
        {
            std::lock_guard lock(workMutex_);
            if (work_.empty())
                return;
            work = std::move(work_.front());
            work_.pop_front();
        }
        work();
    }
}

std::unique_ptr<toolbox::BackendWindow>
X11Backend::CreateWindow(WindowRef window, WindowClass windowClass, const Rect& contentBounds) {
    auto created = std::make_unique<X11Window>(*this, window, windowClass, contentBounds);
    // Without a cursor of its own a window shows the root's, which is no arrow.
    if (cursor_ == XCB_NONE)
        cursor_ = Cursor(kThemeArrowCursor);
    if (cursor_ != XCB_NONE)
        created->SetCursor(cursor_);
    return created;
}

void X11Backend::Register(X11Window* window) {
    std::lock_guard lock(windowsMutex_);
    windows_[window->Id()] = window;
}

void X11Backend::Unregister(X11Window* window) {
    std::lock_guard lock(windowsMutex_);
    windows_.erase(window->Id());
}

bool X11Backend::WithWindow(xcb_window_t id, const std::function<void(X11Window&)>& use) {
    std::lock_guard lock(windowsMutex_);
    auto it = windows_.find(id);
    if (it == windows_.end())
        return false;
    use(*it->second);
    return true;
}

xcb_window_t X11Backend::XWindowFor(WindowRef window) {
    std::lock_guard lock(windowsMutex_);
    for (const auto& [id, shown] : windows_)
        if (shown->Ref() == window)
            return id;
    return XCB_NONE;
}

WindowRef X11Backend::WindowRefFor(xcb_window_t id) {
    WindowRef ref = nullptr;
    WithWindow(id, [&](X11Window& window) { ref = window.Ref(); });
    return ref;
}

std::vector<PixelRect> X11Backend::Monitors() const {
    std::lock_guard lock(monitorsMutex_);
    return monitors_;
}

namespace {
Rect PointsOf(const PixelRect& pixels, double scale) {
    return {int16_t(pixels.y / scale), int16_t(pixels.x / scale),
            int16_t((pixels.y + pixels.height) / scale),
            int16_t((pixels.x + pixels.width) / scale)};
}
} // namespace

Rect X11Backend::DisplayBounds() const {
    return PointsOf(Monitors().front(), scale_);
}

Rect X11Backend::AvailableBounds() const {
    std::lock_guard lock(monitorsMutex_);
    return PointsOf(UsablePart(monitors_.front(), workArea_), scale_);
}

Rect X11Backend::GreatestAreaDisplay(const Rect& window) const {
    PixelRect pixels{int(window.left * scale_), int(window.top * scale_),
                     int((window.right - window.left) * scale_),
                     int((window.bottom - window.top) * scale_)};
    return PointsOf(GreatestAreaMonitor(pixels, Monitors()), scale_);
}

void X11Backend::Beep() {
    xcb_bell(connection_->get(), 0);
    xcb_flush(connection_->get());
}

MenuItemIndex X11Backend::TrackPopupMenu(MenuRef menu, Point where, MenuItemIndex current) {
    if (!toolbox::IsLiveMenu(menu))
        return 0;
    Rect screen =
        GreatestAreaDisplay({where.v, where.h, int16_t(where.v + 1), int16_t(where.h + 1)});
    return toolbox::menus::RunPopupMenu(
        *toolbox::Menu::From(menu), where, current, screen,
        [this](const Rect& frame) { return X11MenuWindow::Open(*this, frame); }, Pointer());
}

std::optional<BGPoint> X11Backend::Pointer() {
    xcb_connection_t* xcb = connection_->get();
    xcb_query_pointer_reply_t* reply =
        xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, connection_->Root()), nullptr);
    if (reply == nullptr)
        return std::nullopt;
    BGPoint global = {reply->root_x / scale_, reply->root_y / scale_};
    std::free(reply);
    return global;
}

void X11Backend::SetClipboardText(const std::string& utf8) {
    clipboard_->Set(utf8);
}

std::string X11Backend::ClipboardText() {
    return clipboard_->Get();
}

xcb_cursor_t X11Backend::Cursor(uint32_t themeCursor) {
    if (cursorContext_ == nullptr) {
        xcb_cursor_context_t* context = nullptr;
        if (xcb_cursor_context_new(connection_->get(), connection_->Screen(), &context) < 0)
            return XCB_NONE;
        cursorContext_ = context;
    }
    auto [it, added] = cursors_.try_emplace(themeCursor, XCB_NONE);
    if (added)
        it->second = xcb_cursor_load_cursor(static_cast<xcb_cursor_context_t*>(cursorContext_),
                                            CursorName(themeCursor));
    return it->second;
}

void X11Backend::SetCursor(uint32_t themeCursor) {
    xcb_connection_t* xcb = connection_->get();
    cursor_ = Cursor(themeCursor);
    if (cursor_ == XCB_NONE)
        return;
    std::lock_guard lock(windowsMutex_);
    for (const auto& [id, window] : windows_)
        window->SetCursor(cursor_);
    xcb_flush(xcb);
}

void X11Backend::ReadEvents() {
    for (;;) {
        xcb_generic_event_t* event = xcb_wait_for_event(connection_->get());
        if (event == nullptr) {
            if (stopping_)
                return;
            DisplayLost();
        }
        Dispatch(event);
        std::free(event);
        if (stopping_)
            return;
    }
}

void X11Backend::DisplayLost() {
    std::fprintf(stderr, "the X display \"%s\" went away: %s\n", connection_->DisplayName().c_str(),
                 DescribeConnectionError(xcb_connection_has_error(connection_->get())));
    std::fflush(nullptr);
    std::_Exit(2);
}

void X11Backend::Dispatch(xcb_generic_event_t* event) {
    uint8_t type = event->response_type & 0x7F;
    if (type == connection_->xkbEventBase) {
        DispatchXkb(event);
        return;
    }
    if (connection_->hasRandR &&
        (type == connection_->randrEventBase + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
         type == connection_->randrEventBase + XCB_RANDR_NOTIFY)) {
        ScreensChanged();
        return;
    }
    switch (type) {
    case XCB_EXPOSE: {
        auto* expose = reinterpret_cast<xcb_expose_event_t*>(event);
        WithWindow(expose->window, [&](X11Window& window) {
            window.Expose(expose->x, expose->y, expose->width, expose->height);
        });
        break;
    }
    case XCB_CONFIGURE_NOTIFY: {
        auto* configure = reinterpret_cast<xcb_configure_notify_event_t*>(event);
        if (configure->window == connection_->Root())
            ScreensChanged();
        else
            WindowConfigured(*configure);
        break;
    }
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
        input_->Button(*reinterpret_cast<xcb_button_press_event_t*>(event),
                       type == XCB_BUTTON_PRESS);
        break;
    case XCB_MOTION_NOTIFY:
        input_->Motion(*reinterpret_cast<xcb_motion_notify_event_t*>(event));
        break;
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        input_->Key(*reinterpret_cast<xcb_key_press_event_t*>(event), type == XCB_KEY_PRESS);
        break;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        FocusChanged(*reinterpret_cast<xcb_focus_in_event_t*>(event), type == XCB_FOCUS_IN);
        break;
    case XCB_KEYMAP_NOTIFY:
        input_->Keyboard().KeysHeld(reinterpret_cast<xcb_keymap_notify_event_t*>(event)->keys);
        break;
    case XCB_GE_GENERIC:
        if (reinterpret_cast<xcb_ge_generic_event_t*>(event)->extension ==
            connection_->xinputOpcode)
            input_->XInput2(*reinterpret_cast<xcb_ge_generic_event_t*>(event));
        break;
    case XCB_CLIENT_MESSAGE:
        DispatchClientMessage(*reinterpret_cast<xcb_client_message_event_t*>(event));
        break;
    case XCB_SELECTION_REQUEST:
        clipboard_->Request(*reinterpret_cast<xcb_selection_request_event_t*>(event));
        break;
    case XCB_PROPERTY_NOTIFY: {
        auto* notify = reinterpret_cast<xcb_property_notify_event_t*>(event);
        if (notify->window != connection_->Root())
            clipboard_->PropertyChanged(*notify);
        else if (notify->atom == connection_->atoms._NET_WORKAREA ||
                 notify->atom == connection_->atoms._NET_CURRENT_DESKTOP)
            ScreensChanged();
        break;
    }
    case XCB_SELECTION_CLEAR:
        clipboard_->Lost(*reinterpret_cast<xcb_selection_clear_event_t*>(event));
        break;
    case XCB_SELECTION_NOTIFY: {
        auto* notify = reinterpret_cast<xcb_selection_notify_event_t*>(event);
        if (!clipboard_->Answered(*notify))
            dnd_->Received(*notify);
        break;
    }
    default:
        break;
    }
}

void X11Backend::DispatchClientMessage(const xcb_client_message_event_t& message) {
    const Atoms& atoms = connection_->atoms;
    if (message.type == atoms.WM_PROTOCOLS && message.data.data32[0] == atoms.WM_DELETE_WINDOW) {
        CloseRequested(message.window);
    } else if (message.type == atoms.WM_PROTOCOLS && message.data.data32[0] == atoms._NET_WM_PING) {
        // The window manager asks whether we still answer: send the message back to the root.
        xcb_client_message_event_t pong = message;
        pong.window = connection_->Root();
        xcb_send_event(connection_->get(), 0, connection_->Root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&pong));
        xcb_flush(connection_->get());
    } else {
        dnd_->Handle(message);
    }
}

void X11Backend::DispatchXkb(xcb_generic_event_t* event) {
    // XKB events share one event code; the kind is in the second byte.
    switch (reinterpret_cast<const uint8_t*>(event)[1]) {
    case XCB_XKB_STATE_NOTIFY: {
        auto* state = reinterpret_cast<xcb_xkb_state_notify_event_t*>(event);
        input_->Keyboard().UpdateMask(state->baseMods, state->latchedMods, state->lockedMods,
                                      xkb_layout_index_t(state->baseGroup),
                                      xkb_layout_index_t(state->latchedGroup),
                                      xkb_layout_index_t(state->lockedGroup));
        break;
    }
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        input_->Keyboard().Reload(connection_->get(), connection_->xkbDevice);
        break;
    default:
        break;
    }
}

void X11Backend::ScreensChanged() {
    {
        std::lock_guard lock(monitorsMutex_);
        monitors_ = QueryMonitors(*connection_);
        workArea_ = QueryWorkArea(*connection_);
    }
    OnMainThread(
        [] { graphics::NotifyDisplayReconfiguration(kMainDisplay, kBGDisplaySetModeFlag); });
}

void X11Backend::WindowConfigured(const xcb_configure_notify_event_t& configure) {
    PixelRect geometry{configure.x, configure.y, configure.width, configure.height};
    bool synthetic = (configure.response_type & 0x80) != 0;
    if (!synthetic) {
        // A real notice is relative to the parent, which a window manager's frame may be.
        xcb_translate_coordinates_reply_t* root = xcb_translate_coordinates_reply(
            connection_->get(),
            xcb_translate_coordinates(connection_->get(), configure.window, connection_->Root(), 0,
                                      0),
            nullptr);
        if (root != nullptr) {
            geometry.x = root->dst_x;
            geometry.y = root->dst_y;
        }
        std::free(root);
    }
    bool changed = false;
    WithWindow(configure.window, [&](X11Window& window) {
        changed = window.NoteGeometry(geometry, configure.sequence);
    });
    if (changed)
        OnMainThread([this, id = configure.window] { TellToolboxGeometry(id); });
}

// Notices queue up, and the toolbox passes what it is told back to the window: so it is told
// the newest geometry, which each later notice then finds in place, rather than each in turn,
// which would ask the server for the older places again.
void X11Backend::TellToolboxGeometry(xcb_window_t id) {
    WindowRef ref = nullptr;
    Rect bounds{};
    WithWindow(id, [&](X11Window& window) {
        ref = window.Ref();
        bounds = window.ToPoints(window.Geometry());
    });
    toolbox::Window* live = toolbox::windows::Live(ref);
    if (live == nullptr)
        return;
    const Rect& now = live->ContentBounds();
    bool sameSize = bounds.right - bounds.left == now.right - now.left &&
                    bounds.bottom - bounds.top == now.bottom - now.top;
    if (sameSize) {
        // A sheet is attached to its parent: it goes where the window manager took it.
        Rect before = live->ContentBounds();
        live->SetContentBounds(bounds);
        if (toolbox::Window* sheet = live->VisibleSheet()) {
            Rect moved = sheet->ContentBounds();
            OffsetRect(&moved, int16_t(bounds.left - before.left),
                       int16_t(bounds.top - before.top));
            sheet->SetContentBounds(moved);
        }
        return;
    }
    // A new size goes through the window's handlers, which know its minimum.
    toolbox::EventHolder event(kEventClassWindow, kEventWindowBoundsChanging);
    toolbox::SetParam(event.get(), kEventParamDirectObject, typeWindowRef, ref);
    toolbox::SetParam(event.get(), kEventParamCurrentBounds, typeQDRectangle, bounds);
    SendEventToEventTarget(event.get(), live->Target());
}

// The keyboard moving between our windows goes out of one and into the other; the toolbox
// hears only the outcome, once both notices are in, so the windows do not blink inactive.
void X11Backend::FocusChanged(const xcb_focus_in_event_t& focus, bool in) {
    if (focus.mode == XCB_NOTIFY_MODE_GRAB || focus.mode == XCB_NOTIFY_MODE_UNGRAB ||
        focus.detail == XCB_NOTIFY_DETAIL_INFERIOR)
        return;
    if (in) {
        focused_ = focus.event;
    } else {
        xcb_window_t expected = focus.event;
        if (focused_.compare_exchange_strong(expected, XCB_NONE))
            input_->Keyboard().FocusLeft();
    }
    OnMainThread([this] { toolbox::windows::SetApplicationActive(focused_ != XCB_NONE); });
}

// The window manager's close button: a window with a close box closes; a dialog takes it as
// the user's cancel gesture (Escape), so its cancel button or its own key filter answers; a
// window that the modal state shuts out beeps.
void X11Backend::CloseRequested(xcb_window_t id) {
    WindowRef ref = WindowRefFor(id);
    OnMainThread([this, ref] {
        toolbox::Window* live = toolbox::windows::Live(ref);
        if (live == nullptr)
            return;
        if (!toolbox::windows::AcceptsInput(live) || toolbox::windows::UserFocus() != live) {
            Beep();
        } else if (live->attributes & kWindowCloseBoxAttribute) {
            toolbox::EventHolder close(kEventClassWindow, kEventWindowClose);
            WindowRef target = ref;
            toolbox::SetParam(close.get(), kEventParamDirectObject, typeWindowRef, target);
            SendEventToEventTarget(close.get(), live->Target());
        } else {
            const std::u16string escape(1, char16_t(0x1B));
            PostKey(kEventRawKeyDown, kEscapeKeyCode, 0, escape);
            PostKey(kEventRawKeyUp, kEscapeKeyCode, 0, escape);
        }
    });
}

} // namespace basalt::x11
