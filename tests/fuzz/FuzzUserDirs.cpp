// Any bytes as a user-dirs.dirs file: whatever it says, a user dir is an absolute path.

#include "basalt/files/BFFindFolder.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const char* key : {"DESKTOP", "DOCUMENTS", "DOWNLOAD", "MUSIC", "PICTURES", "VIDEOS"}) {
        auto dir = basalt::files::UserDirFromText(text, key, "/home/fuzz");
        if (dir && (dir->empty() || dir->front() != '/'))
            std::abort();
    }
    return 0;
}
