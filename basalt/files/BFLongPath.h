#pragma once

// File-system calls that take any path, including paths longer than PATH_MAX: such a path is
// opened one chunk at a time with openat. Paths are the file system's bytes.

#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace basalt::files {

class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(other.Release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept;
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;
    ~UniqueFd();

    int Get() const { return fd_; }
    bool Valid() const { return fd_ >= 0; }
    int Release();

private:
    int fd_ = -1;
};

// openat(2) on an absolute path of any length; errno is set on failure.
UniqueFd OpenPath(std::string_view path, int flags);

// The folder holding path (opened O_PATH) and the last component, for the *at calls.
struct ParentAndLeaf {
    UniqueFd parent;
    std::string leaf;
};
ParentAndLeaf OpenParent(std::string_view path);

// statx(2) on a path of any length; returns the errno, 0 on success.
int StatxPath(std::string_view path, unsigned mask, struct statx& out, bool follow = true);

std::string ParentPath(std::string_view path);
std::string LeafName(std::string_view path);
std::string JoinPath(std::string_view folder, std::string_view name);

} // namespace basalt::files
