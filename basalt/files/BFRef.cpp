#include "basalt/files/BFRef.h"

#include "basalt/files/BFLongPath.h"
#include "basalt/files/BFNameCodec.h"
#include "basalt/files/BFObjectTable.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/sysmacros.h>

namespace basalt::files {
namespace {

constexpr uint32_t kRefMagic = 0x62667266; // "bfrf"

constexpr size_t kHandleCapacity = 36;

// The layout behind the opaque bytes.
struct RefData {
    uint32_t magic;
    uint32_t nodeID;
    uint64_t device;
    uint64_t inode;
    // Inode numbers are reused at once; the birth time tells a new file at the old place, but
    // only to the file system's timestamp granularity.
    int64_t birthSeconds;
    uint32_t birthNanoseconds;
    // The kernel's file handle, which carries the inode's generation; length 0 when the file
    // system gives none or one longer than fits.
    int32_t handleType;
    uint8_t handleLength;
    uint8_t padding[3];
    uint8_t handle[kHandleCapacity];
};
static_assert(sizeof(RefData) == sizeof(BFRef));

struct FileHandle {
    int32_t type = 0;
    uint8_t length = 0;
    uint8_t bytes[kHandleCapacity] = {};
    bool operator==(const FileHandle& other) const {
        return type == other.type && length == other.length &&
               std::memcmp(bytes, other.bytes, length) == 0;
    }
};

// The file handle of path, following a final link as StatxPath does; none when the file
// system has no handles (EOPNOTSUPP) or gives one too long to keep.
std::optional<FileHandle> HandleOf(const std::string& path) {
    struct {
        file_handle header;
        unsigned char bytes[MAX_HANDLE_SZ];
    } buffer{};
    buffer.header.handle_bytes = MAX_HANDLE_SZ;
    int mountID = 0;
    int result = -1;
    if (path.size() < PATH_MAX - 1) {
        result = ::name_to_handle_at(AT_FDCWD, path.c_str(), &buffer.header, &mountID,
                                     AT_SYMLINK_FOLLOW);
    } else if (ParentAndLeaf at = OpenParent(path); at.parent.Valid()) {
        result = ::name_to_handle_at(at.parent.Get(), at.leaf.c_str(), &buffer.header, &mountID,
                                     AT_SYMLINK_FOLLOW);
    }
    if (result != 0 || buffer.header.handle_bytes > kHandleCapacity)
        return std::nullopt;
    FileHandle handle;
    handle.type = buffer.header.handle_type;
    handle.length = static_cast<uint8_t>(buffer.header.handle_bytes);
    std::memcpy(handle.bytes, buffer.header.f_handle, handle.length);
    return handle;
}

std::optional<FileHandle> StoredHandle(const RefData& data) {
    if (data.handleLength == 0 || data.handleLength > kHandleCapacity)
        return std::nullopt;
    FileHandle handle;
    handle.type = data.handleType;
    handle.length = data.handleLength;
    std::memcpy(handle.bytes, data.handle, handle.length);
    return handle;
}

// Whether the object now at the reference's place is the one it was made for. The handle
// decides where both sides have one; the birth time is the fallback.
bool SameObject(const RefData& data, const struct statx& info, const std::string& path) {
    if (makedev(info.stx_dev_major, info.stx_dev_minor) != data.device ||
        info.stx_ino != data.inode)
        return false;
    if (std::optional<FileHandle> stored = StoredHandle(data)) {
        if (std::optional<FileHandle> now = HandleOf(path))
            return *now == *stored;
    }
    bool reborn = (info.stx_mask & STATX_BTIME) && (data.birthSeconds | data.birthNanoseconds) &&
                  (info.stx_btime.tv_sec != data.birthSeconds ||
                   info.stx_btime.tv_nsec != data.birthNanoseconds);
    return !reborn;
}

StatusCode StatusForErrno(int error) {
    switch (error) {
    case 0:
        return noErr;
    case EACCES:
    case EPERM:
        return permErr;
    case ENAMETOOLONG:
        return bdNamErr;
    default:
        return fnfErr;
    }
}

RefData Unpack(const BFRef& ref) {
    RefData data;
    std::memcpy(&data, ref.hidden, sizeof data);
    return data;
}

} // namespace

StatusCode MakeRef(const std::string& path, BFRef& ref, bool* isDirectory) {
    struct statx info {};
    if (int error = StatxPath(path, STATX_INO | STATX_TYPE | STATX_BTIME, info))
        return StatusForErrno(error);
    RefData data{};
    if (info.stx_mask & STATX_BTIME) {
        data.birthSeconds = info.stx_btime.tv_sec;
        data.birthNanoseconds = info.stx_btime.tv_nsec;
    }
    data.magic = kRefMagic;
    data.device = makedev(info.stx_dev_major, info.stx_dev_minor);
    data.inode = info.stx_ino;
    if (std::optional<FileHandle> handle = HandleOf(path)) {
        data.handleType = handle->type;
        data.handleLength = handle->length;
        std::memcpy(data.handle, handle->bytes, handle->length);
    }
    data.nodeID = ObjectTable::Shared().NodeIDFor(data.device, data.inode, path);
    std::memcpy(ref.hidden, &data, sizeof data);
    if (isDirectory != nullptr)
        *isDirectory = S_ISDIR(info.stx_mode);
    return noErr;
}

StatusCode PathOfRef(const BFRef& ref, std::string& path) {
    RefData data = Unpack(ref);
    if (data.magic != kRefMagic)
        return errBFBadRef;
    auto entry = ObjectTable::Shared().EntryForNodeID(data.nodeID);
    if (!entry || entry->device != data.device || entry->inode != data.inode)
        return errBFBadRef;
    struct statx info {};
    if (int error = StatxPath(entry->path, STATX_INO | STATX_BTIME, info))
        return StatusForErrno(error);
    // A different object at the old place means ours was moved or deleted.
    if (!SameObject(data, info, entry->path))
        return fnfErr;
    path = entry->path;
    return noErr;
}

} // namespace basalt::files

using namespace basalt::files;

extern "C" {

StatusCode BFMakeBFRefUnicode(const BFRef* parent, BCIndex nameLength, const UniChar* name,
                              TextEncoding, BFRef* newRef) {
    if (parent == nullptr || newRef == nullptr || nameLength < 0 ||
        (nameLength > 0 && name == nullptr))
        return paramErr;
    std::string folder;
    if (StatusCode status = PathOfRef(*parent, folder))
        return status;
    std::string leaf = EncodeName(std::u16string_view(reinterpret_cast<const char16_t*>(name),
                                                      static_cast<size_t>(nameLength)));
    if (leaf.empty() || leaf.find('/') != std::string::npos || leaf.size() > 255)
        return bdNamErr;
    if (leaf == ".")
        return MakeRef(folder, *newRef);
    if (leaf == "..")
        return MakeRef(ParentPath(folder), *newRef);
    return MakeRef(JoinPath(folder, leaf), *newRef);
}

StatusCode BFPathMakeRef(const uint8_t* path, BFRef* ref, Boolean* isDirectory) {
    if (path == nullptr || ref == nullptr || path[0] != '/')
        return paramErr;
    std::string text(reinterpret_cast<const char*>(path));
    while (text.size() > 1 && text.back() == '/')
        text.pop_back();
    bool directory = false;
    StatusCode status = MakeRef(text, *ref, &directory);
    if (status == noErr && isDirectory != nullptr)
        *isDirectory = directory;
    return status;
}

StatusCode BFRefMakePath(const BFRef* ref, uint8_t* path, uint32_t maxPathSize) {
    if (ref == nullptr || path == nullptr || maxPathSize == 0)
        return paramErr;
    std::string text;
    if (StatusCode status = PathOfRef(*ref, text))
        return status;
    if (text.size() + 1 > maxPathSize)
        return kBFRefPathTooLongErr;
    std::memcpy(path, text.c_str(), text.size() + 1);
    return noErr;
}

StatusCode BFCompareBFRefs(const BFRef* a, const BFRef* b) {
    if (a == nullptr || b == nullptr)
        return paramErr;
    std::string pathA, pathB;
    if (StatusCode status = PathOfRef(*a, pathA))
        return status;
    if (StatusCode status = PathOfRef(*b, pathB))
        return status;
    RefData dataA = Unpack(*a), dataB = Unpack(*b);
    std::optional<FileHandle> handleA = StoredHandle(dataA), handleB = StoredHandle(dataB);
    bool same = dataA.device == dataB.device && dataA.inode == dataB.inode &&
                (!handleA || !handleB || *handleA == *handleB);
    return same ? StatusCode(noErr) : StatusCode(errBFRefsDifferent);
}

BCURLRef BCURLCreateFromBFRef(BCAllocatorRef allocator, const BFRef* ref) {
    std::string path;
    if (ref == nullptr || PathOfRef(*ref, path) != noErr)
        return nullptr;
    struct statx info {};
    bool directory = StatxPath(path, STATX_TYPE, info) == 0 && S_ISDIR(info.stx_mode);
    return BCURLCreateFromFileSystemRepresentation(allocator,
                                                   reinterpret_cast<const uint8_t*>(path.data()),
                                                   static_cast<BCIndex>(path.size()), directory);
}

Boolean BCURLGetBFRef(BCURLRef url, BFRef* ref) {
    if (url == nullptr || ref == nullptr)
        return false;
    std::string buffer(64 * 1024, '\0');
    if (!BCURLGetFileSystemRepresentation(url, true, reinterpret_cast<uint8_t*>(buffer.data()),
                                          static_cast<BCIndex>(buffer.size())))
        return false;
    return BFPathMakeRef(reinterpret_cast<const uint8_t*>(buffer.c_str()), ref, nullptr) == noErr;
}

} // extern "C"
