#pragma once

// A shown headless window holding one GridBrowser driven by a TNodeBrowserControl, with an
// observer that records, in order, what the browser tells its dialog. The observer acts on a
// double click as a browse dialog does: it makes the opened folder the target.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/nodes/KelNodeTesting.h"
#include "tests/support/TestEnvironment.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace keltest {

// The display name of a node, in UTF-8, for readable expectations.
std::string NameOf(const TKelNode& node);
std::vector<std::string> NamesOf(const TKelNodeArray& nodes);

class RecordingBrowserObserver : public INodeBrowserControlObserver {
public:
    void NodeBrowserControlNodeOpen(TNodeBrowserControl&, TKelNode& node) override;
    void NodeBrowserControlNodeOpenDone(TNodeBrowserControl&, TKelNode& node) override;
    void NodeBrowserControlTargetChanged(TNodeBrowserControl&, TKelNode& target) override;
    void NodeBrowserControlViewRootChanged(TNodeBrowserControl&, TKelNode& root) override;
    void NodeBrowserControlSelectionChanged(TNodeBrowserControl&) override;
    void NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl& control, TKelNode& node) override;
    bool NodeBrowserControlDrawPreview(TNodeBrowserControl&, TKelNode& node, TRect&) override;
    bool NodeBrowserControlIsPreviewAllowed() override { return true; }
    void NodeBrowserControlHandleError(TNodeBrowserControl&, TKelNode& node, long status) override;
    void NodeBrowserControlViewStyleChanged(unsigned long style) override;
    void NodeBrowserControlBackForwardSnapshotChanged(long position, long count) override;
    bool NodeBrowserControlWantsDisclosureTrianglesInListView() override { return disclosure; }
    void NodeBrowserControlDisabledItemClicked(TNodeBrowserControl&, TKelNode& node) override;

    // Calls since the last Take, as "kind" or "kind:detail", then forgets them.
    std::vector<std::string> Take();

    std::vector<std::string> calls;
    bool disclosure = true;
    bool drawsPreview = false;
};

class BrowserWindow : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Makes the browser in the style over a fresh window.
    void MakeBrowser(unsigned long style);
    // Shows a folder as the target, from the root of its own path.
    void Show(const std::filesystem::path& folder);
    TKelNode At(const std::filesystem::path& path) const { return kelnodetest::NodeAt(path); }
    // The names of a container's rows in the control's order (recurse: open rows' rows too).
    std::vector<std::string> Rows(const std::filesystem::path& container, bool recurse = false,
                                  unsigned long state = 0);
    std::vector<std::string> RowsOf(const TKelNode& container, bool recurse = false,
                                    unsigned long state = 0);
    std::vector<std::string> Selection();
    // Runs the event loop until the condition holds, for at most the deadline.
    static bool RunUntil(const std::function<bool()>& condition,
                         std::chrono::milliseconds deadline = std::chrono::seconds(20));
    // The point (window content coordinates) of the middle of a list row or a column's row.
    BGPoint ListRowPoint(int row) const;
    BGPoint ColumnRowPoint(int column, int row) const;

    std::filesystem::path tree;
    WindowRef window = nullptr;
    ControlRef control = nullptr;
    RecordingBrowserObserver observer;
    TKelClient client{nullptr, nullptr, nullptr, nullptr, NodeCode("bfrf")};
    std::unique_ptr<TNodeFilter> filter;
    std::unique_ptr<TNodeBrowserControl> browser;
    TKelPrefs prefs;
    Rect bounds{0, 0, 600, 800};
};

} // namespace keltest
