// Listing benchmark: the node service's listing of a large folder against a raw baseline,
// measured in the same run.
//
//   baseline: getdents64 for the names, an ICU sort key for each, a sort by key
//   service:  NewNodeIterator and walk, visibility (what a filter's CanSee asks), "asty" against
//             a type list and the container test (what CanSelect in mode 2 asks), a sort by the
//             collation key of "dnam"
//
// Usage: bench_listing FOLDER. Test folders of 10,000 and 100,000 entries are made in FOLDER
// (hard links, so that making them is quick). The last line reads "ratio at 100000: R", R the
// median over the runs of service time / baseline time.

#include "basalt/files/BFNameCodec.h"
#include "basalt/nodes/NodeIterator.h"
#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeService.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kRuns = 7;
constexpr int kLinksPerFile = 50000;
const char* const kExtensions[] = {".txt", ".jpg", ".pdf", ".png", ".c", ".mp3", ".html", ""};

struct Dirent64 {
    uint64_t d_ino;
    int64_t d_off;
    unsigned short d_reclen;
    unsigned char d_type;
    char d_name[];
};

std::string MakeFolder(const std::string& base, int count) {
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

double Seconds(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

using Key = std::vector<uint8_t>;

Key CollationKey(const std::u16string& text) {
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

size_t Baseline(const std::string& path) {
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

struct Listed {
    NodeRef node;
    const uint8_t* key;
    BCIndex keyLength;
};

size_t Service(NodeRef folder, std::vector<Listed>& listed) {
    const FourCharCode types[] = {NodeCode("TEXT"), NodeCode("JPEG")};
    NodeIteratorRef iterator = nullptr;
    NewNodeIterator(folder, &iterator, 0, false);
    size_t selectable = 0;
    for (NodeRef child = NodeIteratorFirst(iterator); child != nullptr;
         child = NodeIteratorNext(iterator)) {
        if (!NodeIsVisible(child)) {
            DisposeNode(child);
            continue;
        }
        FourCharCode type = 0;
        GetNodePropertyAsFourCharCode(child, NodeCode("asty"), &type, 0);
        selectable += NodeIsContainer(child) ||
                      std::find(std::begin(types), std::end(types), type) != std::end(types);
        Listed item{child, nullptr, 0};
        NodeGetSortKey(child, NodeCode("dnam"), &item.key, &item.keyLength);
        listed.push_back(item);
    }
    DisposeNodeIterator(iterator);
    std::sort(listed.begin(), listed.end(), [](const Listed& a, const Listed& b) {
        int order =
            std::memcmp(a.key, b.key, static_cast<size_t>(std::min(a.keyLength, b.keyLength)));
        return order != 0 ? order < 0 : a.keyLength < b.keyLength;
    });
    return selectable;
}

long ResidentBytes() {
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * ::sysconf(_SC_PAGESIZE);
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Measure(const std::string& folderPath, int count) {
    std::u16string text = basalt::files::DecodeName(folderPath);
    NodeRef folder = GetPathNameAsNode(static_cast<BCIndex>(text.size()),
                                       reinterpret_cast<const UniChar*>(text.data()));
    std::vector<double> ratios;
    for (int run = 0; run < kRuns; ++run) {
        auto start = std::chrono::steady_clock::now();
        size_t names = Baseline(folderPath);
        double baseline = Seconds(start);

        std::vector<Listed> listed;
        listed.reserve(static_cast<size_t>(count));
        long before = ResidentBytes();
        start = std::chrono::steady_clock::now();
        size_t selectable = Service(folder, listed);
        double service = Seconds(start);
        long grown = ResidentBytes() - before;
        ratios.push_back(service / baseline);
        std::printf("%d entries, run %d: baseline %.1f ms (%zu names), service %.1f ms "
                    "(%zu listed, %zu selectable), ratio %.2f\n",
                    count, run + 1, baseline * 1e3, names, service * 1e3, listed.size(), selectable,
                    service / baseline);
        // Later runs reuse the memory the first one gave back, so only the first one shows it.
        if (run == 0 && !listed.empty())
            std::printf("%d entries: memory per listed node %ld bytes\n", count,
                        grown / static_cast<long>(listed.size()));
        // Giving the nodes back makes every run start cold.
        for (const Listed& item : listed)
            DisposeNode(item.node);
    }
    DisposeNode(folder);
    return Median(ratios);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    InitializeCatalog();
    std::string base = std::filesystem::absolute(argv[1]).lexically_normal().string();
    double ratio = 0;
    for (int count : {10000, 100000}) {
        std::string folder = MakeFolder(base, count);
        ratio = Measure(folder, count);
        std::printf("median ratio at %d: %.2f\n", count, ratio);
    }
    std::printf("ratio at 100000: %.2f\n", ratio);
    return 0;
}
