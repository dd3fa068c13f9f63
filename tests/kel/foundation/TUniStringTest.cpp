#include "kel/foundation/TUniString.h"

#include "StringTesting.h"
#include "kel/foundation/TSystemLocaleCollator.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using keltest::Uni;
using keltest::Utf8;

namespace {

std::vector<std::string> Texts(const std::vector<TUniString>& strings) {
    std::vector<std::string> texts;
    for (const TUniString& string : strings) {
        texts.push_back(Utf8(string));
    }
    return texts;
}

} // namespace

TEST(TUniString, CopiesShareUntilOneIsWritten) {
    TUniString original = Uni("abc");
    TUniString copy(original);
    TUniString assigned;
    assigned = original;
    EXPECT_EQ(copy.Characters(), original.Characters());
    EXPECT_EQ(assigned.Characters(), original.Characters());

    copy.Append(uint16_t{'d'});
    EXPECT_NE(copy.Characters(), original.Characters());
    EXPECT_EQ(Utf8(copy), "abcd");
    EXPECT_EQ(Utf8(original), "abc");
    EXPECT_EQ(assigned.Characters(), original.Characters());

    // Mirroring works on the buffer as it stands, so a sharer sees it.
    original.Mirror();
    EXPECT_EQ(Utf8(assigned), "cba");

    // Set shares only between strings of one capacity.
    TUniString narrow;
    narrow.SetCapacity(2);
    narrow.Set(original);
    EXPECT_NE(narrow.Characters(), original.Characters());
    EXPECT_EQ(Utf8(narrow), "cb");
}

TEST(TUniString, CopyOfASmallStringOutlivesItsSource) {
    auto* source = new TUniString;
    source->Set(BCSTR("xy"), true);
    EXPECT_EQ(source->Capacity(), 2u);
    TUniString copy(*source);
    EXPECT_EQ(copy.Capacity(), TUniString::kDefaultCapacity);
    delete source;
    for (int i = 0; i < 200; ++i) {
        copy.Append(uint16_t{'z'});
    }
    EXPECT_EQ(copy.Length(), 202u);
    EXPECT_EQ(copy.Characters()[0], 'x');
}

TEST(TUniString, AssignmentInContainersKeepsLongText) {
    std::vector<uint16_t> letters(300, 'a');
    std::vector<TUniString> list{TUniString(), TUniString(300, letters.data())};
    list.erase(list.begin());
    EXPECT_EQ(list[0].Length(), 300u);
}

TEST(TUniString, CapacityGrowsOnlyWhenFull) {
    std::vector<uint16_t> letters(255, 'a');
    TUniString full(255, letters.data());
    EXPECT_EQ(full.Capacity(), 255u);
    full.Append(uint16_t{'b'});
    EXPECT_EQ(full.Capacity(), 271u);
    EXPECT_EQ(full.Length(), 256u);

    TUniString small;
    small.SetCapacity(4);
    small.Append(Uni("ab"));
    EXPECT_EQ(small.Capacity(), 4u);
    small.Append(Uni("cde"));
    EXPECT_EQ(small.Capacity(), 7u);
    small.Append(TUniString());
    EXPECT_EQ(small.Capacity(), 7u);
    EXPECT_EQ(Utf8(small), "abcde");

    small.SetCapacity(2);
    EXPECT_EQ(Utf8(small), "ab");
}

TEST(TUniString, SetFromCoreStringAdjustsOrCuts) {
    TUniString cut;
    cut.SetCapacity(3);
    cut.Set(BCSTR("abcdef"), false);
    EXPECT_EQ(Utf8(cut), "abc");
    cut.Set(BCSTR("abcdef"), true);
    EXPECT_EQ(cut.Capacity(), 6u);
    EXPECT_EQ(Utf8(cut), "abcdef");

    cut.Set(static_cast<BCStringRef>(nullptr), false);
    EXPECT_EQ(cut.Length(), 0u);
    EXPECT_FALSE(cut.AsBCString().IsNil());
    EXPECT_TRUE(TUniString().AsBCString().IsNil());
}

TEST(TUniString, ConvertsLegacyText) {
    const uint8_t pascal[] = {3, 'c', 0x8E, 'f'};
    TUniString fromPascal(pascal, smRoman);
    ASSERT_EQ(fromPascal.Length(), 3u);
    EXPECT_EQ(fromPascal.Characters()[1], 0x00E9);

    TUniString fromText("caf\x8E", smRoman);
    EXPECT_EQ(fromText.Characters()[3], 0x00E9);
    EXPECT_EQ(TextToUniString(smRoman, nullptr, 5, fromText), noErr);
    EXPECT_EQ(fromText.Length(), 0u);
}

TEST(TUniString, SubStringsAreOneBasedAndInclusive) {
    TUniString text = Uni("abcdef");
    EXPECT_EQ(Utf8(text.GetSubString(2, 4)), "bcd");
    EXPECT_EQ(Utf8(text.GetSubString(0, 0)), "a");
    EXPECT_EQ(Utf8(text.GetSubString(5, 99)), "ef");
    EXPECT_EQ(text.GetSubString(3, 2).Length(), 0u);
}

TEST(TUniString, BeginsWithUsesTheCollator) {
    TSystemLocaleCollator anyCase;
    TCaseSensitiveSystemLocaleCollator exactCase;
    TUniString name = Uni("Documents");
    EXPECT_TRUE(name.BeginsWith(Uni("doc"), anyCase));
    EXPECT_FALSE(name.BeginsWith(Uni("doc"), exactCase));
    EXPECT_FALSE(name.BeginsWith(Uni("Documents and more"), anyCase));
    // An empty prefix matches only the empty string.
    EXPECT_FALSE(name.BeginsWith(TUniString(), anyCase));
    EXPECT_TRUE(TUniString().BeginsWith(TUniString(), anyCase));
}

TEST(TUniString, TokenizeKeepsEmptyTokens) {
    std::vector<TUniString> tokens{Uni("stale")};
    Uni("a,,b").Tokenize(tokens, ',');
    EXPECT_EQ(Texts(tokens), (std::vector<std::string>{"a", "", "b"}));
    Uni("a,").Tokenize(tokens, ',');
    EXPECT_EQ(Texts(tokens), (std::vector<std::string>{"a", ""}));
    Uni(",a").Tokenize(tokens, ',');
    EXPECT_EQ(Texts(tokens), (std::vector<std::string>{"", "a"}));
    TUniString().Tokenize(tokens, ',');
    EXPECT_TRUE(tokens.empty());
}

TEST(TUniString, JoinsARunOfParts) {
    std::vector<TUniString> parts{Uni("usr"), Uni("local"), Uni("share")};
    TUniString joined = Uni("old");
    joined.Set(parts, 1, 9, '/');
    EXPECT_EQ(Utf8(joined), "local/share");
    joined.Set(parts, 0, 1, '/');
    EXPECT_EQ(Utf8(joined), "usr/local");
    joined.Set(parts, 2, 1, '/');
    EXPECT_EQ(joined.Length(), 0u);
}
