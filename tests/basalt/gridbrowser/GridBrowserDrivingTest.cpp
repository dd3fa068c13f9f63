// Finding rows by name and clicking where they are, as a scripted driver does: in list view
// with rows scrolled out of sight, and in column view across columns.

#include "FakeSource.h"

#include <gtest/gtest.h>
#include <string>

using basalt::headless::HeadlessDriver;
using gridtest::BrowserWindow;
using gridtest::FakeSource;

namespace {

GridBrowserItemID Find(ControlRef control, const char* name, GridBrowserItemID container = 0) {
    GridBrowserItemID item = 12345;
    BCStringRef text = BCStringCreateWithCString(nullptr, name, kBCStringEncodingUTF8);
    StatusCode status = FindGridBrowserItemNamed(control, container, text, &item);
    BCRelease(text);
    EXPECT_EQ(status == noErr, item != 0) << "a miss answers no item";
    return item;
}

// Clicks the middle of the row, as a person who found it would.
void ClickRow(ControlRef control, GridBrowserItemID item) {
    Rect bounds{};
    ASSERT_EQ(GetGridBrowserItemPartBounds(control, item, kGridBrowserNameProperty, &bounds),
              noErr);
    HeadlessDriver::RunUntilIdle();
    BGPoint middle = {BGFloat(bounds.left + bounds.right) / 2,
                      BGFloat(bounds.top + bounds.bottom) / 2};
    HeadlessDriver::ClickAt(GetControlOwner(control), middle);
    HeadlessDriver::RunUntilIdle();
}

TEST(GridBrowserDriving, AListRowFarOutOfSightIsFoundScrolledToAndClicked) {
    BrowserWindow browser{kGridBrowserListView, 400, 200};
    FakeSource source;
    for (int i = 0; i < 60; ++i)
        source.Add(FakeSource::kRoot, "file " + std::to_string(100 + i));
    source.Attach(browser.control);
    source.AddFileColumns();
    ASSERT_EQ(SetGridBrowserTarget(browser.control, FakeSource::kRoot), noErr);
    HeadlessDriver::RunUntilIdle();

    GridBrowserItemID last = Find(browser.control, "file 159");
    ASSERT_EQ(last, source.Find("file 159"));
    ClickRow(browser.control, last);
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, last));
    uint32_t selected = 0;
    GetGridBrowserItemCount(browser.control, 0, true, kGridBrowserItemIsSelected, &selected);
    EXPECT_EQ(selected, 1u);

    EXPECT_EQ(Find(browser.control, "file 1590"), 0u) << "a longer name is another name";
    EXPECT_EQ(Find(browser.control, "File 159"), 0u) << "names are matched exactly";
}

TEST(GridBrowserDriving, ColumnViewLooksInTheLastColumnFirstThenLeftwards) {
    BrowserWindow browser{kGridBrowserColumnView, 600, 300};
    FakeSource source;
    GridBrowserItemID docs = source.Add(FakeSource::kRoot, "Documents", true);
    GridBrowserItemID outer = source.Add(FakeSource::kRoot, "notes.txt");
    GridBrowserItemID inner = source.Add(docs, "notes.txt");
    GridBrowserItemID plans = source.Add(docs, "plans.txt");
    source.Attach(browser.control);
    std::vector path = {FakeSource::kRoot, docs};
    ASSERT_EQ(SetGridBrowserColumnViewPath(browser.control, 2, path.data()), noErr);
    HeadlessDriver::RunUntilIdle();

    EXPECT_EQ(Find(browser.control, "notes.txt"), inner);
    EXPECT_EQ(Find(browser.control, "notes.txt", FakeSource::kRoot), outer);
    EXPECT_EQ(Find(browser.control, "Documents"), docs);
    ClickRow(browser.control, plans);
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, plans));
    EXPECT_FALSE(IsGridBrowserItemSelected(browser.control, inner));
}

TEST(GridBrowserDriving, OtherControlsAndMissingArgumentsAreRefused) {
    BrowserWindow browser{kGridBrowserListView};
    Rect bounds{};
    GridBrowserItemID item = 0;
    EXPECT_EQ(FindGridBrowserItemNamed(browser.control, 0, nullptr, &item), paramErr);
    EXPECT_EQ(GetGridBrowserItemPartBounds(browser.control, 77, kGridBrowserNameProperty, &bounds),
              kGridBrowserItemNotFound);
    EXPECT_EQ(GetGridBrowserItemPartBounds(nullptr, 77, kGridBrowserNameProperty, &bounds),
              errUnknownControl);
}

} // namespace
