#pragma once

// Questions about nodes that the browser's parts all ask: search hits and their originals.

#include "basalt/nodes/NodeQueries.h"
#include "kel/nodes/TKelNode.h"

inline bool IsHitsContainer(const TKelNode& node) {
    return !node.IsEmpty() && NodeIsQueryHitsContainer(node.PeekNodeRef());
}

inline bool IsQueryHit(const TKelNode& node) {
    return !node.IsEmpty() && NodeIsQueryHit(node.PeekNodeRef());
}

// A hit stands for a file elsewhere: most questions are asked of that file.
inline TKelNode OriginalOfHit(const TKelNode& node) {
    if (!IsQueryHit(node)) {
        return node;
    }
    TKelNode original;
    node.GetOriginal(false, original);
    return original;
}
