#pragma once

// The toolbox's clipboard over the CLIPBOARD selection. Putting text takes ownership of the
// selection, and the event thread serves other programs' requests (UTF8_STRING, text/plain)
// while we own it. Reading asks the owner for UTF8_STRING and waits, with a deadline, for the
// event thread to hand the answer over.

#include "basalt/backend/x11/X11Connection.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

namespace basalt::x11 {

class X11Clipboard {
public:
    X11Clipboard(X11Connection& connection, xcb_window_t owner)
        : connection_(connection), owner_(owner) {}

    void Set(const std::string& utf8);
    std::string Get();

    // Event thread.
    void Request(const xcb_selection_request_event_t& request);
    void Lost(const xcb_selection_clear_event_t& clear);
    // True if the notice answered our own request.
    bool Answered(const xcb_selection_notify_event_t& notify);

private:
    bool ServeTarget(const xcb_selection_request_event_t& request, xcb_atom_t property);

    X11Connection& connection_;
    xcb_window_t owner_;
    std::mutex mutex_;
    std::condition_variable answered_;
    bool owned_ = false;
    std::string text_;
    std::optional<std::string> answer_;
};

} // namespace basalt::x11
