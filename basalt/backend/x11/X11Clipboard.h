#pragma once

// The toolbox's clipboard over the CLIPBOARD selection. Putting text takes ownership of the
// selection, and the event thread serves other programs' requests (UTF8_STRING, text/plain)
// while we own it. Reading asks the owner for UTF8_STRING and waits, with a deadline that each
// arriving piece renews, for the event thread to hand the answer over.
//
// Large texts go in pieces both ways (the INCR protocol): a text larger than kChunk is sent as
// a run of properties that the requestor takes one by one, and an owner that answers INCR is
// read piece by piece until its empty last piece.

#include "basalt/backend/x11/X11Connection.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace basalt::x11 {

class X11Clipboard {
public:
    static constexpr size_t kChunk = 256 * 1024;

    X11Clipboard(X11Connection& connection, xcb_window_t owner)
        : connection_(connection), owner_(owner) {}

    void Set(const std::string& utf8);
    std::string Get();

    // Event thread.
    void Request(const xcb_selection_request_event_t& request);
    void Lost(const xcb_selection_clear_event_t& clear);
    // True if the notice answered our own request.
    bool Answered(const xcb_selection_notify_event_t& notify);
    // Pieces of a large text: one taken by a requestor, or one arrived for us.
    void PropertyChanged(const xcb_property_notify_event_t& notify);

private:
    // A large text on its way to another program.
    struct Outgoing {
        xcb_window_t requestor;
        xcb_atom_t property, target;
        std::shared_ptr<const std::string> text;
        size_t sent = 0;
        bool ended = false; // the empty last piece is out
    };

    bool ServeTarget(const xcb_selection_request_event_t& request, xcb_atom_t property);
    void StartOutgoing(const xcb_selection_request_event_t& request, xcb_atom_t property,
                       std::shared_ptr<const std::string> text);
    // Puts the next piece; false once the transfer is over.
    bool SendPiece(Outgoing& transfer);
    void Answer(std::string value);

    X11Connection& connection_;
    xcb_window_t owner_;
    std::mutex mutex_;
    std::condition_variable answered_;
    bool owned_ = false;
    std::shared_ptr<const std::string> text_ = std::make_shared<const std::string>();
    std::optional<std::string> answer_;
    // Event thread: an incoming text in pieces, and the pieces we send.
    std::optional<std::string> incoming_;
    uint64_t progress_ = 0; // guarded by mutex_: pieces that arrived, to renew the deadline
    std::vector<Outgoing> outgoing_;
};

} // namespace basalt::x11
