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
