// The open example as its user meets it: its dialog comes up on the folder it was given, a
// person picks files (here the headless driver) and the example prints their paths or URLs.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/gridbrowser/GridBrowser.h"
#include "tests/support/TestEnvironment.h"

#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

extern "C" int RunOpenFilesExample(int argc, char** argv);

using basalt::headless::HeadlessDriver;

namespace {

constexpr uint32_t kKelsSignature = 0x6B656C73; // "kels"

// Clicks the browser's row of that name in the front window, as a person who found it would.
void ClickRow(const std::string& name, uint32_t modifiers) {
    ControlID id{kKelsSignature, 11};
    ControlRef browser = nullptr;
    ASSERT_EQ(GetControlByID(FrontNonFloatingWindow(), &id, &browser), noErr);
    BCStringRef text = BCStringCreateWithCString(nullptr, name.c_str(), kBCStringEncodingUTF8);
    GridBrowserItemID item = 0;
    Rect row{};
    EXPECT_EQ(FindGridBrowserItemNamed(browser, 0, text, &item), noErr) << name;
    BCRelease(text);
    GetGridBrowserItemPartBounds(browser, item, kGridBrowserNameProperty, &row);
    HeadlessDriver::ClickAt(GetControlOwner(browser),
                            {BGFloat(row.left + row.right) / 2, BGFloat(row.top + row.bottom) / 2},
                            modifiers);
}

// Once the dialog shows: clicks the first named row, command-clicks the others, then presses
// return; each after the loop has dispatched the one before.
void PickWhenShown(std::vector<std::string> names, size_t index = 0) {
    HeadlessDriver::Soon(
        [names, index] {
            if (index == names.size()) {
                HeadlessDriver::PressKey(kVK_Return);
                return;
            }
            ClickRow(names[index], index > 0 ? cmdKey : 0);
            PickWhenShown(names, index + 1);
        },
        index == 0 ? 0.2 : 0.1);
}

// Runs the example with the arguments and gives what it printed and its exit status.
std::pair<std::string, int> RunExample(std::vector<std::string> arguments) {
    std::vector<char*> argv{const_cast<char*>("open_files")};
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    const std::filesystem::path out = keltest::MakeScratchFolder("out") / "stdout";
    std::fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    const int file = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(file, STDOUT_FILENO);
    const int status = RunOpenFilesExample(int(argv.size() - 1), argv.data());
    std::fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    close(file);
    return {keltest::ReadFile(out), status};
}

TEST(OpenFilesExample, PrintsTheChosenFilesAsPathsOrAsFileURLs) {
    const std::filesystem::path folder = keltest::MakeScratchFolder("example docs");
    keltest::WriteFile(folder / "a.txt", "a");
    keltest::WriteFile(folder / "b c.txt", "b");
    keltest::WriteFile(folder / "d.txt", "d");

    PickWhenShown({"a.txt", "b c.txt"});
    auto [paths, status] = RunExample({folder.string()});
    EXPECT_EQ(status, 0);
    EXPECT_EQ(paths, (folder / "a.txt").string() + "\n" + (folder / "b c.txt").string() + "\n");

    PickWhenShown({"b c.txt"});
    auto [urls, urlStatus] = RunExample({"-u", folder.string()});
    EXPECT_EQ(urlStatus, 0);
    EXPECT_EQ(urls.rfind("file://", 0), 0u) << urls;
    EXPECT_NE(urls.find("/b%20c.txt"), std::string::npos) << urls;
}

TEST(OpenFilesExample, CancelPrintsNothingAndExitsOne) {
    const std::filesystem::path folder = keltest::MakeScratchFolder("cancelled");
    HeadlessDriver::Soon([] { HeadlessDriver::PressKey(kVK_Escape); }, 0.2);
    auto [printed, status] = RunExample({folder.string()});
    EXPECT_EQ(status, 1);
    EXPECT_EQ(printed, "");
}

TEST(OpenFilesExample, AFolderThatIsNotThereIsAnError) {
    auto [printed, status] = RunExample({"/no/such/folder/here"});
    EXPECT_EQ(status, 2);
    EXPECT_EQ(printed, "");
}

} // namespace
