#pragma once

#include <basalt/BasaltCore.h>

// URLs of the platform's special folders.
struct __BCURL {
    // Owned by the caller; null if the folder cannot be found (or made, with create).
    static BCURLRef CreateFromFolderType(int16_t domain, uint32_t folderType, bool create);
};
