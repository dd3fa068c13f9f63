// Query nodes: making them, giving them new searches, stopping them, and their hits.

#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeEvents.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeTable.h"
#include "basalt/nodes/NodeWatcher.h"
#include "basalt/types/BUTypes.h"

#include <algorithm>
#include <iterator>
#include <sys/eventfd.h>
#include <unistd.h>
#include <unordered_map>
#include <utility>

namespace basalt::nodes {
namespace {

struct Registry {
    std::mutex mutex;
    std::unordered_map<NodeRef, std::shared_ptr<QueryState>> states;
};

Registry& TheRegistry() {
    static Registry* registry = new Registry; // nodes may outlive statics
    return *registry;
}

void Register(NodeRef node, const std::shared_ptr<QueryState>& state) {
    Registry& registry = TheRegistry();
    std::lock_guard lock(registry.mutex);
    registry.states[node] = state;
}

std::shared_ptr<QueryState> Unregister(NodeRef node) {
    Registry& registry = TheRegistry();
    std::lock_guard lock(registry.mutex);
    auto found = registry.states.find(node);
    if (found == registry.states.end())
        return nullptr;
    std::shared_ptr<QueryState> state = std::move(found->second);
    registry.states.erase(found);
    return state;
}

std::string PathText(BCStringRef path) {
    BCIndex length = BCStringGetLength(path);
    std::u16string chars(static_cast<size_t>(length), u'\0');
    BCStringGetCharacters(path, BCRangeMake(0, length), reinterpret_cast<UniChar*>(chars.data()));
    return files::EncodeName(chars);
}

struct QueryArguments {
    BCIndex nameLength;
    const UniChar* name;
    BCStringRef query;
    BCArrayRef attributes;
    NodeQuerySortProc sort;
    QueryBatching batching;
    BCArrayRef scope;
    uint32_t flags;
};

StatusCode MakeDefinition(const QueryArguments& in, QueryDefinition& definition) {
    if (in.query == nullptr || in.flags != 0 || in.nameLength < 0 ||
        (in.nameLength > 0 && in.name == nullptr))
        return paramErr;
    std::unique_ptr<types::QueryExpression> expression;
    if (StatusCode status = types::QueryExpression::Parse(types::Utf8(in.query), expression))
        return status;
    definition.expression = std::move(expression);
    for (BCIndex i = 0; in.attributes != nullptr && i < BCArrayGetCount(in.attributes); ++i) {
        auto value = static_cast<BCStringRef>(BCArrayGetValueAtIndex(in.attributes, i));
        definition.attributes.push_back(types::Utf8(value));
    }
    definition.sort = in.sort;
    definition.batching = in.batching;
    definition.everywhere = in.scope == nullptr;
    for (BCIndex i = 0; in.scope != nullptr && i < BCArrayGetCount(in.scope); ++i) {
        auto path = static_cast<BCStringRef>(BCArrayGetValueAtIndex(in.scope, i));
        if (path != nullptr && BCGetTypeID(path) == BCStringGetTypeID())
            definition.scope.push_back(PathText(path));
    }
    return noErr;
}

void Announce(NodeRef hits) {
    NodeWatcher::Shared().Announce(hits, kNodeEventVirtualChildListChanged, hits, hits);
}

// Replaces the state's search: the old walk is stopped and its hits dropped, the clients
// are told of the empty list, and the new walk starts.
StatusCode Restart(const std::shared_ptr<QueryState>& state, QueryDefinition definition,
                   std::u16string name) {
    auto run = std::make_shared<QueryRun>(std::move(definition));
    std::shared_ptr<QueryRun> old;
    std::vector<QueryHit> dropped;
    {
        std::lock_guard lock(state->mutex);
        old = std::exchange(state->run, run);
        dropped.swap(state->published);
        state->name = std::move(name);
    }
    if (old != nullptr)
        old->StopAndWait();
    bool hadHits = !dropped.empty();
    ReleaseHits(dropped);
    if (hadHits)
        Announce(state->hits);
    StatusCode status = StartQueryWalk(state, run);
    if (status != noErr)
        run->MarkFinished();
    return status;
}

} // namespace

void ReleaseHits(std::vector<QueryHit>& hits) {
    for (QueryHit& hit : hits) {
        for (BCTypeRef value : hit.row) {
            if (value != nullptr)
                BCRelease(value);
        }
        DisposeNode(hit.node);
    }
    hits.clear();
}

std::vector<QueryHit> TakeHits(std::vector<QueryHit>& hits,
                               const std::function<bool(NodeRef item)>& test) {
    auto kept = std::stable_partition(hits.begin(), hits.end(), [&](const QueryHit& hit) {
        return !test(hit.node->aliasTarget.load());
    });
    std::vector<QueryHit> taken(std::make_move_iterator(kept), std::make_move_iterator(hits.end()));
    hits.erase(kept, hits.end());
    return taken;
}

QueryRun::QueryRun(QueryDefinition definition)
    : definition(std::move(definition)), wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void QueryRun::RequestStop() {
    stop = true;
    if (wake.Valid()) {
        const uint64_t one = 1;
        [[maybe_unused]] ssize_t written = ::write(wake.Get(), &one, sizeof one);
    }
}

void QueryRun::StopAndWait() {
    RequestStop();
    if (worker.load() == std::this_thread::get_id())
        return; // asked from a delivery of the walk itself, which ends once it returns
    std::unique_lock lock(mutex_);
    finished_.wait(lock, [this] { return done_; });
}

void QueryRun::MarkFinished() {
    std::lock_guard lock(mutex_);
    done_ = true;
    finished_.notify_all();
}

bool QueryRun::Finished() {
    std::lock_guard lock(mutex_);
    return done_;
}

std::shared_ptr<QueryState> QueryStateOf(NodeRef node) {
    if (node == nullptr)
        return nullptr;
    NodeKind kind = node->kind.load(std::memory_order_relaxed);
    if (kind != NodeKind::Query && kind != NodeKind::QueryHits)
        return nullptr;
    Registry& registry = TheRegistry();
    std::lock_guard lock(registry.mutex);
    auto found = registry.states.find(node);
    return found == registry.states.end() ? nullptr : found->second;
}

void ForgetQueryNode(NodeRef node) {
    std::shared_ptr<QueryState> state = Unregister(node);
    if (state == nullptr || node->kind != NodeKind::Query)
        return;
    // The last reference may go on any thread and under the service's locks, so the walk is
    // told to stop and not waited for; it publishes nothing once it sees that.
    std::vector<QueryHit> dropped;
    {
        std::lock_guard lock(state->mutex);
        if (state->run != nullptr)
            state->run->RequestStop();
        state->run = nullptr;
        dropped.swap(state->published);
    }
    ReleaseHits(dropped);
}

std::vector<NodeRef> QueryHits(NodeRef hitsContainer) {
    std::vector<NodeRef> hits;
    std::shared_ptr<QueryState> state = QueryStateOf(hitsContainer);
    if (state == nullptr)
        return hits;
    std::lock_guard lock(state->mutex);
    hits.reserve(state->published.size());
    for (const QueryHit& hit : state->published)
        hits.push_back(CopyNodeRef(hit.node));
    return hits;
}

std::u16string QueryName(NodeRef node) {
    std::shared_ptr<QueryState> state = QueryStateOf(node);
    if (state == nullptr)
        return {};
    std::lock_guard lock(state->mutex);
    return state->name;
}

NodeRef MakeQueryHit(NodeRef hitsContainer, NodeRef original) {
    auto* hit = OpaqueNodeRef::Make(NodeKind::QueryHit, {}, CopyNodeRef(hitsContainer));
    hit->aliasTarget = original;
    return hit;
}

bool PublishHits(QueryState& state, QueryRun& run, std::vector<QueryHit>& batch,
                 const std::function<bool(NodeRef item)>& gone, bool last) {
    const NodeQuerySortProc sort = run.definition.sort;
    auto less = [sort](const QueryHit& a, const QueryHit& b) {
        return sort(a.row.data(), b.row.data(), nullptr) == kBCCompareLessThan;
    };
    // The batch is the walk's own: sorting it outside the lock keeps the main thread, which
    // reads the hits under it, from waiting for a thousand comparisons.
    if (sort != nullptr)
        std::stable_sort(batch.begin(), batch.end(), less);
    std::vector<QueryHit> withdrawn;
    {
        std::lock_guard lock(state.mutex);
        if (run.stop || state.run.get() != &run)
            return false;
        if (gone)
            withdrawn = TakeHits(state.published, gone);
        if (sort != nullptr) {
            size_t middle = state.published.size();
            state.published.insert(state.published.end(), batch.begin(), batch.end());
            std::inplace_merge(state.published.begin(), state.published.begin() + middle,
                               state.published.end(), less);
        } else {
            state.published.insert(state.published.end(), batch.begin(), batch.end());
        }
        batch.clear();
        if (last)
            run.walked = true;
    }
    ReleaseHits(withdrawn); // outside the lock: the last hit may take its container along
    Announce(state.hits);
    return true;
}

} // namespace basalt::nodes

using namespace basalt::nodes;

StatusCode NodeCreateNewVirtualQueryNode(BCIndex nameLength, const UniChar* name, BCStringRef query,
                                         BCArrayRef attributes, NodeQuerySortProc sort,
                                         uint32_t firstCount, uint32_t firstMs,
                                         uint32_t progressCount, uint32_t progressMs,
                                         uint32_t updateCount, uint32_t updateMs, BCArrayRef scope,
                                         uint32_t flags, NodeRef* node) {
    if (node == nullptr)
        return paramErr;
    auto state = std::make_shared<QueryState>();
    state->hits = OpaqueNodeRef::Make(NodeKind::QueryHits, {}, nullptr);
    auto* made = OpaqueNodeRef::Make(NodeKind::Query, {}, nullptr);
    made->aliasTarget = state->hits;
    Register(made, state);
    Register(state->hits, state);
    StatusCode status =
        NodeSetVirtualQuery(made, nameLength, name, query, attributes, sort, firstCount, firstMs,
                            progressCount, progressMs, updateCount, updateMs, scope, flags);
    if (status != noErr) {
        DisposeNode(made);
        return status;
    }
    *node = made;
    return noErr;
}

StatusCode NodeSetVirtualQuery(NodeRef node, BCIndex nameLength, const UniChar* name,
                               BCStringRef query, BCArrayRef attributes, NodeQuerySortProc sort,
                               uint32_t firstCount, uint32_t firstMs, uint32_t progressCount,
                               uint32_t progressMs, uint32_t updateCount, uint32_t updateMs,
                               BCArrayRef scope, uint32_t flags) {
    if (node == nullptr)
        return paramErr;
    std::shared_ptr<QueryState> state = QueryStateOf(node);
    if (state == nullptr || node->kind != NodeKind::Query)
        return kNodeNotQueryErr;
    QueryDefinition definition;
    QueryBatching batching{firstCount, firstMs, progressCount, progressMs, updateCount, updateMs};
    QueryArguments in{nameLength, name, query, attributes, sort, batching, scope, flags};
    if (StatusCode status = MakeDefinition(in, definition))
        return status;
    std::u16string text;
    if (nameLength > 0)
        text.assign(reinterpret_cast<const char16_t*>(name), static_cast<size_t>(nameLength));
    return Restart(state, std::move(definition), std::move(text));
}

StatusCode NodeCancelQuery(NodeRef node) {
    std::shared_ptr<QueryState> state = QueryStateOf(node);
    if (state == nullptr || node->kind != NodeKind::Query)
        return node == nullptr ? StatusCode(paramErr) : StatusCode(kNodeNotQueryErr);
    std::shared_ptr<QueryRun> run;
    {
        std::lock_guard lock(state->mutex);
        run = state->run;
    }
    if (run != nullptr)
        run->StopAndWait();
    return noErr;
}

Boolean NodeQueryIsGathering(NodeRef node) {
    std::shared_ptr<QueryState> state = QueryStateOf(node);
    if (state == nullptr)
        return false;
    std::shared_ptr<QueryRun> run;
    {
        std::lock_guard lock(state->mutex);
        run = state->run;
    }
    return run != nullptr && !run->stop && !run->walked && !run->Finished();
}
