#pragma once

// One location held as text, as a node path (root first) and as a URL, converted lazily.
//
// States: kTextChanged (0) the text was set and the node path is stale; kUnresolved (1) the
// text leads nowhere, and stays so until the text changes; kInStep (3) text and nodes agree.
// Text grammar: segments split by runs of "/"; a leading "/" is absolute (first segment: a
// volume, then a folder of the boot volume, then a child of the root node); a leading "~" or
// "~user" starts at that home folder; anything else is relative to basePath, which nothing
// here fills, so a relative text never completes. ":" in a segment stands for "/" in a name.

#include "kel/foundation/TStringRef.h"
#include "kel/nodes/TKelNodeArray.h"

class TNodePathHelper {
public:
    enum State : int32_t { kTextChanged = 0, kUnresolved = 1, kInStep = 3 };

    explicit TNodePathHelper(BCStringRef text);
    explicit TNodePathHelper(BCURLRef url);
    explicit TNodePathHelper(OpaqueNodeRef* target);
    explicit TNodePathHelper(const TKelNodeArray& nodes);
    TNodePathHelper(const TNodePathHelper&) = delete;
    TNodePathHelper& operator=(const TNodePathHelper&) = delete;
    ~TNodePathHelper();

    void SetTextPath(BCStringRef text);
    void SetURL(BCURLRef url);
    void SetTargetNode(OpaqueNodeRef* node);
    void SetNodePath(const TKelNodeArray& nodes);
    void Reset();

    bool IsComplete();
    const TKelNodeArray& NodePath();
    // Owned by the caller; null when the path does not complete.
    BCURLRef CopyURL();
    BCStringRef TextPath() const { return textPath; }
    State GetState() const { return state; }

    void SynchronizeNodePath();
    void SynchronizeTextPath();
    void ConstructTextPath(OpaqueNodeRef* node, bool includePrivate);

private:
    TNodePathHelper();
    void ReplaceText(BCMutableStringRef text);
    void ResolveAbsolute(BCRange range);
    void ResolveHome(BCRange range);
    void CollapseVolumesFolder();

    BCMutableStringRef textPath;
    TKelNodeArray basePath;
    TKelNodeArray nodePath;
    State state = kInStep;
};

// The segment at range (or null when range starts at a "/"), with range moved past it and the
// slashes after it. With convertSeparators, ":" in the segment becomes "/". Owned.
BCStringRef CopyNextPathSegment(BCStringRef text, BCRange& range, bool convertSeparators);
// Follows the segments of text in range from the last node of nodes (which must not be empty),
// appending each; true when every segment was found.
bool AppendRelativePathNodesToArray(BCStringRef text, const BCRange& range, TKelNodeArray& nodes);
// The child a segment names: with ":" read as "/", else (names cannot hold "/" here) as
// written. Owned; null if neither exists.
OpaqueNodeRef* CopyChildForSegment(OpaqueNodeRef* parent, BCStringRef segment);
