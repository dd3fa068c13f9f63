#include "kel/foundation/TMutableStringRef.h"

#include "StringTesting.h"

#include <gtest/gtest.h>

using keltest::Utf8;

namespace {

TMutableStringRef Editable(const char* text) {
    return TStringRef::Create(text, kBCStringEncodingUTF8).CopyMutable(0);
}

} // namespace

TEST(TMutableStringRef, ReplaceParamFillsTheFirstMark) {
    TMutableStringRef text = Editable("Move ^0 to ^1?");
    EXPECT_TRUE(text.ReplaceParam(1, BCSTR("Trash")));
    EXPECT_TRUE(text.ReplaceParam(0, BCSTR("^1"))); // a value is not searched again
    EXPECT_EQ(Utf8(text), "Move ^1 to Trash?");
    EXPECT_FALSE(text.ReplaceParam(2, BCSTR("x")));
    EXPECT_FALSE(TMutableStringRef().ReplaceParam(0, BCSTR("x")));
}

TEST(TMutableStringRef, ReplaceParamWithNilTakesTheBlankAlong) {
    TMutableStringRef leading = Editable("^0 files");
    EXPECT_TRUE(leading.ReplaceParam(0, TStringRef()));
    EXPECT_EQ(Utf8(leading), "files");

    TMutableStringRef trailing = Editable("x ^0");
    EXPECT_TRUE(trailing.ReplaceParam(0, TStringRef()));
    EXPECT_EQ(Utf8(trailing), "x ");

    EXPECT_FALSE(Editable("nothing here").ReplaceParam(0, TStringRef()));
}

TEST(TMutableStringRef, MarkOneMatchesTheStartOfMarkTen) {
    TMutableStringRef text = Editable("^10 and ^1");
    EXPECT_TRUE(text.ReplaceParam(1, BCSTR("X")));
    EXPECT_EQ(Utf8(text), "X0 and ^1");
}

TEST(TMutableStringRef, EditsOutsideTheStringAreRefused) {
    TMutableStringRef text = Editable("abc");
    text.Delete({2, 5});
    text.Replace({-1, 1}, BCSTR("z"));
    EXPECT_EQ(Utf8(text), "abc");
    text.Replace({1, 1}, BCSTR("XY"));
    EXPECT_EQ(Utf8(text), "aXYc");
}

TEST(TMutableStringRef, ConversionToRetainedHolderCountsUp) {
    TMutableStringRef text = Editable("held");
    BCIndex before = BCGetRetainCount(text.AsBCStringRef());
    {
        RetainedMutableRef<BCOpaqueString> second = text;
        EXPECT_EQ(second.Get(), text.AsBCMutableStringRef());
        EXPECT_EQ(BCGetRetainCount(text.AsBCStringRef()), before + 1);
    }
    EXPECT_EQ(BCGetRetainCount(text.AsBCStringRef()), before);
}
