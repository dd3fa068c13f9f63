#include <gtest/gtest.h>
#include <kel/KelServices.h>

namespace {

// The preview engine is not in yet, so no reference can be made; calls on one are refused.
TEST(KelPreviewCalls, NoReferenceIsARefusedReference) {
    KelPreviewReference reference = KelCreatePreviewReference();
    EXPECT_EQ(reference, nullptr);
    Rect bounds{0, 0, 100, 100};
    EXPECT_EQ(KelSetupPreview(reference, nullptr, nullptr, &bounds), paramErr);
    EXPECT_EQ(KelSetPreviewArea(reference, &bounds), paramErr);
    EXPECT_EQ(KelLoadPreview(reference, nullptr, nullptr), paramErr);
    EXPECT_EQ(KelDrawPreviewInContext(reference, nullptr), paramErr);
    EXPECT_EQ(KelCreatePreview(nullptr, 0, nullptr, 0), paramErr);
    KelDisposePreviewReference(reference);
}

} // namespace
