/*
 * File references. A BFRef is an 80-byte opaque value naming a file or folder by device, inode
 * and a path kept in a process-wide table; every use revalidates it, so a reference to a file
 * that was deleted or replaced reports fnfErr instead of reaching another file.
 *
 * How sure that is depends on the file system. Where the kernel gives a file handle
 * (name_to_handle_at) of at most 36 bytes, the reference keeps it, and the handle carries the
 * inode's generation: ext4, xfs, btrfs, tmpfs, f2fs and most local file systems tell a new
 * file from the old one even when the inode number is reused at once. Elsewhere (exfat and
 * most FUSE file systems give no handle; overlay and NFS handles are too long to keep) the
 * reference falls back to device, inode and birth time, which cannot tell a file
 * re-created at the same place within the timestamp granularity, or, where the file system
 * has no birth time, at all. A BFSpec is the
 * older 70-byte form: volume reference number, parent folder id and a name of at most 63 bytes.
 * Names are the file system's bytes; UTF-16 names use the codec of BFNameCodec.h.
 */
#ifndef BASALT_FILES_BFREF_H
#define BASALT_FILES_BFREF_H

#include <basalt/BasaltCore.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct BFRef {
    uint8_t hidden[80];
} BFRef;

#pragma pack(push, 2)
typedef struct BFSpec {
    int16_t vRefNum;
    int32_t parID;
    Str63 name;
} BFSpec;
#pragma pack(pop)

enum {
    bdNamErr = -37,
    dirNFErr = -120,
    nsvErr = -35,
    errBFRefsDifferent = -1420,
    errBFBadRef = -1421
};

/* The child named name (UTF-16) of the folder parent; the child must exist. */
BASALT_EXPORT StatusCode BFMakeBFRefUnicode(const BFRef* parent, BCIndex nameLength,
                                            const UniChar* name, TextEncoding textEncodingHint,
                                            BFRef* newRef);
/* A reference for an existing path given as file-system bytes, NUL-terminated. */
BASALT_EXPORT StatusCode BFPathMakeRef(const uint8_t* path, BFRef* ref, Boolean* isDirectory);
/* The NUL-terminated path of a reference; -2110 when it does not fit. */
BASALT_EXPORT StatusCode BFRefMakePath(const BFRef* ref, uint8_t* path, uint32_t maxPathSize);
/* noErr when both name the same object, errBFRefsDifferent otherwise. */
BASALT_EXPORT StatusCode BFCompareBFRefs(const BFRef* a, const BFRef* b);
BASALT_EXPORT BCURLRef BCURLCreateFromBFRef(BCAllocatorRef allocator, const BFRef* ref);
BASALT_EXPORT Boolean BCURLGetBFRef(BCURLRef url, BFRef* ref);

/* The reference a file spec (BFSpec) names: its folder itself when the name is empty. */
BASALT_EXPORT StatusCode BFSpecMakeBFRef(const BFSpec* spec, BFRef* ref);
/* The BFSpec of an existing object: its volume, its parent's id and its name. */
BASALT_EXPORT StatusCode BFRefMakeBFSpec(const BFRef* ref, BFSpec* spec);

#ifdef __cplusplus
}

#include <optional>
#include <string>

namespace basalt::files {

enum { kBFRefPathTooLongErr = -2110 };

// The path a reference names, after revalidation; the status says why not.
StatusCode PathOfRef(const BFRef& ref, std::string& path);
StatusCode MakeRef(const std::string& path, BFRef& ref, bool* isDirectory = nullptr);

} // namespace basalt::files
#endif

#endif /* BASALT_FILES_BFREF_H */
