#include "basalt/toolbox/events/Event.h"

#include <gtest/gtest.h>

using namespace basalt::toolbox;

TEST(Event, FourCharCodesAreBigEndianFromTheirCharacters) {
    EXPECT_EQ(FourCC("abcd"), 0x61626364u);
    EXPECT_EQ(FourCC("cntl"), uint32_t(kEventClassControl));
    EXPECT_EQ(FourCC("----"), uint32_t(kEventParamDirectObject));
}

TEST(Event, ParametersKeepTheirTypeAndLastValue) {
    EventHolder event(kEventClassKeyboard, kEventRawKeyDown);
    ASSERT_NE(event.get(), nullptr);
    EXPECT_EQ(GetEventClass(event.get()), uint32_t(kEventClassKeyboard));
    EXPECT_GT(GetEventTime(event.get()), 0.0);

    uint32_t modifiers = cmdKey;
    SetParam(event.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    modifiers = shiftKey | optionKey;
    SetParam(event.get(), kEventParamKeyModifiers, typeUInt32, modifiers);

    uint32_t read = 0;
    EventParamType actual = 0;
    size_t size = 0;
    ASSERT_EQ(GetEventParameter(event.get(), kEventParamKeyModifiers, typeWildCard, &actual,
                                sizeof read, &size, &read),
              noErr);
    EXPECT_EQ(read, uint32_t(shiftKey | optionKey));
    EXPECT_EQ(actual, uint32_t(typeUInt32));
    EXPECT_EQ(size, 4u);
}

TEST(Event, ParameterReadsFailClearly) {
    EventHolder event(kEventClassKeyboard, kEventRawKeyDown);
    char character = 'a';
    SetParam(event.get(), kEventParamKeyMacCharCodes, typeChar, character);

    uint32_t number = 0;
    EXPECT_EQ(GetEventParameter(event.get(), kEventParamKeyCode, typeUInt32, nullptr, sizeof number,
                                nullptr, &number),
              eventParameterNotFoundErr);
    EXPECT_EQ(GetEventParameter(event.get(), kEventParamKeyMacCharCodes, typeUInt32, nullptr,
                                sizeof number, nullptr, &number),
              errEventTypeMismatch);
    EXPECT_EQ(
        GetEventParameter(nullptr, kEventParamKeyCode, typeUInt32, nullptr, 4, nullptr, &number),
        paramErr);
}

TEST(Event, IntegerParametersConvertBetweenWidths) {
    EventHolder event(kEventClassControl, kEventControlHit);
    int16_t part = -3;
    SetParam(event.get(), kEventParamControlPart, typeControlPartCode, part);
    int32_t wide = 0;
    ASSERT_TRUE(GetParam(event.get(), kEventParamControlPart, typeSInt32, &wide));
    EXPECT_EQ(wide, -3);
}

TEST(Event, CopiesAreIndependentAndCountsHold) {
    EventHolder event(kEventClassWindow, kEventWindowClose);
    int32_t value = 7;
    SetParam(event.get(), kEventParamAttributes, typeSInt32, value);
    EventHolder copy(CopyEvent(event.get()));
    value = 8;
    SetParam(copy.get(), kEventParamAttributes, typeSInt32, value);
    ASSERT_TRUE(GetParam(event.get(), kEventParamAttributes, typeSInt32, &value));
    EXPECT_EQ(value, 7);
    RetainEvent(event.get());
    EXPECT_EQ(GetEventRetainCount(event.get()), 2);
    ReleaseEvent(event.get());
    EXPECT_EQ(GetEventRetainCount(event.get()), 1);
}
