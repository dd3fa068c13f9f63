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

// A drag of files (file URLs) from another program over one window, from the moment it
// enters to its drop or its leaving, on the main thread. The window's tracking handlers hear
// it enter with the first move and leave at the end, whether it was dropped or not.
class IncomingDrag {
public:
    IncomingDrag(WindowRef window, const std::vector<std::string>& fileURLs);
    ~IncomingDrag();
    IncomingDrag(const IncomingDrag&) = delete;
    IncomingDrag& operator=(const IncomingDrag&) = delete;

    WindowRef Window() const { return window_; }
    // The mouse is in the window: true when the window would take the drop, that is, it has a
    // receive handler and none of its tracking handlers refused.
    bool Move(Point globalMouse);
    // Receive handlers are asked in turn until one takes it: noErr, else dragNotAcceptedErr.
    StatusCode Drop(Point globalMouse);

private:
    void Track(DragTrackingMessage message, bool* refused = nullptr);
    void Leave();

    WindowRef window_;
    OpaqueDragRef drag_;
    bool entered_ = false;
};

// The whole of a drop at once: enter, one move, the drop, the leaving.
StatusCode DeliverFileDrop(WindowRef window, Point globalMouse,
                           const std::vector<std::string>& fileURLs);

} // namespace basalt::toolbox::drag
