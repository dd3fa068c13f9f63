// The shape of the tree: parents, children by name, predicates and aliases.

#include "basalt/files/BFFindFolder.h"
#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeBookmarks.h"
#include "basalt/nodes/NodeListing.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeQueryState.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeVolumes.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <optional>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unordered_set>

namespace basalt::nodes {
namespace {

constexpr int kMaxAliasSteps = 40;

bool EndsWithFolded(std::string_view name, std::string_view suffix) {
    if (name.size() <= suffix.size())
        return false;
    return std::equal(suffix.begin(), suffix.end(), name.end() - suffix.size(),
                      [](char a, char b) { return std::tolower(a) == std::tolower(b); });
}

bool EqualIgnoringCase(const std::u16string& a, const std::u16string& b) {
    UErrorCode error = U_ZERO_ERROR;
    return u_strCaseCompare(reinterpret_cast<const UChar*>(a.data()),
                            static_cast<int32_t>(a.size()),
                            reinterpret_cast<const UChar*>(b.data()),
                            static_cast<int32_t>(b.size()), U_FOLD_CASE_DEFAULT, &error) == 0;
}

std::u16string NameOf(NodeRef node) {
    BCIndex length = 0;
    UniChar buffer[1024];
    GetNodePropertyAsStringNew(node, NodeCode("pnam"), 1024, &length, buffer, 0);
    return std::u16string(reinterpret_cast<char16_t*>(buffer),
                          static_cast<size_t>(std::min<BCIndex>(length, 1024)));
}

// Virtual containers: match the children's names, exactly first, then ignoring case. The
// Network node is filed under the boot volume but shown under the root, so a path can name it
// from either.
NodeRef FindVirtualChild(NodeRef parent, const std::u16string& name) {
    std::vector<NodeRef> children;
    if (ListChildren(parent, children) != noErr)
        return nullptr;
    if (parent == Special().root)
        children.push_back(CopyNodeRef(Special().network));
    NodeRef found = nullptr;
    for (int pass = 0; pass < 2 && found == nullptr; ++pass) {
        for (NodeRef child : children) {
            std::u16string childName = NameOf(child);
            if (pass == 0 ? childName == name : EqualIgnoringCase(childName, name)) {
                found = CopyNodeRef(child);
                break;
            }
        }
    }
    ReleaseAll(children);
    return found;
}

// A name that is not UTF-8 is shown, and so completed and typed, in its legible form; such
// text finds the entry it was made from.
std::optional<NodeEntry> EntryShownAs(const std::string& folder, const std::u16string& name) {
    std::vector<NodeEntry> entries;
    if (ReadFolderEntries(folder, entries) != noErr)
        return std::nullopt;
    for (NodeEntry& entry : entries) {
        if (files::DisplayName(entry.name) == name)
            return std::move(entry);
    }
    return std::nullopt;
}

StatusCode FindFolderChild(NodeRef parent, const std::u16string& name, NodeRef* child) {
    std::string bytes = files::EncodeName(name);
    if (bytes.empty() || bytes.find_first_of(std::string("/\0", 2)) != std::string::npos ||
        bytes.size() > NAME_MAX)
        return bdNamErr;
    // The folder itself and its parent are no children of it.
    if (bytes == "." || bytes == "..")
        return fnfErr;
    if (parent == Special().boot && (bytes == "Network" || bytes == "Volumes")) {
        *child = CopyNodeRef(bytes == "Network" ? Special().network : Special().volumes);
        return noErr;
    }
    std::string folder = PathOf(parent);
    uint32_t hint = 1;
    NodeGetNameSyntaxHint(parent, &hint);
    if (hint == 0) {
        // A file system that folds case: the node must carry the entry's real name.
        std::vector<NodeEntry> entries;
        if (StatusCode status = ReadFolderEntries(folder, entries))
            return status;
        auto match = std::find_if(entries.begin(), entries.end(),
                                  [&](const NodeEntry& e) { return e.name == bytes; });
        if (match == entries.end())
            match = std::find_if(entries.begin(), entries.end(), [&](const NodeEntry& e) {
                return EqualIgnoringCase(files::DecodeName(e.name), name) ||
                       files::DisplayName(e.name) == name;
            });
        if (match == entries.end())
            return fnfErr;
        *child = Intern(parent, match->name, match->kind);
        return noErr;
    }
    struct statx info {};
    if (int error = files::StatxPath(files::JoinPath(folder, bytes), STATX_TYPE, info, false)) {
        std::optional<NodeEntry> shown =
            error == ENOENT ? EntryShownAs(folder, name) : std::nullopt;
        if (!shown)
            return error == EACCES ? StatusCode(permErr) : StatusCode(fnfErr);
        *child = Intern(parent, shown->name, shown->kind);
        return noErr;
    }
    NodeKind kind = S_ISDIR(info.stx_mode)   ? NodeKind::Folder
                    : S_ISLNK(info.stx_mode) ? NodeKind::Symlink
                    : S_ISREG(info.stx_mode) ? NodeKind::File
                                             : NodeKind::Other;
    *child = Intern(parent, bytes, kind);
    return noErr;
}

std::string ReadLink(const std::string& path, int& error) {
    files::ParentAndLeaf at = files::OpenParent(path);
    char target[PATH_MAX];
    ssize_t size = at.parent.Valid()
                       ? ::readlinkat(at.parent.Get(), at.leaf.c_str(), target, sizeof target)
                       : -1;
    error = size < 0 ? errno : 0;
    return size > 0 ? std::string(target, static_cast<size_t>(size)) : std::string();
}

} // namespace
} // namespace basalt::nodes

using namespace basalt::nodes;

NodeRef GetHomeNode() {
    return NodeForPath(basalt::files::HomePath());
}

Boolean NodeValidate(NodeRef node) {
    if (node == nullptr)
        return false;
    node = PropertySubject(node); // a hit is valid while the item found is
    if (!node->IsFileSystem())
        return true;
    Forget(node);
    return StatOf(node).exists;
}

NodeRef GetNodeParent(NodeRef node) {
    if (node == nullptr || node->parent == nullptr || node->kind == NodeKind::Sidebar)
        return nullptr;
    if (node->IsFileSystem() && IsVolumeNode(node))
        return CopyNodeRef(Special().root);
    return CopyNodeRef(node->parent);
}

StatusCode NodeFindChildNew(NodeRef parent, BCIndex length, const UniChar* chars, NodeRef* child) {
    if (parent == nullptr || child == nullptr || length < 0 || (length > 0 && chars == nullptr))
        return paramErr;
    std::u16string name(reinterpret_cast<const char16_t*>(chars), static_cast<size_t>(length));
    if (parent->kind == NodeKind::VolumeAlias) {
        NodeRef volume = parent->aliasTarget.load();
        if (volume == nullptr)
            return fnfErr;
        return NodeFindChildNew(volume, length, chars, child);
    }
    if (!parent->IsFileSystem()) {
        if (parent->kind == NodeKind::Bookmark)
            return kNodeNotContainerErr;
        *child = FindVirtualChild(parent, name);
        return *child != nullptr ? StatusCode(noErr) : StatusCode(fnfErr);
    }
    if (SettledKind(parent) != NodeKind::Folder)
        return kNodeNotContainerErr;
    return FindFolderChild(parent, name, child);
}

StatusCode NodeHasChildNew(NodeRef parent, BCIndex length, const UniChar* chars, Boolean* result) {
    if (result == nullptr)
        return paramErr;
    NodeRef child = nullptr;
    StatusCode status = NodeFindChildNew(parent, length, chars, &child);
    *result = status == noErr;
    DisposeNode(child);
    return status == fnfErr ? StatusCode(noErr) : status;
}

StatusCode NodeGetChildrenCount(NodeRef node, BCIndex* count) {
    if (node == nullptr || count == nullptr)
        return paramErr;
    if (node->IsFileSystem() && SettledKind(node) == NodeKind::Folder) {
        std::vector<NodeEntry> entries;
        if (StatusCode status = ReadFolderEntries(PathOf(node), entries))
            return status;
        if (node == Special().boot) {
            std::erase_if(entries, [](const NodeEntry& e) {
                return e.name == "Network" || e.name == "Volumes";
            });
            entries.push_back({"Network", NodeKind::Network});
        }
        *count = static_cast<BCIndex>(entries.size());
        return noErr;
    }
    std::vector<NodeRef> children;
    if (StatusCode status = ListChildren(node, children))
        return status;
    *count = static_cast<BCIndex>(children.size());
    ReleaseAll(children);
    return noErr;
}

Boolean NodeIsContainer(NodeRef node) {
    if (node == nullptr)
        return false;
    switch (node->IsFileSystem() ? SettledKind(node) : node->kind.load()) {
    case NodeKind::Folder:
    case NodeKind::Root:
    case NodeKind::Network:
    case NodeKind::VolumesFolder:
    case NodeKind::VolumeAlias: // an entry of the volumes folder opens onto its volume
    case NodeKind::Sidebar:
    case NodeKind::QueryHits:
        return true;
    default:
        return false;
    }
}

Boolean NodeIsAlias(NodeRef node) {
    if (node == nullptr)
        return false;
    NodeKind kind = node->IsFileSystem() ? SettledKind(node) : node->kind.load();
    return kind == NodeKind::Symlink || kind == NodeKind::VolumeAlias || kind == NodeKind::Bookmark;
}

Boolean NodeIsPackage(NodeRef node) {
    if (node == nullptr || !node->IsFileSystem() || node == Special().boot)
        return false;
    const std::string_view name = node->Name();
    bool packageName = EndsWithFolded(name, ".app") || EndsWithFolded(name, ".bundle") ||
                       EndsWithFolded(name, ".appdir");
    return packageName && SettledKind(node) == NodeKind::Folder;
}

Boolean NodeIsApplication(NodeRef node) {
    if (node == nullptr || !node->IsFileSystem())
        return false;
    NodeKind kind = SettledKind(node);
    return (kind == NodeKind::File && EndsWithFolded(node->Name(), ".desktop")) ||
           (kind == NodeKind::Folder && EndsWithFolded(node->Name(), ".appdir"));
}

Boolean NodeIsVolume(NodeRef node) {
    return node != nullptr && node->IsFileSystem() && IsVolumeNode(node);
}

Boolean NodeIsVisible(NodeRef node) {
    if (node == nullptr)
        return false;
    // The Volumes folder is there for text paths, not to be shown.
    if (node == Special().volumes)
        return false;
    if (!node->IsFileSystem() || node == Special().boot)
        return true;
    if (node->Name().starts_with("."))
        return false;
    return !IsListedHidden(node->parent, node->Name());
}

Boolean NodeIsQuery(NodeRef node) {
    return node != nullptr && node->kind == NodeKind::Query;
}
Boolean NodeIsQueryHit(NodeRef node) {
    return node != nullptr && node->kind == NodeKind::QueryHit;
}
Boolean NodeIsQueryHitsContainer(NodeRef node) {
    return node != nullptr && node->kind == NodeKind::QueryHits;
}
Boolean NodeIsSavedQuery(NodeRef node) {
    return node != nullptr && node->IsFileSystem() && EndsWithFolded(node->Name(), ".kelsearch") &&
           SettledKind(node) == NodeKind::File;
}

StatusCode NodeGetOriginal(NodeRef node, Boolean, NodeRef* out) {
    if (node == nullptr || out == nullptr)
        return paramErr;
    NodeKind kind = node->kind.load();
    if (kind == NodeKind::VolumeAlias || kind == NodeKind::Query || kind == NodeKind::QueryHit) {
        NodeRef target = node->aliasTarget.load();
        *out = CopyNodeRef(target);
        return target != nullptr ? StatusCode(noErr) : StatusCode(fnfErr);
    }
    if (node->kind == NodeKind::Bookmark)
        return BookmarkOriginal(node, out);
    if (!NodeIsAlias(node)) {
        *out = CopyNodeRef(node);
        return noErr;
    }
    std::string path = PathOf(node);
    int error = 0;
    std::string target = ReadLink(path, error);
    if (error != 0 || target.empty())
        return fnfErr;
    if (target.front() != '/')
        target = basalt::files::JoinPath(basalt::files::ParentPath(path), target);
    NodeHolder original(NodeForPath(target));
    if (!original || !StatOf(original.Get()).exists)
        return original && StatOf(original.Get()).error == EACCES ? StatusCode(permErr)
                                                                  : StatusCode(fnfErr);
    *out = original.Release();
    return noErr;
}

StatusCode NodeFollowAlias(NodeRef node, Boolean flag, NodeRef* out) {
    if (node == nullptr || out == nullptr)
        return paramErr;
    NodeHolder current(CopyNodeRef(node));
    if (NodeIsQuery(node) || NodeIsQueryHit(node)) {
        // A query leads to its hits, a hit to what was found; from there on links are followed.
        NodeRef next = nullptr;
        if (StatusCode status = NodeGetOriginal(node, flag, &next))
            return status;
        current = NodeHolder(next);
    }
    std::unordered_set<NodeRef> seen{current.Get()};
    for (int step = 0; NodeIsAlias(current.Get()); ++step) {
        NodeRef next = nullptr;
        if (StatusCode status = NodeGetOriginal(current.Get(), flag, &next))
            return status;
        current = NodeHolder(next);
        if (step == kMaxAliasSteps || !seen.insert(next).second)
            return kNodeAliasLoopErr;
    }
    *out = current.Release();
    return noErr;
}
