#include "basalt/files/BFCatalogInfo.h"

#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFNameCodec.h"
#include "basalt/files/BFObjectTable.h"

#include <algorithm>
#include <dirent.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>

namespace basalt::files {

// Seconds from 1904-01-01 to 1970-01-01.
constexpr int64_t kUnixEpochFrom1904 = 2082844800;

UTCDateTime UTCDateTimeFromUnix(int64_t seconds, uint32_t nanoseconds) {
    uint64_t since1904 = static_cast<uint64_t>(std::max<int64_t>(0, seconds + kUnixEpochFrom1904));
    UTCDateTime date;
    date.highSeconds = static_cast<uint16_t>(since1904 >> 32);
    date.lowSeconds = static_cast<uint32_t>(since1904);
    date.fraction = static_cast<uint16_t>((uint64_t(nanoseconds) << 16) / 1000000000u);
    return date;
}

namespace {

uint32_t CountEntries(const std::string& path) {
    UniqueFd fd = OpenPath(path, O_RDONLY | O_DIRECTORY);
    DIR* dir = fd.Valid() ? ::fdopendir(fd.Release()) : nullptr;
    uint32_t count = 0;
    while (dir != nullptr) {
        dirent* entry = ::readdir(dir);
        if (entry == nullptr)
            break;
        std::string_view name = entry->d_name;
        count += name != "." && name != "..";
    }
    if (dir != nullptr)
        ::closedir(dir);
    return count;
}

bool IsLocked(const std::string& path) {
    UniqueFd fd = OpenPath(path, O_RDONLY | O_NONBLOCK);
    int flags = 0;
    return fd.Valid() && ::ioctl(fd.Get(), FS_IOC_GETFLAGS, &flags) == 0 &&
           (flags & FS_IMMUTABLE_FL) != 0;
}

void FillInfo(const std::string& path, const struct statx& self, BFCatalogInfoBitmap which,
              BFCatalogInfo& info) {
    uint64_t device = makedev(self.stx_dev_major, self.stx_dev_minor);
    bool directory = S_ISDIR(self.stx_mode);
    info = BFCatalogInfo{};
    if (which & kBFCatInfoNodeFlags)
        info.nodeFlags =
            (directory ? kBFNodeIsDirectoryMask : 0) | (IsLocked(path) ? kBFNodeLockedMask : 0);
    info.volume = ObjectTable::Shared().VolumeRefNumFor(device);
    info.nodeID = ObjectTable::Shared().NodeIDFor(device, self.stx_ino, path);
    if (which & kBFCatInfoParentDirID) {
        struct statx parent {};
        std::string parentPath = ParentPath(path);
        if (path != "/" && StatxPath(parentPath, STATX_INO, parent) == 0)
            info.parentDirID = ObjectTable::Shared().NodeIDFor(
                makedev(parent.stx_dev_major, parent.stx_dev_minor), parent.stx_ino, parentPath);
    }
    info.createDate = (self.stx_mask & STATX_BTIME)
                          ? UTCDateTimeFromUnix(self.stx_btime.tv_sec, self.stx_btime.tv_nsec)
                          : UTCDateTimeFromUnix(self.stx_mtime.tv_sec, self.stx_mtime.tv_nsec);
    info.contentModDate = UTCDateTimeFromUnix(self.stx_mtime.tv_sec, self.stx_mtime.tv_nsec);
    info.dataLogicalSize = directory ? 0 : self.stx_size;
    if (which & kBFCatInfoRsrcSizes) {
        ssize_t size = ::lgetxattr(path.c_str(), "user.kel.resources", nullptr, 0);
        info.rsrcLogicalSize = size > 0 ? static_cast<uint64_t>(size) : 0;
    }
    if ((which & kBFCatInfoValence) && directory)
        info.valence = CountEntries(path);
}

} // namespace
} // namespace basalt::files

using namespace basalt::files;

extern "C" StatusCode BFGetCatalogInfo(const BFRef* ref, BFCatalogInfoBitmap whichInfo,
                                       BFCatalogInfo* info, HFSUniStr255* outName, BFSpec* spec,
                                       BFRef* parentRef) {
    if (ref == nullptr)
        return paramErr;
    std::string path;
    if (StatusCode status = PathOfRef(*ref, path))
        return status;
    struct statx self {};
    if (StatxPath(path, STATX_BASIC_STATS | STATX_BTIME, self) != 0)
        return fnfErr;
    if (info != nullptr)
        FillInfo(path, self, whichInfo, *info);
    if (outName != nullptr) {
        std::u16string name = path == "/" ? u"/" : DecodeName(LeafName(path));
        outName->length = static_cast<uint16_t>(std::min<size_t>(name.size(), 255));
        std::copy_n(name.begin(), outName->length, outName->unicode);
    }
    if (spec != nullptr) {
        if (StatusCode status = BFRefMakeBFSpec(ref, spec))
            return status;
    }
    if (parentRef != nullptr)
        return MakeRef(ParentPath(path), *parentRef);
    return noErr;
}
