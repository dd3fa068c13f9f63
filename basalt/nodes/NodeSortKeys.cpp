#include "basalt/nodes/NodeSortKeys.h"

#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeStat.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <system_error>

namespace basalt::nodes {
namespace {

constexpr unsigned kMostThreads = 4;
// Small enough that the threads finish close together, large enough that handing a batch
// over costs nothing worth measuring.
constexpr size_t kBatch = 512;

// A thread reads attributes through the folder of the batch in hand, opened again only when a
// batch comes from another folder (a listing's batches all share one).
class KeyThread {
public:
    // A name whose extension may be hidden needs the file's attributes: read from the folder.
    void MakeKeys(const std::vector<NodeRef>& nodes) {
        NodeRef folder = nodes.front()->parent;
        if (!scope || folder != scopeFolder) {
            scope.reset();
            scope.emplace(folder);
            scopeFolder = folder;
        }
        for (NodeRef node : nodes) {
            const uint8_t* key = nullptr;
            BCIndex length = 0;
            NodeGetSortKey(node, NodeCode("dnam"), &key, &length);
        }
    }

private:
    std::optional<FolderAttributeScope> scope;
    NodeRef scopeFolder = nullptr;
};

} // namespace

struct DisplaySortKeyMaker::Queue {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::vector<NodeRef>> batches;
    bool closed = false;

    // The next batch; with `wait`, waits for one until the queue is closed.
    std::optional<std::vector<NodeRef>> Take(bool wait) {
        std::unique_lock lock(mutex);
        if (wait)
            changed.wait(lock, [this] { return !batches.empty() || closed; });
        if (batches.empty())
            return std::nullopt;
        std::vector<NodeRef> batch = std::move(batches.front());
        batches.pop_front();
        return batch;
    }

    // Makes keys until the queue is empty; with `wait`, until it is also closed.
    void Work(bool wait) {
        KeyThread thread;
        while (std::optional<std::vector<NodeRef>> batch = Take(wait))
            thread.MakeKeys(*batch);
    }
};

DisplaySortKeyMaker::DisplaySortKeyMaker() : queue(std::make_unique<Queue>()) {}

DisplaySortKeyMaker::~DisplaySortKeyMaker() {
    Finish();
}

void DisplaySortKeyMaker::Add(std::span<const NodeRef> nodes) {
    {
        std::lock_guard lock(queue->mutex);
        for (size_t from = 0; from < nodes.size(); from += kBatch) {
            auto part = nodes.subspan(from, std::min(kBatch, nodes.size() - from));
            queue->batches.emplace_back(part.begin(), part.end());
        }
    }
    queue->changed.notify_all();
    count += nodes.size();
    if (!parallel && count >= kParallelSortKeysFrom)
        StartWorkers();
}

// This thread is one of the threads: it joins in once it has handed everything over.
void DisplaySortKeyMaker::StartWorkers() {
    parallel = true;
    const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1u, kMostThreads);
    for (unsigned started = 1; started < threads; ++started) {
        try {
            workers.emplace_back([queue = queue.get()] { queue->Work(true); });
        } catch (const std::system_error&) {
            break; // Finish makes the keys here instead.
        }
    }
}

void DisplaySortKeyMaker::Finish() {
    {
        std::lock_guard lock(queue->mutex);
        queue->closed = true;
        if (!parallel)
            queue->batches.clear();
    }
    queue->changed.notify_all();
    queue->Work(false);
    workers.clear();
}

} // namespace basalt::nodes
