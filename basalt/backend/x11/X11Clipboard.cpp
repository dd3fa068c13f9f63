#include "basalt/backend/x11/X11Clipboard.h"

#include <chrono>
#include <cstdlib>
#include <vector>

namespace basalt::x11 {
namespace {

// How long another program may take to hand its clipboard over before we take it as empty.
constexpr auto kAnswerDeadline = std::chrono::seconds(2);

} // namespace

void X11Clipboard::Set(const std::string& utf8) {
    std::lock_guard lock(mutex_);
    text_ = utf8;
    owned_ = !utf8.empty();
    xcb_set_selection_owner(connection_.get(), owned_ ? owner_ : XCB_NONE,
                            connection_.atoms.CLIPBOARD, XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
}

std::string X11Clipboard::Get() {
    std::unique_lock lock(mutex_);
    if (owned_)
        return text_;
    answer_.reset();
    xcb_convert_selection(connection_.get(), owner_, connection_.atoms.CLIPBOARD,
                          connection_.atoms.UTF8_STRING, connection_.atoms.KEL_SELECTION,
                          XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
    answered_.wait_for(lock, kAnswerDeadline, [this] { return answer_.has_value(); });
    return answer_.value_or(std::string());
}

bool X11Clipboard::Answered(const xcb_selection_notify_event_t& notify) {
    if (notify.selection != connection_.atoms.CLIPBOARD || notify.requestor != owner_)
        return false;
    std::string value;
    if (notify.property != XCB_NONE)
        value = ReadTextProperty(connection_.get(), owner_, notify.property, true);
    std::lock_guard lock(mutex_);
    answer_ = std::move(value);
    answered_.notify_all();
    return true;
}

void X11Clipboard::Lost(const xcb_selection_clear_event_t& clear) {
    if (clear.selection != connection_.atoms.CLIPBOARD)
        return;
    std::lock_guard lock(mutex_);
    owned_ = false;
    text_.clear();
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
    std::lock_guard lock(mutex_);
    if (!owned_)
        return false;
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, request.requestor, property, request.target, 8,
                        uint32_t(text_.size()), text_.data());
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
