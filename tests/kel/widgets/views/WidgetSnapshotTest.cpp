// Pictures of a sidebar and a scope bar at 1x and 2x, for people to look at: a selected row, a
// row of each section, the scope buttons in each of their looks.

#include "../SidebarWindow.h"
#include "kel/widgets/views/BTScopeButton.h"

#include <filesystem>

using basalt::headless::HeadlessDriver;
using namespace keltest;
namespace fs = std::filesystem;

namespace {

class WidgetSnapshotTest : public SidebarWindow, public ::testing::WithParamInterface<double> {
protected:
    void SetUp() override {
        HeadlessDriver::SetScale(GetParam());
        SidebarWindow::SetUp();
        HeadlessDriver::SetScale(1);
    }

    ControlRef AddScopeButton(const char* title, BGFloat x, int32_t value) {
        BTObjectRef object = nullptr;
        EXPECT_EQ(BTObjectCreate(BTScopeButton::ClassID(), nullptr, &object), noErr);
        auto button = reinterpret_cast<ControlRef>(object);
        ControlRef root = nullptr;
        GetRootControl(window, &root);
        BTViewAddSubview(root, button);
        BCStringRef text = BCStringCreateWithCString(nullptr, title, kBCStringEncodingUTF8);
        BTViewSetText(button, text);
        BCRelease(text);
        BGRect best{};
        BTViewGetOptimalBounds(button, &best, nullptr);
        BGRect frame = BGRectMake(x, 12, best.size.width, best.size.height);
        BTViewSetFrame(button, &frame);
        BTViewSetValue(button, value);
        return button;
    }

    fs::path Png(const std::string& name) const {
        return fs::path(KEL_TEST_BINARY_DIR) /
               (name + "-" + std::to_string(int(GetParam())) + "x.png");
    }
};

} // namespace

TEST_P(WidgetSnapshotTest, ASidebarAndAScopeBar) {
    ASSERT_EQ(_BTScopeButtonRegisterClass(), noErr);
    MakeSidebar(BGRectMake(10, 44, 190, 340));
    ControlRef computer = AddScopeButton("This Computer", 12, 1);
    AddScopeButton("Home", 12 + 110, 0);
    ControlRef documents = AddScopeButton("Documents", 12 + 170, 0);
    BGRect frame{};
    BTViewGetFrame(computer, &frame);
    BTViewGetFrame(documents, &frame);
    HeadlessDriver::MoveTo(window, {BGRectGetMidX(frame), BGRectGetMidY(frame)});
    ASSERT_EQ(SetKeyboardFocus(window, items->GetViewRef(), kControlFocusNextPart), noErr);
    HeadlessDriver::ClickAt(window, RowPoint(RowNamed("Documents")));
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(items->SelectedRow(), RowNamed("Documents"));
    fs::path picture = Png("sidebar");
    ASSERT_EQ(HeadlessDriver::WritePNG(window, picture), noErr);
    EXPECT_GT(fs::file_size(picture), 1000u);

    // Narrow and short: small icons, the rows scroll.
    BGRect narrow = BGRectMake(10, 44, 120, 120);
    BTViewSetFrame(view, &narrow);
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(HeadlessDriver::WritePNG(window, Png("sidebar-small")), noErr);
}

INSTANTIATE_TEST_SUITE_P(Scales, WidgetSnapshotTest, ::testing::Values(1.0, 2.0));
