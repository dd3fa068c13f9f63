#include "basalt/core/PreferencesFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace basalt {
namespace {

int SystemOpen(const char* path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}

// Holds an exclusive flock on a folder for its lifetime; the folder is made if missing. A lock
// another writer keeps past the wait is not had: a stuck writer must not hang this one.
class FolderLock {
public:
    FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait) {
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        fd_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (fd_ >= 0 && !Acquire(wait)) {
            close(fd_);
            fd_ = -1;
        }
    }
    ~FolderLock() {
        if (fd_ >= 0)
            close(fd_); // also drops the lock
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    int Descriptor() const { return fd_; }

private:
    bool Acquire(std::chrono::milliseconds wait) {
        const auto deadline = std::chrono::steady_clock::now() + wait;
        auto pause = std::chrono::milliseconds(1);
        while (flock(fd_, LOCK_EX | LOCK_NB) != 0) {
            if ((errno != EWOULDBLOCK && errno != EINTR) ||
                std::chrono::steady_clock::now() >= deadline)
                return false;
            std::this_thread::sleep_for(pause);
            pause = std::min(pause * 2, std::chrono::milliseconds(50));
        }
        return true;
    }

    int fd_ = -1;
};

bool WriteAll(int fd, const std::string& text) {
    for (size_t done = 0; done < text.size();) {
        ssize_t wrote =
            CurrentPreferencesWriteCalls().write(fd, text.data() + done, text.size() - done);
        if (wrote < 0 && errno == EINTR)
            continue;
        if (wrote <= 0)
            return false;
        done += size_t(wrote);
    }
    return true;
}

// The whole content of a file; nothing if it cannot be opened or read (errno tells why).
std::optional<std::string> ReadWhole(const std::filesystem::path& file) {
    int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return std::nullopt;
    std::string text;
    char buffer[16384];
    ssize_t got = 0;
    while ((got = read(fd, buffer, sizeof buffer)) != 0) {
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            int error = errno;
            close(fd);
            errno = error;
            return std::nullopt;
        }
        text.append(buffer, size_t(got));
    }
    close(fd);
    return text;
}

std::string TemporaryPrefix(const std::filesystem::path& file) {
    return file.filename().string() + ".tmp-";
}

} // namespace

PreferencesWriteCalls& CurrentPreferencesWriteCalls() {
    static PreferencesWriteCalls calls{SystemOpen, ::write, ::fsync, ::rename};
    return calls;
}

std::optional<nlohmann::json> PreferencesFile::Load() const {
    nlohmann::json values;
    if (Read(values) == ReadState::unreadable)
        return std::nullopt;
    return values;
}

std::optional<nlohmann::json>
PreferencesFile::Update(const std::function<void(nlohmann::json&)>& change) const {
    FolderLock lock(file_.parent_path(), CurrentPreferencesWriteCalls().lockWait);
    if (lock.Descriptor() < 0)
        return std::nullopt;
    nlohmann::json values;
    switch (Read(values)) {
    case ReadState::unreadable:
        return std::nullopt;
    case ReadState::unparsable:
        SetAside();
        break;
    case ReadState::values:
    case ReadState::absent:
        break;
    }
    change(values);
    if (!WriteLocked(values))
        return std::nullopt;
    fsync(lock.Descriptor()); // makes the rename itself durable
    return values;
}

PreferencesFile::ReadState PreferencesFile::Read(nlohmann::json& values) const {
    values = nlohmann::json::object();
    std::optional<std::string> text = ReadWhole(file_);
    if (!text)
        return errno == ENOENT ? ReadState::absent : ReadState::unreadable;
    auto parsed = nlohmann::json::parse(*text, nullptr, false);
    if (!parsed.is_object())
        return ReadState::unparsable;
    values = std::move(parsed);
    return ReadState::values;
}

void PreferencesFile::SetAside() const {
    std::error_code error;
    for (int n = 1; n < 10000; ++n) {
        std::filesystem::path aside = file_;
        aside += ".corrupt-" + std::to_string(n);
        if (!std::filesystem::exists(aside, error)) {
            std::filesystem::rename(file_, aside, error);
            return;
        }
    }
}

void PreferencesFile::RemoveStaleTemporaries() const {
    std::error_code error;
    std::string prefix = TemporaryPrefix(file_);
    for (std::filesystem::directory_iterator entry(file_.parent_path(), error), end;
         !error && entry != end; entry.increment(error))
        if (entry->path().filename().string().starts_with(prefix))
            std::filesystem::remove(entry->path(), error);
}

bool PreferencesFile::WriteLocked(const nlohmann::json& values) const {
    const PreferencesWriteCalls& calls = CurrentPreferencesWriteCalls();
    RemoveStaleTemporaries();
    std::filesystem::path temporary =
        file_.parent_path() / (TemporaryPrefix(file_) + std::to_string(getpid()));
    int fd = calls.open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    std::string text = values.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
    bool written = WriteAll(fd, text) && calls.fsync(fd) == 0;
    written = close(fd) == 0 && written;
    written = written && calls.rename(temporary.c_str(), file_.c_str()) == 0;
    if (!written) {
        std::error_code error;
        std::filesystem::remove(temporary, error);
    }
    return written;
}

} // namespace basalt
