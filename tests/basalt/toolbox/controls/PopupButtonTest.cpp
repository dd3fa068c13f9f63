// A popup button shows its menu on the press, so a press dragged off the button still picks.

#include "basalt/backend/headless/HeadlessBackend.h"
#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "tests/support/TestEnvironment.h"

#include <cairo.h>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

TEST(PopupButton, ThePressOpensTheMenuAndADragOffTheButtonStillChooses) {
    Rect bounds = {100, 100, 300, 500};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ShowWindow(window);
    Rect popupBounds = {20, 20, 42, 220};
    ControlRef popup = nullptr;
    BTCreateControl(window, &popupBounds, kControlKindPopupButton, nullptr, &popup);
    MenuRef menu = nullptr;
    CreateNewMenu(400, 0, &menu);
    for (const char16_t* text : {u"One", u"Two"}) {
        StringHolder item(MakeBCString(text));
        AppendMenuItemTextWithBCString(menu, item.get(), 0, 0, nullptr);
    }
    SetControlData(popup, 0, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
    SetControlValue(popup, 1);

    HeadlessDriver::ChooseMenuItem(2);
    HeadlessDriver::Drag(window, {120, 31}, {300, 150});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(basalt::headless::ActiveHeadlessBackend()->lastMenu, menu);
    EXPECT_EQ(basalt::headless::ActiveHeadlessBackend()->lastMenuLocation.v, 120);
    EXPECT_EQ(GetControlValue(popup), 2);
    ReleaseMenu(menu);
    DisposeWindow(window);
}

// Two popups that differ only in their item's icon: the one with the icon shows it where the
// other shows the start of its text.
TEST(PopupButton, TheCurrentItemShowsWithItsIcon) {
    Rect bounds = {100, 100, 200, 400};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ShowWindow(window);
    IconRef folder = nullptr;
    ASSERT_EQ(GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, kBTIconGenericFolder, &folder),
              noErr);
    for (int16_t top : {10, 50}) {
        Rect popupBounds = {top, 20, int16_t(top + 22), 220};
        ControlRef popup = nullptr;
        BTCreateControl(window, &popupBounds, kControlKindPopupButton, nullptr, &popup);
        MenuRef menu = nullptr;
        CreateNewMenu(0, 0, &menu);
        StringHolder text(MakeBCString(u"Documents"));
        AppendMenuItemTextWithBCString(menu, text.get(), 0, 0, nullptr);
        if (top == 50)
            SetMenuItemIconHandle(menu, 1, kMenuIconRefType, reinterpret_cast<Handle>(folder));
        SetControlData(popup, 0, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
        ReleaseMenu(menu);
        SetControlValue(popup, 1);
    }
    ReleaseIconRef(folder);
    const auto png = keltest::MakeScratchFolder("popup-icon") / "popups.png";
    ASSERT_EQ(HeadlessDriver::WritePNG(window, png), noErr);
    cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
    const auto* pixels = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(image));
    const int stride = cairo_image_surface_get_stride(image) / 4;
    // Coloured pixels (not grey) in the first 30 points of each button's label.
    auto coloured = [&](int top) {
        int count = 0;
        for (int y = top + kBTWindowTitleBarHeight + 3; y < top + kBTWindowTitleBarHeight + 19; ++y)
            for (int x = 24; x < 54; ++x) {
                const uint32_t pixel = pixels[y * stride + x];
                const int r = (pixel >> 16) & 0xFF, b = pixel & 0xFF;
                count += std::abs(r - b) > 40;
            }
        return count;
    };
    EXPECT_EQ(coloured(10), 0) << "text alone is grey";
    EXPECT_GT(coloured(50), 40) << "the folder icon shows in colour";
    cairo_surface_destroy(image);
    DisposeWindow(window);
}

} // namespace
