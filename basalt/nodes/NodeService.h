#pragma once

// The node service: the file system as a tree of counted nodes. One OpaqueNodeRef exists per
// object while it is referenced, so nodes compare by pointer. The tree: a virtual root
// ("Computer") whose children are the volumes people care about; the boot volume ("/") also
// holds the virtual folders "Network" (network mounts) and "Volumes" (one alias per volume,
// invisible: it serves text paths such as "/Volumes/Name/...").
// Virtual nodes 11 and 12 are the sidebar's sections. Aliases are symbolic links.
//
// References: functions that return a node as owned (Get...AsNode, GetBootNode, iterators,
// NodeFindChildNew ...) give one count to the caller, who gives it back with DisposeNode.
// GetRootNode's result is not to be disposed. Counts are atomic; every call is thread-safe.

#include "basalt/files/BEDesc.h"
#include "basalt/files/BFRef.h"

#include <basalt/BasaltCore.h>

struct OpaqueNodeRef;
typedef OpaqueNodeRef* NodeRef;

enum : StatusCode {
    kNodeNotFoundErr = fnfErr,
    kNodePropertyNotSupportedErr = -4979,
    kNodeNotContainerErr = -5600,
    kNodeAliasLoopErr = -5601,
    kNodeNotAliasErr = -5602,
    kNodeBadPathErr = -5603,
    kNodeDuplicateNameErr = dupFNErr,
};

// Sidebar sections for GetVirtualNode.
enum { kVirtualNodeDevices = 11, kVirtualNodePlaces = 12 };

// ---- Lifetime ------------------------------------------------------------------------------
StatusCode InitializeCatalog();
NodeRef CopyNodeRef(NodeRef node);
void DisposeNode(NodeRef node);
// True while the node still stands for something in the file system.
Boolean NodeValidate(NodeRef node);

// ---- Special nodes -------------------------------------------------------------------------
NodeRef GetRootNode();
NodeRef GetBootNode();
NodeRef GetHomeNode();
NodeRef GetVirtualNode(int32_t index);
NodeRef GetVolumeNode(int16_t volume);

// ---- Conversions ---------------------------------------------------------------------------
NodeRef GetURLAsNode(BCURLRef url);
// Accepts "/usr/bin", "BootVolumeName/usr/bin" and "/Volumes/Name/..."; UTF-16 in.
NodeRef GetPathNameAsNode(BCIndex length, const UniChar* chars);
// Format 1: the absolute path without its leading slash, in UTF-16; length gets the length
// needed even when it exceeds capacity (then the status is kBFRefPathTooLongErr).
StatusCode GetNodeAsPathName(NodeRef node, int32_t format, BCIndex capacity, BCIndex* length,
                             UniChar* chars);
NodeRef GetBFRefAsNode(const BFRef* ref);
StatusCode GetNodeAsBFRef(NodeRef node, BFRef* ref);
// Fills a "bfrf" descriptor, or for nodes without a file (the root) a "furl" one.
StatusCode GetNodeAsBEDesc(NodeRef node, BEDesc* desc);
// A descriptor with no data stands for the root node.
NodeRef GetBEDescAsNode(const BEDesc* desc);

// ---- Tree ----------------------------------------------------------------------------------
NodeRef GetNodeParent(NodeRef node);
// Compares names the way the node's file system does (case-insensitive file systems ignore
// case). The child is owned.
StatusCode NodeFindChildNew(NodeRef parent, BCIndex length, const UniChar* chars, NodeRef* child);
StatusCode NodeHasChildNew(NodeRef parent, BCIndex length, const UniChar* chars, Boolean* result);
// The entry of a virtual container that stands for node; non-zero if none. Owned.
StatusCode NodeFindVirtualChild(NodeRef container, NodeRef node, NodeRef* found, uint32_t flags);
StatusCode NodeGetChildrenCount(NodeRef node, BCIndex* count);

// ---- Predicates ----------------------------------------------------------------------------
Boolean NodeIsContainer(NodeRef node);
Boolean NodeIsAlias(NodeRef node);
Boolean NodeIsPackage(NodeRef node);
Boolean NodeIsVolume(NodeRef node);
Boolean NodeIsVisible(NodeRef node);
Boolean NodeIsApplication(NodeRef node);
// Queries are not provided by this service: these are always false.
Boolean NodeIsQuery(NodeRef node);
Boolean NodeIsQueryHit(NodeRef node);
Boolean NodeIsQueryHitsContainer(NodeRef node);
Boolean NodeIsSavedQuery(NodeRef node);

// ---- Aliases -------------------------------------------------------------------------------
// One step; a non-zero status means the alias is broken. The flag is accepted and unused.
StatusCode NodeGetOriginal(NodeRef node, Boolean flag, NodeRef* out);
// The whole chain; kNodeAliasLoopErr for a loop. A node that is no alias gives itself.
StatusCode NodeFollowAlias(NodeRef node, Boolean flag, NodeRef* out);

// ---- Changes -------------------------------------------------------------------------------
StatusCode NodeCreateNewContainerInNew(NodeRef parent, BCIndex length, const UniChar* chars,
                                       uint32_t flags, NodeRef* created);
// Deletes a file, a link or an empty folder.
StatusCode DeleteNode(NodeRef node);
// Compares the children seen before with the file system and sends the differences to the
// clients registered on the container, then a sync completion.
StatusCode NodeSync(NodeRef node);
// Tells the service that the folder ref names changed (message 1): it is synchronised.
StatusCode FNNotify(const BFRef* ref, uint32_t message, uint32_t flags);

// ---- Volumes -------------------------------------------------------------------------------
Boolean VolumeIsLocal(NodeRef volume);
Boolean VolumeIsEjectable(NodeRef volume);
// Unmounts with the system's umount; its failure gives permErr.
StatusCode VolumeEject(NodeRef volume);
