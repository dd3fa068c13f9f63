#include "basalt/core/BCString.h"
#include "basalt/core/BCURL.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace {

// The password database's home folder of a user; empty when there is no such user.
std::string HomeFromDatabase(const char* name) {
    long suggested = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(suggested > 0 ? size_t(suggested) : 16384);
    passwd entry{};
    passwd* found = nullptr;
    int failed = name != nullptr
                     ? getpwnam_r(name, &entry, buffer.data(), buffer.size(), &found)
                     : getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return failed == 0 && found != nullptr && found->pw_dir != nullptr ? found->pw_dir : "";
}

} // namespace

extern "C" BCURLRef BCCopyHomeDirectoryURLForUser(BCStringRef userName) {
    std::string home;
    if (userName == nullptr) {
        // $HOME first: it is what the user (and a test) chose for this session.
        const char* variable = std::getenv("HOME");
        home = variable != nullptr && variable[0] == '/' ? variable : HomeFromDatabase(nullptr);
    } else {
        std::string name = basalt::UTF8Of(userName);
        if (!name.empty())
            home = HomeFromDatabase(name.c_str());
    }
    return home.empty() ? nullptr : basalt::MakeFileURL(home, true);
}
