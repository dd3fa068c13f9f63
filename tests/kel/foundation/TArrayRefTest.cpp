#include "kel/foundation/TArrayRef.h"

#include <gtest/gtest.h>

TEST(TArrayRef, OnlyStringElementsComeBackAsStrings) {
    int32_t seven = 7;
    BCNumberRef number = BCNumberCreate(nullptr, kBCNumberSInt32Type, &seven);
    const void* values[] = {BCSTR("name"), number};
    TArrayRef array(BCArrayCreate(nullptr, values, 2, &kBCTypeArrayCallBacks), false);
    BCRelease(number);

    EXPECT_EQ(array.Count(), 2);
    EXPECT_EQ(array.IndexAsSafeString(0).AsBCStringRef(), BCSTR("name"));
    EXPECT_TRUE(array.IndexAsSafeString(1).IsNil());
    EXPECT_TRUE(array.IndexAsSafeString(2).IsNil());
    EXPECT_TRUE(array.IndexAsSafeString(-1).IsNil());

    TArrayRef nil;
    EXPECT_EQ(nil.Count(), 0);
    EXPECT_TRUE(nil.IndexAsSafeString(0).IsNil());
}
