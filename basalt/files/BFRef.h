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
 * has no birth time, at all. The C declarations are in the client header
 * <basalt/BasaltFiles.h>; UTF-16 names use the codec of BFNameCodec.h.
 */
#ifndef BASALT_FILES_BFREF_H
#define BASALT_FILES_BFREF_H

#include <basalt/BasaltFiles.h>

#ifdef __cplusplus

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
