#include "basalt/backend/x11/X11Dnd.h"

#include "basalt/backend/x11/X11Backend.h"
#include "basalt/toolbox/drag/Drag.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace basalt::x11 {
namespace {

std::vector<xcb_atom_t> TypeList(xcb_connection_t* xcb, xcb_window_t source, xcb_atom_t list) {
    std::vector<xcb_atom_t> types;
    xcb_get_property_reply_t* reply = xcb_get_property_reply(
        xcb, xcb_get_property(xcb, 0, source, list, XCB_ATOM_ATOM, 0, 1024), nullptr);
    if (reply != nullptr && reply->format == 32) {
        auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply));
        types.assign(atoms, atoms + xcb_get_property_value_length(reply) / 4);
    }
    std::free(reply);
    return types;
}

} // namespace

std::vector<std::string> FileURLsOfURIList(std::string_view list) {
    std::vector<std::string> urls;
    while (!list.empty()) {
        size_t end = list.find('\n');
        std::string_view line = list.substr(0, end);
        list = end == std::string_view::npos ? std::string_view() : list.substr(end + 1);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.remove_suffix(1);
        if (line.rfind("file:", 0) == 0)
            urls.emplace_back(line);
    }
    return urls;
}

bool X11Dnd::Handle(const xcb_client_message_event_t& message) {
    const Atoms& atoms = backend_.Connection().atoms;
    if (message.type == atoms.XdndEnter)
        Enter(message);
    else if (message.type == atoms.XdndPosition)
        Position(message);
    else if (message.type == atoms.XdndDrop)
        Drop(message);
    else if (message.type == atoms.XdndLeave && message.data.data32[0] == source_)
        Leave();
    else
        return message.type == atoms.XdndLeave;
    return true;
}

bool X11Dnd::Offers(const std::vector<xcb_atom_t>& types) const {
    return std::find(types.begin(), types.end(), backend_.Connection().atoms.TEXT_URI_LIST) !=
           types.end();
}

void X11Dnd::Enter(const xcb_client_message_event_t& message) {
    source_ = message.data.data32[0];
    target_ = message.window;
    // More than three types live in the source's XdndTypeList.
    std::vector<xcb_atom_t> types(message.data.data32 + 2, message.data.data32 + 5);
    if (message.data.data32[1] & 1)
        types = TypeList(backend_.Connection().get(), source_,
                         backend_.Connection().atoms.XdndTypeList);
    offersURIs_ = Offers(types);
    urls_.reset();
    fetching_ = positionWaits_ = dropWaits_ = false;
    backend_.OnMainThread([this] { session_.reset(); });
}

void X11Dnd::Leave() {
    source_ = XCB_NONE;
    backend_.OnMainThread([this] { session_.reset(); });
}

void X11Dnd::Reply(xcb_window_t source, xcb_window_t target, xcb_atom_t type, uint32_t flags,
                   xcb_atom_t action) const {
    xcb_client_message_event_t reply{};
    reply.response_type = XCB_CLIENT_MESSAGE;
    reply.format = 32;
    reply.window = source;
    reply.type = type;
    reply.data.data32[0] = target;
    reply.data.data32[1] = flags;
    reply.data.data32[4] = action;
    if (type == backend_.Connection().atoms.XdndFinished)
        reply.data.data32[2] = action;
    xcb_send_event(backend_.Connection().get(), 0, source, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&reply));
    xcb_flush(backend_.Connection().get());
}

void X11Dnd::Fetch(xcb_timestamp_t time) {
    if (fetching_)
        return;
    fetching_ = true;
    const Atoms& atoms = backend_.Connection().atoms;
    xcb_convert_selection(backend_.Connection().get(), target_, atoms.XdndSelection,
                          atoms.TEXT_URI_LIST, atoms.XdndSelection, time);
    xcb_flush(backend_.Connection().get());
}

// The source sends no further position until it has our status, so the status may wait for
// the list and for the main thread.
void X11Dnd::Position(const xcb_client_message_event_t& message) {
    if (message.data.data32[0] != source_)
        return;
    rootX_ = int(message.data.data32[2] >> 16);
    rootY_ = int(message.data.data32[2] & 0xFFFF);
    if (!offersURIs_) {
        Reply(source_, target_, backend_.Connection().atoms.XdndStatus, 0, XCB_NONE);
    } else if (urls_) {
        AnswerPosition();
    } else {
        positionWaits_ = true;
        Fetch(message.data.data32[3]);
    }
}

void X11Dnd::Drop(const xcb_client_message_event_t& message) {
    if (message.data.data32[0] != source_)
        return;
    if (!offersURIs_) {
        Reply(source_, target_, backend_.Connection().atoms.XdndFinished, 0, XCB_NONE);
        Leave();
    } else if (urls_) {
        DeliverDrop();
    } else {
        dropWaits_ = true;
        Fetch(message.data.data32[2]);
    }
}

bool X11Dnd::Received(const xcb_selection_notify_event_t& notify) {
    const Atoms& atoms = backend_.Connection().atoms;
    if (notify.selection != atoms.XdndSelection || source_ == XCB_NONE)
        return false;
    urls_ = notify.property == XCB_NONE
                ? std::vector<std::string>()
                : FileURLsOfURIList(ReadTextProperty(backend_.Connection().get(), target_,
                                                     notify.property, true));
    fetching_ = false;
    if (dropWaits_)
        DeliverDrop();
    else if (positionWaits_)
        AnswerPosition();
    return true;
}

Point X11Dnd::Mouse() const {
    double scale = backend_.Scale();
    return {int16_t(std::lround(rootY_ / scale)), int16_t(std::lround(rootX_ / scale))};
}

toolbox::drag::IncomingDrag& X11Dnd::SessionFor(WindowRef window,
                                                const std::vector<std::string>& urls) {
    if (session_ == nullptr || session_->Window() != window)
        session_ = std::make_unique<toolbox::drag::IncomingDrag>(window, urls);
    return *session_;
}

void X11Dnd::AnswerPosition() {
    positionWaits_ = false;
    backend_.OnMainThread([this, window = backend_.WindowRefFor(target_), mouse = Mouse(),
                           urls = *urls_, source = source_, target = target_] {
        bool accept = window != nullptr && !urls.empty() && SessionFor(window, urls).Move(mouse);
        const Atoms& atoms = backend_.Connection().atoms;
        Reply(source, target, atoms.XdndStatus, accept ? 1 : 0,
              accept ? atoms.XdndActionCopy : XCB_NONE);
    });
}

// The source waits for XdndFinished; it goes once the toolbox has answered.
void X11Dnd::DeliverDrop() {
    dropWaits_ = false;
    backend_.OnMainThread([this, window = backend_.WindowRefFor(target_), mouse = Mouse(),
                           urls = *urls_, source = source_, target = target_] {
        StatusCode status = window == nullptr || urls.empty()
                                ? StatusCode(dragNotAcceptedErr)
                                : SessionFor(window, urls).Drop(mouse);
        session_.reset();
        const Atoms& atoms = backend_.Connection().atoms;
        Reply(source, target, atoms.XdndFinished, status == noErr ? 1 : 0,
              status == noErr ? atoms.XdndActionCopy : XCB_NONE);
    });
    source_ = XCB_NONE;
}

} // namespace basalt::x11
