#include "basalt/nodes/NodeSortKeys.h"

#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeStat.h"

#include <algorithm>
#include <system_error>
#include <thread>

namespace basalt::nodes {
namespace {

constexpr unsigned kMostWorkers = 4;

void MakeKeys(const std::vector<NodeRef>& nodes, size_t from, size_t to) {
    // A name whose extension may be hidden needs the file's attributes: read from the folder.
    FolderAttributeScope scope(nodes[from]->parent);
    for (size_t at = from; at < to; ++at) {
        const uint8_t* key = nullptr;
        BCIndex length = 0;
        NodeGetSortKey(nodes[at], NodeCode("dnam"), &key, &length);
    }
}

} // namespace

void PrepareDisplaySortKeys(const std::vector<NodeRef>& nodes) {
    if (nodes.size() < kParallelSortKeysFrom)
        return;
    size_t shares = std::clamp(std::thread::hardware_concurrency(), 1u, kMostWorkers);
    size_t share = (nodes.size() + shares - 1) / shares;
    std::vector<std::jthread> workers;
    size_t from = 0;
    // Each share goes to a thread of its own but the last, which this thread makes; a share
    // whose thread cannot start is made here too.
    for (; shares > 1 && from + share < nodes.size(); from += share, --shares) {
        try {
            workers.emplace_back(MakeKeys, std::cref(nodes), from, from + share);
        } catch (const std::system_error&) {
            MakeKeys(nodes, from, from + share);
        }
    }
    MakeKeys(nodes, from, nodes.size());
}

} // namespace basalt::nodes
