#include "tests/support/CoreText.h"
#include "tests/support/TestEnvironment.h"

#include <basalt/BasaltCore.h>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace {

std::string PathOf(BCURLRef url) {
    uint8_t buffer[4096];
    std::string path =
        url != nullptr && BCURLGetFileSystemRepresentation(url, true, buffer, sizeof buffer)
            ? reinterpret_cast<char*>(buffer)
            : "<none>";
    BCRelease(url);
    return path;
}

class BCBundleTest : public ::testing::Test {
protected:
    void SetUp() override {
        root_ = keltest::MakeScratchFolder("bundles");
        savedPath_ = std::getenv("KEL_BUNDLE_PATH");
        setenv("KEL_BUNDLE_PATH", ("/does/not/exist:" + root_.string()).c_str(), 1);
        setenv("LANGUAGE", "fr_CA:de", 1);
    }
    void TearDown() override {
        setenv("KEL_BUNDLE_PATH", savedPath_.c_str(), 1);
        unsetenv("LANGUAGE");
    }

    // Each test makes its own identifier: found bundles are kept for the process.
    std::filesystem::path MakeBundle(const std::string& identifier, const std::string& extra = "") {
        auto folder = root_ / (identifier + ".bundle");
        keltest::WriteFile(folder / "Info.json", "{\"identifier\": \"" + identifier +
                                                     "\", \"developmentRegion\": \"it\"" + extra +
                                                     "}");
        return folder;
    }

    std::filesystem::path root_;
    std::string savedPath_;
};

TEST_F(BCBundleTest, FindsByIdentifierOnTheSearchPath) {
    auto folder = MakeBundle("test.find");
    keltest::WriteFile(root_ / "decoy" / "Info.json", "{ not json");
    BCBundleRef bundle = BCBundleGetBundleWithIdentifier(BCSTR("test.find"));
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(BCBundleGetBundleWithIdentifier(BCSTR("test.find")), bundle);
    EXPECT_EQ(keltest::Utf8(BCBundleGetIdentifier(bundle)), "test.find");
    EXPECT_EQ(PathOf(BCBundleCopyBundleURL(bundle)), folder.string());
    EXPECT_EQ(BCBundleGetBundleWithIdentifier(BCSTR("test.absent")), nullptr);

    BCURLRef url = BCBundleCopyBundleURL(bundle);
    BCBundleRef created = BCBundleCreate(kBCAllocatorDefault, url);
    EXPECT_EQ(created, bundle);
    BCRelease(created);
    BCRelease(url);
}

TEST_F(BCBundleTest, LocalizedStringsFollowTheLanguageOrder) {
    auto folder = MakeBundle("test.strings");
    keltest::WriteFile(folder / "Resources/de.lproj/Localized.strings",
                       "/* German */\n\"Cancel\" = \"Abbrechen\";\n"
                       "\"Quote\" = \"Sag \\\"ja\\\"\\nbitte\";\n");
    keltest::WriteFile(folder / "Resources/en.lproj/Localized.strings",
                       "\"Cancel\" = \"Cancel\"; \"Only English\" = \"English\";");
    keltest::WriteFile(folder / "Resources/it.lproj/Localized.strings",
                       "\"Only Italian\" = \"Italiano\";");
    BCBundleRef bundle = BCBundleGetBundleWithIdentifier(BCSTR("test.strings"));
    ASSERT_NE(bundle, nullptr);
    auto localized = [&](BCStringRef key, BCStringRef value) {
        return keltest::AdoptUtf8(
            BCBundleCopyLocalizedString(bundle, key, value, BCSTR("Localized")));
    };
    EXPECT_EQ(localized(BCSTR("Cancel"), nullptr), "Abbrechen");
    EXPECT_EQ(localized(BCSTR("Quote"), nullptr), "Sag \"ja\"\nbitte");
    EXPECT_EQ(localized(BCSTR("Only English"), nullptr), "English");
    EXPECT_EQ(localized(BCSTR("Only Italian"), nullptr), "Italiano");
    EXPECT_EQ(localized(BCSTR("Missing"), BCSTR("Fallback")), "Fallback");
    EXPECT_EQ(localized(BCSTR("Missing"), nullptr), "Missing");

    setenv("LANGUAGE", "", 1);
    setenv("LC_ALL", "en_GB.UTF-8", 1);
    EXPECT_EQ(localized(BCSTR("Cancel"), nullptr), "Cancel");
    unsetenv("LC_ALL");
}

TEST_F(BCBundleTest, ResourcesPreferTheLocalisedCopy) {
    auto folder = MakeBundle("test.resources");
    keltest::WriteFile(folder / "Resources/Dialogs.layout", "{}");
    keltest::WriteFile(folder / "Resources/images/_internal_a.png", "png");
    keltest::WriteFile(folder / "Resources/de.lproj/Dialogs.layout", "{}");
    BCBundleRef bundle = BCBundleGetBundleWithIdentifier(BCSTR("test.resources"));
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(PathOf(BCBundleCopyResourceURL(bundle, BCSTR("Dialogs"), BCSTR("layout"), nullptr)),
              (folder / "Resources/de.lproj/Dialogs.layout").string());
    EXPECT_EQ(
        PathOf(BCBundleCopyResourceURL(bundle, BCSTR("_internal_a.png"), nullptr, BCSTR("images"))),
        (folder / "Resources/images/_internal_a.png").string());
    EXPECT_EQ(PathOf(BCBundleCopyResourceURL(bundle, BCSTR("nothing"), BCSTR("png"), nullptr)),
              "<none>");
}

TEST_F(BCBundleTest, LoadsItsExecutable) {
    auto folder = MakeBundle("test.code", ", \"executable\": \"lib/plugin.so\"");
    std::filesystem::create_directories(folder / "lib");
    std::filesystem::copy_file(BUNDLE_PLUGIN_PATH, folder / "lib/plugin.so");
    BCBundleRef bundle = BCBundleGetBundleWithIdentifier(BCSTR("test.code"));
    ASSERT_NE(bundle, nullptr);
    EXPECT_FALSE(BCBundleIsExecutableLoaded(bundle));
    auto answer = reinterpret_cast<int (*)()>(
        BCBundleGetFunctionPointerForName(bundle, BCSTR("BundlePluginAnswer")));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_TRUE(BCBundleIsExecutableLoaded(bundle));
    EXPECT_EQ(BCBundleGetFunctionPointerForName(bundle, BCSTR("NoSuchFunction")), nullptr);

    MakeBundle("test.nocode");
    EXPECT_FALSE(BCBundleLoadExecutable(BCBundleGetBundleWithIdentifier(BCSTR("test.nocode"))));
}

TEST_F(BCBundleTest, TheLibrarysOwnBundleIsFoundInTheBuildTree) {
    unsetenv("KEL_BUNDLE_PATH");
    BCBundleRef bundle = BCBundleGetBundleWithIdentifier(BCSTR("com.velmo.KelServices"));
    ASSERT_NE(bundle, nullptr);
    EXPECT_EQ(PathOf(BCBundleCopyBundleURL(bundle)).rfind(KEL_BUILD_BUNDLE_DIR, 0), 0u);
}

TEST_F(BCBundleTest, MainBundleComesFromTheEnvironmentOrHasNoIdentifier) {
    // The main bundle is fixed at first use; this process has no Info.json beside it.
    BCBundleRef main = BCBundleGetMainBundle();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(BCBundleGetMainBundle(), main);
    EXPECT_EQ(BCBundleGetIdentifier(main), nullptr);
}

} // namespace
