#pragma once

// Display-name sort keys made ahead for a large listing, on more than one core.

#include "basalt/nodes/OpaqueNodeRef.h"

#include <cstddef>
#include <vector>

namespace basalt::nodes {

// Below this many entries the keys are made as they are asked for: threads would not pay.
constexpr size_t kParallelSortKeysFrom = 2048;

// Computes and caches each node's "dnam" sort key, which a client sorting a large listing
// asks for next, spread over the cores. Does nothing for a smaller listing.
void PrepareDisplaySortKeys(const std::vector<NodeRef>& nodes);

} // namespace basalt::nodes
