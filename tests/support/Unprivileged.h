#pragma once

// Permission tests must bite when the tests run as root, as they do in CI: root reads and
// writes through any mode bits. RunUnprivileged runs a check in a forked child that, when the
// process is root, first hands `folder` (and everything in it) to an unprivileged user, opens
// the way to it, and becomes that user.

#include "tests/support/TestEnvironment.h"

#include <filesystem>
#include <functional>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace keltest {

inline constexpr uid_t kUnprivilegedId = 65534; // "nobody" on Debian

namespace detail {

inline void HandOver(const std::filesystem::path& folder) {
    std::error_code ignored;
    // The way in is opened only inside the scratch area, never above it.
    const std::filesystem::path top = ScratchHome().parent_path();
    for (std::filesystem::path up = folder.parent_path();
         up.native().starts_with(top.native()) && up != up.root_path(); up = up.parent_path()) {
        struct stat info {};
        if (::stat(up.c_str(), &info) == 0)
            ::chmod(up.c_str(), (info.st_mode & 07777) | S_IXOTH);
    }
    ::lchown(folder.c_str(), kUnprivilegedId, kUnprivilegedId);
    for (auto it = std::filesystem::recursive_directory_iterator(
             folder, std::filesystem::directory_options::skip_permission_denied, ignored);
         it != std::filesystem::recursive_directory_iterator(); it.increment(ignored))
        ::lchown(it->path().c_str(), kUnprivilegedId, kUnprivilegedId);
}

} // namespace detail

// The child's exit status: what check returned (0 for success), or 128 plus the signal that
// ended it. Nothing the child does reaches the parent's test state, so check reports through
// its result and writes its own diagnostics to stderr.
inline int RunUnprivileged(const std::filesystem::path& folder, const std::function<int()>& check) {
    bool root = ::geteuid() == 0;
    if (root)
        detail::HandOver(folder);
    pid_t child = ::fork();
    if (child < 0)
        return -1;
    if (child == 0) {
        if (root && (::setgroups(0, nullptr) != 0 || ::setgid(kUnprivilegedId) != 0 ||
                     ::setuid(kUnprivilegedId) != 0))
            ::_exit(126);
        ::_exit(check());
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace keltest
