#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

class ClassicEvents : public ::testing::Test {
protected:
    WindowRef window = nullptr;
    void SetUp() override {
        Rect bounds = {50, 50, 250, 350};
        CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
        ShowWindow(window);
        HeadlessDriver::RunUntilIdle();
    }
    void TearDown() override {
        DisposeWindow(window);
        FlushEventQueue(GetMainEventQueue());
    }
};

} // namespace

TEST_F(ClassicEvents, WaitNextEventGivesANullEventWithinASecondWhenIdle) {
    EventRecord record{};
    record.what = keyDown;
    EventTime start = GetCurrentEventTime();
    EXPECT_FALSE(WaitNextEvent(everyEvent, &record, 3600, nullptr));
    EXPECT_LT(GetCurrentEventTime() - start, 1.2);
    EXPECT_EQ(record.what, nullEvent);
}

TEST_F(ClassicEvents, UnhandledKeysComeBackAsRecordsWithCharacterAndKeyCode) {
    HeadlessDriver::PressKey(kVK_ANSI_S, cmdKey | shiftKey);
    EventRecord record{};
    ASSERT_TRUE(WaitNextEvent(keyDownMask, &record, 60, nullptr));
    EXPECT_EQ(record.what, keyDown);
    EXPECT_EQ(record.message & charCodeMask, uintptr_t('S'));
    EXPECT_EQ((record.message & keyCodeMask) >> 8, uintptr_t(kVK_ANSI_S));
    EXPECT_EQ(record.modifiers, cmdKey | shiftKey);
}

TEST_F(ClassicEvents, GetNextEventTakesEventAvailPeeksFlushEventsDrops) {
    HeadlessDriver::ClickAt(window, {10, 10});
    HeadlessDriver::PressKey(kVK_ANSI_A);
    EventRecord record{};
    ASSERT_TRUE(EventAvail(keyDownMask, &record));
    EXPECT_EQ(record.what, keyDown);
    ASSERT_TRUE(GetNextEvent(mDownMask, &record));
    EXPECT_EQ(record.what, mouseDown);
    EXPECT_EQ(record.where.h, 60);
    EXPECT_EQ(record.where.v, 60);
    EXPECT_FALSE(GetNextEvent(mDownMask, &record));
    EXPECT_TRUE(GetNextEvent(keyDownMask, &record));

    HeadlessDriver::PressKey(kVK_ANSI_A);
    FlushEvents(everyEvent, 0);
    EXPECT_FALSE(EventAvail(everyEvent, &record));
    EXPECT_EQ(GetNumEventsInQueue(GetMainEventQueue()), 0);
}

TEST_F(ClassicEvents, OnlyEventsWithAClassicFormConvert) {
    EventHolder timer(kEventClassToolbox, kEventToolboxWake);
    EventRecord record{};
    EXPECT_FALSE(ConvertEventRefToEventRecord(timer.get(), &record));
    EventHolder activated(kEventClassWindow, kEventWindowActivated);
    SetParam(activated.get(), kEventParamDirectObject, typeWindowRef, window);
    ASSERT_TRUE(ConvertEventRefToEventRecord(activated.get(), &record));
    EXPECT_EQ(record.what, activateEvt);
    EXPECT_EQ(record.message, reinterpret_cast<uintptr_t>(window));
    EXPECT_TRUE(record.modifiers & activeFlag);
}

TEST_F(ClassicEvents, NavigationKeysTranslateToTheirControlCharacters) {
    uint32_t state = 0;
    EXPECT_EQ(KeyTranslate(nullptr, kVK_Home, &state), 0x01u);
    EXPECT_EQ(KeyTranslate(nullptr, kVK_End, &state), 0x04u);
    EXPECT_EQ(KeyTranslate(nullptr, kVK_PageUp, &state), 0x0Bu);
    EXPECT_EQ(KeyTranslate(nullptr, kVK_PageDown, &state), 0x0Cu);
    EXPECT_EQ(KeyTranslate(nullptr, kVK_DownArrow, &state), 0x1Fu);
}
