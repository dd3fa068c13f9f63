#pragma once

// Points the preferences store at an empty folder of its own. Declare it before any member that
// reads preferences when it is made, so that no value one test stored is seen by the next.

#include "tests/support/TestEnvironment.h"

#include <cstdlib>

namespace keltest {

struct FreshPreferences {
    FreshPreferences() : folder(MakeScratchFolder("config")) {
        setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    }
    std::filesystem::path folder;
};

} // namespace keltest
