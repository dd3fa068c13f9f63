#pragma once

// A folder of the fuzzing process's own under /tmp, made on first use and removed at exit,
// for targets whose parsers read files.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace fuzzing {

inline const std::string& ScratchFolder() {
    // Never destroyed: the exit handler that removes the folder runs after static destructors.
    static const std::string* folder = [] {
        char pattern[] = "/tmp/kel-fuzz-XXXXXX";
        if (::mkdtemp(pattern) == nullptr)
            std::abort();
        auto* made = new std::string(pattern);
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all(ScratchFolder(), ignored);
        });
        return made;
    }();
    return *folder;
}

inline void WriteScratchFile(const std::string& path, const uint8_t* data, size_t size) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

} // namespace fuzzing
