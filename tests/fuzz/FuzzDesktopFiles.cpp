// Any bytes as a .desktop file and as a mimeinfo.cache: every claim names a type and a file in
// the applications folder, and a list's types are split at ';'.

#include "basalt/types/BLRegistry.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const std::string& type : basalt::types::DesktopFileTypes(text)) {
        if (type.empty() || type.find(';') != std::string::npos)
            std::abort();
    }
    for (const auto& [type, application] : basalt::types::MimeInfoCacheClaims(text)) {
        if (type.empty() || application.empty() || application.find('/') != std::string::npos)
            std::abort();
    }
    return 0;
}
