// A window from the layout file with one control of every kind, driven the way a user would
// drive it, through the queue and the standard handlers.

#include "basalt/backend/headless/HeadlessDriver.h"

#include "basalt/toolbox/controls/Displays.h"
#include "basalt/toolbox/controls/EditText.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "tests/support/TestEnvironment.h"

#include <cairo.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

std::string Code(uint32_t code) {
    return {char(code >> 24), char(code >> 16), char(code >> 8), char(code)};
}

// Records what reaches the window: hits by control id and part, commands, closes.
StatusCode Record(EventHandlerCallRef, EventRef event, void* data) {
    auto* log = static_cast<std::vector<std::string>*>(data);
    if (GetEventClass(event) == kEventClassControl) {
        ControlRef control = nullptr;
        ControlPartCode part = 0;
        GetParam(event, kEventParamDirectObject, typeControlRef, &control);
        GetParam(event, kEventParamControlPart, typeControlPartCode, &part);
        ControlID id{};
        GetControlID(control, &id);
        log->push_back("hit " + std::to_string(id.id) + " part " + std::to_string(part));
        return eventNotHandledErr;
    }
    if (GetEventClass(event) == kEventClassCommand) {
        BTCommand command{};
        GetParam(event, kEventParamDirectObject, typeBTCommand, &command);
        log->push_back("command " + Code(command.commandID));
        return noErr;
    }
    log->push_back("close");
    return eventNotHandledErr;
}

class Sampler : public ::testing::Test {
protected:
    WindowRef window = nullptr;
    std::vector<std::string> log;

    void SetUp() override {
        ASSERT_TRUE(HeadlessDriver::Available());
        LayoutRef layout = nullptr;
        std::string path =
            std::string(KEL_BUILD_BUNDLE_DIR) + "/KelServices.bundle/Resources/Dialogs.json";
        ASSERT_EQ(CreateLayoutReferenceWithPath(path.c_str(), &layout), noErr);
        StringHolder name(MakeBCString(u"Toolbox Sampler"));
        ASSERT_EQ(CreateWindowFromLayout(layout, name.get(), &window), noErr);
        DisposeLayoutReference(layout);
        const EventTypeSpec events[] = {{kEventClassControl, kEventControlHit},
                                        {kEventClassCommand, kEventCommandProcess},
                                        {kEventClassWindow, kEventWindowClose}};
        InstallEventHandler(GetWindowEventTarget(window), Record, 3, events, &log, nullptr);
        ShowWindow(window);
        HeadlessDriver::ResetBeepCount();
    }
    void TearDown() override { DisposeWindow(window); }

    ControlRef Control(int32_t number) {
        ControlID id{FourCC("kels"), number};
        ControlRef control = nullptr;
        GetControlByID(window, &id, &control);
        return control;
    }
    std::u16string TextOf(int32_t number) { return View::From(Control(number))->Text(); }
};

} // namespace

TEST_F(Sampler, ClicksToggleSelectAndReportHitsWithTheirParts) {
    HeadlessDriver::Click(window, "kels", 4);                          // check box
    HeadlessDriver::Click(window, "kels", 5);                          // radio button
    HeadlessDriver::Click(window, "kels", 10);                         // disclosure button
    HeadlessDriver::Click(window, ControlID{FourCC("kels"), 7}, 0, 2); // second segment
    HeadlessDriver::Click(window, "kels", 1); // static text takes no clicks
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(GetControlValue(Control(4)), 1);
    EXPECT_EQ(GetControlValue(Control(5)), 1);
    EXPECT_EQ(GetControlValue(Control(10)), 1);
    EXPECT_EQ(GetControlValue(Control(7)), 2);
    EXPECT_EQ(log, (std::vector<std::string>{"hit 4 part 11", "hit 5 part 12", "hit 10 part 10",
                                             "hit 7 part 2"}));

    // A disabled control neither changes nor reports.
    DisableControl(Control(4));
    HeadlessDriver::Click(window, "kels", 4);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(GetControlValue(Control(4)), 1);
    EXPECT_EQ(log.size(), 4u);
}

TEST_F(Sampler, TypingGoesToTheFocusAndTabMovesIt) {
    HeadlessDriver::Click(window, "kels", 2);
    HeadlessDriver::RunUntilIdle();
    ControlRef focus = nullptr;
    GetKeyboardFocus(window, &focus);
    EXPECT_EQ(focus, Control(2));

    HeadlessDriver::PressKey(kVK_ANSI_A, cmdKey); // select all
    HeadlessDriver::TypeText("Report \xE2\x80\x94 2026");
    HeadlessDriver::PressKey(kVK_Delete);
    HeadlessDriver::PressKey(kVK_LeftArrow, shiftKey);
    HeadlessDriver::TypeText("7");
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(TextOf(2), u"Report \u2014 207");

    ControlEditTextSelectionRec selection{};
    GetControlData(Control(2), 0, kControlEditTextSelectionTag, sizeof selection, &selection,
                   nullptr);
    EXPECT_EQ(selection.selStart, 12);
    EXPECT_EQ(selection.selEnd, 12);

    // Cut and paste go through the scrap; undo takes back one step.
    HeadlessDriver::PressKey(kVK_ANSI_A, cmdKey);
    HeadlessDriver::PressKey(kVK_ANSI_X, cmdKey);
    HeadlessDriver::PressKey(kVK_Tab);
    HeadlessDriver::PressKey(kVK_ANSI_V, cmdKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(TextOf(2), u"");
    EXPECT_EQ(TextOf(3), u"Report \u2014 207");
    GetKeyboardFocus(window, &focus);
    EXPECT_EQ(focus, Control(3));
    HeadlessDriver::PressKey(kVK_ANSI_Z, cmdKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(TextOf(3), u"");

    // Shift-tab goes back.
    HeadlessDriver::PressKey(kVK_Tab, shiftKey);
    HeadlessDriver::RunUntilIdle();
    GetKeyboardFocus(window, &focus);
    EXPECT_EQ(focus, Control(2));
}

TEST_F(Sampler, ReturnAndEscapeClickTheDefaultAndCancelButtons) {
    HeadlessDriver::PressKey(kVK_Return);
    HeadlessDriver::PressKey(kVK_Escape);
    HeadlessDriver::PressKey(kVK_ANSI_KeypadEnter);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(log, (std::vector<std::string>{"hit 19 part 10", "command ok  ", "hit 18 part 10",
                                             "command not!", "hit 19 part 10", "command ok  "}));
}

TEST_F(Sampler, SearchFieldCancelMarkClearsTheText) {
    SetKeyboardFocus(window, Control(3), kControlEditTextPart);
    HeadlessDriver::TypeText("notes");
    HeadlessDriver::RunUntilIdle();
    ASSERT_EQ(TextOf(3), u"notes");
    BGRect frame = View::From(Control(3))->FrameInWindow();
    HeadlessDriver::ClickAt(window, {BGRectGetMaxX(frame) - 10, BGRectGetMidY(frame)});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(TextOf(3), u"");
    EXPECT_EQ(log.back(), "hit 3 part 31");
}

TEST_F(Sampler, PopupMenuChoiceSetsTheValueAndSendsTheItemsCommand) {
    MenuRef menu = nullptr;
    CreateNewMenu(200, 0, &menu);
    for (const char16_t* text : {u"Documents", u"Desktop", u"Home"}) {
        StringHolder item(MakeBCString(text));
        AppendMenuItemTextWithBCString(menu, item.get(), 0, FourCC("pick"), nullptr);
    }
    SetControlData(Control(6), 0, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
    ReleaseMenu(menu); // the popup keeps its own reference
    SetControlValue(Control(6), 1);

    HeadlessDriver::ChooseMenuItem(3);
    HeadlessDriver::Click(window, "kels", 6);
    HeadlessDriver::Click(window, "kels", 6); // dismissed: no choice queued
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(GetControlValue(Control(6)), 3);
    EXPECT_EQ(log, (std::vector<std::string>{"command pick", "hit 6 part 2"}));
}

TEST_F(Sampler, TimersFireWhileTheLoopRunsAndAnimateTheArrows) {
    Boolean on = true;
    SetControlData(Control(9), 0, kControlChasingArrowsAnimatingTag, sizeof on, &on);
    int before = static_cast<ChasingArrows*>(View::From(Control(9)))->Frame();
    int fired = 0;
    EventLoopTimerRef timer = nullptr;
    InstallEventLoopTimer(
        GetMainEventLoop(), 0.05, 0,
        [](EventLoopTimerRef, void* data) { ++*static_cast<int*>(data); }, &fired, &timer);
    HeadlessDriver::RunFor(0.35);
    EXPECT_EQ(fired, 1);
    EXPECT_NE(static_cast<ChasingArrows*>(View::From(Control(9)))->Frame(), before);
    RemoveEventLoopTimer(timer);
    on = false;
    SetControlData(Control(9), 0, kControlChasingArrowsAnimatingTag, sizeof on, &on);
}

TEST_F(Sampler, ResizingFollowsTheBindingsAndTheCloseBoxCloses) {
    SizeWindow(window, 620, 450, true);
    BGRect open = View::From(Control(19))->Frame();
    BGRect search = View::From(Control(3))->Frame();
    EXPECT_EQ(open.origin.x, 504);
    EXPECT_EQ(open.origin.y, 406);
    EXPECT_EQ(search.size.width, 330);
    EXPECT_EQ(View::From(Control(2))->Frame().size.width, 230);

    HeadlessDriver::ClickAt(window, {14, -11});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(log.back(), "close");
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST_F(Sampler, ASnapshotShowsTheWindow) {
    MenuRef menu = nullptr;
    CreateNewMenu(201, 0, &menu);
    StringHolder item(MakeBCString(u"Documents"));
    AppendMenuItemTextWithBCString(menu, item.get(), 0, 0, nullptr);
    SetControlData(Control(6), 0, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
    ReleaseMenu(menu);
    SetControlValue(Control(6), 1);
    SetKeyboardFocus(window, Control(2), kControlEditTextPart);
    HeadlessDriver::Click(window, "kels", 4);
    HeadlessDriver::RunUntilIdle();
    std::filesystem::path png = std::filesystem::path(KEL_TEST_BINARY_DIR) / "toolbox-sampler.png";
    ASSERT_EQ(HeadlessDriver::WritePNG(window, png), noErr);
    cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
    ASSERT_EQ(cairo_surface_status(image), CAIRO_STATUS_SUCCESS);
    EXPECT_EQ(cairo_image_surface_get_width(image), 520);
    EXPECT_EQ(cairo_image_surface_get_height(image), 400 + kBTWindowTitleBarHeight);
    // The default button is drawn in the accent colour, unlike the background around it.
    cairo_surface_flush(image);
    auto* pixels = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(image));
    int stride = cairo_image_surface_get_stride(image) / 4;
    uint32_t background = pixels[(kBTWindowTitleBarHeight + 390) * stride + 10];
    uint32_t button = pixels[(kBTWindowTitleBarHeight + 368) * stride + 420];
    EXPECT_NE(background, button);
    cairo_surface_destroy(image);
}

TEST_F(Sampler, ASnapshotTakenWhileAMenuIsOpenShowsTheMenuBeyondTheWindow) {
    MenuRef menu = nullptr;
    CreateNewMenu(202, 0, &menu);
    for (int index = 1; index <= 30; ++index) {
        StringHolder item(MakeBCString(u"Folder " + std::u16string(1, u'A' + index % 26)));
        AppendMenuItemTextWithBCString(menu, item.get(), 0, 0, nullptr);
    }
    SetControlData(Control(6), 0, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
    ReleaseMenu(menu);
    SetControlValue(Control(6), 1);
    const std::filesystem::path folder = keltest::MakeScratchFolder("menu-snapshot");
    MenuRef seen = nullptr;
    HeadlessDriver::WhileMenuOpen([&](MenuRef open) {
        seen = open;
        EXPECT_EQ(HeadlessDriver::WritePNG(window, folder / "open.png"), noErr);
    });
    HeadlessDriver::ChooseMenuItem(4);
    HeadlessDriver::Click(window, "kels", 6);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(seen, menu);
    EXPECT_EQ(GetControlValue(Control(6)), 4) << "the queued choice still answers";
    ASSERT_EQ(HeadlessDriver::WritePNG(window, folder / "closed.png"), noErr);

    cairo_surface_t* open = cairo_image_surface_create_from_png((folder / "open.png").c_str());
    cairo_surface_t* closed = cairo_image_surface_create_from_png((folder / "closed.png").c_str());
    ASSERT_EQ(cairo_surface_status(open), CAIRO_STATUS_SUCCESS);
    const int windowHeight = 400 + kBTWindowTitleBarHeight;
    EXPECT_EQ(cairo_image_surface_get_height(closed), windowHeight);
    // Thirty rows run past the bottom of the window; the picture grows to hold them, and the
    // part below the window is the menu's, not empty.
    ASSERT_GT(cairo_image_surface_get_height(open), windowHeight + 200);
    BGRect control = View::From(Control(6))->FrameInWindow();
    cairo_surface_flush(open);
    auto* pixels = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(open));
    const int stride = cairo_image_surface_get_stride(open) / 4;
    const uint32_t below = pixels[(windowHeight + 100) * stride + int(control.origin.x) + 30];
    EXPECT_EQ(below >> 24, 0xFFu) << "an opaque menu lies below the window";
    cairo_surface_destroy(open);
    cairo_surface_destroy(closed);
}

TEST(HeadlessSnapshot, WindowsMadeAtTwiceTheScaleHaveTwiceThePixels) {
    HeadlessDriver::SetScale(2);
    Rect bounds = {100, 100, 160, 300};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    HeadlessDriver::SetScale(1);
    ShowWindow(window);
    std::filesystem::path png = keltest::MakeScratchFolder("snapshot") / "double.png";
    ASSERT_EQ(HeadlessDriver::WritePNG(window, png), noErr);
    cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
    EXPECT_EQ(cairo_image_surface_get_width(image), 400);
    EXPECT_EQ(cairo_image_surface_get_height(image), 2 * (60 + kBTWindowTitleBarHeight));
    cairo_surface_destroy(image);
    DisposeWindow(window);
    EXPECT_EQ(HeadlessDriver::WritePNG(window, png), errInvalidWindowRef);
}

TEST_F(Sampler, ShownTextIsFoundWhereItIsDrawnAndOnlyThere) {
    const std::u16string title = View::From(Control(4))->Text();
    ASSERT_FALSE(title.empty());
    std::string utf8;
    for (char16_t c : title) {
        ASSERT_LT(c, 0x80) << "the sampler's titles are plain ASCII";
        utf8 += char(c);
    }
    const BGRect checkBox = View::From(Control(4))->FrameInWindow();
    const BGRect everywhere = BGRectMake(-1e4, -1e4, 2e4, 2e4);
    BGRect box{};
    ASSERT_TRUE(HeadlessDriver::FindShownText(window, utf8, everywhere, &box));
    EXPECT_TRUE(BGRectContainsPoint(checkBox, {BGRectGetMidX(box), BGRectGetMidY(box)}));

    const BGRect radio = View::From(Control(5))->FrameInWindow();
    EXPECT_FALSE(HeadlessDriver::FindShownText(window, utf8, radio, &box));
    EXPECT_FALSE(HeadlessDriver::FindShownText(window, utf8 + "x", everywhere, &box))
        << "only the whole text counts";

    // Clicking where the text is reaches the control that shows it.
    ASSERT_TRUE(HeadlessDriver::FindShownText(window, utf8, everywhere, &box));
    HeadlessDriver::ClickAt(window, {BGRectGetMidX(box), BGRectGetMidY(box)});
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(GetControlValue(Control(4)), 1);
}
