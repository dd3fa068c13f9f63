#pragma once

// A shown headless window holding one sidebar, over a scratch HOME with Desktop, Documents and
// Downloads as user dirs and one bookmark. What the sidebar tells its dialog ("SIDB" 1) is
// recorded; what it asks ("SIDB" 2) is answered with `location` when that is set.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/views/BTSidebarItemsView.h"
#include "tests/support/TestEnvironment.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace keltest {

std::string ToText(BCStringRef string);
// The display name of a node, for readable expectations.
std::string NameOf(const TKelNode& node);

class SidebarWindow : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Makes the sidebar at that frame of the window's content.
    void MakeSidebar(const BGRect& frame);
    // The names of the rows of a section, in order.
    std::vector<std::string> TopNames();
    std::vector<std::string> BottomNames();
    // The 1-based row shown with that name, 0 if none.
    int RowNamed(const std::string& name);
    // The middle of a row, in the window's content coordinates.
    BGPoint RowPoint(int row);
    void AddBookmark(const std::filesystem::path& folder, const std::string& label);
    // Sends "SIDB" 3 for the node, as the dialog does when its location changes.
    void ReportLocation(const TKelNode& node);
    static bool RunUntil(const std::function<bool()>& condition,
                         std::chrono::milliseconds deadline = std::chrono::seconds(20));

    std::filesystem::path home;
    WindowRef window = nullptr;
    ControlRef view = nullptr;
    BTSidebar* sidebar = nullptr;
    BTSidebarItemsView* items = nullptr;
    // "chosen:NAME" for each "SIDB" 1, "asked" for each "SIDB" 2.
    std::vector<std::string> told;
    unsigned long lastModifiers = 0;
    TKelNode lastChosen;
    TKelNode location;

private:
    static StatusCode DialogSide(EventHandlerCallRef, EventRef event, void* data);
    std::vector<std::string> Names(int first, int end);
};

} // namespace keltest
