#pragma once

// Display-name sort keys made ahead for a large listing, on more than one core.

#include "basalt/nodes/OpaqueNodeRef.h"

#include <cstddef>
#include <memory>
#include <span>
#include <thread>
#include <vector>

namespace basalt::nodes {

// Below this many entries the keys are made as they are asked for: threads would not pay.
constexpr size_t kParallelSortKeysFrom = 2048;

// Computes and caches each node's "dnam" sort key, which a client sorting a large listing
// asks for next. Nodes may be handed over in parts, so that the attribute reads the keys need
// start while the listing goes on; Finish makes the rest on this thread too. A listing smaller
// than kParallelSortKeysFrom is left alone.
class DisplaySortKeyMaker {
public:
    DisplaySortKeyMaker();
    ~DisplaySortKeyMaker();
    DisplaySortKeyMaker(const DisplaySortKeyMaker&) = delete;
    DisplaySortKeyMaker& operator=(const DisplaySortKeyMaker&) = delete;

    // The nodes must live until Finish returns.
    void Add(std::span<const NodeRef> nodes);
    // Returns once every key handed over is made.
    void Finish();
    // How many nodes were handed over.
    size_t Count() const { return count; }

private:
    struct Queue;
    void StartWorkers();

    std::unique_ptr<Queue> queue;
    std::vector<std::jthread> workers;
    size_t count = 0;
    bool parallel = false;
};

} // namespace basalt::nodes
