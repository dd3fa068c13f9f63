// What a window manager, a file manager and a screenshot tool do to our windows, for the
// end-to-end tests:
//   x11probe close WINDOW          sends WM_DELETE_WINDOW, as a close button does
//   x11probe keys WINDOW CODE...   presses and releases the keys at those X key codes, as a
//                                  keyboard does: what they type is up to the layout
//   x11probe drop WINDOW URI...    drags the URIs onto the window over XDND and drops them if
//                                  the window says it would take them; prints "accepted"
//                                  or "refused"
//   x11probe shot FILE.png [WINDOW] writes the screen (or what it shows of the window)
//   x11probe cursor                prints the pointer's shape as the server shows it: size,
//                                  hot spot and a digest of the pixels
//   x11probe panel HEIGHT          keeps a strip of the screen's top as a panel does, until
//                                  killed

#include "basalt/backend/x11/X11Snapshot.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace {

// How long the receiver may take to answer each step of the drop.
constexpr auto kAnswerDeadline = std::chrono::seconds(10);

xcb_atom_t Atom(xcb_connection_t* xcb, const char* name) {
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
        xcb, xcb_intern_atom(xcb, 0, uint16_t(std::strlen(name)), name), nullptr);
    xcb_atom_t atom = reply != nullptr ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return atom;
}

// False when the server refused the message (no such window).
bool SendMessage(xcb_connection_t* xcb, xcb_window_t to, xcb_atom_t type,
                 std::initializer_list<uint32_t> data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = to;
    message.type = type;
    size_t i = 0;
    for (uint32_t value : data)
        message.data.data32[i++] = value;
    xcb_generic_error_t* error =
        xcb_request_check(xcb, xcb_send_event_checked(xcb, 0, to, XCB_EVENT_MASK_NO_EVENT,
                                                      reinterpret_cast<const char*>(&message)));
    std::free(error);
    return error == nullptr;
}

// Handles events until `done` says so; false when the deadline passes first.
bool Await(xcb_connection_t* xcb, const std::function<bool(xcb_generic_event_t*)>& done) {
    auto deadline = std::chrono::steady_clock::now() + kAnswerDeadline;
    while (std::chrono::steady_clock::now() < deadline) {
        xcb_generic_event_t* event = xcb_poll_for_event(xcb);
        if (event == nullptr) {
            if (xcb_connection_has_error(xcb))
                return false;
            struct timespec pause = {0, 2000000};
            nanosleep(&pause, nullptr);
            continue;
        }
        bool finished = done(event);
        std::free(event);
        if (finished)
            return true;
    }
    return false;
}

int Close(xcb_connection_t* xcb, xcb_window_t window) {
    if (SendMessage(xcb, window, Atom(xcb, "WM_PROTOCOLS"),
                    {Atom(xcb, "WM_DELETE_WINDOW"), XCB_CURRENT_TIME}))
        return 0;
    std::fprintf(stderr, "x11probe: no window %u\n", window);
    return 2;
}

int Keys(xcb_connection_t* xcb, xcb_screen_t* screen, xcb_window_t window,
         const std::vector<std::string>& codes) {
    for (const std::string& code : codes) {
        for (uint8_t type : {uint8_t(XCB_KEY_PRESS), uint8_t(XCB_KEY_RELEASE)}) {
            xcb_key_press_event_t key{};
            key.response_type = type;
            key.detail = xcb_keycode_t(std::strtoul(code.c_str(), nullptr, 0));
            key.root = screen->root;
            key.event = window;
            key.same_screen = 1;
            uint32_t mask =
                type == XCB_KEY_PRESS ? XCB_EVENT_MASK_KEY_PRESS : XCB_EVENT_MASK_KEY_RELEASE;
            xcb_generic_error_t* error =
                xcb_request_check(xcb, xcb_send_event_checked(xcb, 0, window, mask,
                                                              reinterpret_cast<const char*>(&key)));
            std::free(error);
            if (error != nullptr)
                return 2;
        }
    }
    return 0;
}

void ServeURIs(xcb_connection_t* xcb, const xcb_selection_request_event_t& request,
               const std::string& list) {
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        request.target, 8, uint32_t(list.size()), list.data());
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = request.property;
    xcb_send_event(xcb, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notify));
    xcb_flush(xcb);
}

int Drop(xcb_connection_t* xcb, xcb_screen_t* screen, xcb_window_t target,
         const std::vector<std::string>& uris) {
    std::string list;
    for (const std::string& uri : uris)
        list += uri + "\r\n";
    xcb_window_t source = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, source, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_atom_t selection = Atom(xcb, "XdndSelection"), uriList = Atom(xcb, "text/uri-list");
    xcb_atom_t status = Atom(xcb, "XdndStatus"), finished = Atom(xcb, "XdndFinished");
    xcb_set_selection_owner(xcb, source, selection, XCB_CURRENT_TIME);
    xcb_translate_coordinates_reply_t* where = xcb_translate_coordinates_reply(
        xcb, xcb_translate_coordinates(xcb, target, screen->root, 20, 20), nullptr);
    if (where == nullptr)
        return 2;
    uint32_t position = uint32_t(where->dst_x) << 16 | uint16_t(where->dst_y);
    std::free(where);
    SendMessage(xcb, target, Atom(xcb, "XdndEnter"), {source, 5u << 24, uriList, 0, 0});
    SendMessage(xcb, target, Atom(xcb, "XdndPosition"),
                {source, 0, position, XCB_CURRENT_TIME, Atom(xcb, "XdndActionCopy")});
    bool willAccept = false;
    auto isMessage = [](xcb_generic_event_t* event, xcb_atom_t type) {
        return (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
               reinterpret_cast<xcb_client_message_event_t*>(event)->type == type;
    };
    // The target may ask for the list before it answers, to judge it.
    auto serve = [&](xcb_generic_event_t* event) {
        if ((event->response_type & 0x7F) == XCB_SELECTION_REQUEST)
            ServeURIs(xcb, *reinterpret_cast<xcb_selection_request_event_t*>(event), list);
    };
    if (!Await(xcb, [&](xcb_generic_event_t* event) {
            serve(event);
            if (!isMessage(event, status))
                return false;
            willAccept = reinterpret_cast<xcb_client_message_event_t*>(event)->data.data32[1] & 1;
            return true;
        })) {
        std::fprintf(stderr, "x11probe: no XdndStatus came back\n");
        return 2;
    }
    if (!willAccept) {
        SendMessage(xcb, target, Atom(xcb, "XdndLeave"), {source});
        std::puts("refused");
        return 1;
    }
    SendMessage(xcb, target, Atom(xcb, "XdndDrop"), {source, 0, XCB_CURRENT_TIME});
    bool accepted = false;
    if (!Await(xcb, [&](xcb_generic_event_t* event) {
            serve(event);
            if (!isMessage(event, finished))
                return false;
            accepted = reinterpret_cast<xcb_client_message_event_t*>(event)->data.data32[1] & 1;
            return true;
        })) {
        std::fprintf(stderr, "x11probe: no XdndFinished came back\n");
        return 2;
    }
    std::puts(accepted ? "accepted" : "refused");
    return accepted ? 0 : 1;
}

// What the screen shows of the window, read from the root as a screenshot tool does: a
// window running past the screen's edge is cut there.
int Shot(xcb_connection_t* xcb, xcb_screen_t* screen, const char* path, xcb_window_t window) {
    int x = 0, y = 0, width = screen->width_in_pixels, height = screen->height_in_pixels;
    if (window != XCB_NONE) {
        xcb_get_geometry_reply_t* geometry =
            xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, window), nullptr);
        xcb_translate_coordinates_reply_t* where = xcb_translate_coordinates_reply(
            xcb, xcb_translate_coordinates(xcb, window, screen->root, 0, 0), nullptr);
        if (geometry == nullptr || where == nullptr) {
            std::free(geometry);
            std::free(where);
            return 2;
        }
        x = std::max(0, int(where->dst_x));
        y = std::max(0, int(where->dst_y));
        width = std::min(int(where->dst_x) + geometry->width, width) - x;
        height = std::min(int(where->dst_y) + geometry->height, height) - y;
        std::free(geometry);
        std::free(where);
    }
    if (width <= 0 || height <= 0)
        return 2;
    StatusCode status = basalt::x11::WriteDrawablePNG(xcb, screen->root, x, y, width, height, path);
    return status == noErr ? 0 : 2;
}

int Cursor(xcb_connection_t* xcb) {
    const xcb_query_extension_reply_t* xfixes = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (xfixes == nullptr || !xfixes->present) {
        std::fprintf(stderr, "x11probe: the X server lacks the XFIXES extension\n");
        return 2;
    }
    std::free(xcb_xfixes_query_version_reply(xcb, xcb_xfixes_query_version(xcb, 4, 0), nullptr));
    xcb_xfixes_get_cursor_image_reply_t* image =
        xcb_xfixes_get_cursor_image_reply(xcb, xcb_xfixes_get_cursor_image(xcb), nullptr);
    if (image == nullptr)
        return 2;
    const uint32_t* pixels = xcb_xfixes_get_cursor_image_cursor_image(image);
    uint32_t digest = 2166136261u; // FNV-1a over the ARGB words
    for (int i = 0; i < xcb_xfixes_get_cursor_image_cursor_image_length(image); ++i)
        digest = (digest ^ pixels[i]) * 16777619u;
    std::printf("%ux%u+%u+%u:%08x\n", image->width, image->height, image->xhot, image->yhot,
                digest);
    std::free(image);
    return 0;
}

// A dock across the top that asks the window manager to keep its strip free of windows.
int Panel(xcb_connection_t* xcb, xcb_screen_t* screen, uint32_t height) {
    xcb_window_t panel = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, panel, screen->root, 0, 0, screen->width_in_pixels,
                      uint16_t(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0,
                      nullptr);
    xcb_atom_t dock = Atom(xcb, "_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, panel, Atom(xcb, "_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &dock);
    // Left, right, top, bottom; then where along each edge: the top one spans the screen.
    const uint32_t strut[12] = {
        0, 0, height, 0, 0, 0, 0, 0, 0, uint32_t(screen->width_in_pixels - 1), 0, 0};
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, panel, Atom(xcb, "_NET_WM_STRUT_PARTIAL"),
                        XCB_ATOM_CARDINAL, 32, 12, strut);
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, panel, Atom(xcb, "_NET_WM_STRUT"),
                        XCB_ATOM_CARDINAL, 32, 4, strut);
    xcb_map_window(xcb, panel);
    xcb_flush(xcb);
    while (xcb_generic_event_t* event = xcb_wait_for_event(xcb))
        std::free(event);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || (argc < 3 && std::string(argv[1]) != "cursor")) {
        std::fprintf(stderr,
                     "usage: x11probe close WINDOW | keys WINDOW CODE... | drop WINDOW URI... | "
                     "shot FILE [WINDOW] | cursor | panel HEIGHT\n");
        return 2;
    }
    int screenNumber = 0;
    xcb_connection_t* xcb = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(xcb)) {
        std::fprintf(stderr, "x11probe: no X display\n");
        return 2;
    }
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data;
    std::string command = argv[1];
    int result = 2;
    if (command == "close") {
        result = Close(xcb, xcb_window_t(std::strtoul(argv[2], nullptr, 0)));
    } else if (command == "keys") {
        result = Keys(xcb, screen, xcb_window_t(std::strtoul(argv[2], nullptr, 0)),
                      std::vector<std::string>(argv + 3, argv + argc));
    } else if (command == "drop") {
        result = Drop(xcb, screen, xcb_window_t(std::strtoul(argv[2], nullptr, 0)),
                      std::vector<std::string>(argv + 3, argv + argc));
    } else if (command == "cursor") {
        result = Cursor(xcb);
    } else if (command == "panel") {
        result = Panel(xcb, screen, uint32_t(std::strtoul(argv[2], nullptr, 0)));
    } else if (command == "shot") {
        result = Shot(xcb, screen, argv[2],
                      argc > 3 ? xcb_window_t(std::strtoul(argv[3], nullptr, 0)) : XCB_NONE);
    }
    xcb_flush(xcb);
    xcb_disconnect(xcb);
    return result;
}
