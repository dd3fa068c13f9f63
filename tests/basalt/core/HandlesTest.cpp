#include <basalt/BasaltCore.h>
#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(Handles, SizesContentsAndLocking) {
    Handle h = NewHandleClear(4);
    ASSERT_NE(h, nullptr);
    EXPECT_EQ(GetHandleSize(h), 4);
    EXPECT_EQ(std::memcmp(*h, "\0\0\0\0", 4), 0);
    std::memcpy(*h, "abcd", 4);
    SetHandleSize(h, 1000);
    EXPECT_EQ(MemError(), noErr);
    EXPECT_EQ(std::memcmp(*h, "abcd", 4), 0);
    HLock(h);
    Ptr pinned = *h;
    SetHandleSize(h, 2000); // would move the block
    EXPECT_EQ(MemError(), memFullErr);
    SetHandleSize(h, 2);
    EXPECT_EQ(*h, pinned);
    EXPECT_EQ(GetHandleSize(h), 2);
    HUnlock(h);
    DisposeHandle(h);

    EXPECT_EQ(GetHandleSize(nullptr), 0);
    EXPECT_EQ(MemError(), nilHandleErr);
    EXPECT_EQ(NewHandle(-1), nullptr);
}

TEST(Handles, PtrToHandCopies) {
    Handle h = nullptr;
    ASSERT_EQ(PtrToHand("xyz", &h, 3), noErr);
    EXPECT_EQ(GetHandleSize(h), 3);
    EXPECT_EQ(std::memcmp(*h, "xyz", 3), 0);
    Handle original = h;
    ASSERT_EQ(HandToHand(&h), noErr);
    EXPECT_NE(h, original);
    std::memcpy(*original, "abc", 3); // the copy is independent
    EXPECT_EQ(std::memcmp(*h, "xyz", 3), 0);
    DisposeHandle(original);
    DisposeHandle(h);
    EXPECT_EQ(PtrToHand(nullptr, &h, 3), paramErr);
}

} // namespace
