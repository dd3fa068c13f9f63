#include "basalt/nodes/NodeStat.h"

#include "basalt/files/BFLongPath.h"
#include "basalt/nodes/NodeTable.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <fstream>
#include <linux/fs.h>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>

namespace basalt::nodes {
namespace {

using files::UniqueFd;

NodeKind KindOfMode(uint32_t mode) {
    if (S_ISDIR(mode))
        return NodeKind::Folder;
    if (S_ISREG(mode))
        return NodeKind::File;
    if (S_ISLNK(mode))
        return NodeKind::Symlink;
    return NodeKind::Other;
}

// A path short enough for the *xattr calls: long ones go through their folder's descriptor,
// which `holder` keeps open.
std::string ReachablePath(const std::string& path, UniqueFd& holder) {
    if (path.size() < PATH_MAX - 1)
        return path;
    files::ParentAndLeaf at = files::OpenParent(path);
    holder = std::move(at.parent);
    return "/proc/self/fd/" + std::to_string(holder.Get()) + "/" + at.leaf;
}

std::string ListXattrs(const std::string& path) {
    UniqueFd holder;
    std::string target = ReachablePath(path, holder);
    char buffer[4096];
    ssize_t size = ::llistxattr(target.c_str(), buffer, sizeof buffer);
    return size > 0 ? std::string(buffer, static_cast<size_t>(size)) : std::string();
}

// The folder whose children this thread reads through its descriptor (FolderAttributeScope).
struct AttributeFolder {
    NodeRef folder = nullptr;
    UniqueFd fd;
    bool keepsUserAttributes = true;
};
thread_local AttributeFolder tAttributeFolder;

// listxattrat(2), of Linux 6.13; its number is the same on every architecture.
constexpr long kListXattrAt = 465;
std::atomic<bool> gListXattrAtMissing{false};

// The names of a child's attributes through its folder's descriptor; none when that cannot be
// done, and then the path does it.
std::optional<std::string> ListXattrsInFolder(NodeRef node) {
    const AttributeFolder& at = tAttributeFolder;
    if (at.folder != nullptr && node->parent == at.folder && !at.keepsUserAttributes)
        return std::string();
    if (at.folder == nullptr || node->parent != at.folder || !at.fd.Valid() ||
        gListXattrAtMissing.load(std::memory_order_relaxed))
        return std::nullopt;
    char buffer[4096];
    long size = ::syscall(kListXattrAt, at.fd.Get(), node->CName(), AT_SYMLINK_NOFOLLOW, buffer,
                          sizeof buffer);
    if (size >= 0)
        return std::string(buffer, static_cast<size_t>(size));
    if (errno == ENOSYS)
        gListXattrAtMissing = true;
    return std::nullopt;
}

// A file system without user attributes (procfs, FAT, some network file systems) can hold none
// of ours, and one question about the folder spares a read per child.
bool KeepsUserAttributes(const UniqueFd& folder) {
    const std::string path = "/proc/self/fd/" + std::to_string(folder.Get());
    return ::getxattr(path.c_str(), "user.kel.hide-extension", nullptr, 0) >= 0 || errno != ENOTSUP;
}

NodeStat ReadStat(const std::string& path) {
    NodeStat result;
    struct statx info {};
    unsigned mask = STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_MTIME | STATX_BTIME | STATX_INO;
    result.error = files::StatxPath(path, mask, info, false);
    if (result.error != 0)
        return result;
    result.exists = true;
    result.mode = info.stx_mode;
    result.size = info.stx_size;
    result.modified = info.stx_mtime.tv_sec;
    result.created = (info.stx_mask & STATX_BTIME) ? info.stx_btime.tv_sec : info.stx_mtime.tv_sec;
    result.device = makedev(info.stx_dev_major, info.stx_dev_minor);
    result.inode = info.stx_ino;
    return result;
}

std::optional<FourCharCode> CodeXattr(const std::string& path, const char* name) {
    bool present = false;
    std::string value = ReadXattr(path, name, &present);
    if (!present || value.size() != 4)
        return std::nullopt;
    FourCharCode code = 0;
    for (unsigned char c : value)
        code = code << 8 | c;
    return code;
}

bool ImmutableFlag(const std::string& path) {
    UniqueFd fd = files::OpenPath(path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
    int flags = 0;
    return fd.Valid() && ::ioctl(fd.Get(), FS_IOC_GETFLAGS, &flags) == 0 &&
           (flags & FS_IMMUTABLE_FL) != 0;
}

// One listxattr tells which of our attributes a file has; most have none, and then reading
// the extras costs that one call.
NodeExtras ReadExtras(const std::string& path, const std::string& names) {
    NodeExtras extras;
    auto has = [&](std::string_view name) {
        for (size_t at = 0; at < names.size();) {
            size_t end = std::min(names.find('\0', at), names.size());
            if (std::string_view(names).substr(at, end - at) == name)
                return true;
            at = end + 1;
        }
        return false;
    };
    if (has("user.kel.type"))
        extras.type = CodeXattr(path, "user.kel.type");
    if (has("user.kel.creator"))
        extras.creator = CodeXattr(path, "user.kel.creator");
    if (has("user.kel.label"))
        extras.label = static_cast<int16_t>(std::atoi(ReadXattr(path, "user.kel.label").c_str()));
    if (has("user.kel.hide-extension"))
        extras.hideExtension = ReadXattr(path, "user.kel.hide-extension") == "1";
    if (has("user.kel.resources"))
        extras.resourceSize = ReadXattr(path, "user.kel.resources").size();
    return extras;
}

// The node's cache, made when it is first to hold something; under the node's lock.
NodeCache& CacheOf(NodeRef node) {
    if (!node->cache)
        node->cache = std::make_unique<NodeCache>();
    return *node->cache;
}

} // namespace

std::string ReadXattr(const std::string& path, const char* name, bool* present) {
    UniqueFd holder;
    std::string target = ReachablePath(path, holder);
    char buffer[4096];
    ssize_t size = ::lgetxattr(target.c_str(), name, buffer, sizeof buffer);
    if (present != nullptr)
        *present = size >= 0;
    return size > 0 ? std::string(buffer, static_cast<size_t>(size)) : std::string();
}

NodeStat StatOf(NodeRef node) {
    if (!node->IsFileSystem())
        return {};
    std::lock_guard lock(node->mutex);
    NodeCache& cache = CacheOf(node);
    if (!cache.stat) {
        cache.stat = std::make_unique<NodeStat>(ReadStat(PathOf(node)));
        if (cache.stat->exists)
            node->kind.store(KindOfMode(cache.stat->mode));
    }
    return *cache.stat;
}

bool IsLocked(NodeRef node) {
    if (!node->IsFileSystem())
        return false;
    std::lock_guard lock(node->mutex);
    if (!node->locked)
        node->locked = ImmutableFlag(PathOf(node));
    return *node->locked;
}

NodeExtras ExtrasOf(NodeRef node) {
    if (!node->IsFileSystem())
        return {};
    std::lock_guard lock(node->mutex);
    if (!node->extrasRead) {
        // Most files have none of our attributes, and then their path is not needed.
        std::optional<std::string> names = ListXattrsInFolder(node);
        if (!names || !names->empty()) {
            const std::string path = PathOf(node);
            NodeExtras read = ReadExtras(path, names ? *names : ListXattrs(path));
            if (read != NodeExtras())
                CacheOf(node).extras = std::make_unique<NodeExtras>(read);
        }
        node->extrasRead = true;
    }
    return node->cache && node->cache->extras ? *node->cache->extras : NodeExtras();
}

bool IsListedHidden(NodeRef folder, std::string_view name) {
    if (folder == nullptr || !folder->IsFileSystem())
        return false;
    std::lock_guard lock(folder->mutex);
    NodeCache& cache = CacheOf(folder);
    if (!cache.hiddenNames) {
        cache.hiddenNames = std::make_unique<NameSet>();
        UniqueFd fd = files::OpenPath(files::JoinPath(PathOf(folder), ".hidden"), O_RDONLY);
        std::string text;
        char buffer[4096];
        for (ssize_t got; fd.Valid() && (got = ::read(fd.Get(), buffer, sizeof buffer)) > 0;)
            text.append(buffer, static_cast<size_t>(got));
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty())
                cache.hiddenNames->insert(line);
        }
    }
    return cache.hiddenNames->count(name) != 0;
}

FolderAttributeScope::FolderAttributeScope(NodeRef folder) {
    tAttributeFolder.fd = files::OpenPath(PathOf(folder), O_PATH | O_DIRECTORY);
    tAttributeFolder.folder = folder;
    tAttributeFolder.keepsUserAttributes =
        !tAttributeFolder.fd.Valid() || KeepsUserAttributes(tAttributeFolder.fd);
}

FolderAttributeScope::~FolderAttributeScope() {
    tAttributeFolder = AttributeFolder();
}

void Forget(NodeRef node) {
    std::lock_guard lock(node->mutex);
    node->cache.reset();
    node->extrasRead = false;
    node->locked.reset();
    // The name may be reused by an object of another kind; the next stat settles it again.
    if (node->IsFileSystem() && node != Special().boot)
        node->kind.store(NodeKind::Unknown);
}

} // namespace basalt::nodes
