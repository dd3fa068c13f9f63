#include "basalt/backend/x11/X11Clipboard.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace basalt::x11 {
namespace {

// How long another program may be silent while it hands its clipboard over before we take it
// as empty.
constexpr auto kAnswerDeadline = std::chrono::seconds(2);

} // namespace

void X11Clipboard::Set(const std::string& utf8) {
    std::lock_guard lock(mutex_);
    text_ = std::make_shared<const std::string>(utf8);
    owned_ = !utf8.empty();
    xcb_set_selection_owner(connection_.get(), owned_ ? owner_ : XCB_NONE,
                            connection_.atoms.CLIPBOARD, XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
}

std::string X11Clipboard::Get() {
    std::unique_lock lock(mutex_);
    if (owned_)
        return *text_;
    answer_.reset();
    xcb_convert_selection(connection_.get(), owner_, connection_.atoms.CLIPBOARD,
                          connection_.atoms.UTF8_STRING, connection_.atoms.KEL_SELECTION,
                          XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
    for (uint64_t seen = progress_;; seen = progress_)
        if (answered_.wait_for(lock, kAnswerDeadline, [this] { return answer_.has_value(); }) ||
            progress_ == seen)
            break;
    return answer_.value_or(std::string());
}

void X11Clipboard::Answer(std::string value) {
    std::lock_guard lock(mutex_);
    answer_ = std::move(value);
    answered_.notify_all();
}

bool X11Clipboard::Answered(const xcb_selection_notify_event_t& notify) {
    if (notify.selection != connection_.atoms.CLIPBOARD || notify.requestor != owner_)
        return false;
    if (notify.property == XCB_NONE) {
        Answer({});
        return true;
    }
    xcb_atom_t type = XCB_NONE;
    std::string value = ReadTextProperty(connection_.get(), owner_, notify.property, true, &type);
    // Taking the INCR property away asks the owner for the first piece.
    if (type == connection_.atoms.INCR)
        incoming_.emplace();
    else
        Answer(std::move(value));
    return true;
}

void X11Clipboard::PropertyChanged(const xcb_property_notify_event_t& notify) {
    if (notify.window == owner_ && notify.atom == connection_.atoms.KEL_SELECTION &&
        notify.state == XCB_PROPERTY_NEW_VALUE && incoming_) {
        std::string piece = ReadTextProperty(connection_.get(), owner_, notify.atom, true);
        xcb_flush(connection_.get());
        if (piece.empty()) {
            Answer(std::move(*incoming_));
            incoming_.reset();
        } else {
            incoming_->append(piece);
            std::lock_guard lock(mutex_);
            ++progress_;
        }
        return;
    }
    if (notify.state != XCB_PROPERTY_DELETE)
        return;
    auto it = std::find_if(outgoing_.begin(), outgoing_.end(), [&](const Outgoing& transfer) {
        return transfer.requestor == notify.window && transfer.property == notify.atom;
    });
    if (it != outgoing_.end() && !SendPiece(*it))
        outgoing_.erase(it);
}

void X11Clipboard::Lost(const xcb_selection_clear_event_t& clear) {
    if (clear.selection != connection_.atoms.CLIPBOARD)
        return;
    std::lock_guard lock(mutex_);
    owned_ = false;
    text_ = std::make_shared<const std::string>();
}

// The requestor hears INCR and the total size; each time it takes a piece away, the next goes.
void X11Clipboard::StartOutgoing(const xcb_selection_request_event_t& request, xcb_atom_t property,
                                 std::shared_ptr<const std::string> text) {
    xcb_connection_t* xcb = connection_.get();
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb, request.requestor, XCB_CW_EVENT_MASK, &events);
    uint32_t size = uint32_t(text->size());
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, request.requestor, property,
                        connection_.atoms.INCR, 32, 1, &size);
    std::erase_if(outgoing_, [&](const Outgoing& transfer) {
        return transfer.requestor == request.requestor && transfer.property == property;
    });
    outgoing_.push_back({request.requestor, property, request.target, std::move(text)});
}

bool X11Clipboard::SendPiece(Outgoing& transfer) {
    if (transfer.ended)
        return false;
    size_t count = std::min(kChunk, transfer.text->size() - transfer.sent);
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, transfer.requestor,
                        transfer.property, transfer.target, 8, uint32_t(count),
                        transfer.text->data() + transfer.sent);
    xcb_flush(connection_.get());
    transfer.sent += count;
    transfer.ended = count == 0;
    return true;
}

bool X11Clipboard::ServeTarget(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    const Atoms& atoms = connection_.atoms;
    xcb_connection_t* xcb = connection_.get();
    if (request.target == atoms.TARGETS) {
        const xcb_atom_t targets[] = {atoms.TARGETS, atoms.UTF8_STRING, atoms.TEXT_PLAIN_UTF8,
                                      atoms.TEXT_PLAIN, XCB_ATOM_STRING};
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, request.requestor, property, XCB_ATOM_ATOM,
                            32, 5, targets);
        return true;
    }
    if (request.target != atoms.UTF8_STRING && request.target != atoms.TEXT_PLAIN_UTF8 &&
        request.target != atoms.TEXT_PLAIN && request.target != XCB_ATOM_STRING)
        return false;
    std::shared_ptr<const std::string> text;
    {
        std::lock_guard lock(mutex_);
        if (!owned_)
            return false;
        text = text_;
    }
    if (text->size() > kChunk)
        StartOutgoing(request, property, std::move(text));
    else
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, request.requestor, property, request.target,
                            8, uint32_t(text->size()), text->data());
    return true;
}

void X11Clipboard::Request(const xcb_selection_request_event_t& request) {
    // Old clients name no property; the target's own name is then the place for the answer.
    xcb_atom_t property = request.property != XCB_NONE ? request.property : request.target;
    bool served =
        request.selection == connection_.atoms.CLIPBOARD && ServeTarget(request, property);
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = served ? property : XCB_NONE;
    xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notify));
    xcb_flush(connection_.get());
}

} // namespace basalt::x11
