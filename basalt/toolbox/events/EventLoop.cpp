#include "basalt/toolbox/events/EventLoop.h"

#include "basalt/toolbox/events/ApplicationTarget.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

OpaqueEventLoopRef& MainLoop() {
    static auto* loop = new OpaqueEventLoopRef; // lives as long as the process
    return *loop;
}

std::chrono::steady_clock::time_point ClockTime(EventTime at) {
    auto delta = std::chrono::duration<double>(at - GetCurrentEventTime());
    return std::chrono::steady_clock::now() +
           std::chrono::duration_cast<std::chrono::steady_clock::duration>(delta);
}

} // namespace

bool OpaqueEventLoopRef::FireDueTimers() {
    EventTime now = GetCurrentEventTime();
    std::vector<std::shared_ptr<OpaqueEventLoopTimerRef>> due;
    for (const auto& timer : timers)
        if (timer->fireAt <= now && !timer->firing)
            due.push_back(timer);
    for (const auto& timer : due) {
        if (timer->removed || timer->fireAt > now)
            continue;
        // A repeating timer that fell behind skips the beats it missed.
        timer->fireAt = timer->interval > 0
                            ? std::max(timer->fireAt + timer->interval, now + timer->interval / 2)
                            : OpaqueEventLoopTimerRef::kParked;
        timer->firing = true;
        timer->proc(timer.get(), timer->userData);
        timer->firing = false;
    }
    return !due.empty();
}

EventTime OpaqueEventLoopRef::NextFireTime() const {
    EventTime next = OpaqueEventLoopTimerRef::kParked;
    for (const auto& timer : timers)
        if (!timer->firing)
            next = std::min(next, timer->fireAt);
    return next;
}

namespace basalt::toolbox {

StatusCode RunLevel(OpaqueEventLoopRef::RunLevel& level, EventTimeout timeout) {
    OpaqueEventLoopRef& loop = MainLoop();
    loop.levels.push_back(&level);
    EventTime deadline =
        timeout < 0 ? OpaqueEventLoopTimerRef::kParked : GetCurrentEventTime() + timeout;
    StatusCode status = eventLoopQuitErr;
    while (!level.quit) {
        EventTime remaining = deadline - GetCurrentEventTime();
        if (std::isinf(deadline))
            remaining = kEventDurationForever;
        else if (remaining < 0)
            remaining = 0;
        EventRef event = nullptr;
        status = ReceiveNextEvent(0, nullptr, remaining, true, &event);
        if (status != noErr)
            break;
        SendEventToEventTarget(event, GetEventDispatcherTarget());
        ReleaseEvent(event);
        status = eventLoopQuitErr;
    }
    loop.levels.pop_back();
    return level.quit ? eventLoopQuitErr : status;
}

bool DispatchPendingEvents() {
    bool any = MainLoop().FireDueTimers();
    EventRef event = nullptr;
    while (ReceiveNextEvent(0, nullptr, kEventDurationNoWait, true, &event) == noErr) {
        any = true;
        SendEventToEventTarget(event, GetEventDispatcherTarget());
        ReleaseEvent(event);
    }
    return any;
}

} // namespace basalt::toolbox

extern "C" {

EventLoopRef GetMainEventLoop(void) {
    return &MainLoop();
}
EventLoopRef GetCurrentEventLoop(void) {
    return &MainLoop();
}

StatusCode ReceiveNextEvent(unsigned long inNumTypes, const EventTypeSpec* inList,
                            EventTimeout inTimeout, Boolean inPullEvent, EventRef* outEvent) {
    if (outEvent == nullptr || (inNumTypes != 0 && inList == nullptr))
        return paramErr;
    *outEvent = nullptr;
    OpaqueEventLoopRef& loop = MainLoop();
    OpaqueEventQueueRef& queue = *GetMainEventQueue();
    EventTime deadline =
        inTimeout < 0 ? OpaqueEventLoopTimerRef::kParked : GetCurrentEventTime() + inTimeout;
    for (;;) {
        if (loop.QuitRequested())
            return eventLoopQuitErr;
        loop.FireDueTimers();
        if (loop.QuitRequested())
            return eventLoopQuitErr;
        {
            std::lock_guard lock(queue.mutex);
            if (EventRef event = queue.FindLocked(inNumTypes, inList, inPullEvent)) {
                *outEvent = event;
                return noErr;
            }
        }
        basalt::toolbox::FlushWindowsBeforeWaiting();
        std::unique_lock lock(queue.mutex);
        if (EventRef event = queue.FindLocked(inNumTypes, inList, inPullEvent)) {
            *outEvent = event;
            return noErr;
        }
        EventTime wakeAt = std::min(deadline, loop.NextFireTime());
        if (GetCurrentEventTime() >= deadline)
            return eventLoopTimedOutErr;
        uint64_t generation = queue.generation;
        auto woken = [&] { return queue.generation != generation; };
        if (std::isinf(wakeAt))
            queue.posted.wait(lock, woken);
        else
            queue.posted.wait_until(lock, ClockTime(wakeAt), woken);
    }
}

StatusCode RunCurrentEventLoop(EventTimeout inTimeout) {
    OpaqueEventLoopRef::RunLevel level;
    return basalt::toolbox::RunLevel(level, inTimeout);
}

StatusCode QuitEventLoop(EventLoopRef inEventLoop) {
    if (inEventLoop == nullptr)
        return paramErr;
    if (!inEventLoop->levels.empty())
        inEventLoop->levels.back()->quit = true;
    GetMainEventQueue()->Wake();
    return noErr;
}

void RunApplicationEventLoop(void) {
    OpaqueEventLoopRef::RunLevel level;
    level.application = true;
    basalt::toolbox::RunLevel(level, kEventDurationForever);
}

void QuitApplicationEventLoop(void) {
    OpaqueEventLoopRef& loop = MainLoop();
    // Quitting the application ends every run above the application loop too.
    auto application = std::find_if(loop.levels.begin(), loop.levels.end(),
                                    [](auto* level) { return level->application; });
    for (auto it = application; it != loop.levels.end(); ++it)
        (*it)->quit = true;
    GetMainEventQueue()->Wake();
}

StatusCode InstallEventLoopTimer(EventLoopRef inEventLoop, EventTimerInterval inFireDelay,
                                 EventTimerInterval inInterval, EventLoopTimerUPP inTimerProc,
                                 void* inTimerData, EventLoopTimerRef* outTimer) {
    if (inEventLoop == nullptr || inTimerProc == nullptr || inInterval < 0)
        return paramErr;
    auto timer = std::make_shared<OpaqueEventLoopTimerRef>();
    timer->loop = inEventLoop;
    timer->proc = inTimerProc;
    timer->userData = inTimerData;
    timer->interval = inInterval;
    timer->fireAt =
        inFireDelay < 0 ? OpaqueEventLoopTimerRef::kParked : GetCurrentEventTime() + inFireDelay;
    inEventLoop->timers.push_back(timer);
    if (outTimer != nullptr)
        *outTimer = timer.get();
    GetMainEventQueue()->Wake();
    return noErr;
}

StatusCode RemoveEventLoopTimer(EventLoopTimerRef inTimer) {
    if (inTimer == nullptr || inTimer->removed)
        return paramErr;
    inTimer->removed = true;
    std::erase_if(inTimer->loop->timers, [&](const auto& timer) { return timer.get() == inTimer; });
    return noErr;
}

StatusCode SetEventLoopTimerNextFireTime(EventLoopTimerRef inTimer, EventTimerInterval inNextFire) {
    if (inTimer == nullptr || inTimer->removed)
        return paramErr;
    inTimer->fireAt =
        inNextFire < 0 ? OpaqueEventLoopTimerRef::kParked : GetCurrentEventTime() + inNextFire;
    GetMainEventQueue()->Wake();
    return noErr;
}

} // extern "C"
