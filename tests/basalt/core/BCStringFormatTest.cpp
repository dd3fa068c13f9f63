#include "tests/support/CoreText.h"

#include <basalt/BasaltCore.h>
#include <gtest/gtest.h>
#include <string>

namespace {

template <class... Args>
std::string Format(const char* format, Args... args) {
    return keltest::AdoptUtf8(BCStringCreateWithFormat(
        kBCAllocatorDefault, nullptr, __BCStringMakeConstantString(format), args...));
}

TEST(BCStringFormat, PrintfConversions) {
    EXPECT_EQ(Format("%d|%5i|%-4d|%03u", -7, 42, 1, 9u), "-7|   42|1   |009");
    EXPECT_EQ(Format("%ld %lld %zu %hhd", 1L << 40, -(1LL << 50), size_t(3), 300),
              "1099511627776 -1125899906842624 3 44");
    EXPECT_EQ(Format("%x %X %#o %u", 255u, 255u, 8u, 4294967295u), "ff FF 010 4294967295");
    EXPECT_EQ(Format("%.2f %e %g %5.1f", 3.14159, 1500.0, 0.5, 2.25),
              "3.14 1.500000e+03 0.5   2.2");
    EXPECT_EQ(Format("%s|%.3s|%6s|%c|100%%", "abc", "abcdef", "r", 'Z'), "abc|abc|     r|Z|100%");
    EXPECT_EQ(Format("%*d|%.*f", 4, 7, 1, 2.0), "   7|2.0");
    EXPECT_EQ(Format("%s", static_cast<const char*>(nullptr)), "(null)");
}

TEST(BCStringFormat, ObjectsAndPositionalArguments) {
    int32_t value = 12;
    BCNumberRef number = BCNumberCreate(kBCAllocatorDefault, kBCNumberSInt32Type, &value);
    EXPECT_EQ(Format("\"%@\" has %@ items", BCSTR("Caf\u00E9"), number),
              "\"Caf\u00E9\" has 12 items");
    EXPECT_EQ(Format("%2$@ then %1$d", 5, BCSTR("first")), "first then 5");
    EXPECT_EQ(Format("%@", static_cast<const void*>(nullptr)), "(null)");
    const UniChar wide[] = {0x00E9, 't', 0};
    EXPECT_EQ(Format("%S%C", wide, 0x263A), "\u00E9t\u263A");
    BCRelease(number);
}

TEST(BCStringFormat, BadFormatsGiveNullOrBoundedText) {
    EXPECT_EQ(Format("trailing %"), "<null>");
    EXPECT_EQ(Format("%k", 1), "<null>");
    // Absurd widths are bounded rather than allocated.
    BCStringRef wide = BCStringCreateWithFormat(kBCAllocatorDefault, nullptr,
                                                BCSTR("%999999999999d|%*d"), 1, 2147483647, 2);
    ASSERT_NE(wide, nullptr);
    EXPECT_LE(BCStringGetLength(wide), 20001);
    BCRelease(wide);
    // A position past the arguments given reads nothing.
    EXPECT_EQ(Format("[%3$d]", 1), "[]");
}

} // namespace
