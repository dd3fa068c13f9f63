#include "kel/interface/KelStartup.h"

#include "kel/interface/KelLinkage.h"
#include "kel/interface/KelProcess.h"

#include <gtest/gtest.h>

namespace {

bool Same(const TStringRef* string, BCStringRef expected) {
    return string != nullptr &&
           BCStringCompare(string->AsBCStringRef(), expected, 0) == kBCCompareEqualTo;
}

TEST(KelStartup, InitializationMakesTheProcessWideStringsOnce) {
    EnsureKelInitialized();
    ASSERT_TRUE(gKelInitialized);
    EXPECT_TRUE(Same(kSlashStr, BCSTR("/")));
    EXPECT_TRUE(Same(kTildeStr, BCSTR("~")));
    EXPECT_TRUE(Same(kHyphenStr, BCSTR("-")));
    EXPECT_TRUE(Same(kColonStr, BCSTR(":")));
    // The build tree's bundle is on the search path of every test.
    ASSERT_NE(gCommandKeys, nullptr);
    EXPECT_GE(gCommandKeys->Length(), 14);

    TStringRef* slash = kSlashStr;
    EnsureKelInitialized();
    EXPECT_EQ(kSlashStr, slash);
}

TEST(KelStartup, ProcessWithoutBundleIdentifierHasAnEmptyIdAndNoKnownQuirks) {
    EXPECT_EQ(MainBundleIdentifier(), nullptr);
    ASSERT_NE(KelGetProcessID(), nullptr);
    EXPECT_EQ(BCStringGetLength(KelGetProcessID()), 0);
    EXPECT_FALSE(ShouldExpectClientToRunEventLoopDuringPreviewDraw());
}

TEST(KelStartup, SymbolLookupFindsLoadedCodeAndReportsWhatIsMissing) {
    EXPECT_NE(LookupSymbol("BCRetain"), nullptr);

    testing::internal::CaptureStderr();
    EXPECT_EQ(LookupSymbol("KelNoSuchRoutine"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

    testing::internal::CaptureStderr();
    EXPECT_EQ(LookupOrNullSymbol("KelNoSuchRoutine"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Could not resolve dynamic linkage \"KelNoSuchRoutine\"\n");
}

} // namespace
