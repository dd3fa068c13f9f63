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

#include "ListingBaseline.h"
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

using namespace listingbaseline;

namespace {

constexpr int kRuns = 7;
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
