#include "FuzzScratch.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

namespace fuzz {
namespace {

struct Scratch {
    std::string path;

    Scratch() {
        std::string pattern = (fs::temp_directory_path() / "kel-fuzz-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            std::abort();
        path = pattern;
        fs::create_directories(path + "/.config");
        setenv("HOME", path.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (path + "/.config").c_str(), 1);
        setenv("XDG_DATA_HOME", (path + "/.local/share").c_str(), 1);
        setenv("KEL_BUNDLE_PATH", KEL_BUILD_BUNDLE_DIR, 1);
        setenv("KEL_BACKEND", "headless", 1);
        unsetenv("DISPLAY");
    }
    ~Scratch() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

} // namespace

const std::string& ScratchFolder() {
    static Scratch scratch;
    return scratch.path;
}

std::string FreshFolder(const std::string& name) {
    const std::string folder = ScratchFolder() + "/" + name;
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    fs::create_directories(folder);
    return folder;
}

void WriteFile(const std::string& path, const uint8_t* data, size_t size) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

} // namespace fuzz

// libFuzzer calls this before the first input: the environment is in place before any library
// code reads it.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::ScratchFolder();
    return 0;
}
