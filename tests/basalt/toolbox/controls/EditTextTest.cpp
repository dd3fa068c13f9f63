// The text field as a client of the field sees it: hooks, data tags and editing keys, and how
// it shows its focus.

#include "basalt/toolbox/controls/EditText.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "tests/basalt/graphics/PixelProbe.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

class EditTextTest : public ::testing::Test {
protected:
    WindowRef window = nullptr;
    ControlRef field = nullptr;
    ControlRef button = nullptr;
    int buttonHits = 0;

    void SetUp() override {
        Rect bounds = {100, 100, 300, 500};
        CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
        Rect fieldBounds = {20, 20, 44, 300};
        BTCreateControl(window, &fieldBounds, kControlKindEditUnicodeText, nullptr, &field);
        Rect buttonBounds = {60, 20, 84, 120};
        BTCreateControl(window, &buttonBounds, kControlKindPushButton, nullptr, &button);
        SetWindowDefaultButton(window, button);
        const EventTypeSpec hit = {kEventClassControl, kEventControlHit};
        InstallEventHandler(
            GetControlEventTarget(button),
            [](EventHandlerCallRef, EventRef, void* data) -> StatusCode {
                ++*static_cast<int*>(data);
                return noErr;
            },
            1, &hit, &buttonHits, nullptr);
        ShowWindow(window);
        SetKeyboardFocus(window, field, kControlEditTextPart);
    }
    void TearDown() override { DisposeWindow(window); }

    std::u16string Text() { return View::From(field)->Text(); }
    void SetText(const std::u16string& text) {
        StringHolder string(MakeBCString(text));
        BCStringRef ref = string.get();
        SetControlData(field, 0, kControlEditTextCFStringTag, sizeof ref, &ref);
    }
    ControlEditTextSelectionRec Selection() {
        ControlEditTextSelectionRec selection{};
        GetControlData(field, 0, kControlEditTextSelectionTag, sizeof selection, &selection,
                       nullptr);
        return selection;
    }
    void Select(int16_t start, int16_t end) {
        ControlEditTextSelectionRec selection{start, end};
        SetControlData(field, 0, kControlEditTextSelectionTag, sizeof selection, &selection);
    }
};

int gValidations;
ControlKeyFilterResult NoColons(ControlRef, int16_t*, int16_t* charCode, EventModifiers*) {
    return *charCode == ':' ? kControlKeyFilterBlockKey : kControlKeyFilterPassKey;
}
void CountValidation(ControlRef) {
    ++gValidations;
}

int32_t gInlineStart, gInlineEnd;
void NoteInline(ControlRef, int32_t, int32_t start, int32_t end) {
    gInlineStart = start;
    gInlineEnd = end;
}

} // namespace

TEST_F(EditTextTest, TheTextTagGivesAStringTheCallerOwnsAndSelectionsAreClamped) {
    SetText(u"Quarterly report");
    BCStringRef copy = nullptr;
    size_t size = 0;
    ASSERT_EQ(GetControlData(field, 0, kControlEditTextCFStringTag, sizeof copy, &copy, &size),
              noErr);
    EXPECT_EQ(size, sizeof copy);
    EXPECT_EQ(FromBCString(copy), u"Quarterly report");
    EXPECT_EQ(BCGetRetainCount(copy), 1);
    BCRelease(copy);

    Select(0, 0x7FFF);
    EXPECT_EQ(Selection().selStart, 0);
    EXPECT_EQ(Selection().selEnd, 16);
    Select(12, 4);
    EXPECT_EQ(Selection().selStart, 4);
    EXPECT_EQ(Selection().selEnd, 12);
    EXPECT_EQ(SetControlData(field, 0, kControlEditTextSelectionTag, 2, nullptr), paramErr);
}

TEST_F(EditTextTest, TheKeyFilterBlocksAndValidationFollowsEveryChange) {
    ControlKeyFilterUPP filter = NoColons;
    ControlEditTextValidationUPP validation = CountValidation;
    SetControlData(field, 0, kControlEditTextKeyFilterTag, sizeof filter, &filter);
    SetControlData(field, 0, kControlEditTextValidationProcTag, sizeof validation, &validation);
    gValidations = 0;
    HeadlessDriver::TypeText("a:b");
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), u"ab");
    EXPECT_EQ(gValidations, 2);
}

TEST_F(EditTextTest, ReturnGoesToTheDefaultButtonWhenTheFieldIsOneLine) {
    Boolean single = true;
    SetControlData(field, 0, kControlEditTextSingleLineTag, sizeof single, &single);
    HeadlessDriver::TypeText("one");
    HeadlessDriver::PressKey(kVK_Return);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), u"one");
    EXPECT_EQ(buttonHits, 1);

    // Pasting lines into a one-line field flattens them.
    PutScrapFlavor(nullptr, kScrapFlavorTypeUnicode, 0, 0, nullptr);
    ScrapRef scrap = nullptr;
    GetCurrentScrap(&scrap);
    std::u16string lines = u"two\nthree";
    PutScrapFlavor(scrap, kScrapFlavorTypeUnicode, 0, Size(lines.size() * 2), lines.data());
    HeadlessDriver::PressKey(kVK_ANSI_V, cmdKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), u"onetwo three");
}

TEST_F(EditTextTest, DeletionAndMovementKeys) {
    HeadlessDriver::TypeText("folder");
    HeadlessDriver::PressKey(kVK_UpArrow);       // to the start
    HeadlessDriver::PressKey(kVK_ForwardDelete); // "older"
    HeadlessDriver::PressKey(kVK_RightArrow, shiftKey);
    HeadlessDriver::PressKey(kVK_RightArrow, shiftKey);
    HeadlessDriver::TypeText("X");           // "Xder"
    HeadlessDriver::PressKey(kVK_DownArrow); // to the end
    HeadlessDriver::PressKey(kVK_Delete);    // "Xde"
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), u"Xde");
    EXPECT_EQ(Selection().selStart, 3);

    // Undo takes back the last change, and undo again brings it back.
    HeadlessDriver::PressKey(kVK_ANSI_Z, cmdKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), u"Xder");
    HeadlessDriver::PressKey(kVK_ANSI_Z, cmdKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), u"Xde");
}

TEST_F(EditTextTest, ComposedTextIsInsertedOnlyWhenTheCompositionEnds) {
    ControlEditTextInlinePreUpdateUPP inlineProc = NoteInline;
    SetControlData(field, 0, kControlEditTextInlineInputTag, sizeof inlineProc, &inlineProc);
    auto compose = [&](const std::u16string& text, int32_t fixed) {
        EventHolder event(kEventClassTextInput, kEventTextInputUpdateActiveInputArea);
        SetEventParameter(event.get(), kEventParamTextInputSendText, typeUnicodeText,
                          text.size() * 2, text.data());
        SetParam(event.get(), FourCC("tsfx"), typeSInt32, fixed);
        PostEventToQueue(GetMainEventQueue(), event.get(), kEventPriorityStandard);
        HeadlessDriver::RunUntilIdle();
    };
    compose(u"\u306B", 0);
    EXPECT_EQ(Text(), u"");
    EXPECT_EQ(gInlineStart, 0);
    EXPECT_EQ(gInlineEnd, 1);
    compose(u"\u65E5\u672C", 2);
    EXPECT_EQ(Text(), u"\u65E5\u672C");
    EXPECT_EQ(gInlineStart, -1);
    EXPECT_EQ(gInlineEnd, -1);
}

// The field draws clipped to its bounds: the ring that shows its focus lies inside, and the
// corners its rounding cuts off show the window behind.
TEST_F(EditTextTest, TheFocusRingLiesInsideTheFieldAndItsCornersShowTheWindow) {
    const std::filesystem::path png = keltest::MakeScratchFolder("field") / "field.png";
    ASSERT_EQ(HeadlessDriver::WritePNG(window, png), noErr);
    cairo_surface_t* shot = cairo_image_surface_create_from_png(png.c_str());
    ASSERT_EQ(cairo_surface_status(shot), CAIRO_STATUS_SUCCESS);
    // The picture has the window's frame around its content.
    Rect whole{}, content{};
    GetWindowBounds(window, kWindowStructureRgn, &whole);
    GetWindowBounds(window, kWindowContentRgn, &content);
    const auto at = [&](int x, int y) {
        return keltest::PixelAt(shot, x + content.left - whole.left, y + content.top - whole.top);
    };
    const uint32_t behind = at(5, 5);
    EXPECT_EQ(at(20, 20), behind);
    EXPECT_EQ(at(299, 43), behind);
    const uint32_t ring = at(21, 32);
    EXPECT_GT(keltest::BlueOf(ring), keltest::RedOf(ring) + 40);
    cairo_surface_destroy(shot);
}
