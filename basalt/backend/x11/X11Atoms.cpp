#include "basalt/backend/x11/X11Atoms.h"

#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace basalt::x11 {

bool Atoms::Intern(xcb_connection_t* connection) {
    const std::vector<std::pair<const char*, xcb_atom_t*>> names = {
        {"WM_PROTOCOLS", &WM_PROTOCOLS},
        {"WM_DELETE_WINDOW", &WM_DELETE_WINDOW},
        {"WM_CLIENT_LEADER", &WM_CLIENT_LEADER},
        {"UTF8_STRING", &UTF8_STRING},
        {"_NET_WM_NAME", &_NET_WM_NAME},
        {"_NET_WM_PID", &_NET_WM_PID},
        {"_NET_WM_WINDOW_TYPE", &_NET_WM_WINDOW_TYPE},
        {"_NET_WM_WINDOW_TYPE_DIALOG", &_NET_WM_WINDOW_TYPE_DIALOG},
        {"_NET_WM_WINDOW_TYPE_NORMAL", &_NET_WM_WINDOW_TYPE_NORMAL},
        {"_NET_WM_WINDOW_TYPE_POPUP_MENU", &_NET_WM_WINDOW_TYPE_POPUP_MENU},
        {"_NET_WM_STATE", &_NET_WM_STATE},
        {"_NET_WM_STATE_MODAL", &_NET_WM_STATE_MODAL},
        {"_NET_WM_PING", &_NET_WM_PING},
        {"_MOTIF_WM_HINTS", &_MOTIF_WM_HINTS},
        {"_NET_WORKAREA", &_NET_WORKAREA},
        {"_NET_CURRENT_DESKTOP", &_NET_CURRENT_DESKTOP},
        {"CLIPBOARD", &CLIPBOARD},
        {"TARGETS", &TARGETS},
        {"INCR", &INCR},
        {"text/plain", &TEXT_PLAIN},
        {"text/plain;charset=utf-8", &TEXT_PLAIN_UTF8},
        {"KEL_SELECTION", &KEL_SELECTION},
        {"KEL_WAKE", &KEL_WAKE},
        {"XdndAware", &XdndAware},
        {"XdndEnter", &XdndEnter},
        {"XdndPosition", &XdndPosition},
        {"XdndStatus", &XdndStatus},
        {"XdndLeave", &XdndLeave},
        {"XdndDrop", &XdndDrop},
        {"XdndFinished", &XdndFinished},
        {"XdndSelection", &XdndSelection},
        {"XdndTypeList", &XdndTypeList},
        {"XdndActionCopy", &XdndActionCopy},
        {"text/uri-list", &TEXT_URI_LIST},
    };
    std::vector<xcb_intern_atom_cookie_t> cookies;
    for (const auto& [name, atom] : names)
        cookies.push_back(xcb_intern_atom(connection, 0, uint16_t(std::strlen(name)), name));
    bool all = true;
    for (size_t i = 0; i < names.size(); ++i) {
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection, cookies[i], nullptr);
        *names[i].second = reply != nullptr ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        all = all && reply != nullptr;
        std::free(reply);
    }
    return all;
}

} // namespace basalt::x11
