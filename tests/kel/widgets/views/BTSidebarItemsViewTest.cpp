// The rows' geometry for the room there is, the keyboard, and where an eject button goes.

#include "../SidebarWindow.h"
#include "kel/widgets/SidebarEvents.h"

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

class BTSidebarItemsViewTest : public SidebarWindow {
protected:
    // The height of a sidebar whose rows would be exactly rowHeight high.
    // The height of a sidebar whose rows would be exactly rowHeight high (the rows lie inside
    // the sidebar's one-point frame).
    float HeightForRows(float rowHeight) {
        float gap = sidebar->HasBottomItems() ? 12 : 0;
        return rowHeight * float(sidebar->CountItems()) + gap + 6 + 2;
    }
    void Resize(float height) {
        BGRect frame = BGRectMake(10, 10, 180, height);
        BTViewSetFrame(view, &frame);
        HeadlessDriver::RunUntilIdle();
    }
    BGRect ItemsFrame() {
        BGRect frame{};
        BTViewGetFrame(items->GetViewRef(), &frame);
        return frame;
    }
    BGRect ItemsBounds() {
        BGRect bounds{};
        BTViewGetBounds(items->GetViewRef(), &bounds);
        return bounds;
    }
    // Sends the sidebar an arrow key as the toolbox does, as a first press or a repeat.
    void SendArrow(char16_t key, bool repeat) {
        EventRef raw = nullptr;
        CreateEvent(nullptr, kEventClassKeyboard, repeat ? kEventRawKeyRepeat : kEventRawKeyDown, 0,
                    0, &raw);
        EventRef text = nullptr;
        CreateEvent(nullptr, kEventClassTextInput, kEventTextInputUnicodeForKeyEvent, 0, 0, &text);
        SetEventParameter(text, kEventParamTextInputSendText, typeUnicodeText, sizeof key, &key);
        SetEventParameter(text, kEventParamTextInputSendKeyboardEvent, typeEventRef, sizeof raw,
                          &raw);
        SendEventToEventTarget(text, GetControlEventTarget(items->GetViewRef()));
        ReleaseEvent(text);
        ReleaseEvent(raw);
    }
};

} // namespace

TEST_F(BTSidebarItemsViewTest, IconsAndRowsShrinkBeforeTheRowsScroll) {
    MakeSidebar(BGRectMake(10, 10, 180, 380));
    Resize(HeightForRows(34) + 40);
    EXPECT_EQ(items->IconSize(), 32);
    EXPECT_EQ(items->RowHeight(), 34);
    EXPECT_EQ(ItemsFrame().size.width, 178) << "everything shows: no scroll bar";

    // Rows between the sizes may be fractional; icons stay whole and fit in them.
    Resize(HeightForRows(24.5f));
    EXPECT_FLOAT_EQ(items->RowHeight(), 24.5f);
    EXPECT_LE(items->IconSize() + 2, 24);
    EXPECT_GE(items->IconSize() + 2, 23);

    Resize(HeightForRows(18));
    EXPECT_EQ(items->IconSize(), 16);
    EXPECT_EQ(items->RowHeight(), 18);
    EXPECT_EQ(ItemsFrame().size.width, 178);

    Resize(HeightForRows(18) - 20);
    EXPECT_EQ(items->IconSize(), 16);
    EXPECT_EQ(items->RowHeight(), 18);
    EXPECT_LT(ItemsFrame().size.width, 178) << "now the rows scroll, and the bar shows";
}

TEST_F(BTSidebarItemsViewTest, ArrowKeysWalkTheRowsAndPassOnAtTheEnds) {
    MakeSidebar(BGRectMake(10, 10, 180, 380));
    ASSERT_EQ(SetKeyboardFocus(window, items->GetViewRef(), kControlFocusNextPart), noErr);
    HeadlessDriver::PressKey(kVK_DownArrow);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(items->SelectedRow(), 1);
    EXPECT_EQ(told, std::vector<std::string>{"chosen:" + NameOf(sidebar->GetItem(0)->node)});
    EXPECT_EQ(lastChosen, TKelNode::GetRootNodeRef());
    HeadlessDriver::PressKey(kVK_UpArrow);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(items->SelectedRow(), 1) << "up at the first row is left to others";
    EXPECT_EQ(told.size(), 1u);
}

TEST_F(BTSidebarItemsViewTest, AnArrowFromNoSelectionScrollsTheLastRowIntoView) {
    MakeSidebar(BGRectMake(10, 10, 180, 80));
    ASSERT_EQ(SetKeyboardFocus(window, items->GetViewRef(), kControlFocusNextPart), noErr);
    HeadlessDriver::PressKey(kVK_UpArrow);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(items->SelectedRow(), sidebar->CountItems());
    BGRect last{};
    items->GetItemBounds(sidebar->CountItems(), &last);
    EXPECT_GE(BGRectGetMaxY(ItemsBounds()), BGRectGetMaxY(last));
    HeadlessDriver::PressKey(kVK_Home);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(ItemsBounds().origin.y, 0);
    EXPECT_EQ(items->SelectedRow(), sidebar->CountItems()) << "home scrolls, it does not select";
}

TEST_F(BTSidebarItemsViewTest, AHeldArrowReportsOnceWhereItStops) {
    MakeSidebar(BGRectMake(10, 10, 180, 380));
    SendArrow(0x1F, false);
    SendArrow(0x1F, true);
    SendArrow(0x1F, true);
    EXPECT_EQ(items->SelectedRow(), 3);
    EXPECT_EQ(told.size(), 1u) << "only the first press reports at once";
    ASSERT_TRUE(RunUntil([&] { return told.size() == 2; }));
    EXPECT_EQ(told[1], "chosen:" + NameOf(sidebar->GetItem(2)->node));
    HeadlessDriver::RunFor(0.3);
    EXPECT_EQ(told.size(), 2u);
}

TEST_F(BTSidebarItemsViewTest, TheEjectButtonMovesInAndGoesAsTheSidebarNarrows) {
    MakeSidebar(BGRectMake(10, 10, 180, 380));
    SidebarItem volume;
    volume.flags = SidebarItem::kEjectable;
    const int icon = items->IconSize();
    auto button = [&](float width) {
        BGRect row = BGRectMake(0, 40, width, 34), out{};
        items->GetItemButtonBounds(&volume, row, &out);
        return out;
    };
    EXPECT_EQ(button(180).origin.x, 180 - 21);
    EXPECT_EQ(button(180).size.width, 18);
    EXPECT_EQ(button(180).origin.y, 40 + (icon - 16) / 2);
    EXPECT_EQ(button(icon + 9 + 31).origin.x, icon + 8) << "too little room beside the name";
    EXPECT_EQ(button(icon + 8 + 18).size.width, 18);
    EXPECT_EQ(button(icon + 8 + 17).size.width, 0) << "no room at all: no button";

    BGRect text{};
    items->GetItemTextBounds(&volume, BGRectMake(0, 40, 180, 34), &text);
    EXPECT_EQ(text.origin.x, icon + 9);
    EXPECT_EQ(text.size.width, 180 - (icon + 9) - 24) << "the name leaves the button room";
    SidebarItem place;
    items->GetItemTextBounds(&place, BGRectMake(0, 40, icon + 9 + 10, 34), &text);
    EXPECT_EQ(text.size.width, 32) << "a short name box is widened to 32";
    items->GetItemTextBounds(&volume, BGRectMake(0, 40, icon + 9 + 24 + 20, 34), &text);
    EXPECT_EQ(text.size.width, 0);
}
