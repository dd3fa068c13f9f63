#include "kel/nodes/TKelNodeObservatory.h"

#include "KelNodeTesting.h"
#include "tests/support/TestEnvironment.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

using namespace kelnodetest;
namespace fs = std::filesystem;

namespace {

struct Recorder : INodeObserver {
    std::vector<TKelNode> added, deleted, changed;
    TKelNode lastParent;
    std::function<void()> onAddition;

    void NodeObserverNotePropertyChange(TKelNode& node, unsigned long) override {
        changed.push_back(node);
    }
    void NodeObserverNoteDeletion(TKelNode& node) override { deleted.push_back(node); }
    void NodeObserverNoteChildAddition(TKelNode& parent, TKelNode& child) override {
        lastParent = parent;
        added.push_back(child);
        if (onAddition) {
            onAddition();
        }
    }
    void NodeObserverNoteSyncCompletion(TKelNode&) override {}
    void NodeObserverNoteOpenSyncCompletion(TKelNode&) override {}
};

// Takes every wake-up waiting in the main queue, without dispatching, and counts them.
int TakeWakeUps() {
    int count = 0;
    EventRef event = nullptr;
    while (ReceiveNextEvent(1, &kNodeEventSpec, 0, true, &event) == noErr) {
        ReleaseEvent(event);
        ++count;
    }
    return count;
}

// Gives the watcher thread time to deliver what the file system reported.
void Settle() {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
}

class TKelNodeObservatoryTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder = keltest::MakeScratchFolder("observe");
        container = NodeAt(folder);
        TakeWakeUps();
    }
    void TearDown() override { TakeWakeUps(); }

    fs::path folder;
    TKelNode container;
};

TEST_F(TKelNodeObservatoryTest, TwentyQuickChangesGiveOneWakeUpAndOneDrain) {
    TKelNodeObservatory observatory;
    Recorder recorder;
    ASSERT_EQ(observatory.RegisterContainerObserver(container, recorder), noErr);
    for (int i = 0; i < 20; ++i) {
        keltest::WriteFile(folder / ("f" + std::to_string(i)), "x");
    }
    Settle();
    keltest::WriteFile(folder / "late", "x"); // a second burst while the first is unread
    Settle();
    EXPECT_EQ(TakeWakeUps(), 1) << "one wake-up in flight until the queue is drained";
    observatory.ProcessWaitingNodeEvents();
    EXPECT_EQ(recorder.added.size(), 21u);
    EXPECT_EQ(recorder.lastParent, container);

    fs::remove(folder / "late");
    Settle();
    EXPECT_EQ(TakeWakeUps(), 1) << "once drained, the next change wakes the main thread again";
    observatory.ProcessWaitingNodeEvents();
    ASSERT_EQ(recorder.deleted.size(), 1u);
    EXPECT_FALSE(recorder.deleted.front().IsEmpty());
    observatory.UnregisterContainerObserver(container, recorder);
}

TEST_F(TKelNodeObservatoryTest, BlockingWaitsForChangesAndDrainsEveryObservatory) {
    auto observatory = std::make_unique<TKelNodeObservatory>();
    auto later = std::make_unique<TKelNodeObservatory>();
    Recorder recorder, other;
    observatory->RegisterContainerObserver(container, recorder);
    auto otherFolder = keltest::MakeScratchFolder("other");
    later->RegisterContainerObserver(NodeAt(otherFolder), other);
    // The first observer destroys the later observatory, as a dialog closing on a change would.
    recorder.onAddition = [&] {
        if (later) {
            later->UnregisterContainerObserver(NodeAt(otherFolder), other);
            later.reset();
        }
    };
    EXPECT_EQ(TKelNodeObservatory::BlockForNodeEvents(0.05), eventLoopTimedOutErr);
    keltest::WriteFile(otherFolder / "x", "x");
    keltest::WriteFile(folder / "a", "x");
    Settle();
    EXPECT_EQ(TKelNodeObservatory::BlockForNodeEvents(2.0), noErr);
    EXPECT_EQ(recorder.added.size(), 1u);
    EXPECT_FALSE(later);
    observatory->UnregisterContainerObserver(container, recorder);
}

TEST_F(TKelNodeObservatoryTest, WakeUpsReachTheTickleControlThroughTheEventLoop) {
    Rect bounds = {100, 100, 300, 400};
    WindowRef window = nullptr;
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window), noErr);
    Rect buttonBounds = {10, 10, 30, 100};
    ControlRef control = nullptr;
    ASSERT_EQ(BTCreateControl(window, &buttonBounds, kControlKindPushButton, BCSTR("x"), &control),
              noErr);
    {
        TKelNodeObservatory observatory;
        Recorder recorder;
        ASSERT_EQ(observatory.SetTickleControl(control), noErr);
        EXPECT_EQ(observatory.SetTickleControl(control), noErr);
        observatory.RegisterContainerObserver(container, recorder);
        keltest::WriteFile(folder / "seen", "x");
        keltest::WriteFile(folder / "seen", "changed");
        for (int i = 0; i < 40 && recorder.added.empty(); ++i) {
            RunCurrentEventLoop(0.05);
        }
        EXPECT_EQ(recorder.added.size(), 1u);
        observatory.UnregisterContainerObserver(container, recorder);
        observatory.SetTickleControl(nullptr);
    }
    DisposeWindow(window);
}

} // namespace
