// The control as a toolbox kind: made by layout files and BTCreateControl, refusing to act on
// other kinds, and surviving a data source that tears it down from inside a message.

#include "basalt/gridbrowser/GridBrowserView.h"

#include "FakeSource.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::gridbrowser::GridBrowserView;
using basalt::headless::HeadlessDriver;
using gridtest::BrowserWindow;
using gridtest::FakeSource;

namespace {

TEST(GridBrowserViewTest, LayoutFilesAndCreateControlMakeTheKind) {
    auto folder = keltest::MakeScratchFolder("layout");
    keltest::WriteFile(folder / "Dialogs.json", R"({"windows": {"Main": {"frame": [0, 0, 300, 200],
        "controls": [{"kind": "grid-browser", "id": ["kels", 11], "frame": [0, 0, 300, 200]}]}}})");
    LayoutRef layout = nullptr;
    ASSERT_EQ(CreateLayoutReferenceWithPath((folder / "Dialogs.json").c_str(), &layout), noErr);
    BCStringRef name = BCStringCreateWithCString(nullptr, "Main", kBCStringEncodingUTF8);
    WindowRef window = nullptr;
    ASSERT_EQ(CreateWindowFromLayout(layout, name, &window), noErr);
    BCRelease(name);
    DisposeLayoutReference(layout);

    ControlID id = {0x6B656C73, 11};
    ControlRef control = nullptr;
    ASSERT_EQ(GetControlByID(window, &id, &control), noErr);
    ControlKind kind{};
    GetControlKind(control, &kind);
    EXPECT_EQ(kind.kind, OSType(kControlKindGridBrowser));
    GridBrowserViewStyle style = 0;
    EXPECT_EQ(GetGridBrowserViewStyle(control, &style), noErr);
    EXPECT_EQ(style, kGridBrowserListView);

    Rect bounds = {0, 0, 50, 50};
    ControlRef button = nullptr;
    BTCreateControl(window, &bounds, kControlKindPushButton, nullptr, &button);
    EXPECT_EQ(SetGridBrowserTarget(button, 1), errUnknownControl);
    EXPECT_EQ(SetGridBrowserTarget(nullptr, 1), errUnknownControl);
    DisposeWindow(window);
}

TEST(GridBrowserViewTest, EmptyCallbacksSilenceTheControl) {
    BrowserWindow browser(kGridBrowserListView);
    FakeSource source;
    GridBrowserItemID item = source.Add(FakeSource::kRoot, "only");
    source.Attach(browser.control);
    source.AddFileColumns();
    SetGridBrowserTarget(browser.control, FakeSource::kRoot);
    GridBrowserCallbacks none;
    InitGridBrowserCallbacks(&none);
    SetGridBrowserCallbacks(browser.control, &none);
    source.messages.clear();
    HeadlessDriver::ClickAt(browser.window, {100, 30});
    HeadlessDriver::RunUntilIdle();
    EXPECT_TRUE(IsGridBrowserItemSelected(browser.control, item));
    EXPECT_TRUE(source.messages.empty());
}

// The data source disposes of the window when a row is double-clicked, as a dialog does when
// a double click accepts it.
void CloseOnDoubleClick(ControlRef control, GridBrowserItemID,
                        GridBrowserItemNotification message) {
    if (message == kGridBrowserItemDoubleClicked)
        DisposeWindow(GetControlOwner(control));
}

TEST(GridBrowserViewTest, ASourceMayDisposeOfTheWindowInsideAMessage) {
    FakeSource source;
    source.Add(FakeSource::kRoot, "only");
    Rect bounds = {100, 100, 300, 400}, frame = {0, 0, 200, 300};
    WindowRef window = nullptr;
    ControlRef control = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    CreateGridBrowserControl(window, &frame, kGridBrowserListView, &control);
    ShowWindow(window);
    source.Attach(control);
    source.AddFileColumns();
    SetGridBrowserTarget(control, FakeSource::kRoot);
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    callbacks.itemNotificationCallback = CloseOnDoubleClick;
    SetGridBrowserCallbacks(control, &callbacks);
    HeadlessDriver::ClickAt(window, {100, 30});
    HeadlessDriver::ClickAt(window, {100, 30});
    HeadlessDriver::RunUntilIdle();
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST(GridBrowserViewTest, AColumnSetUpAgainKeepsItsWidth) {
    BrowserWindow browser(kGridBrowserListView);
    FakeSource source;
    source.Attach(browser.control);
    source.AddFileColumns();
    SetGridBrowserTableViewNamedColumnWidth(browser.control, kGridBrowserNameProperty, 300);
    GridBrowserListViewColumnDesc name;
    name.propertyID = kGridBrowserNameProperty;
    name.propertyType = kGridBrowserIconAndTextType;
    EXPECT_EQ(AddGridBrowserListViewColumn(browser.control, &name, 5), noErr);
    uint32_t count = 0;
    uint16_t width = 0;
    GetGridBrowserTableViewColumnCount(browser.control, &count);
    GetGridBrowserTableViewNamedColumnWidth(browser.control, kGridBrowserNameProperty, &width);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(width, 300);
    GridBrowserListViewColumnDesc none;
    EXPECT_EQ(AddGridBrowserListViewColumn(browser.control, &none, 0), paramErr);
}

// The same while a rubber band scrolls the list: the band's timer goes with the control.
int gSelections = 0;
void CloseOnThirdSelection(ControlRef control, GridBrowserItemID,
                           GridBrowserItemNotification message) {
    if (message == kGridBrowserSelectionChanged && ++gSelections == 3)
        DisposeWindow(GetControlOwner(control));
}

TEST(GridBrowserViewTest, ASourceMayDisposeOfTheWindowWhileABandScrolls) {
    FakeSource source;
    for (int i = 0; i < 100; ++i)
        source.Add(FakeSource::kRoot, "file " + std::to_string(100 + i));
    BrowserWindow browser(kGridBrowserListView, 300, 200);
    source.Attach(browser.control);
    source.AddFileColumns();
    SetGridBrowserTarget(browser.control, FakeSource::kRoot);
    GridBrowserCallbacks callbacks;
    InitGridBrowserCallbacks(&callbacks);
    callbacks.itemNotificationCallback = CloseOnThirdSelection;
    SetGridBrowserCallbacks(browser.control, &callbacks);
    WindowRef window = browser.window;
    gridtest::PostMouse(window, kEventMouseDown, {100, 30});
    gridtest::PostMouse(window, kEventMouseDragged, {100, 60});
    gridtest::PostMouse(window, kEventMouseDragged, {100, 260});
    EXPECT_TRUE(gridtest::RunUntil([&] { return !IsValidWindowPtr(window); }));
}

} // namespace
