// Reading a text path segment by segment, and following the segments down the tree.

#include "kel/nodes/NodeRefOperations.h"
#include "kel/nodes/TNodePathHelper.h"

namespace {

bool IsSlash(BCStringRef text, BCIndex at) {
    return BCStringGetCharacterAtIndex(text, at) == '/';
}

void Advance(BCRange& range) {
    ++range.location;
    --range.length;
}

TStringRef ReplacingColons(BCStringRef segment) {
    BCMutableStringRef copy = BCStringCreateMutableCopy(nullptr, 0, segment);
    TStringRef colon(BCStringCreateWithCString(nullptr, ":", kBCStringEncodingUTF8), false);
    TStringRef slash(BCStringCreateWithCString(nullptr, "/", kBCStringEncodingUTF8), false);
    BCStringFindAndReplace(copy, colon.AsBCStringRef(), slash.AsBCStringRef(),
                           BCRange{0, BCStringGetLength(copy)}, 0);
    return TStringRef(copy, false);
}

} // namespace

BCStringRef CopyNextPathSegment(BCStringRef text, BCRange& range, bool convertSeparators) {
    const BCIndex start = range.location;
    const BCIndex end = BCStringGetLength(text);
    while (range.length > 0 && range.location < end && !IsSlash(text, range.location)) {
        Advance(range);
    }
    BCStringRef segment = nullptr;
    if (range.location != start) {
        segment =
            BCStringCreateWithSubstring(nullptr, text, BCRange{start, range.location - start});
        if (convertSeparators) {
            TStringRef converted = ReplacingColons(segment);
            BCRelease(segment);
            segment = BCStringCreateCopy(nullptr, converted.AsBCStringRef());
        }
    }
    while (range.length > 0 && range.location < end && IsSlash(text, range.location)) {
        Advance(range);
    }
    return segment;
}

// A ":" in a text segment stands for a "/" in the name. Names on Linux file systems cannot
// hold a slash but may hold a colon, so a segment that names nothing once converted is tried
// as written: "a:b" in a text path finds the file "a:b".
OpaqueNodeRef* CopyChildForSegment(OpaqueNodeRef* parent, BCStringRef segment) {
    TStringRef converted = ReplacingColons(segment);
    OpaqueNodeRef* child = NodeRefOps::CopyChildWithName(parent, converted.AsBCStringRef());
    if (child == nullptr && BCStringCompare(converted.AsBCStringRef(), segment, 0) != 0) {
        child = NodeRefOps::CopyChildWithName(parent, segment);
    }
    return child;
}

bool AppendRelativePathNodesToArray(BCStringRef text, const BCRange& range, TKelNodeArray& nodes) {
    BCRange rest = range;
    TKelNode current(
        NodeRefOps::CopyAliasOriginalFollowingChains(nodes.back().PeekNodeRef(), false), false);
    while (rest.length > 0) {
        TStringRef segment(CopyNextPathSegment(text, rest, false), false);
        if (segment.IsNil()) {
            return false;
        }
        TKelNode child(CopyChildForSegment(current.PeekNodeRef(), segment.AsBCStringRef()), false);
        if (child.IsEmpty()) {
            return false;
        }
        nodes.push_back(child);
        current = TKelNode(NodeRefOps::CopyAliasOriginalFollowingChains(child.PeekNodeRef(), false),
                           false);
        if (current.IsEmpty()) {
            return false;
        }
    }
    return true;
}
