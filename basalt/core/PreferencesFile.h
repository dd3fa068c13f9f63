#pragma once

// One preferences domain on disk: a JSON object in <folder>/<domain>.json.
//
// Readers take no lock and change nothing: writers replace the file by an atomic rename, so a
// reader sees the old text or the new one. A read never makes the folder, never renames a file
// and never writes; a file it cannot open or parse simply reads as no values.
//
// Writers take turns under an exclusive flock on the folder (made by the first writer). A write
// re-reads the file under the lock and applies only its own change, so concurrent writers keep
// each other's keys. The new text goes to a temporary file that is fsynced and renamed over the
// old one: a writer that fails or dies leaves the old file whole (and at most a stale temporary
// file that the next writer removes). Only a writer sets a file aside, and only one whose text
// does not parse: it is renamed <file>.corrupt-N, never deleted. A file that exists but cannot
// be read is left alone and the write fails, so good values are never replaced unseen.

#include <chrono>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <sys/types.h>

namespace basalt {

// The system calls a write goes through, and how long a writer waits for the lock. Tests
// replace them to make a disk fill up, fail or vanish under a write.
struct PreferencesWriteCalls {
    std::function<int(const char* path, int flags, mode_t mode)> open;
    std::function<ssize_t(int fd, const void* data, size_t size)> write;
    std::function<int(int fd)> fsync;
    std::function<int(const char* from, const char* to)> rename;
    std::chrono::milliseconds lockWait{2000};
};

// The calls in use; the system's own unless a test changed them.
PreferencesWriteCalls& CurrentPreferencesWriteCalls();

class PreferencesFile {
public:
    explicit PreferencesFile(std::filesystem::path file) : file_(std::move(file)) {}

    const std::filesystem::path& Path() const { return file_; }

    // The values on disk now: an empty object when there is no file or its text does not
    // parse; nothing when the file exists but cannot be read.
    std::optional<nlohmann::json> Load() const;

    // Applies change to the values on disk and writes them back; the new values, or nothing if
    // the file could not be read or written, or the lock was not had in time.
    std::optional<nlohmann::json> Update(const std::function<void(nlohmann::json&)>& change) const;

private:
    enum class ReadState { values, absent, unreadable, unparsable };
    ReadState Read(nlohmann::json& values) const;
    void SetAside() const;
    bool WriteLocked(const nlohmann::json& values) const;
    void RemoveStaleTemporaries() const;

    std::filesystem::path file_;
};

} // namespace basalt
