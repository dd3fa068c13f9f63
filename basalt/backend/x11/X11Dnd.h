#pragma once

// Receiving drops over XDND (version 5 and older down to 3): a source that offers
// text/uri-list is told we accept a copy; at the drop we ask for the list, and the event
// thread hands the file URLs to the toolbox's drop handlers on the main thread, whose answer
// goes back to the source as XdndFinished. One drag at a time, as the protocol has it.

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
    void Reply(xcb_window_t source, xcb_window_t target, xcb_atom_t type, uint32_t flags,
               xcb_atom_t action) const;
    bool Offers(const std::vector<xcb_atom_t>& types) const;

    X11Backend& backend_;
    xcb_window_t source_ = XCB_NONE;
    xcb_window_t target_ = XCB_NONE;
    bool offersURIs_ = false;
    int rootX_ = 0, rootY_ = 0;
};

} // namespace basalt::x11
