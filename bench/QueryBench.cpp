#include "QueryBench.h"

#include "basalt/nodes/NodeEvents.h"
#include "basalt/nodes/NodeListing.h"
#include "basalt/nodes/NodeQueries.h"
#include "basalt/types/BUTypes.h"
#include "kel/nodes/TKelNodeQuery.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace kelbench {
namespace {

using Clock = std::chrono::steady_clock;

// 10 x 10 x 10 folders of 100 files each; one file in each leaf folder has "Report" in its name.
constexpr int kFanOut = 10;
constexpr int kFilesPerFolder = 100;

// Files are hard links to one original per area, which keeps making the tree quick and each
// original below the file system's limit of links.
bool FillLeaf(const std::string& folder, const std::string& original) {
    for (int i = 0; i < kFilesPerFolder; ++i) {
        std::string name = i == 50 ? "Quarterly Report " + std::to_string(i) + ".pdf"
                                   : "Document " + std::to_string(i) + ".txt";
        if (::link(original.c_str(), (folder + "/" + name).c_str()) != 0)
            return false;
    }
    return true;
}

} // namespace

std::string MakeQueryTree(const std::string& base) {
    std::string root = base + "/query-tree";
    if (std::filesystem::exists(root + "/.complete"))
        return root;
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root);
    for (int a = 0; a < kFanOut; ++a) {
        std::string area = root + "/Area " + std::to_string(a);
        std::filesystem::create_directories(area);
        std::string original = area + "/.original";
        std::ofstream(original) << "x";
        for (int b = 0; b < kFanOut; ++b) {
            for (int c = 0; c < kFanOut; ++c) {
                std::string leaf =
                    area + "/Project " + std::to_string(b) + "/Part " + std::to_string(c);
                std::filesystem::create_directories(leaf);
                if (!FillLeaf(leaf, original)) {
                    std::fprintf(stderr, "could not make the files of %s\n", leaf.c_str());
                    std::exit(1);
                }
            }
        }
    }
    std::ofstream(root + "/.complete") << "made\n";
    return root;
}

namespace {

size_t RawWalk(int folder) {
    size_t entries = 0;
    alignas(basalt::nodes::LinuxDirent64) char buffer[32 * 1024];
    std::vector<std::string> subfolders;
    for (long got; (got = ::syscall(SYS_getdents64, folder, buffer, sizeof buffer)) > 0;) {
        for (long at = 0; at < got;) {
            auto* entry = reinterpret_cast<basalt::nodes::LinuxDirent64*>(buffer + at);
            at += entry->d_reclen;
            if (entry->d_name[0] == '.')
                continue;
            ++entries;
            if (entry->d_type == DT_DIR)
                subfolders.emplace_back(entry->d_name);
        }
    }
    for (const std::string& name : subfolders) {
        int fd = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (fd >= 0) {
            entries += RawWalk(fd);
            ::close(fd);
        }
    }
    return entries;
}

} // namespace

double RawWalkMs(const std::string& root) {
    auto start = Clock::now();
    int fd = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    RawWalk(fd);
    ::close(fd);
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

namespace {

std::atomic<int64_t> gFirstDelivery{0};
std::atomic<NodeRef> gHits{nullptr};

// The first delivery that holds hits: a new search first tells that the old hits are gone.
void NoteDelivery(NodeEventQueueRef queue) {
    int64_t now = Clock::now().time_since_epoch().count();
    BCIndex count = 0;
    NodeGetChildrenCount(gHits.load(), &count);
    int64_t none = 0;
    if (count > 0)
        gFirstDelivery.compare_exchange_strong(none, now);
    NodeEventRef event = nullptr;
    while (NodeEventBlockUntilNextEventNew(&event, queue))
        NodeEventRelease(event);
}

BCArrayRef Strings(const std::vector<std::string>& items) {
    BCMutableArrayRef array = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
    for (const std::string& item : items) {
        BCStringRef text = basalt::types::MakeString(item);
        BCArrayAppendValue(array, text);
        BCRelease(text);
    }
    return array;
}

struct OneSearch {
    double firstMs;
    double endMs;
    size_t hits;
};

// The search the browser's field makes for "report", over the tree, in the service's order.
OneSearch Search(NodeRef query, NodeRef hits, BCStringRef text, BCArrayRef scope) {
    BCArrayRef attributes = Strings({"kBMItemDisplayName", "kBMItemFSContentChangeDate"});
    gFirstDelivery = 0;
    auto start = Clock::now();
    NodeSetVirtualQuery(query, 6, reinterpret_cast<const UniChar*>(u"report"), text, attributes,
                        nullptr, 25, 100, 1000000, 500, 25, 500, scope, 0);
    while (NodeQueryIsGathering(query))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    double endMs = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    BCRelease(attributes);
    BCIndex count = 0;
    NodeGetChildrenCount(hits, &count);
    double firstMs = gFirstDelivery == 0
                         ? endMs
                         : std::chrono::duration<double, std::milli>(
                               Clock::duration(gFirstDelivery.load()) - start.time_since_epoch())
                               .count();
    return {firstMs, endMs, static_cast<size_t>(count)};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

QueryBenchResult MeasureNameQuery(const std::string& baseFolder, int runs) {
    InitializeCatalog();
    std::string root = MakeQueryTree(baseFolder);
    BCStringRef typed = basalt::types::MakeString("report");
    BCStringRef text = CreateSearchQueryString(typed, nullptr);
    BCArrayRef scope = Strings({root});
    BCStringRef idle = basalt::types::MakeString("false");
    NodeRef query = nullptr;
    NodeCreateNewVirtualQueryNode(0, nullptr, idle, nullptr, nullptr, 25, 100, 1000000, 500, 25,
                                  500, scope, 0, &query);
    NodeRef hits = nullptr;
    NodeFollowAlias(query, false, &hits);
    gHits = hits;
    NodeEventQueueRef queue = nullptr;
    NodeEventNewEventQueue(NoteDelivery, &queue);
    NodeNotificationClient client{&queue, queue, NoteDelivery};
    NodeRegisterChildChangedNotification(hits, &client, 0);

    RawWalkMs(root); // warms the caches for both
    std::vector<double> first, walk, raw;
    QueryBenchResult result;
    for (int run = 0; run < runs; ++run) {
        raw.push_back(RawWalkMs(root));
        OneSearch search = Search(query, hits, text, scope);
        first.push_back(search.firstMs);
        walk.push_back(search.endMs);
        result.hits = search.hits;
        std::printf(
            "search run %d: first hits %.1f ms, walk %.1f ms (%zu hits), raw walk %.1f ms\n",
            run + 1, search.firstMs, search.endMs, search.hits, raw.back());
    }
    NodeUnRegisterChildChangedNotification(hits, &queue);
    NodeEventDisposeEventQueue(queue);
    DisposeNode(hits);
    DisposeNode(query);
    for (BCTypeRef object : {BCTypeRef(typed), BCTypeRef(text), BCTypeRef(scope), BCTypeRef(idle)})
        BCRelease(object);
    result.firstHitsMs = Median(first);
    result.walkMs = Median(walk);
    result.rawWalkMs = Median(raw);
    result.searchRatio = result.walkMs / result.rawWalkMs;
    return result;
}

} // namespace kelbench
