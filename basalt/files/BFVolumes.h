#pragma once

// The mounted file systems, as /proc/self/mountinfo lists them.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace basalt::files {

struct MountInfo {
    uint64_t device = 0;
    std::string mountPoint;
    std::string fsType;
    std::string source;
};

std::vector<MountInfo> ReadMountTable();
// Parses the text of a mountinfo file; lines that do not parse are skipped.
std::vector<MountInfo> ParseMountTable(const std::string& text);
// The mount point of the last mount of device, which is the one that shows.
std::optional<std::string> MountPointOfDevice(uint64_t device);
// The mount that holds path (the longest mount point that is a prefix of it).
std::optional<MountInfo> MountHolding(const std::string& path);

} // namespace basalt::files
