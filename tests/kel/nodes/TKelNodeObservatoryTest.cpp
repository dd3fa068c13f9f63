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

// Takes every wake-up waiting in the main queue, without dispatching, and counts those meant
// for target (all of them when target is null).
int TakeWakeUps(EventTargetRef target = nullptr) {
    int count = 0;
    EventRef event = nullptr;
    while (ReceiveNextEvent(1, &kNodeEventSpec, 0, true, &event) == noErr) {
        EventTargetRef meant = nullptr;
        GetEventParameter(event, kEventParamPostTarget, typeEventTargetRef, nullptr, sizeof meant,
                          nullptr, &meant);
        count += target == nullptr || meant == target;
        ReleaseEvent(event);
    }
    return count;
}

// Waits for a condition, with a generous deadline; step runs before each look.
bool WaitFor(const std::function<bool()>& done, const std::function<void()>& step) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!done() && std::chrono::steady_clock::now() < deadline) {
        step();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return done();
}

// A window with one control, to carry an observatory's wake-ups.
struct TickleControl {
    TickleControl() {
        Rect bounds = {100, 100, 300, 400};
        CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
        Rect buttonBounds = {10, 10, 30, 100};
        BTCreateControl(window, &buttonBounds, kControlKindPushButton, BCSTR("x"), &control);
    }
    ~TickleControl() { DisposeWindow(window); }
    WindowRef window = nullptr;
    ControlRef control = nullptr;
};

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

// A second observatory on the same folder, drained by hand, tells when the watcher has
// delivered a burst: both queues are filled in the same pass.
TEST_F(TKelNodeObservatoryTest, TwentyQuickChangesGiveOneWakeUpAndOneDrain) {
    TickleControl carrier;
    ASSERT_NE(carrier.control, nullptr);
    TKelNodeObservatory observatory, sentinel;
    ASSERT_EQ(observatory.SetTickleControl(carrier.control), noErr);
    EventTargetRef target = GetControlEventTarget(carrier.control);
    Recorder recorder, watch;
    ASSERT_EQ(observatory.RegisterContainerObserver(container, recorder), noErr);
    ASSERT_EQ(sentinel.RegisterContainerObserver(container, watch), noErr);
    auto drainSentinel = [&] { sentinel.ProcessWaitingNodeEvents(); };
    for (int i = 0; i < 20; ++i) {
        keltest::WriteFile(folder / ("f" + std::to_string(i)), "x");
    }
    ASSERT_TRUE(WaitFor([&] { return watch.added.size() == 20; }, drainSentinel));
    keltest::WriteFile(folder / "late", "x"); // a second burst while the first is unread
    ASSERT_TRUE(WaitFor([&] { return watch.added.size() == 21; }, drainSentinel));
    EXPECT_EQ(TakeWakeUps(target), 1) << "one wake-up in flight until the queue is drained";
    observatory.ProcessWaitingNodeEvents();
    EXPECT_EQ(recorder.added.size(), 21u);
    EXPECT_EQ(recorder.lastParent, container);

    fs::remove(folder / "late");
    ASSERT_TRUE(WaitFor([&] { return watch.deleted.size() == 1; }, drainSentinel));
    EXPECT_EQ(TakeWakeUps(target), 1)
        << "once drained, the next change wakes the main thread again";
    observatory.ProcessWaitingNodeEvents();
    ASSERT_EQ(recorder.deleted.size(), 1u);
    EXPECT_FALSE(recorder.deleted.front().IsEmpty());
    observatory.UnregisterContainerObserver(container, recorder);
    sentinel.UnregisterContainerObserver(container, watch);
    observatory.SetTickleControl(nullptr);
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
    EXPECT_TRUE(WaitFor([&] { return !recorder.added.empty(); },
                        [] { TKelNodeObservatory::BlockForNodeEvents(0.1); }));
    EXPECT_EQ(recorder.added.size(), 1u);
    EXPECT_FALSE(later);
    observatory->UnregisterContainerObserver(container, recorder);
}

// Unregistering must also drop what is already queued: the observer may be gone next.
TEST_F(TKelNodeObservatoryTest, AnUnregisteredObserverHearsNothingMore) {
    TKelNodeObservatory observatory, sentinel;
    Recorder recorder, watch;
    observatory.RegisterContainerObserver(container, recorder);
    sentinel.RegisterContainerObserver(container, watch);
    keltest::WriteFile(folder / "a", "x");
    ASSERT_TRUE(WaitFor([&] { return !watch.added.empty(); },
                        [&] { sentinel.ProcessWaitingNodeEvents(); }));
    observatory.UnregisterContainerObserver(container, recorder);
    observatory.ProcessWaitingNodeEvents();
    EXPECT_TRUE(recorder.added.empty()) << "the event was queued before, and must not arrive";
    sentinel.UnregisterContainerObserver(container, watch);
}

// A wake-up that has no live control to go to (none was set, or it was disposed) reaches the
// application's target; the observatory must still be drained, and hear later changes too.
TEST_F(TKelNodeObservatoryTest, AWakeUpWithoutItsControlStillArrives) {
    TKelNodeObservatory observatory;
    Recorder recorder;
    observatory.RegisterContainerObserver(container, recorder);
    auto runLoop = [] { RunCurrentEventLoop(0.05); };
    keltest::WriteFile(folder / "first", "x");
    EXPECT_TRUE(WaitFor([&] { return recorder.added.size() == 1; }, runLoop));
    keltest::WriteFile(folder / "second", "x");
    EXPECT_TRUE(WaitFor([&] { return recorder.added.size() == 2; }, runLoop))
        << "the first wake-up must not leave the observatory deaf";
    observatory.UnregisterContainerObserver(container, recorder);
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
        EXPECT_TRUE(
            WaitFor([&] { return !recorder.added.empty(); }, [] { RunCurrentEventLoop(0.05); }));
        EXPECT_EQ(recorder.added.size(), 1u);
        observatory.UnregisterContainerObserver(container, recorder);
        observatory.SetTickleControl(nullptr);
    }
    DisposeWindow(window);
}

// An owner that fails to clear the tickle control before the control goes, with its window or
// alone: the observatory lets go of it, still hears changes, and is destroyed without touching
// the dead control (the sanitizer build sees any such touch).
TEST_F(TKelNodeObservatoryTest, AControlThatGoesFirstIsLetGoOf) {
    for (bool withWindow : {true, false}) {
        auto carrier = std::make_unique<TickleControl>();
        auto observatory = std::make_unique<TKelNodeObservatory>();
        Recorder recorder;
        ASSERT_EQ(observatory->SetTickleControl(carrier->control), noErr);
        observatory->RegisterContainerObserver(container, recorder);
        if (withWindow) {
            carrier.reset();
        } else {
            DisposeControl(carrier->control);
        }
        std::string name = withWindow ? "after window" : "after control";
        keltest::WriteFile(folder / name, "x");
        EXPECT_TRUE(
            WaitFor([&] { return recorder.added.size() == 1; }, [] { RunCurrentEventLoop(0.05); }))
            << name;
        observatory->UnregisterContainerObserver(container, recorder);
        observatory.reset();
    }
}

} // namespace
