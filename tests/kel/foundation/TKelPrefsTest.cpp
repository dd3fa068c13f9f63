#include "kel/foundation/TKelPrefs.h"

#include "FreshPreferences.h"
#include "StringTesting.h"

#include <gtest/gtest.h>
#include <vector>

using keltest::Utf8;

namespace {

// Each test works in its own preferences folder and under its own client key, so values never
// leak between tests.
class TKelPrefsTest : public ::testing::Test {
protected:
    void SetUp() override {
        prefs.SetClientKeys(BCSTR("GetFile"), TStringRef::CreateWithFormat("%d", ++lastClient));
    }

    TStringRef Key(BCStringRef leaf) const { return prefs.CreateKey(leaf); }

    void StoreBytes(BCStringRef leaf, std::vector<uint8_t> bytes) const {
        prefs.SetPreferenceData(Key(leaf), static_cast<uint32_t>(bytes.size()), bytes.data());
    }

    std::vector<uint8_t> StoredBytes(BCStringRef leaf) const {
        TObjectRef value(Copy(leaf), false);
        if (value.IsNil() || BCGetTypeID(value.Get()) != BCDataGetTypeID()) {
            return {};
        }
        auto data = static_cast<BCDataRef>(value.Get());
        return {BCDataGetBytePtr(data), BCDataGetBytePtr(data) + BCDataGetLength(data)};
    }

    bool IsStored(BCStringRef leaf) const { return !TObjectRef(Copy(leaf), false).IsNil(); }

    BCTypeRef Copy(BCStringRef leaf) const {
        return BCPreferencesCopyAppValue(Key(leaf).AsBCStringRef(),
                                         kBCPreferencesCurrentApplication);
    }

    static void SetShared(BCStringRef key, BCTypeRef value) {
        BCPreferencesSetValue(key, value, kBCPreferencesAnyApplication, kBCPreferencesCurrentUser,
                              kBCPreferencesAnyHost);
    }

    static inline int lastClient = 0;
    keltest::FreshPreferences fresh;
    TKelPrefs prefs;
};

} // namespace

TEST_F(TKelPrefsTest, GeometryIsStoredBigEndian) {
    TKelPrefs save;
    save.SetClientKeys(BCSTR("PutFile"), BCSTR("0"));
    EXPECT_EQ(Utf8(save.CreateKey(kKelPrefDialogPosition)), "VelmoKelServices:PutFile:0:Position");

    prefs.SetDialogLocationPref(Point{0x0102, -2});
    EXPECT_EQ(StoredBytes(kKelPrefDialogPosition), (std::vector<uint8_t>{1, 2, 0xFF, 0xFE}));
    Point location = prefs.GetDialogLocationPref();
    EXPECT_EQ(location.v, 0x0102);
    EXPECT_EQ(location.h, -2);

    prefs.SetDialogSizePref(Rect{40, 30, 440, 630});
    EXPECT_EQ(StoredBytes(kKelPrefDialogSize),
              (std::vector<uint8_t>{0, 40, 0, 30, 0x01, 0xB8, 0x02, 0x76}));
    Rect bounds = prefs.GetDialogSizePref();
    EXPECT_EQ(bounds.top, 40);
    EXPECT_EQ(bounds.left, 30);
    EXPECT_EQ(bounds.bottom, 440);
    EXPECT_EQ(bounds.right, 630);
}

TEST_F(TKelPrefsTest, DamagedValuesAreRemovedAndReadAsDefaults) {
    StoreBytes(kKelPrefDialogPosition, {0, 1, 2});
    Point location = prefs.GetDialogLocationPref();
    EXPECT_EQ(location.v, 0);
    EXPECT_EQ(location.h, 0);
    EXPECT_FALSE(IsStored(kKelPrefDialogPosition));

    BCPreferencesSetAppValue(Key(kKelPrefDialogSize).AsBCStringRef(), BCSTR("wide"),
                             kBCPreferencesCurrentApplication);
    Rect bounds = prefs.GetDialogSizePref();
    EXPECT_EQ(bounds.bottom, -1);
    EXPECT_EQ(bounds.right, -1);
    EXPECT_FALSE(IsStored(kKelPrefDialogSize));
}

TEST_F(TKelPrefsTest, FlagsDefaultToTrue) {
    EXPECT_TRUE(prefs.GetWindowMinimizedPref());
    EXPECT_TRUE(prefs.GetExtensionHiddenPref());
    prefs.SetWindowMinimizedPref(false);
    EXPECT_FALSE(prefs.GetWindowMinimizedPref());
    // Only the byte 1 means hidden.
    StoreBytes(kKelPrefExtensionHidden, {2});
    EXPECT_FALSE(prefs.GetExtensionHiddenPref());
    prefs.SetExtensionHiddenPref(true);
    EXPECT_TRUE(prefs.GetExtensionHiddenPref());
}

TEST_F(TKelPrefsTest, ViewStyleAcceptsNumbersAndNumericText) {
    BCStringRef key = BCSTR("KelPanelFileListModeForOpenMode");
    EXPECT_EQ(prefs.GetView(key), TKelPrefs::kColumnView);
    SetShared(key, BCSTR("2"));
    EXPECT_EQ(prefs.GetView(key), TKelPrefs::kListView);
    prefs.SetView(static_cast<TKelPrefs::View>(7), key);
    EXPECT_EQ(prefs.GetView(key), TKelPrefs::kColumnView);
    prefs.SetView(TKelPrefs::kListView, key);
    EXPECT_EQ(prefs.GetView(key), TKelPrefs::kListView);
    SetShared(key, nullptr);
}

TEST_F(TKelPrefsTest, ColumnWidthAndScopeRoundTrip) {
    uint16_t width = 77;
    BCPreferencesSetAppValue(BCSTR("KelPanelPreferredColumnContentWidth"), nullptr,
                             kBCPreferencesCurrentApplication);
    EXPECT_FALSE(prefs.GetDefaultColumnViewColumnWidth(&width));
    EXPECT_EQ(width, 77);
    prefs.SetDefaultColumnViewColumnWidth(212);
    EXPECT_TRUE(prefs.GetDefaultColumnViewColumnWidth(&width));
    EXPECT_EQ(width, 212);

    EXPECT_EQ(prefs.GetQueryScope(), TKelPrefs::kQueryScopeEverywhere);
    prefs.SetQueryScope(static_cast<TKelPrefs::QueryScope>(9));
    EXPECT_EQ(prefs.GetQueryScope(), 9);
    SetShared(BCSTR("KelPanelBeaconSearchScopeMode"), nullptr);
}

TEST_F(TKelPrefsTest, MaximumRecentFoldersIsReadOnConstruction) {
    EXPECT_EQ(prefs.MaximumRecentFolders(), TKelPrefs::kDefaultMaximumRecentFolders);
    uint16_t five = 5;
    prefs.SetPreferenceData(BCSTR("VelmoMaximumRecentFoldersKey"), sizeof five, &five);
    EXPECT_EQ(TKelPrefs().MaximumRecentFolders(), 5);
    BCPreferencesSetAppValue(BCSTR("VelmoMaximumRecentFoldersKey"), nullptr,
                             kBCPreferencesCurrentApplication);
}

TEST_F(TKelPrefsTest, InvisibleItemsFollowEitherSetting) {
    BCStringRef showAll = BCSTR("VelmoShowAllFiles");
    BCStringRef expert = BCSTR("ExpertMode");
    EXPECT_FALSE(TKelPrefs::GetInvisiblePrefs());

    BCPreferencesSetAppValue(showAll, BCSTR("YES"), kBCPreferencesAnyApplication);
    EXPECT_TRUE(TKelPrefs::GetInvisiblePrefs());
    BCPreferencesSetAppValue(showAll, BCSTR("no"), kBCPreferencesAnyApplication);
    EXPECT_FALSE(TKelPrefs::GetInvisiblePrefs());

    // The toolkit's global domain counts only when the shared one has no value.
    BCPreferencesSetValue(showAll, BCSTR("1"), BCSTR("TKGlobal"), kBCPreferencesCurrentUser,
                          kBCPreferencesAnyHost);
    EXPECT_FALSE(TKelPrefs::GetInvisiblePrefs());
    BCPreferencesSetAppValue(showAll, nullptr, kBCPreferencesAnyApplication);
    EXPECT_TRUE(TKelPrefs::GetInvisiblePrefs());
    BCPreferencesSetValue(showAll, nullptr, BCSTR("TKGlobal"), kBCPreferencesCurrentUser,
                          kBCPreferencesAnyHost);

    BCPreferencesSetAppValue(expert, BCSTR("yes"), kBCPreferencesAnyApplication);
    EXPECT_TRUE(TKelPrefs::GetInvisiblePrefs());
    BCPreferencesSetAppValue(expert, nullptr, kBCPreferencesAnyApplication);
}
