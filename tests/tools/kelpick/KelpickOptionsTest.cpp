#include "tools/kelpick/KelpickOptions.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

std::optional<KelpickOptions> Parse(std::vector<const char*> words) {
    words.insert(words.begin(), "kelpick");
    return ParseKelpickOptions(static_cast<int>(words.size()), const_cast<char**>(words.data()));
}

TEST(KelpickOptions, ReadsEveryOptionOfTheAskCommands) {
    auto options =
        Parse({"ask-save", "--document", "Report", "--app", "Ledger", "--quitting", "--headless",
               "--script", "key:return", "--snapshot", "a.png", "--timeout", "2.5"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->document, "Report");
    EXPECT_EQ(options->app, "Ledger");
    EXPECT_EQ(options->action, 2u);
    EXPECT_TRUE(options->headless);
    EXPECT_EQ(options->script, "key:return");
    EXPECT_EQ(options->snapshot, "a.png");
    EXPECT_DOUBLE_EQ(options->timeout, 2.5);

    options = Parse({"ask-review", "--count", "3"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->count, 3u);
    EXPECT_FALSE(options->document);
}

TEST(KelpickOptions, ReadsEveryOptionOfTheBrowseCommands) {
    for (const char* command :
         {"open", "save", "file", "folder", "volume", "object", "new-folder"}) {
        auto options = Parse({command});
        ASSERT_TRUE(options) << command;
        EXPECT_TRUE(IsBrowseCommand(options->command));
        EXPECT_FALSE(options->multiple);
    }
    auto options =
        Parse({"open", "--dir", "/tmp/a b", "--multiple", "--types", ".TXT,Image/PNG,pdf",
               "--show-hidden", "--title", "Pick", "--message", "Which one?", "--ok-label", "Use",
               "--packages-as-folders", "--sheet", "--headless"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->dir, "/tmp/a b");
    EXPECT_TRUE(options->multiple);
    EXPECT_EQ(options->types, (std::vector<std::string>{"txt", "image/png", "pdf"}));
    EXPECT_TRUE(options->showHidden);
    EXPECT_EQ(options->title, "Pick");
    EXPECT_EQ(options->message, "Which one?");
    EXPECT_EQ(options->okLabel, "Use");
    EXPECT_TRUE(options->packagesAsFolders);
    EXPECT_TRUE(options->sheet);
    EXPECT_FALSE(IsBrowseCommand("ask-save"));
}

TEST(KelpickOptions, ReadsTheSaveCommandsOptions) {
    auto options = Parse({"save", "--name", "caf\xE9.txt", "--types", "txt,md", "--hide-extension",
                          "--no-confirm", "--dir", "/tmp"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->name, "caf\xE9.txt") << "a name that is not UTF-8 keeps its bytes";
    EXPECT_EQ(options->types, (std::vector<std::string>{"txt", "md"}));
    EXPECT_TRUE(options->hideExtension);
    EXPECT_TRUE(options->noConfirm);
    EXPECT_FALSE(options->fileSelection);

    options = Parse({"save"});
    ASSERT_TRUE(options);
    EXPECT_FALSE(options->name);
    EXPECT_FALSE(options->hideExtension);
    EXPECT_FALSE(options->noConfirm) << "replacing asks unless told not to";
}

TEST(KelpickOptions, RefusesTypeListsThatNameNoType) {
    for (const char* types : {"", ",", "txt,", ".", "image/", "/png", "a/b/c", "..txt"}) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(Parse({"open", "--types", types})) << types;
        EXPECT_NE(testing::internal::GetCapturedStderr().find("--types"), std::string::npos);
    }
}

TEST(KelpickOptions, RefusesWhatItCannotRun) {
    EXPECT_FALSE(Parse({}));
    EXPECT_FALSE(Parse({"ask-everything"}));
    EXPECT_FALSE(Parse({"ask-save", "--document"}));
    EXPECT_FALSE(Parse({"ask-save", "--colour", "red"}));
    EXPECT_FALSE(Parse({"ask-review"}));
    EXPECT_FALSE(Parse({"ask-review", "--count", "three"}));
    EXPECT_FALSE(Parse({"ask-save", "--timeout", "0"}));
    EXPECT_FALSE(Parse({"ask-save", "--timeout", "-1"}));
}

} // namespace
