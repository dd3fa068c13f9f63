#pragma once

// Helpers for the tests of query nodes: trees on disk, queries made from typed words, and an
// observer of a hits container that records what each delivery held.

#include "NodeTestSupport.h"
#include "basalt/nodes/NodeEvents.h"
#include "basalt/nodes/NodeQueries.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/types/BMQuery.h"
#include "basalt/types/BUTypes.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/WaitUntil.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace querytest {

using nodetest::Held;

using keltest::WaitUntil;

struct Batching {
    uint32_t firstCount = 25;
    uint32_t firstMs = 100;
    uint32_t progressMs = 500;
};

struct Search {
    std::string query;
    std::vector<std::string> scope; // empty: everywhere
    NodeQuerySortProc sort = nullptr;
    Batching batching;
};

// A core array of strings; owned.
inline BCArrayRef StringArray(const std::vector<std::string>& items) {
    BCMutableArrayRef array = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
    for (const std::string& item : items) {
        BCStringRef text = basalt::types::MakeString(item);
        BCArrayAppendValue(array, text);
        BCRelease(text);
    }
    return array;
}

inline StatusCode StartSearch(const Search& search, NodeRef* node, NodeRef existing = nullptr) {
    BCStringRef query = basalt::types::MakeString(search.query);
    BCArrayRef attributes = StringArray({"kBMItemDisplayName", "kBMItemFSContentChangeDate"});
    BCArrayRef scope = search.scope.empty() ? nullptr : StringArray(search.scope);
    const UniChar name[] = {'r', 'e', 'p'};
    const Batching& b = search.batching;
    StatusCode status =
        existing == nullptr
            ? NodeCreateNewVirtualQueryNode(3, name, query, attributes, search.sort, b.firstCount,
                                            b.firstMs, 1000000, b.progressMs, 25, 500, scope, 0,
                                            node)
            : NodeSetVirtualQuery(existing, 3, name, query, attributes, search.sort, b.firstCount,
                                  b.firstMs, 1000000, b.progressMs, 25, 500, scope, 0);
    BCRelease(query);
    BCRelease(attributes);
    if (scope != nullptr)
        BCRelease(scope);
    return status;
}

// The expression for what a user typed.
inline std::string Typed(const std::string& words) {
    BCStringRef text = basalt::types::MakeString(words);
    BCStringRef query = BMQueryCreateQueryString(kBMQueryStringMatchAllMetadata, text);
    std::string result = basalt::types::Utf8(query);
    BCRelease(text);
    if (query != nullptr)
        BCRelease(query);
    return result;
}

// A query node whose search finds nothing and ends at once, so that a client can register on
// its hits before the real search is given to it.
inline Held IdleQuery() {
    Search idle;
    idle.query = "false";
    NodeRef node = nullptr;
    StartSearch(idle, &node);
    return Held(node);
}

inline Held HitsOf(NodeRef query) {
    NodeRef hits = nullptr;
    NodeFollowAlias(query, false, &hits);
    return Held(hits);
}

inline bool WaitForEnd(NodeRef query) {
    return WaitUntil([query] { return !NodeQueryIsGathering(query); });
}

inline bool WaitForWalksToEnd() {
    return WaitUntil([] { return basalt::nodes::RunningQueryWalks() == 0; });
}

// The names of the items behind the hits, in the container's order.
inline std::vector<std::u16string> HitNames(NodeRef hits) {
    return nodetest::ChildNames(hits);
}

// Registers on a hits container and records, at each delivery, how many hits were listed.
// The tickle runs on the search's worker; onDelivery, if set, runs there too.
class HitsObserver {
public:
    explicit HitsObserver(NodeRef hits, std::function<void(size_t delivery)> onDelivery = {})
        : onDelivery_(std::move(onDelivery)), hits_(hits) {
        current_ = this;
        NodeEventNewEventQueue(Tickle, &queue_);
        NodeNotificationClient client{this, queue_, Tickle};
        NodeRegisterChildChangedNotification(hits_, &client, 0);
    }
    ~HitsObserver() {
        NodeUnRegisterChildChangedNotification(hits_, this);
        NodeEventDisposeEventQueue(queue_);
        current_ = nullptr;
    }

    std::vector<BCIndex> Deliveries() {
        std::lock_guard lock(mutex_);
        return counts_;
    }
    bool WaitForDeliveries(size_t count) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::seconds(30),
                                 [&] { return counts_.size() >= count; });
    }
    // The kinds and children of the events taken so far.
    std::vector<std::pair<uint32_t, NodeRef>> Events() {
        std::lock_guard lock(mutex_);
        return events_;
    }

private:
    static void Tickle(NodeEventQueueRef) {
        HitsObserver* self = current_;
        if (self == nullptr)
            return;
        // Taken at once, as a client's main thread would: an event still waiting in the queue
        // is not queued again, so nothing new would be told.
        BCIndex count = -1;
        NodeGetChildrenCount(self->hits_, &count);
        size_t delivery = 0;
        {
            std::lock_guard lock(self->mutex_);
            NodeEventRef event = nullptr;
            while (NodeEventBlockUntilNextEventNew(&event, self->queue_)) {
                uint32_t kind = 0;
                NodeRef child = nullptr;
                NodeEventGetKind(event, &kind);
                NodeEventGetChild(event, &child);
                self->events_.emplace_back(kind, child);
                DisposeNode(child); // the pointer is only compared
                NodeEventRelease(event);
            }
            self->counts_.push_back(count);
            delivery = self->counts_.size();
        }
        self->changed_.notify_all();
        if (self->onDelivery_)
            self->onDelivery_(delivery);
    }

    static inline std::atomic<HitsObserver*> current_{nullptr};
    const std::function<void(size_t delivery)> onDelivery_;
    NodeRef hits_;
    NodeEventQueueRef queue_ = nullptr;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<BCIndex> counts_;
    std::vector<std::pair<uint32_t, NodeRef>> events_;
};

} // namespace querytest
