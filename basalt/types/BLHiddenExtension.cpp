#include "basalt/types/BLRegistry.h"

#include <cerrno>
#include <sys/xattr.h>

// Whether a name's extension is hidden is kept in an extended attribute of the file, so it
// travels with the file; a file system without xattrs cannot hide extensions.
extern "C" StatusCode BLSetExtensionHiddenForRef(const BFRef* ref, Boolean hide) {
    if (ref == nullptr)
        return paramErr;
    std::string path;
    if (StatusCode status = basalt::files::PathOfRef(*ref, path))
        return status;
    int result = hide ? ::setxattr(path.c_str(), "user.kel.hide-extension", "1", 1, 0)
                      : ::removexattr(path.c_str(), "user.kel.hide-extension");
    if (result != 0 && !(hide == false && errno == ENODATA))
        return permErr;
    return noErr;
}
