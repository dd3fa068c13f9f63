#pragma once

// One preferences domain on disk: a JSON object in <folder>/<domain>.json.
//
// Every read and write holds an exclusive flock on the folder, so writers in different
// processes take turns. A write re-reads the file under the lock and applies only its own
// change, so concurrent writers keep each other's keys. The new text goes to a temporary file
// that is fsynced and renamed over the old one: a writer that dies leaves the old file whole
// (and a stale temporary file that the next writer removes). A file that cannot be read or
// parsed is renamed <file>.corrupt-N, never deleted, and the domain starts empty.

#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>

namespace basalt {

class PreferencesFile {
public:
    explicit PreferencesFile(std::filesystem::path file) : file_(std::move(file)) {}

    const std::filesystem::path& Path() const { return file_; }

    // The values on disk now; an empty object when there are none.
    nlohmann::json Load() const;

    // Applies change to the values on disk and writes them back; the new values, or nothing if
    // the file could not be written.
    std::optional<nlohmann::json> Update(const std::function<void(nlohmann::json&)>& change) const;

private:
    nlohmann::json ReadLocked() const;
    void SetAside() const;
    bool WriteLocked(const nlohmann::json& values) const;
    void RemoveStaleTemporaries() const;

    std::filesystem::path file_;
};

} // namespace basalt
