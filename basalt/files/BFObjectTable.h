#pragma once

// The process-wide table behind file references and file specs (BFSpec). Every file-system
// object that has been handed out gets a 32-bit node id, kept with its device, inode and the
// last path it was seen at; every device gets a volume reference number (-1 for the volume of
// "/"). Entries live as long as the process. All members are thread-safe.

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace basalt::files {

struct ObjectEntry {
    uint64_t device = 0;
    uint64_t inode = 0;
    std::string path;
};

class ObjectTable {
public:
    static ObjectTable& Shared();

    // The id of (device, inode); the path is recorded as its latest known place.
    uint32_t NodeIDFor(uint64_t device, uint64_t inode, const std::string& path);
    std::optional<ObjectEntry> EntryForNodeID(uint32_t nodeID);

    int16_t VolumeRefNumFor(uint64_t device);
    std::optional<uint64_t> DeviceForVolumeRefNum(int16_t refNum);

private:
    ObjectTable();

    std::mutex mutex_;
    std::unordered_map<std::string, uint32_t> idByObject_;
    std::vector<ObjectEntry> entries_; // node id n is entries_[n - kFirstNodeID]
    std::vector<uint64_t> devices_;    // refnum -1 is devices_[0]
};

} // namespace basalt::files
