#pragma once

// Query nodes. A query node is a virtual node that owns a search; NodeFollowAlias of it gives
// its hits container, a virtual container whose children are the hits. A hit is a node of its
// own (NodeIsQueryHit) that leads to the item found: NodeGetOriginal and NodeFollowAlias give
// that item, and its properties are the item's.
//
// The search runs on a worker thread that walks the scope folders (no index), leaving out what
// a listing leaves out (dot names, names in a folder's ".hidden") and never following symbolic
// links, and it delivers hits in batches: the first after firstCount hits or firstMs, whichever
// comes first, then at most every progressMs (or progressCount hits). Each delivery is a
// kNodeEventVirtualChildListChanged event, child and parent the hits container, to the clients
// registered on the hits container. When the scope is done the search keeps its hits up to
// date: an item created, renamed or moved into a walked folder that matches is added, one that
// goes is withdrawn, in batches of at most updateCount changes or every updateMs.
//
// A walk stops when the query is cancelled (NodeCancelQuery), given a new query
// (NodeSetVirtualQuery) or when the query node's last reference goes. The first two wait until
// the worker has let go, so no hit of the old search arrives after they return; call them on a
// client thread, never from a tickler.

#include "basalt/nodes/NodeService.h"

// Orders two rows of attribute values (in the order of the query's attribute array) for the
// hits container; either row pointer may be null.
typedef BCComparisonResult (*NodeQuerySortProc)(const BCTypeRef* rowA, const BCTypeRef* rowB,
                                                void* context);

// The keys of a saved search's dictionary: the query string and the array of scope paths
// (absent for everywhere).
#define kNodeQueryStringKey BCSTR("query")
#define kNodeQueryScopeArrayKey BCSTR("scope")

enum : StatusCode {
    kNodeNotQueryErr = -5610,      // the node is no query node
    kNodeNotSavedQueryErr = -5611, // the node is no saved search file, or it cannot be read
};

// Makes a query node and starts its search. name is what the hits container's "pnam" and
// "dnam" give; query is an expression as BMQueryValidateQueryString accepts (a bad one gives
// its status and no node); attributes the names of the values a sort row holds; scope an array
// of absolute paths, null for every local volume. flags must be 0. The node is owned.
StatusCode NodeCreateNewVirtualQueryNode(BCIndex nameLength, const UniChar* name, BCStringRef query,
                                         BCArrayRef attributes, NodeQuerySortProc sort,
                                         uint32_t firstCount, uint32_t firstMs,
                                         uint32_t progressCount, uint32_t progressMs,
                                         uint32_t updateCount, uint32_t updateMs, BCArrayRef scope,
                                         uint32_t flags, NodeRef* node);
// Stops the node's search, empties its hits container (telling its clients) and starts the
// new search. A bad query leaves the old search as it was and gives its status.
StatusCode NodeSetVirtualQuery(NodeRef node, BCIndex nameLength, const UniChar* name,
                               BCStringRef query, BCArrayRef attributes, NodeQuerySortProc sort,
                               uint32_t firstCount, uint32_t firstMs, uint32_t progressCount,
                               uint32_t progressMs, uint32_t updateCount, uint32_t updateMs,
                               BCArrayRef scope, uint32_t flags);
// Stops the search; the hits found so far stay.
StatusCode NodeCancelQuery(NodeRef node);
// True while the node's search still walks its scope.
Boolean NodeQueryIsGathering(NodeRef node);

// Reads a saved search file into a new dictionary holding kNodeQueryStringKey and, when the
// search has a scope, kNodeQueryScopeArrayKey. The dictionary is owned. flags must be 0.
StatusCode NodeCopyQueryDictionaries(NodeRef savedNode, BCDictionaryRef* dictionary,
                                     uint32_t flags);
