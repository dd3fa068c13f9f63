#include "tests/support/TestEnvironment.h"
#include "tools/kelpick/KelpickOptions.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <vector>

namespace {

std::vector<const char*> Words(std::vector<const char*> words) {
    words.insert(words.begin(), "kelpick");
    return words;
}

std::optional<KelpickOptions> Parse(std::vector<const char*> words) {
    words = Words(std::move(words));
    return ParseFileSelectionOptions(static_cast<int>(words.size()),
                                     const_cast<char**>(words.data()));
}

bool IsFront(std::vector<const char*> words) {
    words = Words(std::move(words));
    return IsFileSelection(static_cast<int>(words.size()), const_cast<char**>(words.data()));
}

TEST(FileSelectionOptions, OnlyACommandLineWithoutACommandGoesToTheFront) {
    EXPECT_TRUE(IsFront({"--file-selection"}));
    EXPECT_TRUE(IsFront({"--title=Pick", "--file-selection", "--save"}));
    EXPECT_FALSE(IsFront({"open", "--file-selection"}));
    EXPECT_FALSE(IsFront({"--save"}));
    EXPECT_FALSE(IsFront({}));
}

TEST(FileSelectionOptions, TakesValuesAfterAnEqualsSignOrAsTheNextWord) {
    auto options = Parse({"--file-selection", "--title=A = B", "--separator", ":", "--multiple",
                          "--timeout=7", "--headless", "--script", "key:return", "--width=600",
                          "--height", "400", "--modal"});
    ASSERT_TRUE(options);
    EXPECT_TRUE(options->fileSelection);
    EXPECT_EQ(options->title, "A = B") << "only the first = separates";
    EXPECT_EQ(options->separator, ":");
    EXPECT_TRUE(options->multiple);
    EXPECT_DOUBLE_EQ(options->timeout, 7);
    EXPECT_TRUE(options->timeoutGiven);
    EXPECT_TRUE(options->headless);
    EXPECT_EQ(options->script, "key:return");
    EXPECT_EQ(options->command, "open");

    options = Parse({"--file-selection", "--separator="});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->separator, "");
    EXPECT_FALSE(options->timeoutGiven) << "a person on a display is not hurried unless asked";
}

// That tool replaces a file without asking unless told to ask.
TEST(FileSelectionOptions, ChoosesTheCommandAndAsksBeforeReplacingOnlyWhenTold) {
    auto options = Parse({"--file-selection", "--save"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->command, "save");
    EXPECT_TRUE(options->noConfirm);

    options = Parse({"--file-selection", "--save", "--confirm-overwrite"});
    ASSERT_TRUE(options);
    EXPECT_FALSE(options->noConfirm);

    options = Parse({"--file-selection", "--directory"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->command, "folder");
    EXPECT_FALSE(options->noConfirm);
}

TEST(FileSelectionOptions, AFilenameIsAFolderOrAFileInItsFolder) {
    const std::filesystem::path folder = keltest::MakeScratchFolder("front");
    const std::string folderText = folder.string();

    auto options = Parse({"--file-selection", "--save", ("--filename=" + folderText).c_str()});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->dir, folderText);
    EXPECT_FALSE(options->name);

    const std::string file = folderText + "/report.txt";
    options = Parse({"--file-selection", "--save", "--filename", file.c_str()});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->dir, folderText);
    EXPECT_EQ(options->name, "report.txt");

    // A folder still to be made is named by its trailing slash.
    const std::string missing = folderText + "/later/";
    options = Parse({"--file-selection", ("--filename=" + missing).c_str()});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->dir, missing);
    EXPECT_FALSE(options->name);

    std::filesystem::current_path(folder);
    options = Parse({"--file-selection", "--save", "--filename=notes.md"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->dir, std::filesystem::current_path().string());
    EXPECT_EQ(options->name, "notes.md");
}

TEST(FileSelectionOptions, ReadsFiltersWithOrWithoutAName) {
    auto options = Parse({"--file-selection", "--file-filter=Images | *.png  *.JPG ",
                          "--file-filter", "*.txt *.md", "--file-filter=Odd|*.x"});
    ASSERT_TRUE(options);
    ASSERT_EQ(options->filters.size(), 3u);
    EXPECT_EQ(options->filters[0].name, "Images");
    EXPECT_EQ(options->filters[0].patterns, (std::vector<std::string>{"*.png", "*.JPG"}));
    EXPECT_EQ(options->filters[1].name, "*.txt *.md");
    EXPECT_EQ(options->filters[1].patterns, (std::vector<std::string>{"*.txt", "*.md"}));
    EXPECT_EQ(options->filters[2].name, "Odd");
    EXPECT_EQ(options->filters[2].patterns, (std::vector<std::string>{"*.x"}));
}

TEST(FileSelectionOptions, RefusesWhatThatToolWouldRefuse) {
    for (std::vector<const char*> words :
         std::vector<std::vector<const char*>>{{"--file-selection", "--colour=red"},
                                               {"--file-selection", "--save=yes"},
                                               {"--file-selection", "--filename"},
                                               {"--file-selection", "--file-filter=Nothing |"},
                                               {"--file-selection", "--file-filter= "},
                                               {"--file-selection", "--timeout=0"},
                                               {"--file-selection", "--timeout=soon"}}) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(Parse(words)) << words.back();
        EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("kelpick: ", 0), 0u);
    }
    auto options = Parse({"--file-selection", "--help"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->request, KelpickOptions::Request::help);
}

} // namespace
