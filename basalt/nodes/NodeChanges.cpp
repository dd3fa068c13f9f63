#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeBookmarks.h"
#include "basalt/nodes/NodeStat.h"
#include "basalt/nodes/NodeTable.h"
#include "basalt/nodes/NodeVolumes.h"

#include <cerrno>
#include <climits>

namespace {

constexpr StatusCode kBusyErr = -47; // a folder that is not empty

StatusCode StatusForErrno(int error) {
    switch (error) {
    case EEXIST:
        return dupFNErr;
    case EACCES:
    case EPERM:
    case EROFS:
        return permErr;
    case ENAMETOOLONG:
        return basalt::files::kBFRefPathTooLongErr;
    case ENOTEMPTY:
        return kBusyErr;
    default:
        return fnfErr;
    }
}

} // namespace

using namespace basalt::nodes;

StatusCode NodeCreateNewContainerInNew(NodeRef parent, BCIndex length, const UniChar* chars,
                                       uint32_t, NodeRef* created) {
    if (parent == nullptr || created == nullptr || length <= 0 || chars == nullptr)
        return paramErr;
    if (!parent->IsFileSystem() || SettledKind(parent) != NodeKind::Folder)
        return kNodeNotContainerErr;
    std::string name = basalt::files::EncodeName(
        std::u16string_view(reinterpret_cast<const char16_t*>(chars), static_cast<size_t>(length)));
    if (name.find('/') != std::string::npos || name == "." || name == ".." ||
        name.size() > NAME_MAX)
        return bdNamErr;
    basalt::files::UniqueFd folder = basalt::files::OpenPath(PathOf(parent), O_PATH | O_DIRECTORY);
    if (!folder.Valid())
        return StatusForErrno(errno);
    if (::mkdirat(folder.Get(), name.c_str(), 0777) != 0)
        return StatusForErrno(errno);
    *created = Intern(parent, name, NodeKind::Folder);
    Forget(*created);
    return noErr;
}

StatusCode DeleteNode(NodeRef node) {
    if (node == nullptr)
        return paramErr;
    if (node->kind == NodeKind::Bookmark)
        return RemoveBookmark(node);
    if (!node->IsFileSystem() || node == Special().boot || IsVolumeNode(node))
        return permErr;
    basalt::files::ParentAndLeaf at = basalt::files::OpenParent(PathOf(node));
    if (!at.parent.Valid())
        return StatusForErrno(errno);
    int flags = SettledKind(node) == NodeKind::Folder ? AT_REMOVEDIR : 0;
    if (::unlinkat(at.parent.Get(), at.leaf.c_str(), flags) != 0)
        return StatusForErrno(errno);
    Forget(node);
    return noErr;
}
