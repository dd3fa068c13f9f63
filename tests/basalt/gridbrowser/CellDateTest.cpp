#include "basalt/gridbrowser/CellDate.h"

#include <gtest/gtest.h>

using basalt::gridbrowser::FormatDate;
using basalt::gridbrowser::ViewsTextWidth;

namespace {

// 2026-12-28 22:58, wide digits in every field.
constexpr LongDateTime kLateInTheYear = 3881343480;
// 2026-01-05 09:58, as narrow as a date and time get.
constexpr LongDateTime kEarlyInTheYear = 3850451880;
// The room a date column of the browser's usual 117 pixels leaves for its text.
constexpr BGFloat kUsualColumn = 117 - 8;

bool HasTime(const std::u16string& text) {
    return text.find(u"58") != std::u16string::npos;
}

TEST(CellDate, TheUsualColumnShowsTheWholeDate) {
    for (LongDateTime date : {kLateInTheYear, kEarlyInTheYear}) {
        const std::u16string text = FormatDate(date, kUsualColumn);
        ASSERT_FALSE(text.empty());
        EXPECT_LE(ViewsTextWidth(text), kUsualColumn);
        EXPECT_NE(text.find(u"26"), std::u16string::npos) << "the year is there";
    }
}

TEST(CellDate, AWideColumnAddsTheTimeAndANarrowOneDropsIt) {
    const std::u16string wide = FormatDate(kLateInTheYear, 1000);
    const std::u16string narrow = FormatDate(kLateInTheYear, 10);
    EXPECT_TRUE(HasTime(wide)) << "the minutes are there";
    EXPECT_FALSE(HasTime(narrow));
    EXPECT_FALSE(narrow.empty()) << "too narrow still shows the date, to be cut when drawn";
    EXPECT_EQ(FormatDate(kLateInTheYear, ViewsTextWidth(wide)), wide) << "an exact fit keeps it";
}

// A column whose width fits a short date and time but not a long one shows all its rows alike.
TEST(CellDate, EveryRowOfAColumnHasTheSameForm) {
    const BGFloat between = (ViewsTextWidth(FormatDate(kEarlyInTheYear, 1000)) +
                             ViewsTextWidth(FormatDate(kLateInTheYear, 1000))) /
                            2;
    ASSERT_LT(ViewsTextWidth(FormatDate(kEarlyInTheYear, 1000)), between);
    EXPECT_EQ(HasTime(FormatDate(kEarlyInTheYear, between)),
              HasTime(FormatDate(kLateInTheYear, between)));
}

} // namespace
