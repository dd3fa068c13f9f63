#include "kel/foundation/KelBundle.h"

#include "StringTesting.h"

#include <gtest/gtest.h>

using keltest::Utf8;

TEST(KelBundle, FindsTheLibraryBundleInTheBuildTree) {
    ASSERT_NE(KelBundle::KelGetBundle(), nullptr);
    EXPECT_EQ(KelBundle::KelGetBundle(), KelBundle::KelGetBundle());
}

TEST(KelBundle, LooksUpLocalisedAndSettingNames) {
    EXPECT_EQ(Utf8(KelBundle::GetStringResource(BCSTR("Choose Button"))), "Choose");
    EXPECT_EQ(Utf8(KelBundle::GetStringResource(BCSTR("No Such Key"))), "No Such Key");
    // Setting names are not translated: the table maps each to itself.
    EXPECT_EQ(Utf8(KelBundle::GetStringResourceNonLocalized(BCSTR("VelmoRecentFoldersKey"))),
              "VelmoRecentFoldersKey");
    EXPECT_EQ(Utf8(KelBundle::GetStringResourceNonLocalized(BCSTR("Choose Button"))),
              "Choose Button");
    EXPECT_TRUE(KelBundle::GetStringResource(TStringRef()).IsNil());
}

TEST(KelBundle, CommandKeysCoverEveryPosition) {
    TStringRef keys = KelBundle::GetStringResource(BCSTR("Command Keys"));
    ASSERT_GE(keys.Length(), 14);
    EXPECT_EQ(keys.CharacterAtIndex(1), '.');
    EXPECT_EQ(keys.CharacterAtIndex(3), 'D');
    EXPECT_EQ(keys.CharacterAtIndex(4), 'Z');
    EXPECT_EQ(keys.CharacterAtIndex(8), 'A');
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
