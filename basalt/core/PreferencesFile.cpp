#include "basalt/core/PreferencesFile.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <unistd.h>

namespace basalt {
namespace {

// Holds an exclusive flock on a folder for its lifetime; the folder is made if missing.
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& folder) {
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        fd_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (fd_ >= 0)
            while (flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
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
    int fd_ = -1;
};

bool WriteAll(int fd, const std::string& text) {
    for (size_t done = 0; done < text.size();) {
        ssize_t wrote = write(fd, text.data() + done, text.size() - done);
        if (wrote < 0 && errno == EINTR)
            continue;
        if (wrote <= 0)
            return false;
        done += size_t(wrote);
    }
    return true;
}

std::string TemporaryPrefix(const std::filesystem::path& file) {
    return file.filename().string() + ".tmp-";
}

} // namespace

nlohmann::json PreferencesFile::Load() const {
    FolderLock lock(file_.parent_path());
    return ReadLocked();
}

std::optional<nlohmann::json>
PreferencesFile::Update(const std::function<void(nlohmann::json&)>& change) const {
    FolderLock lock(file_.parent_path());
    if (lock.Descriptor() < 0)
        return std::nullopt;
    nlohmann::json values = ReadLocked();
    change(values);
    if (!WriteLocked(values))
        return std::nullopt;
    fsync(lock.Descriptor()); // makes the rename itself durable
    return values;
}

nlohmann::json PreferencesFile::ReadLocked() const {
    std::error_code error;
    if (!std::filesystem::exists(file_, error))
        return nlohmann::json::object();
    std::ifstream stream(file_, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    auto values = stream ? nlohmann::json::parse(text.str(), nullptr, false)
                         : nlohmann::json(nlohmann::json::value_t::discarded);
    if (values.is_object())
        return values;
    SetAside();
    return nlohmann::json::object();
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
    RemoveStaleTemporaries();
    std::filesystem::path temporary =
        file_.parent_path() / (TemporaryPrefix(file_) + std::to_string(getpid()));
    int fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    std::string text = values.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
    bool written = WriteAll(fd, text) && fsync(fd) == 0;
    written = close(fd) == 0 && written;
    std::error_code error;
    if (written)
        std::filesystem::rename(temporary, file_, error);
    if (!written || error) {
        std::filesystem::remove(temporary, error);
        return false;
    }
    return true;
}

} // namespace basalt
