#pragma once

// One row of the sidebar: the node it stands for (perhaps an alias), what is shown of it, and
// the mouse area of its eject button while it has one.

#include "kel/foundation/TStringRef.h"
#include "kel/nodes/TKelNode.h"

#include <basalt/BasaltToolbox.h>
#include <cstdint>

struct SidebarItem {
    enum Flags : uint8_t { kEjectable = 1, kApplication = 4 };

    TKelNode node;
    TIcon icon;
    TStringRef name; // nil when the node has no name to show
    BTViewTrackingAreaRef trackingArea = nullptr;
    uint8_t flags = 0;

    bool IsEjectable() const { return (flags & kEjectable) != 0; }
};
