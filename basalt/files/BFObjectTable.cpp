#include "basalt/files/BFObjectTable.h"

#include <sys/stat.h>

namespace basalt::files {
namespace {

// Ids below this are kept free: 1 and 2 have fixed meanings for older clients.
constexpr uint32_t kFirstNodeID = 16;

std::string ObjectKey(uint64_t device, uint64_t inode) {
    return std::to_string(device) + ':' + std::to_string(inode);
}

} // namespace

ObjectTable& ObjectTable::Shared() {
    static ObjectTable* table = new ObjectTable; // never destroyed: used from exit paths too
    return *table;
}

ObjectTable::ObjectTable() {
    struct stat root {};
    if (::stat("/", &root) == 0)
        devices_.push_back(root.st_dev);
}

uint32_t ObjectTable::NodeIDFor(uint64_t device, uint64_t inode, const std::string& path) {
    std::lock_guard lock(mutex_);
    auto [it, added] = idByObject_.try_emplace(ObjectKey(device, inode), 0);
    if (added) {
        it->second = kFirstNodeID + static_cast<uint32_t>(entries_.size());
        entries_.push_back({device, inode, path});
    } else {
        entries_[it->second - kFirstNodeID].path = path;
    }
    return it->second;
}

std::optional<ObjectEntry> ObjectTable::EntryForNodeID(uint32_t nodeID) {
    std::lock_guard lock(mutex_);
    if (nodeID < kFirstNodeID || nodeID - kFirstNodeID >= entries_.size())
        return std::nullopt;
    return entries_[nodeID - kFirstNodeID];
}

int16_t ObjectTable::VolumeRefNumFor(uint64_t device) {
    std::lock_guard lock(mutex_);
    for (size_t i = 0; i < devices_.size(); ++i) {
        if (devices_[i] == device)
            return static_cast<int16_t>(-1 - static_cast<int>(i));
    }
    devices_.push_back(device);
    return static_cast<int16_t>(-static_cast<int>(devices_.size()));
}

std::optional<uint64_t> ObjectTable::DeviceForVolumeRefNum(int16_t refNum) {
    std::lock_guard lock(mutex_);
    int index = -1 - refNum;
    if (index < 0 || static_cast<size_t>(index) >= devices_.size())
        return std::nullopt;
    return devices_[static_cast<size_t>(index)];
}

} // namespace basalt::files
