// Any bytes as the globs2, subclasses and aliases files of a mime folder; every line of the
// input is then typed as a file name and its type's parents followed.

#include "basalt/types/MimeDatabase.h"
#include "tests/fuzz/FuzzScratchFolder.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string folder = fuzzing::ScratchFolder() + "/mime";
    for (const char* file : {"/globs2", "/subclasses", "/aliases"})
        fuzzing::WriteScratchFile(folder + file, data, size);
    basalt::types::MimeDatabase database({folder});
    std::string_view text(reinterpret_cast<const char*>(data), size);
    int lines = 0;
    for (size_t at = 0; at <= text.size() && lines < 32; ++lines) {
        size_t end = std::min(text.find('\n', at), text.size());
        std::string_view name = text.substr(at, end - at);
        std::string type = database.TypeForName(name);
        if (type.empty())
            std::abort();
        database.ConformsTo(type, "text/plain");
        database.PreferredExtension(name);
        at = end + 1;
    }
    return 0;
}
