#include "basalt/types/BLRegistry.h"
#include "basalt/types/BUTypes.h"
#include "tests/support/TestEnvironment.h"

#include <gtest/gtest.h>

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

// Types are claimed only by the entry itself, never by its actions or a deleted entry.
TEST(BLApplicationsTest, DesktopFilesAndCachesClaimFromTheirOwnGroup) {
    using Types = std::vector<std::string>;
    EXPECT_EQ(basalt::types::DesktopFileTypes("[Desktop Entry]\nName=A\n"
                                              "MimeType = text/plain; image/png ;\r\n"
                                              "[Desktop Action new]\nMimeType=video/x-other\n"),
              (Types{"text/plain", "image/png"}));
    EXPECT_EQ(
        basalt::types::DesktopFileTypes("[Desktop Entry]\nMimeType=text/plain;\nHidden=true\n"),
        Types{});
    EXPECT_EQ(basalt::types::DesktopFileTypes("MimeType=text/plain;\n"), Types{});
    auto claims = basalt::types::MimeInfoCacheClaims(
        "[MIME Cache]\ntext/plain=a.desktop;b.desktop;\nimage/png=\n[Other]\nx/y=c.desktop\n");
    ASSERT_EQ(claims.size(), 1u);
    EXPECT_EQ(claims[0], std::make_pair(std::string("text/plain"), std::string("a.desktop")));
}

} // namespace
