#pragma once

// The state behind query nodes. Internal to the node service.
//
// Ownership: the query node counts its hits container (aliasTarget); each hit counts the hits
// container (its parent) and the item found (its aliasTarget); the state holds the published
// hits. The registry maps both the query node and the hits container to the shared state; the
// query node's entry goes with the query node, which also drops the published hits, so the
// hits container can go once nobody else holds it or one of its hits.
//
// Threads: `mutex` guards name, published and run. A walk owns its run; it publishes under
// `mutex` only while its run is still the state's run and not stopped, so a replaced or
// cancelled search never adds a hit afterwards.

#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeQueries.h"
#include "basalt/nodes/OpaqueNodeRef.h"
#include "basalt/types/QueryExpression.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace basalt::nodes {

struct QueryBatching {
    uint32_t firstCount = 25;
    uint32_t firstMs = 100;
    uint32_t progressCount = 1000000;
    uint32_t progressMs = 500;
    uint32_t updateCount = 25;
    uint32_t updateMs = 500;
};

struct QueryDefinition {
    std::shared_ptr<const types::QueryExpression> expression;
    std::vector<std::string> attributes;
    NodeQuerySortProc sort = nullptr;
    QueryBatching batching;
    bool everywhere = true;
    std::vector<std::string> scope; // absolute paths, when not everywhere
};

// One found item: the counted hit node and its row of attribute values (owned, null where the
// item has no such value).
struct QueryHit {
    NodeRef node = nullptr;
    std::vector<BCTypeRef> row;
};
void ReleaseHits(std::vector<QueryHit>& hits);
// Moves the hits whose items pass the test out of hits, keeping the order of the others.
std::vector<QueryHit> TakeHits(std::vector<QueryHit>& hits,
                               const std::function<bool(NodeRef item)>& test);

// One walk over the scope.
struct QueryRun {
    explicit QueryRun(QueryDefinition definition);
    // Asks the walk to stop, waking it if it waits for changes.
    void RequestStop();
    // Asks the walk to stop and, unless called on the walk's own thread, waits until it has.
    void StopAndWait();
    void MarkFinished();
    bool Finished();

    const QueryDefinition definition;
    std::atomic<bool> stop{false};
    std::atomic<bool> walked{false};       // the scope is done; changes are followed from now on
    std::atomic<std::thread::id> worker{}; // the walk's thread, once it runs
    const files::UniqueFd wake;            // readable once a stop is asked for

private:
    std::mutex mutex_;
    std::condition_variable finished_;
    bool done_ = false;
};

struct QueryState {
    NodeRef hits = nullptr; // not counted here
    std::mutex mutex;
    std::u16string name;
    std::vector<QueryHit> published;
    std::shared_ptr<QueryRun> run;
};

// The state of a query node or a hits container; null for other nodes.
std::shared_ptr<QueryState> QueryStateOf(NodeRef node);
// Called as a query node or hits container is destroyed.
void ForgetQueryNode(NodeRef node);
// The hits in the container's order, counted.
std::vector<NodeRef> QueryHits(NodeRef hitsContainer);
// The name a query node or hits container shows.
std::u16string QueryName(NodeRef node);

// A hit leading to original (whose count it takes over).
NodeRef MakeQueryHit(NodeRef hitsContainer, NodeRef original);
// Withdraws the hits whose items are gone, adds a batch to the published hits (sorted in when
// the search sorts) and tells the clients; false, with the batch left alone, when the run is
// no longer the state's live run. The last batch of a walk marks the run walked as its hits are
// published, so whoever sees the search no longer gathering finds every hit.
bool PublishHits(QueryState& state, QueryRun& run, std::vector<QueryHit>& batch,
                 const std::function<bool(NodeRef item)>& gone, bool last);
// Runs the walk on a worker thread; the run is marked finished when the walk ends.
StatusCode StartQueryWalk(std::shared_ptr<QueryState> state, std::shared_ptr<QueryRun> run);
// Number of walks still running in the process (tests wait for it to reach zero).
int RunningQueryWalks();

// The item whose properties a node shows: the original of a hit, else the node itself.
inline NodeRef PropertySubject(NodeRef node) {
    if (node != nullptr && node->kind.load(std::memory_order_relaxed) == NodeKind::QueryHit)
        return node->aliasTarget.load();
    return node;
}

} // namespace basalt::nodes
