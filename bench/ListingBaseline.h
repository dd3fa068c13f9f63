#pragma once

// What the listing benchmarks share: test folders made quickly from hard links, the raw
// baseline (getdents64 for the names, an ICU sort key for each, a sort by key), and the
// process's resident memory.

#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeService.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace listingbaseline {

constexpr int kLinksPerFile = 50000;
const char* const kExtensions[] = {".txt", ".jpg", ".pdf", ".png", ".c", ".mp3", ".html", ""};

struct Dirent64 {
    uint64_t d_ino;
    int64_t d_off;
    unsigned short d_reclen;
    unsigned char d_type;
    char d_name[];
};

inline std::string MakeFolder(const std::string& base, int count) {
    std::string path = base + "/listing-" + std::to_string(count);
    if (std::filesystem::exists(path + "/.complete"))
        return path;
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(path);
    int dir = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
    std::vector<std::string> bases;
    for (int i = 0; i < count; ++i) {
        std::string name = "Document " + std::to_string(i) + kExtensions[i % 8];
        if (i % 1000 == 999) {
            ::mkdirat(dir, name.c_str(), 0755);
            continue;
        }
        size_t kind = static_cast<size_t>(i % 8);
        if (bases.size() <= kind || i % kLinksPerFile < 8) {
            int fd = ::openat(dir, name.c_str(), O_CREAT | O_WRONLY, 0644);
            ::close(fd);
            if (bases.size() <= kind)
                bases.push_back(name);
            else
                bases[kind] = name;
            continue;
        }
        ::linkat(dir, bases[kind].c_str(), dir, name.c_str(), 0);
    }
    ::close(dir);
    std::ofstream(path + "/.complete") << "made\n";
    return path;
}

inline double Seconds(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

using Key = std::vector<uint8_t>;

inline Key CollationKey(const std::u16string& text) {
    Key key(text.size() * 4 + 16);
    auto* chars = reinterpret_cast<const UniChar*>(text.data());
    BCIndex needed =
        UCGetCollationKey(kUCCollateStandardOptions, chars, static_cast<BCIndex>(text.size()),
                          key.data(), static_cast<BCIndex>(key.size()));
    if (needed > static_cast<BCIndex>(key.size())) {
        key.resize(static_cast<size_t>(needed));
        UCGetCollationKey(kUCCollateStandardOptions, chars, static_cast<BCIndex>(text.size()),
                          key.data(), needed);
    }
    key.resize(static_cast<size_t>(needed));
    return key;
}

inline size_t Baseline(const std::string& path) {
    int fd = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
    std::vector<Key> keys;
    alignas(Dirent64) char buffer[64 * 1024];
    for (long got; (got = ::syscall(SYS_getdents64, fd, buffer, sizeof buffer)) > 0;) {
        for (long at = 0; at < got;) {
            auto* entry = reinterpret_cast<Dirent64*>(buffer + at);
            at += entry->d_reclen;
            if (entry->d_name[0] != '.')
                keys.push_back(CollationKey(basalt::files::DisplayName(entry->d_name)));
        }
    }
    ::close(fd);
    std::sort(keys.begin(), keys.end());
    return keys.size();
}

inline long ResidentBytes() {
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * ::sysconf(_SC_PAGESIZE);
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace listingbaseline
