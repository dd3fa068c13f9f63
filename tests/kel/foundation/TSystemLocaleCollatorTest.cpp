#include "kel/foundation/TSystemLocaleCollator.h"

#include <gtest/gtest.h>

namespace {

const uint16_t kLower[] = {'a', 'b', 'c'};
const uint16_t kUpper[] = {'A', 'B', 'C'};
const uint16_t kLater[] = {'b', 'a'};

} // namespace

TEST(TSystemLocaleCollator, EmptyTextComesFirst) {
    TSystemLocaleCollator collate;
    EXPECT_EQ(collate(0, nullptr, 0, nullptr), 0);
    EXPECT_EQ(collate(0, nullptr, 3, kLower), -1);
    EXPECT_EQ(collate(3, kLower, 0, nullptr), 1);
    TCaseSensitiveSystemLocaleCollator exact;
    EXPECT_EQ(exact(0, nullptr, 3, kLower), -1);
}

TEST(TSystemLocaleCollator, CaseMattersOnlyToTheCaseSensitiveOne) {
    TSystemLocaleCollator anyCase;
    TCaseSensitiveSystemLocaleCollator exact;
    EXPECT_EQ(anyCase(3, kLower, 3, kUpper), 0);
    EXPECT_NE(exact(3, kLower, 3, kUpper), 0);
    EXPECT_EQ(exact(3, kLower, 3, kLower), 0);
    EXPECT_LT(anyCase(3, kUpper, 2, kLater), 0);
    EXPECT_GT(exact(2, kLater, 3, kLower), 0);
}
