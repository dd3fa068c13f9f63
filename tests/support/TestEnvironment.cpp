#include "tests/support/TestEnvironment.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace keltest {
namespace {

std::filesystem::path& ScratchRoot() {
    static std::filesystem::path root;
    return root;
}

class ScratchEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "kel-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot make a scratch folder");
        ScratchRoot() = pattern;
        const auto home = ScratchRoot() / "home";
        std::filesystem::create_directories(home);
        setenv("HOME", home.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (home / ".config").c_str(), 1);
        setenv("XDG_DATA_HOME", (home / ".local/share").c_str(), 1);
        setenv("XDG_CACHE_HOME", (home / ".cache").c_str(), 1);
        setenv("KEL_BUNDLE_PATH", KEL_BUILD_BUNDLE_DIR, 1);
        setenv("KEL_BACKEND", "headless", 1);
        unsetenv("DISPLAY");
        std::filesystem::current_path(ScratchRoot());
    }

    void TearDown() override {
        std::error_code ignored;
        std::filesystem::current_path("/", ignored);
        std::filesystem::permissions(ScratchRoot(), std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ignored);
        RestoreAccess(ScratchRoot());
        std::filesystem::remove_all(ScratchRoot(), ignored);
    }

private:
    // Tests make folders without read or search permission; give them back so cleanup works.
    static void RestoreAccess(const std::filesystem::path& root) {
        std::error_code ec;
        for (auto it = std::filesystem::recursive_directory_iterator(
                 root, std::filesystem::directory_options::skip_permission_denied, ec);
             !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec)) {
            if (it->is_directory(ec) && !it->is_symlink(ec))
                std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                             std::filesystem::perm_options::add, ec);
        }
    }
};

} // namespace

std::filesystem::path ScratchHome() {
    return ScratchRoot() / "home";
}

std::filesystem::path MakeScratchFolder(const std::string& hint) {
    static std::atomic<int> counter{0};
    auto folder = ScratchRoot() / "work" / (hint + "-" + std::to_string(++counter));
    std::filesystem::create_directories(folder);
    return folder;
}

void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void InstallScratchEnvironment() {
    ::testing::AddGlobalTestEnvironment(new ScratchEnvironment);
}

} // namespace keltest
