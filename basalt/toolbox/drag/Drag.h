#pragma once

// A drag arriving from another program, as the toolbox's drag handlers see it: items with
// flavours, the mouse, and whether the window shows its drop highlight.

#include <basalt/BasaltDrag.h>
#include <map>
#include <string>
#include <vector>

struct OpaqueDragRef {
    struct Item {
        std::map<FlavorType, std::vector<uint8_t>> flavors;
    };
    std::vector<Item> items;
    DragAttributes attributes = kDragHasLeftSenderWindow;
    Point mouse{};
    bool hilited = false;
};

namespace basalt::toolbox::drag {

// Offers a drop of files (file URLs) to the window's handlers: the tracking handlers see the
// drag enter and lie in the window, then receive handlers are asked in turn until one takes
// it, then the tracking handlers see it leave. noErr if a receive handler took it, else
// dragNotAcceptedErr. Main thread.
StatusCode DeliverFileDrop(WindowRef window, Point globalMouse,
                           const std::vector<std::string>& fileURLs);

} // namespace basalt::toolbox::drag
