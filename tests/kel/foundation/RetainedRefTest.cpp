#include "kel/foundation/RetainedRef.h"

#include <gtest/gtest.h>

TEST(RetainedRef, CountsCopiesMovesAndAdoption) {
    BCStringRef a = BCStringCreateWithCString(nullptr, "a", kBCStringEncodingUTF8);
    BCStringRef b = BCStringCreateWithCString(nullptr, "b", kBCStringEncodingUTF8);
    {
        RetainedRef<BCOpaqueString> holder(a);
        RetainedRef<BCOpaqueString> copy = holder;
        copy = b;
        RetainedRef<BCOpaqueString> moved = std::move(copy);
        EXPECT_EQ(BCGetRetainCount(a), 2);
        EXPECT_EQ(BCGetRetainCount(b), 2);
    }
    RetainedRef<BCOpaqueString> adopted = RetainedRef<BCOpaqueString>::Adopt(a);
    EXPECT_EQ(BCGetRetainCount(a), 1);
    EXPECT_EQ(adopted.Detach(), a);
    EXPECT_FALSE(adopted);
    BCRelease(a);
    BCRelease(b);
}
