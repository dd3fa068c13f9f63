// bench_dialog FOLDER: what a user waits for. First a search: a process of this program with a
// HOME of 100,000 files in nested folders puts up a headless open dialog and searches its home
// for a typed name (DialogSearchBench). Then a whole kelpick process puts up the open dialog
// on a folder of 100,000 entries, finds a row near the end of the painted, sorted list, and is
// cancelled; against it, a bare process lists the same folder with getdents64 and sorts it by
// ICU sort keys. Both are timed from spawn to exit, in the same run, and the median ratio of
// several runs is the last line. The dialogs run with HOMEs of their own, so that nothing of
// the user's is read or written.

#include "DialogSearchBench.h"
#include "ListingBaseline.h"
#include "QueryBench.h"

#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

using listingbaseline::Seconds;

namespace {

constexpr int kRuns = 5;
// "Document 99998.html": the list holds it only once the whole folder is listed.
constexpr const char* kLastRowScript = "view:list;select:Document 99998.html;key:escape";

// Pointers to the entries, ending with null, as spawning takes them.
std::vector<char*> Pointers(std::vector<std::string>& entries) {
    std::vector<char*> pointers;
    for (std::string& entry : entries)
        pointers.push_back(entry.data());
    pointers.push_back(nullptr);
    return pointers;
}

// Runs the program to its end; the seconds it took, or a negative value if it failed.
double TimeProcess(std::vector<std::string> arguments, char** environment, int wantedExit) {
    std::vector<char*> argv = Pointers(arguments);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawn(&child, argv[0], nullptr, nullptr, argv.data(), environment) != 0)
        return -1;
    int status = 0;
    waitpid(child, &status, 0);
    const double seconds = Seconds(start);
    return WIFEXITED(status) && WEXITSTATUS(status) == wantedExit ? seconds : -1;
}

// The environment with HOME and the bundle replaced.
std::vector<std::string> DialogEnvironment(const std::string& home) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        std::string text = *entry;
        if (!text.starts_with("HOME=") && !text.starts_with("KEL_BUNDLE_PATH=") &&
            !text.starts_with("XDG_"))
            environment.push_back(text);
    }
    environment.push_back("HOME=" + home);
    environment.push_back("KEL_BUNDLE_PATH=" KEL_BUILD_BUNDLE_DIR);
    return environment;
}

// A HOME whose documents folder is the folder: where the dialog starts when nothing else says.
std::string MakeHome(const std::string& base, const std::string& folder) {
    const std::string home = base + "/dialog-home";
    std::filesystem::remove_all(home);
    std::filesystem::create_directories(home + "/.config");
    std::ofstream(home + "/.config/user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"" << folder << "\"\n";
    return home;
}

// The search part, in a process of its own with the tree as its HOME; false if it failed.
bool MeasureSearch(const std::string& self, const std::string& base) {
    const std::string home = base + "/search-home";
    kelbench::MakeQueryTree(home);
    std::vector<std::string> environment = DialogEnvironment(home);
    std::vector<char*> envp = Pointers(environment);
    std::fflush(stdout);
    if (TimeProcess({self, "--search", home}, envp.data(), 0) < 0) {
        std::fprintf(stderr, "the search process failed\n");
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::string(argv[1]) == "--baseline") {
        return listingbaseline::Baseline(argv[2]) > 0 ? 0 : 1;
    }
    if (argc == 3 && std::string(argv[1]) == "--search") {
        setenv("KEL_BACKEND", "headless", 1);
        return kelbench::MeasureDialogSearch(argv[2]);
    }
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const std::string base = std::filesystem::absolute(argv[1]).lexically_normal().string();
    const std::string self = std::filesystem::canonical("/proc/self/exe").string();
    if (!MeasureSearch(self, base)) {
        return 1;
    }
    const std::string large = listingbaseline::MakeFolder(base, 100000);
    std::vector<std::string> environment = DialogEnvironment(MakeHome(base, large));
    std::vector<char*> envp = Pointers(environment);

    std::vector<double> ratios;
    for (int run = 1; run <= kRuns; ++run) {
        const double baseline = TimeProcess({self, "--baseline", large}, environ, 0);
        const double dialog = TimeProcess({KELPICK_PATH, "open", "--headless", "--dir", large,
                                           "--timeout", "60", "--script", kLastRowScript},
                                          envp.data(), 1);
        if (baseline <= 0 || dialog <= 0) {
            std::fprintf(stderr, "run %d: a process failed (baseline %.3f s, dialog %.3f s)\n", run,
                         baseline, dialog);
            return 1;
        }
        std::printf("run %d: bare listing %.1f ms, dialog %.1f ms\n", run, baseline * 1e3,
                    dialog * 1e3);
        ratios.push_back(dialog / baseline);
    }
    std::printf("dialog ratio at 100000: %.2f\n", listingbaseline::Median(ratios));
    return 0;
}
