#include <gtest/gtest.h>

namespace keltest {
void InstallScratchEnvironment();
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    keltest::InstallScratchEnvironment();
    return RUN_ALL_TESTS();
}
