// Toolbox tests run on the headless backend whatever display the machine has.

#include <cstdlib>

namespace {
[[maybe_unused]] const int kHeadless = setenv("KEL_BACKEND", "headless", 1);
}
