// The views' pictures are laid out at their plain size and drawn from their denser files.

#include "kel/widgets/views/BundlePicture.h"

#include <gtest/gtest.h>

TEST(BundlePictureTest, EveryPictureHasItsDenserTwinAtTwiceThePixels) {
    for (const char* name :
         {"_internal_BlueSelection", "_internal_GreySelection", "_internal_mb_eject_click",
          "_internal_mb_eject_roll", "_internal_mb_eject_white", "_internal_mb_eject_gray",
          "_internal_scope-press-left", "_internal_scope-press-mid", "_internal_scope-press-right",
          "_internal_scope-roll-left", "_internal_scope-roll-mid", "_internal_scope-roll-right",
          "_internal_scope-select-left", "_internal_scope-select-mid",
          "_internal_scope-select-right"}) {
        BundlePicture picture = LoadBundlePicture(name);
        ASSERT_NE(picture.image, nullptr) << name;
        EXPECT_GT(picture.size.width, 0) << name;
        EXPECT_EQ(BGImageGetWidth(picture.image), size_t(2 * picture.size.width)) << name;
        EXPECT_EQ(BGImageGetHeight(picture.image), size_t(2 * picture.size.height)) << name;
        BGImageRelease(picture.image);
    }
    EXPECT_EQ(LoadBundlePicture("_internal_no-such-picture").image, nullptr);
}
