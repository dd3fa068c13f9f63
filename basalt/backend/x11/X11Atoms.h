#pragma once

// The atoms the backend speaks in, interned once when the connection opens.

#include <xcb/xcb.h>

namespace basalt::x11 {

struct Atoms {
    xcb_atom_t WM_PROTOCOLS, WM_DELETE_WINDOW, WM_CLIENT_LEADER, UTF8_STRING;
    xcb_atom_t _NET_WM_NAME, _NET_WM_PID, _NET_WM_WINDOW_TYPE, _NET_WM_WINDOW_TYPE_DIALOG,
        _NET_WM_WINDOW_TYPE_NORMAL, _NET_WM_WINDOW_TYPE_POPUP_MENU, _NET_WM_STATE,
        _NET_WM_STATE_MODAL, _NET_WM_PING, _MOTIF_WM_HINTS, _NET_WORKAREA, _NET_CURRENT_DESKTOP;
    xcb_atom_t CLIPBOARD, TARGETS, INCR, TEXT_PLAIN, TEXT_PLAIN_UTF8, KEL_SELECTION, KEL_WAKE;
    xcb_atom_t XdndAware, XdndEnter, XdndPosition, XdndStatus, XdndLeave, XdndDrop, XdndFinished,
        XdndSelection, XdndTypeList, XdndActionCopy, TEXT_URI_LIST;

    // Interns them all in one round trip; false if the server refused.
    bool Intern(xcb_connection_t* connection);
};

} // namespace basalt::x11
