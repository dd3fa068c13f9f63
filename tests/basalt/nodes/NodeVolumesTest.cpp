#include "basalt/nodes/NodeVolumes.h"

#include <gtest/gtest.h>

using basalt::nodes::DecodeDeviceLinkName;

namespace {

// udev names the links of /dev/disk/by-label with escapes; people see the label itself.
TEST(NodeVolumesTest, LabelsLoseTheEscapesOfTheirDeviceLinks) {
    EXPECT_EQ(DecodeDeviceLinkName("My\\x20Passport"), "My Passport");
    EXPECT_EQ(DecodeDeviceLinkName("a\\x2fb\\x5C"), "a/b\\");
    EXPECT_EQ(DecodeDeviceLinkName("caf\\xc3\\xa9"), "caf\xc3\xa9");
    // Anything that is not a whole escape stays as it is.
    EXPECT_EQ(DecodeDeviceLinkName("odd\\x2"), "odd\\x2");
    EXPECT_EQ(DecodeDeviceLinkName("odd\\xzz\\"), "odd\\xzz\\");
    EXPECT_EQ(DecodeDeviceLinkName("PLAIN"), "PLAIN");
}

} // namespace
