#include "basalt/backend/x11/X11Connection.h"

#include <cstdlib>
#include <xcb/randr.h>
#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace basalt::x11 {
namespace {

xcb_screen_t* NthScreen(xcb_connection_t* xcb, int number) {
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(xcb));
    for (; it.rem > 0; --number, xcb_screen_next(&it))
        if (number == 0)
            return it.data;
    return nullptr;
}

} // namespace

std::string ReadTextProperty(xcb_connection_t* xcb, xcb_window_t window, xcb_atom_t property,
                             bool take, xcb_atom_t* type) {
    xcb_get_property_reply_t* reply =
        xcb_get_property_reply(xcb,
                               xcb_get_property(xcb, take ? 1 : 0, window, property,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, 1 << 24),
                               nullptr);
    std::string value;
    if (type != nullptr)
        *type = reply != nullptr ? reply->type : xcb_atom_t(XCB_NONE);
    if (reply != nullptr && reply->format == 8)
        value.assign(static_cast<const char*>(xcb_get_property_value(reply)),
                     size_t(xcb_get_property_value_length(reply)));
    std::free(reply);
    return value;
}

const char* DescribeConnectionError(int error) {
    switch (error) {
    case XCB_CONN_ERROR:
        return "the connection broke";
    case XCB_CONN_CLOSED_EXT_NOTSUPPORTED:
        return "an extension is not supported";
    case XCB_CONN_CLOSED_MEM_INSUFFICIENT:
        return "out of memory";
    case XCB_CONN_CLOSED_REQ_LEN_EXCEED:
        return "a request was too long";
    case XCB_CONN_CLOSED_PARSE_ERR:
        return "the display name could not be read";
    case XCB_CONN_CLOSED_INVALID_SCREEN:
        return "the display has no such screen";
    default:
        return "the server refused the connection";
    }
}

std::unique_ptr<X11Connection> X11Connection::Open(std::string& failure) {
    const char* name = std::getenv("DISPLAY");
    std::string displayName = name != nullptr ? name : "";
    if (displayName.empty()) {
        failure = "no X display: DISPLAY is not set";
        return nullptr;
    }
    int screenNumber = 0;
    xcb_connection_t* xcb = xcb_connect(displayName.c_str(), &screenNumber);
    if (int error = xcb_connection_has_error(xcb); error != 0) {
        failure =
            "cannot open the X display \"" + displayName + "\": " + DescribeConnectionError(error);
        xcb_disconnect(xcb);
        return nullptr;
    }
    xcb_screen_t* screen = NthScreen(xcb, screenNumber);
    if (screen == nullptr) {
        failure =
            "the X display \"" + displayName + "\" has no screen " + std::to_string(screenNumber);
        xcb_disconnect(xcb);
        return nullptr;
    }
    std::unique_ptr<X11Connection> connection(new X11Connection(xcb, screen, displayName));
    if (!connection->atoms.Intern(xcb) || !connection->SetUpExtensions(failure))
        return nullptr;
    return connection;
}

bool X11Connection::SetUpExtensions(std::string& failure) {
    uint8_t firstError = 0;
    if (!xkb_x11_setup_xkb_extension(
            xcb_, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &xkbEventBase, &firstError)) {
        failure = "the X display \"" + displayName_ +
                  "\" lacks the XKEYBOARD extension, which the keyboard needs";
        return false;
    }
    xkbDevice = xkb_x11_get_core_keyboard_device_id(xcb_);
    if (const xcb_query_extension_reply_t* randr = xcb_get_extension_data(xcb_, &xcb_randr_id);
        randr != nullptr && randr->present) {
        hasRandR = true;
        randrEventBase = randr->first_event;
    }
    SetUpXInput2();
    return true;
}

// Smooth scrolling needs XInput 2.1; without it the wheel comes as core buttons.
void X11Connection::SetUpXInput2() {
    const xcb_query_extension_reply_t* xinput = xcb_get_extension_data(xcb_, &xcb_input_id);
    if (xinput == nullptr || !xinput->present)
        return;
    xcb_input_xi_query_version_reply_t* version =
        xcb_input_xi_query_version_reply(xcb_, xcb_input_xi_query_version(xcb_, 2, 1), nullptr);
    hasXInput2 =
        version != nullptr && (version->major_version > 2 ||
                               (version->major_version == 2 && version->minor_version >= 1));
    xinputOpcode = xinput->major_opcode;
    std::free(version);
}

X11Connection::~X11Connection() {
    xcb_disconnect(xcb_);
}

} // namespace basalt::x11
