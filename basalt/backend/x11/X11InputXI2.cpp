// The XInput 2 side of the pointer: motion events with their scroll valuators, the crossings
// that restart the valuators' counting, and the device changes that say which axes scroll.

#include "basalt/backend/x11/X11Backend.h"
#include "basalt/backend/x11/X11Input.h"

#include <cstdlib>

namespace basalt::x11 {
namespace {

double FromFixed(xcb_input_fp3232_t value) {
    return value.integral + value.frac / 4294967296.0;
}

int FromFixed(xcb_input_fp1616_t value) {
    return value >> 16;
}

std::vector<ScrollAxis> ScrollAxes(xcb_input_device_class_iterator_t classes) {
    std::vector<ScrollAxis> axes;
    for (; classes.rem > 0; xcb_input_device_class_next(&classes)) {
        if (classes.data->type != XCB_INPUT_DEVICE_CLASS_TYPE_SCROLL)
            continue;
        auto* scroll = reinterpret_cast<const xcb_input_scroll_class_t*>(classes.data);
        axes.push_back({scroll->number, FromFixed(scroll->increment),
                        scroll->scroll_type == XCB_INPUT_SCROLL_TYPE_HORIZONTAL});
    }
    return axes;
}

// The core state word: modifiers, then buttons 1 to 5 from bit 8.
uint16_t CoreState(const xcb_input_motion_event_t& event) {
    uint32_t state = event.mods.effective & 0xFF;
    if (event.buttons_len > 0)
        state |= (xcb_input_button_press_button_mask(&event)[0] >> 1 & 0x1F) << 8;
    return uint16_t(state);
}

} // namespace

void SelectSmoothScrolling(xcb_connection_t* xcb, xcb_window_t window) {
    struct {
        xcb_input_event_mask_t head;
        uint32_t mask;
    } select = {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                XCB_INPUT_XI_EVENT_MASK_MOTION | XCB_INPUT_XI_EVENT_MASK_ENTER |
                    XCB_INPUT_XI_EVENT_MASK_LEAVE | XCB_INPUT_XI_EVENT_MASK_DEVICE_CHANGED};
    xcb_input_xi_select_events(xcb, window, 1, &select.head);
}

void X11Input::ReadScrollAxes() {
    xcb_connection_t* xcb = backend_.Connection().get();
    xcb_input_xi_query_device_reply_t* reply = xcb_input_xi_query_device_reply(
        xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL_MASTER), nullptr);
    if (reply == nullptr)
        return;
    auto devices = xcb_input_xi_query_device_infos_iterator(reply);
    for (; devices.rem > 0; xcb_input_xi_device_info_next(&devices)) {
        if (devices.data->type != XCB_INPUT_DEVICE_TYPE_MASTER_POINTER)
            continue;
        pointer_ = devices.data->deviceid;
        scroll_.SetAxes(pointer_,
                        ScrollAxes(xcb_input_xi_device_info_classes_iterator(devices.data)));
    }
    std::free(reply);
}

void X11Input::XInput2(const xcb_ge_generic_event_t& event) {
    switch (event.event_type) {
    case XCB_INPUT_MOTION:
        ScrollMotion(reinterpret_cast<const xcb_input_motion_event_t&>(event));
        break;
    case XCB_INPUT_ENTER:
    case XCB_INPUT_LEAVE:
        scroll_.Reset(reinterpret_cast<const xcb_input_enter_event_t&>(event).deviceid);
        break;
    case XCB_INPUT_DEVICE_CHANGED: {
        // The master takes on the axes of whichever device moved it last (a master keyboard
        // hears of its own changes here too, and has none).
        auto& changed = reinterpret_cast<const xcb_input_device_changed_event_t&>(event);
        scroll_.SetAxes(changed.deviceid,
                        ScrollAxes(xcb_input_device_changed_classes_iterator(&changed)));
        break;
    }
    default:
        break;
    }
}

// A motion event moves the pointer, scrolls, or both.
void X11Input::ScrollMotion(const xcb_input_motion_event_t& event) {
    int rootX = FromFixed(event.root_x), rootY = FromFixed(event.root_y);
    uint16_t state = CoreState(event);
    std::map<uint16_t, double> values;
    const uint32_t* mask = xcb_input_button_press_valuator_mask(&event);
    const xcb_input_fp3232_t* axis = xcb_input_button_press_axisvalues(&event);
    for (uint16_t number = 0; number < event.valuators_len * 32; ++number)
        if (mask[number / 32] & (1u << (number % 32)))
            values[number] = FromFixed(*axis++);
    ScrollLines lines = scroll_.Motion(event.deviceid, values);
    if (lines.exactVertical != 0)
        Wheel(event.event, rootX, rootY, state,
              {lines.vertical, lines.exactVertical, kEventMouseWheelAxisY});
    if (lines.exactHorizontal != 0)
        Wheel(event.event, rootX, rootY, state,
              {lines.horizontal, lines.exactHorizontal, kEventMouseWheelAxisX});
    // Valuators 0 and 1 are the pointer's position.
    if (values.contains(0) || values.contains(1))
        MotionAt(event.event, rootX, rootY, state);
}

} // namespace basalt::x11
