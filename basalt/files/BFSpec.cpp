#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFObjectTable.h"
#include "basalt/files/BFRef.h"
#include "basalt/files/BFVolumes.h"

#include <cstring>
#include <sys/sysmacros.h>

using namespace basalt::files;

namespace {

// The parent id that a volume's own BFSpec carries.
constexpr int32_t kVolumeParentID = 1;

uint64_t DeviceOf(const struct statx& info) {
    return makedev(info.stx_dev_major, info.stx_dev_minor);
}

} // namespace

extern "C" {

StatusCode BFRefMakeBFSpec(const BFRef* ref, BFSpec* spec) {
    if (ref == nullptr || spec == nullptr)
        return paramErr;
    std::string path;
    if (StatusCode status = PathOfRef(*ref, path))
        return status;
    struct statx self {
    }, parent{};
    std::string parentPath = ParentPath(path);
    if (StatxPath(path, STATX_INO, self) != 0 || StatxPath(parentPath, STATX_INO, parent) != 0)
        return fnfErr;
    BFSpec result{};
    result.vRefNum = ObjectTable::Shared().VolumeRefNumFor(DeviceOf(self));
    if (path == "/" || DeviceOf(parent) != DeviceOf(self)) {
        result.parID = kVolumeParentID;
    } else {
        result.parID = static_cast<int32_t>(
            ObjectTable::Shared().NodeIDFor(DeviceOf(parent), parent.stx_ino, parentPath));
        std::string leaf = LeafName(path);
        if (leaf.size() > 63)
            return bdNamErr;
        result.name[0] = static_cast<unsigned char>(leaf.size());
        std::memcpy(result.name + 1, leaf.data(), leaf.size());
    }
    *spec = result;
    return noErr;
}

StatusCode BFSpecMakeBFRef(const BFSpec* spec, BFRef* ref) {
    if (spec == nullptr || ref == nullptr || spec->name[0] > 63)
        return paramErr;
    std::string folder;
    if (spec->parID == kVolumeParentID) {
        auto device = ObjectTable::Shared().DeviceForVolumeRefNum(spec->vRefNum);
        auto mountPoint = device ? MountPointOfDevice(*device) : std::nullopt;
        if (!mountPoint)
            return nsvErr;
        return MakeRef(*mountPoint, *ref);
    }
    auto entry = ObjectTable::Shared().EntryForNodeID(static_cast<uint32_t>(spec->parID));
    if (!entry)
        return dirNFErr;
    std::string name(reinterpret_cast<const char*>(spec->name + 1), spec->name[0]);
    if (name.find('/') != std::string::npos)
        return bdNamErr;
    return MakeRef(name.empty() ? entry->path : JoinPath(entry->path, name), *ref);
}

} // extern "C"
