#include "basalt/types/BLRegistry.h"
#include "basalt/types/BUTypes.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

constexpr OSType Code(const char (&c)[5]) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 |
           uint32_t(uint8_t(c[2])) << 8 | uint32_t(uint8_t(c[3]));
}

// The user's applications folder is read once, so the test writes it before the first query.
TEST(BLApplicationsTest, ExtensionsClaimedByDesktopFilesAndKindStrings) {
    keltest::WriteFile(keltest::ScratchHome() / ".local/share/applications/viewer.desktop",
                       "[Desktop Entry]\nName=Viewer\nExec=viewer %f\n"
                       "MimeType=image/x-kel-test;application/x-kel-sample;\n");
    keltest::WriteFile(keltest::ScratchHome() / ".local/share/mime/globs2",
                       "50:application/x-kel-sample:*.kelsample\n");
    EXPECT_EQ(basalt::types::ApplicationForType("application/x-kel-sample").value_or(""),
              (keltest::ScratchHome() / ".local/share/applications/viewer.desktop").string());
    EXPECT_FALSE(basalt::types::ApplicationForType("application/x-kel-unclaimed").has_value());
    EXPECT_EQ(BLGetApplicationForInfo(0, 0, BCSTR("nosuchextension"), kBLRoleAll, nullptr, nullptr),
              kBLApplicationNotFoundErr);

    BCStringRef kind = nullptr;
    ASSERT_EQ(BLCopyKindStringForInfo(Code("TEXT"), 0, nullptr, &kind), noErr);
    EXPECT_EQ(basalt::types::Utf8(kind), "plain text document");
    BCRelease(kind);
    EXPECT_EQ(BLCopyKindStringForInfo(Code("zzzz"), 0, nullptr, &kind), kBLApplicationNotFoundErr);
}

TEST(BLApplicationsTest, CacheLinesWithoutTypeOrFileClaimNothing) {
    std::istringstream cache("[MIME Cache]\n=viewer.desktop;\ntext/plain=\nimage/png=;x.desktop\n"
                             "image/gif=viewer.desktop;other.desktop;\n"
                             "text/html=/etc/passwd\ntext/css=../up.desktop\n");
    basalt::types::Claims claims;
    basalt::types::ReadMimeinfoCache(claims, "/apps", cache);
    EXPECT_EQ(claims, (basalt::types::Claims{{"image/png", "/apps/x.desktop"},
                                             {"image/gif", "/apps/viewer.desktop"}}));

    std::istringstream entry("[Desktop Entry]\nMimeType=;;text/x-a;;text/x-b\n");
    claims.clear();
    basalt::types::ReadDesktopEntry(claims, "/apps/a.desktop", entry);
    EXPECT_EQ(claims, (basalt::types::Claims{{"text/x-a", "/apps/a.desktop"},
                                             {"text/x-b", "/apps/a.desktop"}}));
}

} // namespace
