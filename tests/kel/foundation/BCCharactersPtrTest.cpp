#include "kel/foundation/BCCharactersPtr.h"

#include <gtest/gtest.h>
#include <string>

TEST(BCCharactersPtr, GivesTheCharactersAndFollowsChanges) {
    EXPECT_EQ(BCCharactersPtr(nullptr).Get(), nullptr);

    BCMutableStringRef text = BCStringCreateMutable(nullptr, 0);
    BCStringAppendCString(text, "ab", kBCStringEncodingUTF8);
    BCCharactersPtr characters(text);
    ASSERT_NE(characters.Get(), nullptr);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(characters.Get()), 2), u"ab");

    std::string longer(300, 'x');
    BCStringAppendCString(text, longer.c_str(), kBCStringEncodingUTF8);
    characters.Reset();
    ASSERT_NE(characters.Get(), nullptr);
    EXPECT_EQ(characters.Get()[0], 'a');
    EXPECT_EQ(characters.Get()[301], 'x');
    BCRelease(text);
}
