#include "kel/foundation/RetainedRef.h"

#include <gtest/gtest.h>

TEST(RetainedRef, CountsCopiesAssignmentsAndAdoption) {
    BCStringRef a = BCStringCreateWithCString(nullptr, "a", kBCStringEncodingUTF8);
    BCStringRef b = BCStringCreateWithCString(nullptr, "b", kBCStringEncodingUTF8);
    {
        RetainedRef<BCOpaqueString> holder(a);
        RetainedRef<BCOpaqueString> copy = holder;
        EXPECT_EQ(BCGetRetainCount(a), 3);
        copy = b;
        EXPECT_EQ(BCGetRetainCount(a), 2);
        EXPECT_EQ(BCGetRetainCount(b), 2);
        RetainedRef<BCOpaqueString> moved = std::move(copy);
        EXPECT_EQ(copy.Get(), nullptr);
        EXPECT_EQ(BCGetRetainCount(b), 2);
    }
    EXPECT_EQ(BCGetRetainCount(a), 1);
    EXPECT_EQ(BCGetRetainCount(b), 1);

    RetainedRef<BCOpaqueString> adopted = RetainedRef<BCOpaqueString>::Adopt(b);
    EXPECT_EQ(BCGetRetainCount(b), 1);
    BCStringRef handedBack = adopted.Detach();
    EXPECT_FALSE(adopted);
    EXPECT_EQ(handedBack, b);
    BCRelease(a);
    BCRelease(b);
}
