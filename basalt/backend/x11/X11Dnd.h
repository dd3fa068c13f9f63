#pragma once

// Receiving drops over XDND (version 5 and older down to 3). At the first position of a
// source that offers text/uri-list we ask for the list; from then on each position goes to
// the window's drag handlers on the main thread (an IncomingDrag), whose verdict goes back as
// XdndStatus, so the source shows whether the window would take it. The drop goes to the same
// handlers, and their answer back as XdndFinished. One drag at a time, as the protocol has it.
//
// Threads: the protocol state is the event thread's; the IncomingDrag is the main thread's.

#include "basalt/toolbox/drag/Drag.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace basalt::x11 {

class X11Backend;

// The file URLs of a text/uri-list: CRLF or LF lines, comments (#) skipped, other schemes
// than file: dropped.
std::vector<std::string> FileURLsOfURIList(std::string_view list);

class X11Dnd {
public:
    explicit X11Dnd(X11Backend& backend) : backend_(backend) {}

    // Event thread: the XDND client messages and the answer to our request for the data.
    bool Handle(const xcb_client_message_event_t& message);
    bool Received(const xcb_selection_notify_event_t& notify);

private:
    void Enter(const xcb_client_message_event_t& message);
    void Position(const xcb_client_message_event_t& message);
    void Drop(const xcb_client_message_event_t& message);
    void Leave();
    // Asks the source for its list, once per drag.
    void Fetch(xcb_timestamp_t time);
    // Main thread, with the list: the handlers' verdict on the position, and the drop.
    void AnswerPosition();
    void DeliverDrop();
    // The drag as the main thread follows it, made for the window at the first position.
    toolbox::drag::IncomingDrag& SessionFor(WindowRef window, const std::vector<std::string>& urls);
    Point Mouse() const;
    void Reply(xcb_window_t source, xcb_window_t target, xcb_atom_t type, uint32_t flags,
               xcb_atom_t action) const;
    bool Offers(const std::vector<xcb_atom_t>& types) const;

    X11Backend& backend_;
    xcb_window_t source_ = XCB_NONE;
    xcb_window_t target_ = XCB_NONE;
    bool offersURIs_ = false;
    int rootX_ = 0, rootY_ = 0;
    std::optional<std::vector<std::string>> urls_;
    bool fetching_ = false;
    bool positionWaits_ = false;
    bool dropWaits_ = false;

    std::unique_ptr<toolbox::drag::IncomingDrag> session_;
};

} // namespace basalt::x11
