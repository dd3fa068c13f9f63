#include "FreshPreferences.h"
#include "StringTesting.h"
#include "basalt/files/BFFindFolder.h"
#include "kel/foundation/TKelPrefs.h"
#include "kel/foundation/__BCURL.h"
#include "kel/nodes/TNodePathHelper.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace fs = std::filesystem;
using keltest::Utf8;

namespace {

class TKelPrefsPathsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(TKelNode::InitializeCatalog(), noErr);
        SetShared(TKelPrefs::RecentFoldersKey(), nullptr);
        prefs.SetClientKeys(BCSTR("GetFile"), TStringRef::CreateWithFormat("%d", ++lastClient));
    }

    static void SetShared(BCStringRef key, BCTypeRef value) {
        BCPreferencesSetValue(key, value, kBCPreferencesAnyApplication, kBCPreferencesCurrentUser,
                              kBCPreferencesAnyHost);
    }

    static TKelNodeArray PathTo(const fs::path& folder) {
        TObjectRef url(BCURLCreateFromFileSystemRepresentation(
                           nullptr, reinterpret_cast<const uint8_t*>(folder.c_str()),
                           BCIndex(folder.native().size()), true),
                       false);
        TNodePathHelper helper(static_cast<BCURLRef>(url.Get()));
        EXPECT_TRUE(helper.IsComplete()) << folder;
        return helper.NodePath();
    }

    static std::vector<std::string> Recent() {
        TObjectRef list(BCPreferencesCopyValue(TKelPrefs::RecentFoldersKey(),
                                               kBCPreferencesAnyApplication,
                                               kBCPreferencesCurrentUser, kBCPreferencesAnyHost),
                        false);
        std::vector<std::string> urls;
        if (list.IsNil()) {
            return urls;
        }
        auto array = static_cast<BCArrayRef>(list.Get());
        for (BCIndex i = 0; i < BCArrayGetCount(array); ++i) {
            urls.push_back(Utf8(static_cast<BCStringRef>(BCArrayGetValueAtIndex(array, i))));
        }
        return urls;
    }

    static std::string URLText(const fs::path& folder) { return "file://" + folder.string() + "/"; }

    void SetAppString(BCStringRef leaf, const std::string& text) {
        TStringRef value(BCStringCreateWithCString(nullptr, text.c_str(), kBCStringEncodingUTF8),
                         false);
        BCPreferencesSetAppValue(prefs.CreateKey(leaf).AsBCStringRef(), value.AsBCStringRef(),
                                 kBCPreferencesCurrentApplication);
    }

    static inline int lastClient = 0;
    keltest::FreshPreferences fresh;
    TKelPrefs prefs;
};

TEST_F(TKelPrefsPathsTest, RecentFoldersKeepTheirOrderAndDropOneOldestWhenFull) {
    auto root = keltest::MakeScratchFolder("recent");
    std::vector<fs::path> folders;
    for (int i = 0; i < 11; ++i) {
        folders.push_back(root / ("f" + std::to_string(i)));
        fs::create_directory(folders.back());
    }
    for (int i = 0; i < 10; ++i) {
        prefs.AddRecentPath(PathTo(folders[i]));
    }
    ASSERT_EQ(Recent().size(), 10u);
    EXPECT_EQ(Recent().front(), URLText(folders[9]));
    prefs.AddRecentPath(PathTo(folders[3]));
    EXPECT_EQ(Recent().front(), URLText(folders[9])) << "a known folder does not move";
    prefs.AddRecentPath(PathTo(folders[10]));
    std::vector<std::string> full = Recent();
    ASSERT_EQ(full.size(), 10u);
    EXPECT_EQ(full.front(), URLText(folders[10]));
    EXPECT_EQ(full.back(), URLText(folders[1])) << "only the oldest went";

    uint16_t five = 5;
    prefs.SetPreferenceData(TKelPrefs::MaximumRecentFoldersKey(), sizeof five, &five);
    TKelPrefs smaller;
    fs::create_directory(root / "new");
    smaller.AddRecentPath(PathTo(root / "new"));
    EXPECT_EQ(Recent().size(), 10u) << "a lower maximum still drops one entry only";
    EXPECT_EQ(Recent().front(), URLText(root / "new"));
    prefs.AddRecentPath(TKelNodeArray());
    EXPECT_EQ(Recent().size(), 10u);
}

TEST_F(TKelPrefsPathsTest, RecentFoldersAnotherApplicationAddedAreKept) {
    auto root = keltest::MakeScratchFolder("shared-recent");
    for (const char* name : {"mine", "theirs", "later"}) {
        fs::create_directory(root / name);
    }
    prefs.AddRecentPath(PathTo(root / "mine"));
    ASSERT_EQ(Recent(), std::vector<std::string>{URLText(root / "mine")});
    // Another application adds a folder through the shared file while this one runs.
    nlohmann::json shared = {
        {Utf8(TKelPrefs::RecentFoldersKey()), {URLText(root / "theirs"), URLText(root / "mine")}}};
    keltest::WriteFile(fresh.folder / "kel/preferences/.GlobalPreferences.json", shared.dump());
    prefs.AddRecentPath(PathTo(root / "later"));
    EXPECT_EQ(Recent(), (std::vector<std::string>{URLText(root / "later"), URLText(root / "theirs"),
                                                  URLText(root / "mine")}));
}

TEST_F(TKelPrefsPathsTest, StoredLocationsExpandTheHomeFolderAndMustStillExist) {
    fs::create_directory(keltest::ScratchHome() / "Projects");
    SetAppString(kKelPrefDialogHomeDirectoryPath, "file://~/Projects/");
    TKelNodeArray out;
    ASSERT_TRUE(prefs.CopyDefaultPath(out));
    ASSERT_FALSE(out.empty());
    EXPECT_EQ(out.back(), PathTo(keltest::ScratchHome() / "Projects").back());

    auto elsewhere = keltest::MakeScratchFolder("elsewhere");
    SetAppString(kKelPrefDialogHomeDirectoryPath, "file://~/Gone/");
    SetAppString(kKelPrefDialogPath, URLText(elsewhere));
    ASSERT_TRUE(prefs.CopyDefaultPath(out)) << "the full path is the fallback";
    EXPECT_EQ(out.back(), PathTo(elsewhere).back());

    fs::remove(elsewhere);
    TKelNodeArray kept = out;
    EXPECT_FALSE(prefs.CopyPathWithKey(prefs.CreateKey(kKelPrefDialogPath), kept));
    EXPECT_EQ(kept.size(), out.size()) << "a path that leads nowhere leaves out alone";
    EXPECT_FALSE(prefs.CopyDefaultPath(out));
    EXPECT_TRUE(out.empty());
}

TEST_F(TKelPrefsPathsTest, FolderTypesGiveURLs) {
    TObjectRef docs(__BCURL::CreateFromFolderType(kBFUserDomain, NodeCode("docs"), true), false);
    ASSERT_FALSE(docs.IsNil());
    std::string text = Utf8(BCURLGetString(static_cast<BCURLRef>(docs.Get())));
    EXPECT_EQ(text.rfind("file://" + keltest::ScratchHome().string(), 0), 0u) << text;
    EXPECT_EQ(__BCURL::CreateFromFolderType(kBFUserDomain, NodeCode("zzzz"), false), nullptr);
}

} // namespace
