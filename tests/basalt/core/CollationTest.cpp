#include <algorithm>
#include <basalt/BasaltCore.h>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <unicode/uloc.h>
#include <vector>

namespace {

constexpr UCCollateOptions kCaseMatters = 0x38006;
constexpr UCCollateOptions kIgnoreCase = 0x3800E;

int32_t Order(UCCollateOptions options, std::u16string a, std::u16string b, bool* same = nullptr) {
    Boolean equivalent = false;
    int32_t order = 99;
    EXPECT_EQ(UCCompareTextDefault(options, reinterpret_cast<const UniChar*>(a.data()),
                                   BCIndex(a.size()), reinterpret_cast<const UniChar*>(b.data()),
                                   BCIndex(b.size()), &equivalent, &order),
              noErr);
    if (same != nullptr)
        *same = equivalent;
    return order;
}

std::vector<uint8_t> Key(UCCollateOptions options, const std::u16string& text) {
    auto* chars = reinterpret_cast<const UniChar*>(text.data());
    BCIndex length = UCGetCollationKey(options, chars, BCIndex(text.size()), nullptr, 0);
    std::vector<uint8_t> key(static_cast<size_t>(length));
    EXPECT_EQ(UCGetCollationKey(options, chars, BCIndex(text.size()), key.data(), length), length);
    return key;
}

TEST(Collation, CaseOptionsDecideEquivalence) {
    bool same = false;
    EXPECT_EQ(Order(kIgnoreCase, u"Report", u"report", &same), 0);
    EXPECT_TRUE(same);
    EXPECT_NE(Order(kCaseMatters, u"Report", u"report", &same), 0);
    EXPECT_FALSE(same);
    // Accents matter under both sets.
    EXPECT_NE(Order(kIgnoreCase, u"resume", u"r\u00E9sum\u00E9", &same), 0);
    EXPECT_FALSE(same);
    EXPECT_EQ(Order(kIgnoreCase, u"", u"a"), -1);
}

TEST(Collation, DigitsCompareAsNumbersAndLettersIgnoreCaseFirst) {
    EXPECT_EQ(Order(kCaseMatters, u"file9", u"file10"), -1);
    EXPECT_EQ(Order(kCaseMatters, u"Zebra", u"apple"), 1);
    EXPECT_EQ(Order(kIgnoreCase, u"b", u"A"), 1);
}

// Comparisons by the thousand reuse the collator they found: a change of locale between two
// of them must still be heard.
TEST(Collation, ALocaleChangeBetweenComparisonsTakesEffect) {
    const std::string before = uloc_getDefault();
    UErrorCode status = U_ZERO_ERROR;
    uloc_setDefault("sv", &status);
    const int32_t swedish = Order(kIgnoreCase, u"\u00F6l", u"zon");
    uloc_setDefault("en", &status);
    const int32_t english = Order(kIgnoreCase, u"\u00F6l", u"zon");
    uloc_setDefault(before.c_str(), &status);
    ASSERT_TRUE(U_SUCCESS(status));
    EXPECT_EQ(swedish, 1);
    EXPECT_EQ(english, -1);
}

TEST(Collation, SortKeysOrderLikeComparison) {
    std::vector<std::u16string> names = {u"b",   u"A", u"a10", u"a9", u"\u00C9t\u00E9",
                                         u"Ete", u"B", u"_x",  u""};
    for (UCCollateOptions options : {kCaseMatters, kIgnoreCase}) {
        for (const auto& a : names)
            for (const auto& b : names) {
                auto keyA = Key(options, a), keyB = Key(options, b);
                int byKey =
                    std::lexicographical_compare(keyA.begin(), keyA.end(), keyB.begin(), keyB.end())
                        ? -1
                    : keyA == keyB ? 0
                                   : 1;
                EXPECT_EQ(byKey, Order(options, a, b)) << options;
            }
    }
    // Too small a buffer still reports the length needed.
    uint8_t small[2];
    std::u16string text = u"long enough text";
    EXPECT_GT(UCGetCollationKey(kCaseMatters, reinterpret_cast<const UniChar*>(text.data()),
                                BCIndex(text.size()), small, sizeof small),
              2);
}

TEST(Collation, BadArgumentsAreRefused) {
    EXPECT_EQ(UCCompareTextDefault(kCaseMatters, nullptr, 3, nullptr, 0, nullptr, nullptr),
              paramErr);
}

} // namespace
