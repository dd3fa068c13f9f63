#include "kel/foundation/KelBundle.h"

#include "StringTesting.h"

#include <gtest/gtest.h>
#include <string>

using keltest::Utf8;

namespace {

// The text of a lookup. Lookups leave one reference over for callers that keep the text for
// the process; a test gives it back.
std::string Lookup(TStringRef (*lookup)(TStringRef), BCStringRef key) {
    TStringRef text = lookup(key);
    if (!text.IsNil()) {
        BCRelease(text.AsBCStringRef());
    }
    return Utf8(text);
}

} // namespace

TEST(KelBundle, LooksUpLocalisedTextsAndSettingNames) {
    ASSERT_NE(KelBundle::KelGetBundle(), nullptr);
    EXPECT_EQ(Lookup(KelBundle::GetStringResource, BCSTR("Choose Button")), "Choose");
    EXPECT_EQ(Lookup(KelBundle::GetStringResource, BCSTR("No Such Key")), "No Such Key");
    // Setting names are not translated: the table maps each to itself.
    EXPECT_EQ(Lookup(KelBundle::GetStringResourceNonLocalized, BCSTR("VelmoRecentFoldersKey")),
              "VelmoRecentFoldersKey");
    EXPECT_EQ(Lookup(KelBundle::GetStringResourceNonLocalized, BCSTR("Choose Button")),
              "Choose Button");
    EXPECT_TRUE(KelBundle::GetStringResource(TStringRef()).IsNil());

    std::string keys = Lookup(KelBundle::GetStringResource, BCSTR("Command Keys"));
    ASSERT_GE(keys.size(), 14u);
    EXPECT_EQ(keys[1], '.');
    EXPECT_EQ(keys[3], 'D');
    EXPECT_EQ(keys.substr(4, 5), "ZXCVA");
}

TEST(KelBundle, LookupLeavesOneReferenceForTheCaller) {
    for (BCStringRef key : {BCSTR("Save Button"), BCSTR("Key Missing From The Table")}) {
        BCStringRef text = nullptr;
        BCIndex heldCount = 0;
        {
            TStringRef held = KelBundle::GetStringResource(key);
            text = held.AsBCStringRef();
            heldCount = BCGetRetainCount(text);
        }
        EXPECT_EQ(BCGetRetainCount(text), heldCount - 1) << Utf8(key);
        EXPECT_GE(BCGetRetainCount(text), 1) << Utf8(key);
        BCRelease(text);
    }
}
