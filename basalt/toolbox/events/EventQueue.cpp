#include "basalt/toolbox/events/EventQueue.h"

#include <algorithm>

namespace basalt::toolbox {

bool MatchesList(EventRef event, unsigned long numTypes, const EventTypeSpec* list) {
    if (numTypes == 0)
        return true;
    return std::any_of(list, list + numTypes, [&](const EventTypeSpec& type) {
        return type.eventClass == event->eventClass && type.eventKind == event->kind;
    });
}

} // namespace basalt::toolbox

OpaqueEventQueueRef::~OpaqueEventQueueRef() {
    for (auto& lane : lanes)
        for (EventRef event : lane)
            ReleaseEvent(event);
}

void OpaqueEventQueueRef::Post(EventRef event, EventPriority priority) {
    {
        std::lock_guard lock(mutex);
        lanes[size_t(priority)].push_back(RetainEvent(event));
        ++generation;
    }
    posted.notify_all();
}

void OpaqueEventQueueRef::Wake() {
    {
        std::lock_guard lock(mutex);
        ++generation;
    }
    posted.notify_all();
}

EventRef OpaqueEventQueueRef::FindLocked(unsigned long numTypes, const EventTypeSpec* list,
                                         bool pull) {
    return FindLocked(
        [&](EventRef event) { return basalt::toolbox::MatchesList(event, numTypes, list); }, pull);
}

EventRef OpaqueEventQueueRef::FindLocked(const std::function<bool(EventRef)>& accept, bool pull) {
    for (auto lane = lanes.rbegin(); lane != lanes.rend(); ++lane)
        for (auto it = lane->begin(); it != lane->end(); ++it)
            if (accept(*it)) {
                EventRef event = *it;
                if (pull)
                    lane->erase(it);
                return event;
            }
    return nullptr;
}

namespace {
OpaqueEventQueueRef& MainQueue() {
    static auto* queue = new OpaqueEventQueueRef; // lives as long as the process
    return *queue;
}
} // namespace

extern "C" {

EventQueueRef GetMainEventQueue(void) {
    return &MainQueue();
}
EventQueueRef GetCurrentEventQueue(void) {
    return &MainQueue();
}

StatusCode PostEventToQueue(EventQueueRef inQueue, EventRef inEvent, EventPriority inPriority) {
    if (inQueue == nullptr || inEvent == nullptr || inPriority > kEventPriorityHigh)
        return paramErr;
    inQueue->Post(inEvent, inPriority);
    return noErr;
}

StatusCode RemoveEventFromQueue(EventQueueRef inQueue, EventRef inEvent) {
    if (inQueue == nullptr || inEvent == nullptr)
        return paramErr;
    std::lock_guard lock(inQueue->mutex);
    EventRef found = inQueue->FindLocked([&](EventRef event) { return event == inEvent; }, true);
    if (found == nullptr)
        return eventNotInQueueErr;
    ReleaseEvent(found);
    return noErr;
}

StatusCode FlushEventsMatchingListFromQueue(EventQueueRef inQueue, unsigned long inNumTypes,
                                            const EventTypeSpec* inList) {
    if (inQueue == nullptr || (inNumTypes != 0 && inList == nullptr))
        return paramErr;
    std::lock_guard lock(inQueue->mutex);
    while (EventRef event = inQueue->FindLocked(inNumTypes, inList, true))
        ReleaseEvent(event);
    return noErr;
}

StatusCode FlushEventQueue(EventQueueRef inQueue) {
    return FlushEventsMatchingListFromQueue(inQueue, 0, nullptr);
}

long GetNumEventsInQueue(EventQueueRef inQueue) {
    if (inQueue == nullptr)
        return 0;
    std::lock_guard lock(inQueue->mutex);
    long count = 0;
    for (const auto& lane : inQueue->lanes)
        count += long(lane.size());
    return count;
}

} // extern "C"
