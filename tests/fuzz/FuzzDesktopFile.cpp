// Application .desktop files and the mimeinfo.cache beside them: any bytes give claims or none,
// and every claim names a type and a file.

#include "basalt/types/BLRegistry.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

const std::string kFolder = "/usr/share/applications";

// Every claim names a type and a file, not the folder the files are in.
void CheckClaims(const basalt::types::Claims& claims) {
    for (const auto& [type, file] : claims)
        if (type.empty() || file.empty() || file == kFolder || file == kFolder + "/")
            std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    basalt::types::Claims claims;
    std::istringstream entry(text);
    basalt::types::ReadDesktopEntry(claims, kFolder + "/fuzz.desktop", entry);
    CheckClaims(claims);
    for (const auto& [type, file] : claims)
        if (type.find(';') != std::string::npos)
            std::abort(); // a list's types are split at ';'

    claims.clear();
    std::istringstream cache(text);
    basalt::types::ReadMimeinfoCache(claims, kFolder, cache);
    CheckClaims(claims);
    return 0;
}
