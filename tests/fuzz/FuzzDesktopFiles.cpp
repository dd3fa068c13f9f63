// Any bytes as a .desktop file and as a mimeinfo.cache.

#include "basalt/types/BLRegistry.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const std::string& type : basalt::types::DesktopFileTypes(text)) {
        if (type.empty())
            std::abort();
    }
    for (const auto& [type, application] : basalt::types::MimeInfoCacheClaims(text)) {
        if (type.empty() || application.empty())
            std::abort();
    }
    return 0;
}
