#include "basalt/toolbox/drag/Drag.h"

#include <basalt/BasaltDrag.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using basalt::toolbox::drag::DeliverFileDrop;
using basalt::toolbox::drag::IncomingDrag;

struct Seen {
    std::vector<DragTrackingMessage> messages;
    std::vector<std::string> received;
    StatusCode answer = noErr;
};

StatusCode Track(DragTrackingMessage message, WindowRef, void* refCon, DragRef) {
    static_cast<Seen*>(refCon)->messages.push_back(message);
    return noErr;
}

StatusCode Receive(WindowRef, void* refCon, DragRef drag) {
    auto* seen = static_cast<Seen*>(refCon);
    uint16_t count = 0;
    EXPECT_EQ(CountDragItems(drag, &count), noErr);
    for (uint16_t index = 1; index <= count; ++index) {
        DragItemRef item = 0;
        EXPECT_EQ(GetDragItemReferenceNumber(drag, index, &item), noErr);
        Size size = 0;
        EXPECT_EQ(GetFlavorDataSize(drag, item, kDragFlavorTypeFileURL, &size), noErr);
        std::string url(size_t(size), '\0');
        EXPECT_EQ(GetFlavorData(drag, item, kDragFlavorTypeFileURL, url.data(), &size, 0), noErr);
        seen->received.push_back(url);
    }
    return seen->answer;
}

// Refuses a drag while it hovers once the window is entered, as a handler that cannot take
// what is dragged does.
StatusCode Picky(DragTrackingMessage message, WindowRef, void* refCon, DragRef) {
    static_cast<Seen*>(refCon)->messages.push_back(message);
    return message == kDragTrackingInWindow ? static_cast<Seen*>(refCon)->answer : noErr;
}

StatusCode Refuse(WindowRef, void*, DragRef) {
    return dragNotAcceptedErr;
}

class DragTest : public testing::Test {
protected:
    void SetUp() override {
        Rect bounds = {100, 100, 300, 400};
        ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window), noErr);
    }
    void TearDown() override {
        RemoveTrackingHandler(Track, window);
        RemoveTrackingHandler(Picky, window);
        RemoveReceiveHandler(Receive, window);
        RemoveReceiveHandler(Refuse, window);
        RemoveReceiveHandler(Receive, nullptr);
        DisposeWindow(window);
    }
    WindowRef window = nullptr;
    const Point mouse{150, 200};
};

TEST_F(DragTest, ADropReachesTheWindowsHandlersWithOneItemPerFile) {
    Seen seen;
    ASSERT_EQ(InstallTrackingHandler(Track, window, &seen), noErr);
    ASSERT_EQ(InstallReceiveHandler(Receive, window, &seen), noErr);
    EXPECT_EQ(DeliverFileDrop(window, mouse, {"file:///tmp/a", "file:///tmp/b%20c"}), noErr);
    EXPECT_EQ(seen.received, (std::vector<std::string>{"file:///tmp/a", "file:///tmp/b%20c"}));
    EXPECT_EQ(seen.messages,
              (std::vector<DragTrackingMessage>{kDragTrackingEnterHandler, kDragTrackingEnterWindow,
                                                kDragTrackingInWindow, kDragTrackingLeaveWindow,
                                                kDragTrackingLeaveHandler}));
}

TEST_F(DragTest, ADropNobodyTakesIsNotAccepted) {
    EXPECT_EQ(DeliverFileDrop(window, mouse, {"file:///tmp/a"}), dragNotAcceptedErr);
    Seen seen;
    seen.answer = dragNotAcceptedErr;
    ASSERT_EQ(InstallReceiveHandler(Receive, window, &seen), noErr);
    EXPECT_EQ(DeliverFileDrop(window, mouse, {"file:///tmp/a"}), dragNotAcceptedErr);
    EXPECT_EQ(seen.received.size(), 1u);
}

TEST_F(DragTest, TheNextReceiverIsAskedWhenOneRefuses) {
    Seen seen;
    ASSERT_EQ(InstallReceiveHandler(Refuse, window, nullptr), noErr);
    ASSERT_EQ(InstallReceiveHandler(Receive, window, &seen), noErr);
    EXPECT_EQ(DeliverFileDrop(window, mouse, {"file:///x"}), noErr);
    EXPECT_EQ(seen.received.size(), 1u);
}

TEST_F(DragTest, AWindowWithoutHandlersFallsBackToTheSharedOnes) {
    Seen shared;
    ASSERT_EQ(InstallReceiveHandler(Receive, nullptr, &shared), noErr);
    EXPECT_EQ(DeliverFileDrop(window, mouse, {"file:///x"}), noErr);
    EXPECT_EQ(shared.received.size(), 1u);
    // Once the window has its own, the shared one is not asked.
    Seen own;
    ASSERT_EQ(InstallReceiveHandler(Refuse, window, &own), noErr);
    EXPECT_EQ(DeliverFileDrop(window, mouse, {"file:///x"}), dragNotAcceptedErr);
    EXPECT_EQ(shared.received.size(), 1u);
}

TEST_F(DragTest, HandlersAreInstalledOnceAndRemovedOnce) {
    Seen seen;
    EXPECT_EQ(InstallReceiveHandler(Receive, window, &seen), noErr);
    EXPECT_EQ(InstallReceiveHandler(Receive, window, &seen), duplicateHandlerErr);
    EXPECT_EQ(RemoveReceiveHandler(Receive, window), noErr);
    EXPECT_EQ(RemoveReceiveHandler(Receive, window), handlerNotFoundErr);
    EXPECT_EQ(InstallTrackingHandler(nullptr, window, nullptr), paramErr);
    EXPECT_EQ(DeliverFileDrop(nullptr, mouse, {"file:///x"}), errInvalidWindowRef);
}

TEST(DragFlavorTest, ReadsAreBoundedAndBadReferencesSaySo) {
    OpaqueDragRef drag;
    drag.items.push_back({{{kDragFlavorTypeFileURL, {'f', 'i', 'l', 'e', ':', '/', '/', 'x'}}}});
    char buffer[4] = {};
    Size size = sizeof buffer;
    EXPECT_EQ(GetFlavorData(&drag, 1, kDragFlavorTypeFileURL, buffer, &size, 5), noErr);
    EXPECT_EQ(size, 3);
    EXPECT_EQ(std::string(buffer, 3), "//x");
    size = sizeof buffer;
    EXPECT_EQ(GetFlavorData(&drag, 1, kDragFlavorTypeFileURL, buffer, &size, 9), cantGetFlavorErr);
    EXPECT_EQ(GetFlavorData(&drag, 1, 0x54455854, buffer, &size, 0), badDragFlavorErr);
    EXPECT_EQ(GetFlavorData(&drag, 2, kDragFlavorTypeFileURL, buffer, &size, 0), badDragItemErr);
    DragItemRef item = 0;
    EXPECT_EQ(GetDragItemReferenceNumber(&drag, 0, &item), badDragItemErr);
    uint16_t count = 0;
    EXPECT_EQ(CountDragItems(nullptr, &count), badDragRefErr);
    DragAttributes attributes = 0;
    EXPECT_EQ(GetDragAttributes(&drag, &attributes), noErr);
    EXPECT_TRUE(attributes & kDragHasLeftSenderWindow);
    EXPECT_EQ(ShowDragHilite(&drag, nullptr, true), noErr);
    EXPECT_TRUE(drag.hilited);
    EXPECT_EQ(HideDragHilite(&drag), noErr);
    EXPECT_FALSE(drag.hilited);
}

} // namespace

TEST_F(DragTest, AHoveringDragIsJudgedAtEveryMoveAndEntersAndLeavesOnce) {
    Seen seen;
    InstallTrackingHandler(Picky, window, &seen);
    {
        IncomingDrag drag(window, {"file:///tmp/a"});
        EXPECT_FALSE(drag.Move(mouse)); // no receive handler: nothing would take it
        InstallReceiveHandler(Receive, window, &seen);
        EXPECT_TRUE(drag.Move(mouse));
        seen.answer = dragNotAcceptedErr;
        EXPECT_FALSE(drag.Move(mouse));
    }
    EXPECT_EQ(seen.messages,
              (std::vector<DragTrackingMessage>{kDragTrackingEnterHandler, kDragTrackingEnterWindow,
                                                kDragTrackingInWindow, kDragTrackingInWindow,
                                                kDragTrackingInWindow, kDragTrackingLeaveWindow,
                                                kDragTrackingLeaveHandler}));
    EXPECT_TRUE(seen.received.empty());

    seen = {};
    {
        IncomingDrag dropped(window, {"file:///tmp/b"});
        EXPECT_TRUE(dropped.Move(mouse));
        EXPECT_EQ(dropped.Drop(mouse), noErr);
    }
    EXPECT_EQ(seen.received, std::vector<std::string>{"file:///tmp/b"});
    EXPECT_EQ(seen.messages.back(), kDragTrackingLeaveHandler);
    EXPECT_EQ(seen.messages.size(), 5u); // the drop left; the end of the drag adds nothing
}
