#include "kel/foundation/TStringRef.h"

#include "StringTesting.h"

#include <gtest/gtest.h>

using keltest::Utf8;

TEST(TStringRef, NilHolderReadsAsEmptyAndDerivesNil) {
    TStringRef nil;
    EXPECT_EQ(nil.Length(), 0);
    EXPECT_TRUE(nil.Copy().IsNil());
    EXPECT_TRUE(nil.CopyMutable(0).IsNil());
    EXPECT_FALSE(nil.Find(BCSTR("a"), 0).IsFound());
}

TEST(TStringRef, HoldersShareOneCountedString) {
    BCStringRef made = BCStringCreateWithCString(nullptr, "shared", kBCStringEncodingUTF8);
    {
        TStringRef first(made);
        TStringRef second = first;
        EXPECT_EQ(BCGetRetainCount(made), 3);
        second = made; // the value already held: no change in count
        EXPECT_EQ(BCGetRetainCount(made), 3);
        second = TStringRef();
        EXPECT_EQ(BCGetRetainCount(made), 2);
    }
    EXPECT_EQ(BCGetRetainCount(made), 1);
    BCRelease(made);
}

TEST(TStringRef, CreateFromCharactersLeavesOneReferenceOver) {
    const UniChar text[] = {'k', 'e', 'p', 't'};
    BCStringRef kept = nullptr;
    {
        TStringRef holder = TStringRef::Create(text, 4);
        kept = holder.AsBCStringRef();
        EXPECT_EQ(Utf8(holder), "kept");
    }
    EXPECT_EQ(BCGetRetainCount(kept), 1);
    BCRelease(kept);
}

TEST(TStringRef, ApplicationEncodingStandsInForTheMarker) {
    const uint8_t pascal[] = {2, 0x8E, 'x'}; // e-acute in the default legacy encoding
    TStringRef made = TStringRef::Create(pascal, TStringRef::kApplicationEncoding);
    ASSERT_EQ(made.Length(), 2);
    EXPECT_EQ(made.CharacterAtIndex(0), 0x00E9);

    uint8_t back[16] = {};
    ASSERT_TRUE(made.CopyToPascalString(back, sizeof back, TStringRef::kApplicationEncoding));
    EXPECT_EQ(back[0], 2);
    EXPECT_EQ(back[1], 0x8E);
}

TEST(TStringRef, RangesOutsideTheStringAreRefused) {
    TStringRef text = TStringRef::Create("abcdef", kBCStringEncodingUTF8);
    EXPECT_EQ(Utf8(text.CreateSubstring({2, 3})), "cde");
    EXPECT_TRUE(text.CreateSubstring({4, 3}).IsNil());
    EXPECT_TRUE(text.CreateSubstring({-1, 2}).IsNil());
    EXPECT_EQ(text.CharacterAtIndex(6), 0);

    UniChar out[2] = {'?', '?'};
    text.CopyCharacters({5, 2}, out);
    EXPECT_EQ(out[0], '?');
}
