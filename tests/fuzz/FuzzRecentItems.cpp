// Any bytes as the shared recently-used list, then one item added to it as a save does: the
// reading must never crash, and a list that cannot be read is left as it was.

#include "basalt/types/BLRegistry.h"
#include "tests/fuzz/FuzzScratchFolder.h"

#include <cstdint>
#include <iterator>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string folder = [] {
        setenv("XDG_DATA_HOME", fuzzing::ScratchFolder().c_str(), 1);
        return fuzzing::ScratchFolder();
    }();
    std::string list = basalt::types::RecentItemsPath();
    fuzzing::WriteScratchFile(list, data, size);
    std::string before(reinterpret_cast<const char*>(data), size);
    if (!basalt::types::AddRecentItem(folder + "/saved file.txt", "text/plain", "fuzz")) {
        std::ifstream in(list, std::ios::binary);
        std::string after((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        if (after != before)
            std::abort();
    }
    return 0;
}
