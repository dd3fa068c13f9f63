#include <basalt/BasaltCore.h>
#include <gtest/gtest.h>
#include <string>

namespace {

// Owns one core reference for the length of a test.
struct Owned {
    BCTypeRef ref;
    explicit Owned(BCTypeRef r) : ref(r) {}
    ~Owned() { BCRelease(ref); }
    BCStringRef str() const { return static_cast<BCStringRef>(ref); }
};

std::u16string Text(BCStringRef string) {
    std::u16string out(static_cast<size_t>(BCStringGetLength(string)), u'\0');
    BCStringGetCharacters(string, BCRangeMake(0, BCStringGetLength(string)),
                          reinterpret_cast<UniChar*>(out.data()));
    return out;
}

BCStringRef Make(const char* utf8) {
    return BCStringCreateWithCString(kBCAllocatorDefault, utf8, kBCStringEncodingUTF8);
}

TEST(BCString, SurrogatePairsCountAsTwoUnitsAndSurviveUTF8) {
    Owned emoji(Make("a\xF0\x9F\x98\x80z"));
    ASSERT_NE(emoji.ref, nullptr);
    EXPECT_EQ(BCStringGetLength(emoji.str()), 4);
    EXPECT_EQ(BCStringGetCharacterAtIndex(emoji.str(), 1), 0xD83D);
    char back[16];
    ASSERT_TRUE(BCStringGetCString(emoji.str(), back, sizeof back, kBCStringEncodingUTF8));
    EXPECT_STREQ(back, "a\xF0\x9F\x98\x80z");
    // MacRoman cannot hold the emoji: strict conversion fails, a loss byte stands in.
    EXPECT_FALSE(BCStringGetCString(emoji.str(), back, sizeof back, kBCStringEncodingMacRoman));
    uint8_t bytes[8];
    BCIndex used = 0;
    EXPECT_EQ(BCStringGetBytes(emoji.str(), BCRangeMake(0, 4), kBCStringEncodingMacRoman, '?',
                               false, bytes, sizeof bytes, &used),
              4);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(bytes), size_t(used)), "a?z");
}

TEST(BCString, InvalidInputGivesNullNotAString) {
    EXPECT_EQ(Make("bad \xC3\x28 utf8"), nullptr);
    EXPECT_EQ(Make("\xED\xA0\x80"), nullptr); // an encoded surrogate
    EXPECT_EQ(BCStringCreateWithCString(kBCAllocatorDefault, nullptr, kBCStringEncodingUTF8),
              nullptr);
    EXPECT_EQ(BCStringCreateWithCString(kBCAllocatorDefault, "x", 0x7777), nullptr);
    const uint8_t latin[] = {'c', 0xE9};
    Owned accented(
        BCStringCreateWithBytes(kBCAllocatorDefault, latin, 2, kBCStringEncodingISOLatin1, false));
    EXPECT_EQ(Text(accented.str()), u"c\u00E9");
}

TEST(BCString, EmptyStringsBehave) {
    Owned empty(Make(""));
    ASSERT_NE(empty.ref, nullptr);
    EXPECT_EQ(BCStringGetLength(empty.str()), 0);
    EXPECT_EQ(BCStringFind(empty.str(), BCSTR("a"), 0).location, kBCNotFound);
    EXPECT_EQ(BCStringFind(BCSTR("abc"), empty.str(), 0).location, kBCNotFound);
    EXPECT_EQ(BCStringCompare(empty.str(), BCSTR(""), 0), kBCCompareEqualTo);
    EXPECT_EQ(BCStringCreateWithSubstring(kBCAllocatorDefault, empty.str(), BCRangeMake(0, 1)),
              nullptr);
    EXPECT_FALSE(BCStringHasPrefix(BCSTR("abc"), empty.str()));
}

TEST(BCString, PascalStringsHoldAtMost255Bytes) {
    std::string longest(255, 'x');
    Owned full(Make(longest.c_str()));
    Str255 pascal;
    ASSERT_TRUE(
        BCStringGetPascalString(full.str(), pascal, sizeof pascal, kBCStringEncodingMacRoman));
    EXPECT_EQ(pascal[0], 255);
    Owned back(
        BCStringCreateWithPascalString(kBCAllocatorDefault, pascal, kBCStringEncodingMacRoman));
    EXPECT_TRUE(BCEqual(back.ref, full.ref));

    Owned tooLong(Make((longest + "y").c_str()));
    EXPECT_FALSE(
        BCStringGetPascalString(tooLong.str(), pascal, sizeof pascal, kBCStringEncodingMacRoman));
    Str31 small;
    EXPECT_FALSE(
        BCStringGetPascalString(full.str(), small, sizeof small, kBCStringEncodingMacRoman));
    // MacRoman 0x8E is e-acute.
    const unsigned char roman[] = {2, 'e', 0x8E};
    Owned decoded(
        BCStringCreateWithPascalString(kBCAllocatorDefault, roman, kBCStringEncodingMacRoman));
    EXPECT_EQ(Text(decoded.str()), u"e\u00E9");
}

TEST(BCString, FindHonoursCaseBackwardsAndAnchor) {
    BCStringRef text = BCSTR("Read Me.TXT and read me.txt");
    EXPECT_EQ(BCStringFind(text, BCSTR("read"), 0).location, 16);
    EXPECT_EQ(BCStringFind(text, BCSTR("read"), kBCCompareCaseInsensitive).location, 0);
    EXPECT_EQ(
        BCStringFind(text, BCSTR(".txt"), kBCCompareCaseInsensitive | kBCCompareBackwards).location,
        23);
    EXPECT_EQ(BCStringFind(text, BCSTR("me"), kBCCompareAnchored).location, kBCNotFound);
    EXPECT_EQ(BCStringFind(text, BCSTR("txt"), kBCCompareAnchored | kBCCompareBackwards).location,
              24);
    EXPECT_TRUE(BCStringHasSuffix(text, BCSTR("me.txt")));
    BCRange found{};
    EXPECT_TRUE(BCStringFindWithOptions(text, BCSTR("e"), BCRangeMake(2, 10), 0, &found));
    EXPECT_EQ(found.location, 6);
    EXPECT_FALSE(BCStringFindWithOptions(text, BCSTR("Read"), BCRangeMake(1, 26), 0, &found));
    EXPECT_FALSE(BCStringFindWithOptions(text, BCSTR("e"), BCRangeMake(20, 99), 0, &found));
}

TEST(BCString, CompareOptions) {
    EXPECT_EQ(BCStringCompare(BCSTR("abc"), BCSTR("ABC"), 0), kBCCompareGreaterThan);
    EXPECT_EQ(BCStringCompare(BCSTR("abc"), BCSTR("ABC"), kBCCompareCaseInsensitive),
              kBCCompareEqualTo);
    EXPECT_EQ(BCStringCompare(BCSTR("file9"), BCSTR("file10"), 0), kBCCompareGreaterThan);
    EXPECT_EQ(BCStringCompare(BCSTR("file9"), BCSTR("file10"), kBCCompareNumerically),
              kBCCompareLessThan);
    EXPECT_EQ(BCStringCompare(BCSTR("file010"), BCSTR("file10"), kBCCompareNumerically),
              kBCCompareEqualTo);
    EXPECT_EQ(BCStringCompare(BCSTR("b"), BCSTR("A"), kBCCompareLocalized), kBCCompareGreaterThan);
}

TEST(BCString, MutableEditing) {
    BCMutableStringRef text = BCStringCreateMutableCopy(kBCAllocatorDefault, 0, BCSTR("a/b/c"));
    EXPECT_EQ(BCStringFindAndReplace(text, BCSTR("/"), BCSTR("::"),
                                     BCRangeMake(0, BCStringGetLength(text)), 0),
              2);
    EXPECT_EQ(Text(text), u"a::b::c");
    BCStringReplace(text, BCRangeMake(0, 1), text); // replacing with itself must not corrupt
    EXPECT_EQ(Text(text), u"a::b::c::b::c");
    BCStringDelete(text, BCRangeMake(1, 100)); // out of range: ignored
    BCStringDelete(text, BCRangeMake(1, 12));
    BCStringInsert(text, 1, BCSTR("\u00DF"));
    BCStringUppercase(text, nullptr);
    EXPECT_EQ(Text(text), u"ASS"); // sharp s upper-cases to two letters
    BCStringAppendCString(text, "\xC3\xA9", kBCStringEncodingUTF8);
    BCStringLowercase(text, nullptr);
    EXPECT_EQ(Text(text), u"ass\u00E9");
    // An immutable string refuses edits.
    BCStringAppend(reinterpret_cast<BCMutableStringRef>(
                       const_cast<void*>(static_cast<const void*>(BCSTR("fixed")))),
                   BCSTR("!"));
    EXPECT_EQ(Text(BCSTR("fixed")), u"fixed");
    EXPECT_EQ(BCStringGetCharactersPtr(text), nullptr);
    EXPECT_NE(BCStringGetCharactersPtr(BCSTR("fixed")), nullptr);
    BCRelease(text);
}

TEST(BCString, TrimWhitespaceTakesUnicodeSpacesFromBothEndsOnly) {
    BCMutableStringRef text =
        BCStringCreateMutableCopy(kBCAllocatorDefault, 0, BCSTR(" \t\u00A0~/a b\u3000\n"));
    BCStringTrimWhitespace(text);
    EXPECT_EQ(Text(text), u"~/a b");
    BCStringReplaceAll(text, BCSTR(" \u2003 "));
    BCStringTrimWhitespace(text);
    EXPECT_EQ(Text(text), u"");
    BCRelease(text);
}

TEST(BCString, ExternalUTF16AndSizes) {
    Owned text(Make("hi"));
    uint8_t bytes[8];
    BCIndex used = 0;
    BCStringGetBytes(text.str(), BCRangeMake(0, 2), kBCStringEncodingUnicode, 0, true, bytes,
                     sizeof bytes, &used);
    ASSERT_EQ(used, 6);
    Owned back(
        BCStringCreateWithBytes(kBCAllocatorDefault, bytes, used, kBCStringEncodingUnicode, true));
    EXPECT_TRUE(BCEqual(back.ref, text.ref));
    // A buffer too small converts only whole characters.
    EXPECT_EQ(BCStringGetBytes(BCSTR("\u00E9\u00E9"), BCRangeMake(0, 2), kBCStringEncodingUTF8, 0,
                               false, bytes, 3, &used),
              1);
    EXPECT_EQ(used, 2);
    EXPECT_GE(BCStringGetMaximumSizeForEncoding(2, kBCStringEncodingUTF8), 6);
    EXPECT_EQ(BCStringGetIntValue(BCSTR("  -42 apples")), -42);
}

} // namespace
