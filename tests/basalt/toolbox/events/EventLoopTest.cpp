#include "basalt/toolbox/events/EventLoop.h"

#include <gtest/gtest.h>
#include <thread>

using namespace basalt::toolbox;

namespace {

const EventTypeSpec kWake = {kEventClassToolbox, kEventToolboxWake};

void Post(EventKind kind, EventPriority priority = kEventPriorityStandard) {
    EventHolder event(kEventClassToolbox, kind);
    PostEventToQueue(GetMainEventQueue(), event.get(), priority);
}

struct Counter {
    int fired = 0;
    int quitAfter = 0;
    bool removeSelf = false;
    static void Fire(EventLoopTimerRef timer, void* data) {
        auto* counter = static_cast<Counter*>(data);
        ++counter->fired;
        if (counter->removeSelf)
            RemoveEventLoopTimer(timer);
        if (counter->fired == counter->quitAfter)
            QuitEventLoop(GetMainEventLoop());
    }
};

class EventLoopTest : public ::testing::Test {
protected:
    // Whatever an earlier test left queued (a key's release, say) is not this test's.
    void SetUp() override { FlushEventQueue(GetMainEventQueue()); }
    void TearDown() override { FlushEventQueue(GetMainEventQueue()); }
};

} // namespace

TEST_F(EventLoopTest, EventsPostedFromAnotherThreadArrive) {
    std::thread poster([] { Post(kEventToolboxWake); });
    EventRef event = nullptr;
    EXPECT_EQ(ReceiveNextEvent(1, &kWake, 5.0, true, &event), noErr);
    poster.join();
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(GetEventKind(event), uint32_t(kEventToolboxWake));
    ReleaseEvent(event);
    EXPECT_EQ(GetNumEventsInQueue(GetMainEventQueue()), 0);
}

TEST_F(EventLoopTest, WaitingTimesOutAndPeekingLeavesTheEventQueued) {
    EventRef event = nullptr;
    EXPECT_EQ(ReceiveNextEvent(1, &kWake, 0.02, true, &event), eventLoopTimedOutErr);
    EXPECT_EQ(event, nullptr);

    Post(kEventToolboxWake);
    EXPECT_EQ(ReceiveNextEvent(1, &kWake, 0, false, &event), noErr);
    EXPECT_EQ(GetNumEventsInQueue(GetMainEventQueue()), 1);
    EXPECT_EQ(ReceiveNextEvent(1, &kWake, 0, true, &event), noErr);
    ReleaseEvent(event);
    EXPECT_EQ(GetNumEventsInQueue(GetMainEventQueue()), 0);
}

TEST_F(EventLoopTest, HigherPriorityComesFirstAndTheListFilters) {
    Post(7, kEventPriorityLow);
    Post(8, kEventPriorityStandard);
    Post(9, kEventPriorityHigh);
    Post(kEventToolboxWake, kEventPriorityLow);
    std::vector<EventKind> kinds;
    EventRef event = nullptr;
    EXPECT_EQ(ReceiveNextEvent(1, &kWake, 0, true, &event), noErr);
    kinds.push_back(GetEventKind(event));
    ReleaseEvent(event);
    while (ReceiveNextEvent(0, nullptr, 0, true, &event) == noErr) {
        kinds.push_back(GetEventKind(event));
        ReleaseEvent(event);
    }
    EXPECT_EQ(kinds, (std::vector<EventKind>{kEventToolboxWake, 9, 8, 7}));
}

TEST_F(EventLoopTest, TimersFireOnceRepeatOrWaitToBeArmed) {
    Counter once, repeating, parked;
    repeating.quitAfter = 3;
    EventLoopTimerRef onceTimer, repeatingTimer, parkedTimer;
    InstallEventLoopTimer(GetMainEventLoop(), 0.001, 0, Counter::Fire, &once, &onceTimer);
    InstallEventLoopTimer(GetMainEventLoop(), 0.001, 0.005, Counter::Fire, &repeating,
                          &repeatingTimer);
    InstallEventLoopTimer(GetMainEventLoop(), kEventDurationForever, 0, Counter::Fire, &parked,
                          &parkedTimer);
    EXPECT_EQ(RunCurrentEventLoop(5.0), eventLoopQuitErr);
    EXPECT_EQ(once.fired, 1);
    EXPECT_EQ(repeating.fired, 3);
    EXPECT_EQ(parked.fired, 0);

    // A parked one-shot timer can be armed again.
    parked.quitAfter = 1;
    SetEventLoopTimerNextFireTime(parkedTimer, 0.001);
    EXPECT_EQ(RunCurrentEventLoop(5.0), eventLoopQuitErr);
    EXPECT_EQ(parked.fired, 1);
    for (auto* timer : {onceTimer, repeatingTimer, parkedTimer})
        EXPECT_EQ(RemoveEventLoopTimer(timer), noErr);
}

TEST_F(EventLoopTest, ATimerMayRemoveItselfWhileFiring) {
    Counter counter;
    counter.removeSelf = true;
    EventLoopTimerRef timer;
    InstallEventLoopTimer(GetMainEventLoop(), 0, 0.001, Counter::Fire, &counter, &timer);
    EXPECT_EQ(RunCurrentEventLoop(0.05), eventLoopTimedOutErr);
    EXPECT_EQ(counter.fired, 1);
}

TEST_F(EventLoopTest, QuitEndsOnlyTheInnermostRun) {
    // The outer timer runs a nested loop; a second timer quits that one; the outer timer then
    // quits the outer run. A timer is never re-entered while it fires.
    struct Nested {
        int outerFired = 0;
        StatusCode inner = noErr;
        EventLoopTimerRef quitter = nullptr;
        static void Outer(EventLoopTimerRef, void* data) {
            auto* nested = static_cast<Nested*>(data);
            ++nested->outerFired;
            SetEventLoopTimerNextFireTime(nested->quitter, 0.001);
            nested->inner = RunCurrentEventLoop(5.0);
            QuitEventLoop(GetMainEventLoop());
        }
        static void Quit(EventLoopTimerRef, void*) { QuitEventLoop(GetMainEventLoop()); }
    } nested;
    EventLoopTimerRef outer;
    InstallEventLoopTimer(GetMainEventLoop(), 0, 0.001, Nested::Outer, &nested, &outer);
    InstallEventLoopTimer(GetMainEventLoop(), kEventDurationForever, 0, Nested::Quit, nullptr,
                          &nested.quitter);
    EXPECT_EQ(RunCurrentEventLoop(5.0), eventLoopQuitErr);
    EXPECT_EQ(nested.inner, eventLoopQuitErr);
    EXPECT_EQ(nested.outerFired, 1);
    RemoveEventLoopTimer(outer);
    RemoveEventLoopTimer(nested.quitter);
}

TEST_F(EventLoopTest, ManyThreadsPostingLoseNothingAndKeepTheirOrder) {
    constexpr int kThreads = 4, kEach = 500;
    std::vector<std::thread> posters;
    for (int t = 0; t < kThreads; ++t)
        posters.emplace_back([t] {
            for (int i = 0; i < kEach; ++i) {
                EventHolder event(kEventClassToolbox, kEventToolboxWake);
                int32_t stamp = t * kEach + i;
                SetParam(event.get(), kEventParamAttributes, typeSInt32, stamp);
                PostEventToQueue(GetMainEventQueue(), event.get(), kEventPriorityStandard);
            }
        });
    std::vector<int> last(kThreads, -1);
    int received = 0;
    while (received < kThreads * kEach) {
        EventRef event = nullptr;
        ASSERT_EQ(ReceiveNextEvent(1, &kWake, 5.0, true, &event), noErr);
        int32_t stamp = 0;
        GetParam(event, kEventParamAttributes, typeSInt32, &stamp);
        ReleaseEvent(event);
        int thread = stamp / kEach;
        EXPECT_GT(stamp % kEach, last[thread]);
        last[thread] = stamp % kEach;
        ++received;
    }
    for (auto& poster : posters)
        poster.join();
    EXPECT_EQ(GetNumEventsInQueue(GetMainEventQueue()), 0);
}

TEST_F(EventLoopTest, QueuedEventsCanBeRemovedOrFlushedByType) {
    EventHolder wake(kEventClassToolbox, kEventToolboxWake);
    EventHolder other(kEventClassToolbox, 9);
    PostEventToQueue(GetMainEventQueue(), wake.get(), kEventPriorityStandard);
    PostEventToQueue(GetMainEventQueue(), other.get(), kEventPriorityStandard);
    EXPECT_EQ(GetEventRetainCount(wake.get()), 2);
    EXPECT_EQ(RemoveEventFromQueue(GetMainEventQueue(), wake.get()), noErr);
    EXPECT_EQ(RemoveEventFromQueue(GetMainEventQueue(), wake.get()), eventNotInQueueErr);
    EXPECT_EQ(GetEventRetainCount(wake.get()), 1);
    const EventTypeSpec nine = {kEventClassToolbox, 9};
    FlushEventsMatchingListFromQueue(GetMainEventQueue(), 1, &nine);
    EXPECT_EQ(GetNumEventsInQueue(GetMainEventQueue()), 0);
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), nullptr, kEventPriorityStandard), paramErr);
}
