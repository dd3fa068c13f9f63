#include "basalt/files/BFLongPath.h"

#include <cerrno>
#include <climits>

namespace basalt::files {

UniqueFd& UniqueFd::operator=(UniqueFd&& other) noexcept {
    if (this != &other) {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = other.Release();
    }
    return *this;
}

UniqueFd::~UniqueFd() {
    if (fd_ >= 0)
        ::close(fd_);
}

int UniqueFd::Release() {
    int fd = fd_;
    fd_ = -1;
    return fd;
}

UniqueFd OpenPath(std::string_view path, int flags) {
    if (path.empty() || path.front() != '/') {
        errno = ENOENT;
        return UniqueFd();
    }
    if (path.size() < PATH_MAX - 1)
        return UniqueFd(::open(std::string(path).c_str(), flags | O_CLOEXEC));
    // Walk down in chunks that each fit PATH_MAX, cut at a slash.
    UniqueFd dir(::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
    std::string_view rest = path.substr(1);
    while (dir.Valid() && rest.size() >= PATH_MAX - 1) {
        size_t cut = rest.rfind('/', PATH_MAX - 2);
        if (cut == std::string_view::npos || cut == 0) {
            errno = ENAMETOOLONG;
            return UniqueFd();
        }
        std::string chunk(rest.substr(0, cut));
        dir = UniqueFd(::openat(dir.Get(), chunk.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        rest = rest.substr(cut + 1);
    }
    if (!dir.Valid())
        return dir;
    std::string last = rest.empty() ? std::string(".") : std::string(rest);
    return UniqueFd(::openat(dir.Get(), last.c_str(), flags | O_CLOEXEC));
}

ParentAndLeaf OpenParent(std::string_view path) {
    ParentAndLeaf result;
    result.leaf = LeafName(path);
    result.parent = OpenPath(ParentPath(path), O_PATH | O_DIRECTORY);
    return result;
}

int StatxPath(std::string_view path, unsigned mask, struct statx& out, bool follow) {
    int flags = follow ? 0 : AT_SYMLINK_NOFOLLOW;
    if (path.size() < PATH_MAX - 1) {
        std::string copy(path);
        return ::statx(AT_FDCWD, copy.c_str(), flags, mask, &out) == 0 ? 0 : errno;
    }
    ParentAndLeaf at = OpenParent(path);
    if (!at.parent.Valid())
        return errno;
    return ::statx(at.parent.Get(), at.leaf.c_str(), flags, mask, &out) == 0 ? 0 : errno;
}

std::string ParentPath(std::string_view path) {
    size_t slash = path.rfind('/');
    if (slash == std::string_view::npos || slash == 0)
        return "/";
    return std::string(path.substr(0, slash));
}

std::string LeafName(std::string_view path) {
    size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return std::string(path);
    std::string leaf(path.substr(slash + 1));
    return leaf.empty() ? std::string(".") : leaf;
}

std::string JoinPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (path.empty() || path.back() != '/')
        path += '/';
    path += name;
    return path;
}

} // namespace basalt::files
