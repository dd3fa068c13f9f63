#include <basalt/BasaltCore.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string Description(BCTypeRef object) {
    BCStringRef text = BCCopyDescription(object);
    char buffer[256] = {};
    BCStringGetCString(text, buffer, sizeof buffer, kBCStringEncodingUTF8);
    BCRelease(text);
    return buffer;
}

TEST(BCObject, CountsAreAtomicAcrossThreads) {
    BCStringRef string = BCStringCreateCopy(kBCAllocatorDefault, BCSTR("shared"));
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([string] {
            for (int i = 0; i < 10000; ++i) {
                BCRetain(string);
                BCRelease(string);
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(BCGetRetainCount(string), 1);
    BCRelease(string);
}

TEST(BCObject, ConstantsAreImmortalAndShared) {
    BCStringRef constant = BCSTR("immortal");
    EXPECT_EQ(constant, BCSTR("immortal"));
    BCIndex count = BCGetRetainCount(constant);
    for (int i = 0; i < 5; ++i)
        BCRelease(constant);
    EXPECT_EQ(BCGetRetainCount(constant), count);
    EXPECT_EQ(BCGetRetainCount(kBCBooleanTrue), BCGetRetainCount(BCRetain(kBCBooleanTrue)));
    EXPECT_EQ(Description(constant), "immortal");
}

TEST(BCObject, EqualityHashAndTypes) {
    BCStringRef copy = BCStringCreateCopy(kBCAllocatorDefault, BCSTR("x"));
    EXPECT_TRUE(BCEqual(copy, BCSTR("x")));
    EXPECT_EQ(BCHash(copy), BCHash(BCSTR("x")));
    EXPECT_FALSE(BCEqual(copy, kBCBooleanTrue));
    EXPECT_FALSE(BCEqual(copy, nullptr));
    EXPECT_EQ(BCGetTypeID(copy), BCStringGetTypeID());
    EXPECT_EQ(BCGetTypeID(kBCBooleanFalse), BCBooleanGetTypeID());
    BCRelease(copy);

    int32_t three = 3;
    double threeReal = 3.0, half = 0.5;
    BCNumberRef integer = BCNumberCreate(kBCAllocatorDefault, kBCNumberSInt32Type, &three);
    BCNumberRef real = BCNumberCreate(kBCAllocatorDefault, kBCNumberFloat64Type, &threeReal);
    BCNumberRef fraction = BCNumberCreate(kBCAllocatorDefault, kBCNumberDoubleType, &half);
    EXPECT_TRUE(BCEqual(integer, real));
    EXPECT_EQ(BCHash(integer), BCHash(real));
    EXPECT_FALSE(BCNumberIsFloatType(integer));
    EXPECT_TRUE(BCNumberIsFloatType(real));
    int8_t small = 0;
    EXPECT_TRUE(BCNumberGetValue(real, kBCNumberSInt8Type, &small));
    EXPECT_EQ(small, 3);
    int32_t truncated = 0;
    EXPECT_FALSE(BCNumberGetValue(fraction, kBCNumberSInt32Type, &truncated));
    int64_t big = int64_t(1) << 40;
    BCNumberRef large = BCNumberCreate(kBCAllocatorDefault, kBCNumberSInt64Type, &big);
    EXPECT_FALSE(BCNumberGetValue(large, kBCNumberSInt32Type, &truncated));
    EXPECT_EQ(Description(large), "1099511627776");
    for (BCNumberRef n : {integer, real, fraction, large})
        BCRelease(n);
}

TEST(BCObject, DataAndDates) {
    const uint8_t bytes[] = {0xDE, 0xAD, 0xBE, 0xEF, 0x01};
    BCDataRef data = BCDataCreate(kBCAllocatorDefault, bytes, sizeof bytes);
    EXPECT_EQ(Description(data), "<deadbeef 01>");
    BCMutableDataRef grown = BCDataCreateMutable(kBCAllocatorDefault, 0);
    BCDataAppendBytes(grown, bytes, 4);
    BCDataAppendBytes(grown, bytes + 4, 1);
    EXPECT_TRUE(BCEqual(data, grown));
    BCDataSetLength(grown, 7);
    EXPECT_EQ(BCDataGetBytePtr(grown)[6], 0);
    BCRelease(data);
    BCRelease(grown);

    BCDateRef epoch = BCDateCreate(kBCAllocatorDefault, 0);
    EXPECT_EQ(Description(epoch), "2001-01-01 00:00:00 +0000");
    EXPECT_GT(BCAbsoluteTimeGetCurrent(), 7e8); // well past 2023
    BCRelease(epoch);
}

} // namespace
