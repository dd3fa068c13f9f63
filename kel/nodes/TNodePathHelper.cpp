#include "kel/nodes/TNodePathHelper.h"

#include "kel/foundation/TObjectRef.h"
#include "kel/nodes/NodeRefOperations.h"

using namespace NodeRefOps;

namespace {

BCStringRef PathSeparator() {
    static BCStringRef separator = BCStringCreateWithCString(nullptr, "/", kBCStringEncodingUTF8);
    return separator;
}

BCURLRef AsURL(const TObjectRef& ref) {
    return static_cast<BCURLRef>(ref.Get());
}

bool IsVisibleTopVolume(OpaqueNodeRef* node) {
    if (node == nullptr || !NodeIsVolume(node) || !NodeIsVisible(node)) {
        return false;
    }
    TKelNode parent(CopyParent(node), false);
    return parent.PeekNodeRef() == RootNode();
}

} // namespace

TNodePathHelper::TNodePathHelper() : textPath(BCStringCreateMutable(nullptr, 0)) {}

TNodePathHelper::TNodePathHelper(BCStringRef text) : TNodePathHelper() {
    SetTextPath(text);
}

TNodePathHelper::TNodePathHelper(BCURLRef url) : TNodePathHelper() {
    SetURL(url);
}

TNodePathHelper::TNodePathHelper(OpaqueNodeRef* target) : TNodePathHelper() {
    SetTargetNode(target);
}

TNodePathHelper::TNodePathHelper(const TKelNodeArray& nodes) : TNodePathHelper() {
    SetNodePath(nodes);
}

TNodePathHelper::~TNodePathHelper() {
    BCRelease(textPath);
}

void TNodePathHelper::ReplaceText(BCMutableStringRef text) {
    BCRelease(textPath);
    textPath = text;
}

void TNodePathHelper::SetTextPath(BCStringRef text) {
    if (text != nullptr && BCStringCompare(text, textPath, 0) == kBCCompareEqualTo) {
        return;
    }
    ReplaceText(BCStringCreateMutableCopy(nullptr, 0, text != nullptr ? text : BCSTR("")));
    nodePath.clear();
    state = kTextChanged;
}

void TNodePathHelper::SetNodePath(const TKelNodeArray& nodes) {
    if (&nodes != &nodePath) {
        nodePath = nodes;
    }
    SynchronizeTextPath();
}

void TNodePathHelper::Reset() {
    ReplaceText(BCStringCreateMutable(nullptr, 0));
    basePath.clear();
    nodePath.clear();
    state = kInStep;
}

bool TNodePathHelper::IsComplete() {
    SynchronizeNodePath();
    return state == kInStep;
}

const TKelNodeArray& TNodePathHelper::NodePath() {
    SynchronizeNodePath();
    return nodePath;
}

// ---- Text to nodes --------------------------------------------------------------------------

void TNodePathHelper::SynchronizeNodePath() {
    if (state != kTextChanged) {
        return;
    }
    state = kUnresolved;
    nodePath.clear();
    const BCIndex length = BCStringGetLength(textPath);
    if (length == 0) {
        state = kInStep;
        return;
    }
    const UniChar first = BCStringGetCharacterAtIndex(textPath, 0);
    if (first == '/') {
        ResolveAbsolute(BCRange{1, length - 1});
    } else if (first == '~') {
        ResolveHome(BCRange{1, length - 1});
    } else {
        nodePath = basePath;
        if (!nodePath.empty() &&
            AppendRelativePathNodesToArray(textPath, BCRange{0, length}, nodePath)) {
            state = kInStep;
        }
    }
    if (state == kUnresolved) {
        nodePath.clear();
    }
}

void TNodePathHelper::ResolveAbsolute(BCRange range) {
    nodePath.emplace_back(RootNode(), true);
    // A run of slashes is one separator, at the start too: "//usr" is "/usr".
    while (range.length > 0 && BCStringGetCharacterAtIndex(textPath, range.location) == '/') {
        ++range.location;
        --range.length;
    }
    TStringRef segment(CopyNextPathSegment(textPath, range, false), false);
    if (segment.IsNil()) {
        if (range.length == 0) {
            nodePath.emplace_back(BootNode(), true);
            state = kInStep;
        }
        return;
    }
    BCStringRef name = segment.AsBCStringRef();
    // What exists from "/" comes first: a volume labelled "home" or "BOOT" must not capture
    // "/home/..." or "/boot/...". A volume is found by its bare name only when no such folder
    // exists, and always as "/Volumes/Name"; through its entry in the volumes folder, so that
    // the volume itself enters the path, not the entry.
    TKelNode top(CopyChildForSegment(BootNode(), name), false);
    if (top.IsEmpty()) {
        TKelNode entry(CopyChildForSegment(TKelNode::GetVolumesNode().PeekNodeRef(), name), false);
        top = TKelNode(entry.IsEmpty() ? nullptr : CopyAliasOriginal(entry.PeekNodeRef(), true),
                       false);
    }
    if (top.IsEmpty()) {
        top = TKelNode(CopyChildForSegment(RootNode(), name), false);
    }
    if (top.IsEmpty()) {
        TStringRef rootName(CopyName(RootNode(), kNameAsStored), false);
        if (!rootName.IsNil() && BCStringCompare(rootName.AsBCStringRef(), name, 0) == 0) {
            nodePath.emplace_back(RootNode(), true);
            state = kInStep;
        }
        return;
    }
    nodePath.push_back(top);
    if (AppendRelativePathNodesToArray(textPath, range, nodePath)) {
        state = kInStep;
    }
}

void TNodePathHelper::ResolveHome(BCRange range) {
    TStringRef user(CopyNextPathSegment(textPath, range, false), false);
    nodePath.clear();
    TObjectRef home(BCCopyHomeDirectoryURLForUser(user.AsBCStringRef()), false);
    if (!home.IsNil()) {
        TNodePathHelper homePath(AsURL(home));
        if (homePath.IsComplete()) {
            nodePath = homePath.nodePath;
        }
    }
    if (!nodePath.empty() && AppendRelativePathNodesToArray(textPath, range, nodePath)) {
        state = kInStep;
    }
}

// ---- Nodes to text --------------------------------------------------------------------------

void TNodePathHelper::SynchronizeTextPath() {
    if (nodePath.size() == 1) {
        ReplaceText(BCStringCreateMutableCopy(nullptr, 0, PathSeparator()));
        state = kInStep;
        return;
    }
    ReplaceText(BCStringCreateMutable(nullptr, 0));
    if (nodePath.empty()) {
        state = kUnresolved;
        return;
    }
    // The names follow each other without separators: this text is shown, never read back.
    for (size_t i = 1; i < nodePath.size(); ++i) {
        TStringRef name(CopyName(nodePath[i].PeekNodeRef(), kNameWithColons), false);
        if (name.IsNil()) {
            state = kUnresolved;
            return;
        }
        BCStringAppend(textPath, name.AsBCStringRef());
    }
    state = kInStep;
}

void TNodePathHelper::ConstructTextPath(OpaqueNodeRef* node, bool includePrivate) {
    if (node == RootNode()) {
        SetTextPath(PathSeparator());
        return;
    }
    TKelNode parent(CopyParent(node), false);
    if (parent.IsEmpty() || parent.PeekNodeRef() == RootNode() ||
        (!includePrivate && parent.PeekNodeRef() == PrivateNode())) {
        Reset();
    } else {
        ConstructTextPath(parent.PeekNodeRef(), includePrivate);
    }
    BCStringAppend(textPath, PathSeparator());
    TStringRef name(CopyName(node, kNameWithColons), false);
    if (!name.IsNil()) {
        BCStringAppend(textPath, name.AsBCStringRef());
    }
    state = kTextChanged;
}

void TNodePathHelper::SetTargetNode(OpaqueNodeRef* node) {
    ConstructTextPath(node, node == PrivateNode());
    SynchronizeNodePath();
    if (state != kInStep) {
        ConstructTextPath(node, true);
    }
}

// ---- URLs -----------------------------------------------------------------------------------

void TNodePathHelper::SetURL(BCURLRef url) {
    TObjectRef absolute(BCURLCopyAbsoluteURL(url), false);
    if (absolute.IsNil()) {
        return;
    }
    TStringRef path(BCURLCopyFileSystemPath(AsURL(absolute), kBCURLPOSIXPathStyle), false);
    if (path.IsNil()) {
        Reset();
        return;
    }
    SetTextPath(path.AsBCStringRef());
    SynchronizeNodePath();
    if (state == kInStep) {
        CollapseVolumesFolder();
    }
}

// A URL's path runs through the folder of volume aliases; the path shown starts at the volume.
void TNodePathHelper::CollapseVolumesFolder() {
    size_t alias = 0;
    for (size_t i = 1; i < nodePath.size() && alias == 0; ++i) {
        OpaqueNodeRef* node = nodePath[i].PeekNodeRef();
        TKelNode parent(CopyParent(node), false);
        if (NodeIsAlias(nodePath[i - 1].PeekNodeRef()) &&
            IsVisibleTopVolume(parent.PeekNodeRef())) {
            alias = i - 1;
        } else if (i + 1 == nodePath.size() && NodeIsAlias(node) && NodeIsContainer(node)) {
            TKelNode original(CopyAliasOriginal(node, false), false);
            if (IsVisibleTopVolume(original.PeekNodeRef())) {
                alias = i;
            }
        }
    }
    if (alias == 0) {
        return;
    }
    nodePath[1] = TKelNode(CopyAliasOriginal(nodePath[alias].PeekNodeRef(), false), false);
    nodePath.erase(nodePath.begin() + 2, nodePath.begin() + long(alias) + 1);
    SynchronizeTextPath();
}

BCURLRef TNodePathHelper::CopyURL() {
    SynchronizeNodePath();
    if (state != kInStep || nodePath.empty()) {
        return nullptr;
    }
    if (nodePath.size() == 1) {
        return BCURLCreateWithFileSystemPath(nullptr, PathSeparator(), kBCURLPOSIXPathStyle, true);
    }
    TObjectRef base(NodeRefOps::CopyURL(nodePath[1].PeekNodeRef()), false);
    if (base.IsNil()) {
        return nullptr;
    }
    if (!BCURLHasDirectoryPath(AsURL(base))) {
        base = TObjectRef(
            BCURLCreateCopyAppendingPathComponent(nullptr, AsURL(base), BCSTR(""), true), false);
    }
    if (nodePath.size() == 2) {
        return static_cast<BCURLRef>(BCRetain(base.Get()));
    }
    BCMutableStringRef text = BCStringCreateMutable(nullptr, 0);
    TStringRef relative(text, false);
    for (size_t i = 2; i < nodePath.size(); ++i) {
        if (i > 2) {
            BCStringAppend(text, PathSeparator());
        }
        TStringRef name(CopyName(nodePath[i].PeekNodeRef(), kNameWithColons), false);
        BCStringAppend(text, name.AsBCStringRef());
    }
    TObjectRef made(BCURLCreateWithFileSystemPathRelativeToBase(nullptr, text, kBCURLPOSIXPathStyle,
                                                                nodePath.back().IsContainer(),
                                                                AsURL(base)),
                    false);
    return made.IsNil() ? nullptr : BCURLCopyAbsoluteURL(AsURL(made));
}
