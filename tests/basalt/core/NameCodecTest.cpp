#include "basalt/core/NameCodec.h"

#include <gtest/gtest.h>

using namespace basalt;

TEST(NameCodecTest, EveryByteStringRoundTrips) {
    for (std::string name :
         {std::string("plain"), std::string("caf\xC3\xA9"), std::string("caf\xE9"),
          std::string("\xFF\xFE\x80"), std::string("\xE2\x82"),
          std::string("emoji \xF0\x9F\x98\x80"), std::string("a:b")}) {
        EXPECT_EQ(EncodeName(DecodeName(name)), name);
    }
}

TEST(NameCodecTest, InvalidBytesShowAsLatin1ForPeople) {
    EXPECT_EQ(DisplayName("caf\xE9"), u"café");
    EXPECT_EQ(DecodeName("caf\xE9").back(), u'\xDD69');
    EXPECT_EQ(DisplayName("caf\xC3\xA9"), u"café");
    EXPECT_EQ(DisplayName("\xF0\x9F\x98\x80 \xFF\xE2\x82\xAC."), u"\U0001F600 \u00FF€.");
}

TEST(NameCodecTest, StraySurrogatesEncodeAsReplacement) {
    std::u16string text = u"x";
    text.push_back(u'\xD800');
    EXPECT_EQ(EncodeName(text), "x\xEF\xBF\xBD");
}
