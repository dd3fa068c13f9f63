#include "kel/foundation/__BCURL.h"

#include "basalt/files/BFFindFolder.h"
#include "basalt/files/BFRef.h"

BCURLRef __BCURL::CreateFromFolderType(int16_t domain, uint32_t folderType, bool create) {
    BFRef folder;
    if (BFFindFolder(domain, folderType, create, &folder) != noErr) {
        return nullptr;
    }
    return BCURLCreateFromBFRef(nullptr, &folder);
}
