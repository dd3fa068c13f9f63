// Browser benchmark: the file browser over a large folder against the raw listing baseline,
// measured in the same run, in a headless 800x600 window.
//
//   list / column ratio: SetTargetPath on a folder of 100,000 entries until the first frame is
//                        painted with the rows sorted by name, over the baseline's time
//   frame ratio:         one frame after a jump to a random scroll position at 100,000 rows,
//                        over the same at 100 rows
//   bytes per row:       resident memory growth per listed entry, nodes included, after a
//                        small folder was shown once so that what any first frame loads
//                        (fonts, icons, code) is not counted against the rows, and with the
//                        heap's free memory given back first
//   first hits / search: a name query over a tree of 100,000 files, to its first hits and to the
//                        end of its walk, against a raw recursive walk (see QueryBench.h)
//
// Usage: bench_browser FOLDER. The folders are made in FOLDER. Every figure is a median of 5.

#include "GridBrowserFrame.h"
#include "ListingBaseline.h"
#include "QueryBench.h"
#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/nodes/TNodePathHelper.h"

#include <cstdio>
#include <malloc.h>
#include <memory>

using namespace listingbaseline;
using basalt::headless::HeadlessDriver;

namespace {

constexpr int kRuns = 5;

// The browser's dialog, which has nothing to say here.
class QuietObserver : public INodeBrowserControlObserver {
public:
    void NodeBrowserControlNodeOpen(TNodeBrowserControl&, TKelNode&) override {}
    void NodeBrowserControlNodeOpenDone(TNodeBrowserControl&, TKelNode&) override {}
    void NodeBrowserControlTargetChanged(TNodeBrowserControl&, TKelNode&) override {}
    void NodeBrowserControlViewRootChanged(TNodeBrowserControl&, TKelNode&) override {}
    void NodeBrowserControlSelectionChanged(TNodeBrowserControl&) override {}
    void NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl&, TKelNode&) override {}
    bool NodeBrowserControlDrawPreview(TNodeBrowserControl&, TKelNode&, TRect&) override {
        return false;
    }
    bool NodeBrowserControlIsPreviewAllowed() override { return false; }
    void NodeBrowserControlHandleError(TNodeBrowserControl&, TKelNode&, long) override {}
    void NodeBrowserControlViewStyleChanged(unsigned long) override {}
    void NodeBrowserControlBackForwardSnapshotChanged(long, long) override {}
    bool NodeBrowserControlWantsDisclosureTrianglesInListView() override { return true; }
};

class Bench {
public:
    Bench() {
        const Rect content{40, 40, 640, 840};
        CreateNewWindow(kDocumentWindowClass, 0, &content, &window);
        ShowWindow(window);
        filter = std::make_unique<TNodeFilter>(client, 0, NodeFilterMaskSet{}, nullptr, 0);
    }
    ~Bench() {
        browser.reset();
        DisposeWindow(window);
    }

    // Shows the folder in a new browser of the style; seconds to the first painted frame.
    double Open(const std::string& folder, unsigned long style) {
        browser.reset();
        HeadlessDriver::RunUntilIdle();
        TNodePathHelper helper(NodeAt(folder).PeekNodeRef());
        TKelNodeArray path = helper.NodePath();
        const auto start = std::chrono::steady_clock::now();
        const Rect bounds{0, 0, 600, 800};
        ControlRef control = nullptr;
        CreateGridBrowserControl(window, &bounds, style, &control);
        browser = std::make_unique<TNodeBrowserControl>(nullptr, style, *filter, observer, control);
        browser->SetTargetPath(path, TKelNode());
        HeadlessDriver::RunUntilIdle();
        return Seconds(start);
    }

    WindowRef Window() const { return window; }
    ControlRef Control() const { return browser->Control(); }

    size_t Rows() const { return browser->Containers().empty() ? 0 : RowsOfTarget(); }

private:
    size_t RowsOfTarget() const { return browser->Containers().back()->children.size(); }
    static TKelNode NodeAt(const std::string& path) {
        std::u16string text = basalt::files::DecodeName(path);
        return TKelNode(
            GetPathNameAsNode(BCIndex(text.size()), reinterpret_cast<const UniChar*>(text.data())),
            false);
    }

    WindowRef window = nullptr;
    QuietObserver observer;
    TKelClient client{nullptr, nullptr, nullptr, nullptr, 0x62667266 /* "bfrf" */};
    std::unique_ptr<TNodeFilter> filter;
    std::unique_ptr<TNodeBrowserControl> browser;
};

double OpenRatio(Bench& bench, const std::string& folder, unsigned long style, const char* name,
                 long* bytesPerRow) {
    std::vector<double> ratios;
    for (int run = 0; run < kRuns; ++run) {
        auto start = std::chrono::steady_clock::now();
        const size_t names = Baseline(folder);
        const double baseline = Seconds(start);
        // Memory the baseline just freed would otherwise be reused unseen by the browser.
        if (run == 0)
            malloc_trim(0);
        const long before = ResidentBytes();
        const double browser = bench.Open(folder, style);
        const long grown = ResidentBytes() - before;
        ratios.push_back(browser / baseline);
        std::printf("%s run %d: baseline %.1f ms (%zu names), browser %.1f ms (%zu rows)\n", name,
                    run + 1, baseline * 1e3, names, browser * 1e3, bench.Rows());
        // Later runs reuse memory the first gave back, so only the first one shows growth.
        if (run == 0 && bytesPerRow != nullptr && bench.Rows() > 0) {
            *bytesPerRow = grown / long(bench.Rows());
        }
    }
    return Median(ratios);
}

// The median frame after a jump to a random row, with the folder shown in list view.
double FrameTime(Bench& bench, const std::string& folder, uint32_t seed) {
    bench.Open(folder, kListViewStyle);
    return kelbench::MedianFrameAfterJump(bench.Window(), bench.Control(), kRuns, seed);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    TKelNode::InitializeCatalog();
    const std::string base = std::filesystem::absolute(argv[1]).lexically_normal().string();
    const std::string large = MakeFolder(base, 100000);
    const std::string small = MakeFolder(base, 100);
    Bench bench;
    long bytesPerRow = 0;
    bench.Open(small, kListViewStyle);
    const double list = OpenRatio(bench, large, kListViewStyle, "list", &bytesPerRow);
    const double column = OpenRatio(bench, large, kColumnViewStyle, "column", nullptr);
    const double largeFrame = FrameTime(bench, large, 100000);
    const double smallFrame = FrameTime(bench, small, 100);
    std::printf("frame at 100000 rows: %.2f ms, at 100 rows: %.2f ms\n", largeFrame * 1e3,
                smallFrame * 1e3);
    std::printf("list ratio at 100000: %.2f\n", list);
    std::printf("column ratio at 100000: %.2f\n", column);
    std::printf("frame ratio: %.2f\n", largeFrame / smallFrame);
    std::printf("bytes per row: %ld\n", bytesPerRow);
    const kelbench::QueryBenchResult search = kelbench::MeasureNameQuery(base, kRuns);
    std::printf("first hits ms: %.1f\n", search.firstHitsMs);
    std::printf("search ratio: %.2f\n", search.searchRatio);
    return 0;
}
