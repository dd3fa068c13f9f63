#pragma once

// The main event queue: three FIFO lanes by priority, guarded by one mutex so that any thread
// may post. Waiting happens in the loop (EventLoop.cpp), which sleeps on the queue's condition.

#include "basalt/toolbox/events/Event.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

struct OpaqueEventQueueRef {
    std::mutex mutex;
    std::condition_variable posted;
    std::array<std::deque<EventRef>, 3> lanes; // by EventPriority
    // Bumped on every post and wake, so a sleeper can tell it was woken.
    uint64_t generation = 0;

    ~OpaqueEventQueueRef();
    void Post(EventRef event, EventPriority priority);
    // Takes (or with pull false, finds) the first event matching the list; caller holds mutex.
    EventRef FindLocked(unsigned long numTypes, const EventTypeSpec* list, bool pull);
    // Takes the first event for which accept is true; caller holds mutex.
    EventRef FindLocked(const std::function<bool(EventRef)>& accept, bool pull);
    // Wakes a sleeper without posting, as when a timer changes or a loop is quit.
    void Wake();
};

namespace basalt::toolbox {
bool MatchesList(EventRef event, unsigned long numTypes, const EventTypeSpec* list);
}
