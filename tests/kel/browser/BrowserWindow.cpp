#include "BrowserWindow.h"

#include "kel/nodes/TNodePathHelper.h"

#include <thread>

namespace keltest {

using basalt::headless::HeadlessDriver;

std::string NameOf(const TKelNode& node) {
    if (node.IsEmpty()) {
        return "<none>";
    }
    std::u16string name = kelnodetest::Property(node, "dnam");
    std::string utf8;
    for (char16_t c : name) {
        utf8 += c < 0x80 ? char(c) : '?';
    }
    return utf8;
}

std::vector<std::string> NamesOf(const TKelNodeArray& nodes) {
    std::vector<std::string> names;
    for (const TKelNode& node : nodes) {
        names.push_back(NameOf(node));
    }
    return names;
}

void RecordingBrowserObserver::NodeBrowserControlNodeOpen(TNodeBrowserControl&, TKelNode& node) {
    calls.push_back("open:" + NameOf(node));
}

void RecordingBrowserObserver::NodeBrowserControlNodeOpenDone(TNodeBrowserControl&,
                                                              TKelNode& node) {
    calls.push_back("done:" + NameOf(node));
}

void RecordingBrowserObserver::NodeBrowserControlTargetChanged(TNodeBrowserControl&,
                                                               TKelNode& target) {
    calls.push_back("target:" + NameOf(target));
}

void RecordingBrowserObserver::NodeBrowserControlViewRootChanged(TNodeBrowserControl&,
                                                                 TKelNode& root) {
    calls.push_back("root:" + NameOf(root));
}

void RecordingBrowserObserver::NodeBrowserControlSelectionChanged(TNodeBrowserControl&) {
    calls.push_back("selection");
}

void RecordingBrowserObserver::NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl& control,
                                                                   TKelNode& node) {
    calls.push_back("double:" + NameOf(node));
    if (node.IsContainer()) {
        control.SetTarget(node, TKelNode(), TKelNode());
    }
}

bool RecordingBrowserObserver::NodeBrowserControlDrawPreview(TNodeBrowserControl&, TKelNode& node,
                                                             TRect&) {
    calls.push_back("preview:" + NameOf(node));
    return drawsPreview;
}

void RecordingBrowserObserver::NodeBrowserControlHandleError(TNodeBrowserControl&, TKelNode& node,
                                                             long status) {
    calls.push_back("error:" + NameOf(node) + ":" + std::to_string(status));
}

void RecordingBrowserObserver::NodeBrowserControlViewStyleChanged(unsigned long style) {
    calls.push_back(style == kListViewStyle ? "style:list" : "style:column");
}

void RecordingBrowserObserver::NodeBrowserControlBackForwardSnapshotChanged(long position,
                                                                            long count) {
    calls.push_back("history:" + std::to_string(position) + "/" + std::to_string(count));
}

void RecordingBrowserObserver::NodeBrowserControlDisabledItemClicked(TNodeBrowserControl&,
                                                                     TKelNode& node) {
    calls.push_back("disabled:" + NameOf(node));
}

std::vector<std::string> RecordingBrowserObserver::Take() {
    std::vector<std::string> taken;
    taken.swap(calls);
    return taken;
}

void BrowserWindow::SetUp() {
    ASSERT_EQ(TKelNode::InitializeCatalog(), noErr);
    tree = MakeScratchFolder("browse");
    const Rect content{60, 60, int16_t(60 + bounds.bottom), int16_t(60 + bounds.right)};
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &content, &window), noErr);
    filter = std::make_unique<TNodeFilter>(client, 0, NodeFilterMaskSet{}, nullptr, 0);
    ShowWindow(window);
}

void BrowserWindow::MakeBrowser(unsigned long style) {
    ASSERT_EQ(CreateGridBrowserControl(window, &bounds, style, &control), noErr);
    browser = std::make_unique<TNodeBrowserControl>(nullptr, style, *filter, observer, control);
    HeadlessDriver::RunUntilIdle();
}

void BrowserWindow::TearDown() {
    browser.reset();
    if (window != nullptr) {
        DisposeWindow(window);
    }
    HeadlessDriver::RunUntilIdle();
}

void BrowserWindow::Show(const std::filesystem::path& folder) {
    TNodePathHelper helper(At(folder).PeekNodeRef());
    ASSERT_TRUE(helper.IsComplete());
    ASSERT_EQ(browser->SetTargetPath(helper.NodePath(), TKelNode()), noErr);
    HeadlessDriver::RunUntilIdle();
}

std::vector<std::string> BrowserWindow::Rows(const std::filesystem::path& container, bool recurse,
                                             unsigned long state) {
    return RowsOf(At(container), recurse, state);
}

std::vector<std::string> BrowserWindow::RowsOf(const TKelNode& node, bool recurse,
                                               unsigned long state) {
    TKelNodeArray rows;
    Handle handle = NewHandle(0);
    if (GetGridBrowserItems(control, node.AsItemID(), recurse, state, handle) == noErr) {
        const auto count = size_t(GetHandleSize(handle)) / sizeof(GridBrowserItemID);
        rows.CopyItems(count, reinterpret_cast<const unsigned long*>(*handle));
    }
    DisposeHandle(handle);
    return NamesOf(rows);
}

std::vector<std::string> BrowserWindow::Selection() {
    TKelNodeArray selection;
    browser->GetSelection(selection);
    return NamesOf(selection);
}

bool BrowserWindow::RunUntil(const std::function<bool()>& condition,
                             std::chrono::milliseconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        HeadlessDriver::RunFor(0.02);
    }
    return true;
}

BGPoint BrowserWindow::ListRowPoint(int row) const {
    uint16_t height = 0;
    GetGridBrowserTableViewRowHeight(control, &height);
    int32_t header = 0;
    GetThemeMetric(kBTThemeMetricListHeaderHeight, &header);
    return BGPoint{double(bounds.left) + 60, double(bounds.top + header) + (row + 0.5) * height};
}

BGPoint BrowserWindow::ColumnRowPoint(int column, int row) const {
    uint16_t height = 0;
    GetGridBrowserTableViewRowHeight(control, &height);
    uint16_t width = 0;
    GetGridBrowserTableViewColumnWidth(control, &width);
    return BGPoint{double(bounds.left) + column * width + 40,
                   double(bounds.top) + (row + 0.5) * height};
}

} // namespace keltest
