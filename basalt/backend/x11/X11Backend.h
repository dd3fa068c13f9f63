#pragma once

// The X11 backend: real windows on an X display over xcb, drawn with cairo, the keyboard
// through xkbcommon.
//
// Threads: the toolbox runs on the main thread and calls the backend there. One event thread
// reads the connection and turns X events into toolbox events posted to the main queue; it
// also serves what needs no toolbox state (repainting exposed areas from a window's front
// buffer, clipboard requests, drag-and-drop protocol replies). Work that needs the toolbox
// goes to the main thread through OnMainThread. The window registry is shared under a mutex;
// a window leaves it before it is destroyed.

#include "basalt/backend/x11/X11Connection.h"
#include "basalt/backend/x11/X11Screens.h"
#include "basalt/toolbox/backend/Backend.h"

#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace basalt::x11 {

class X11Window;
class X11Input;
class X11Clipboard;
class X11Dnd;

class X11Backend final : public toolbox::Backend {
public:
    // Connects and starts the event thread; null with the reason when there is no display.
    static std::unique_ptr<X11Backend> Start(std::string& failure);
    ~X11Backend() override;

    std::string Name() const override { return "x11"; }
    std::unique_ptr<toolbox::BackendWindow> CreateWindow(WindowRef window, WindowClass windowClass,
                                                         const Rect& contentBounds) override;
    Rect DisplayBounds() const override;
    Rect GreatestAreaDisplay(const Rect& window) const override;
    int16_t MenuBarHeight() const override { return 0; }
    Rect AvailableBounds() const override;
    void Beep() override;
    MenuItemIndex TrackPopupMenu(MenuRef menu, Point where, MenuItemIndex current) override;
    void SetClipboardText(const std::string& utf8) override;
    std::string ClipboardText() override;
    void SetCursor(uint32_t themeCursor) override;

    X11Connection& Connection() { return *connection_; }
    // The pointer shape for a theme cursor number, loaded once; XCB_NONE if the server has none.
    xcb_cursor_t Cursor(uint32_t themeCursor);
    double Scale() const { return scale_; }
    xcb_window_t Leader() const { return leader_; }
    std::vector<PixelRect> Monitors() const;
    // Where the pointer is, global points; nullopt if the server does not say.
    std::optional<BGPoint> Pointer();

    // Queues work for the main thread's event loop; callable from any thread.
    void OnMainThread(std::function<void()> work);

    // The registry of live windows, for the event thread.
    void Register(X11Window* window);
    void Unregister(X11Window* window);
    // Calls use with the window of that id under the registry's lock, if it is one of ours.
    bool WithWindow(xcb_window_t id, const std::function<void(X11Window&)>& use);
    // The X window showing a toolbox window, XCB_NONE if none, and back.
    xcb_window_t XWindowFor(WindowRef window);
    WindowRef WindowRefFor(xcb_window_t id);

private:
    explicit X11Backend(std::unique_ptr<X11Connection> connection);
    void CreateLeader();
    void SelectRootEvents();
    void InstallMainThreadHandler();
    void RunMainThreadWork();
    void ReadEvents();
    void Dispatch(xcb_generic_event_t* event);
    void DispatchClientMessage(const xcb_client_message_event_t& message);
    void DispatchXkb(xcb_generic_event_t* event);
    void ScreensChanged();
    void WindowConfigured(const xcb_configure_notify_event_t& configure);
    void TellToolboxGeometry(xcb_window_t id);
    void CloseRequested(xcb_window_t id);
    void FocusChanged(const xcb_focus_in_event_t& focus, bool in);
    [[noreturn]] void DisplayLost();

    std::unique_ptr<X11Connection> connection_;
    double scale_ = 1;
    xcb_window_t leader_ = XCB_NONE;
    mutable std::mutex monitorsMutex_;
    std::vector<PixelRect> monitors_;
    std::optional<PixelRect> workArea_;
    std::unique_ptr<X11Input> input_;
    std::unique_ptr<X11Clipboard> clipboard_;
    std::unique_ptr<X11Dnd> dnd_;
    xcb_cursor_t cursor_ = XCB_NONE;
    void* cursorContext_ = nullptr;
    std::map<uint32_t, xcb_cursor_t> cursors_;

    std::mutex windowsMutex_;
    std::map<xcb_window_t, X11Window*> windows_;

    std::mutex workMutex_;
    std::deque<std::function<void()>> work_;
    EventHandlerRef workHandler_ = nullptr;

    std::atomic<bool> stopping_ = false;
    // Which of our windows has the keyboard, if one does (event thread writes).
    std::atomic<xcb_window_t> focused_ = XCB_NONE;
    std::thread reader_;
};

// The running backend if it is this one, else null.
X11Backend* ActiveX11Backend();

} // namespace basalt::x11
