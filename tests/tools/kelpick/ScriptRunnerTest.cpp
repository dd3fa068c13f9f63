#include "tools/kelpick/ScriptRunner.h"

#include <gtest/gtest.h>

namespace {

TEST(ScriptRunner, ParsesKeysWithModifiersAndTheOtherSteps) {
    auto steps = ParseScript("wait:idle;key:cmd-shift-d;key:return;type:a b;click:3;"
                             "snapshot:x.png;;key:escape");
    ASSERT_TRUE(steps);
    ASSERT_EQ(steps->size(), 7u);
    EXPECT_EQ((*steps)[0].kind, ScriptStep::Kind::waitIdle);
    EXPECT_EQ((*steps)[1].kind, ScriptStep::Kind::key);
    EXPECT_EQ((*steps)[1].keyCode, kVK_ANSI_D);
    EXPECT_EQ((*steps)[1].modifiers, uint32_t{cmdKey | shiftKey});
    EXPECT_EQ((*steps)[2].keyCode, kVK_Return);
    EXPECT_EQ((*steps)[3].text, "a b");
    EXPECT_EQ((*steps)[4].item, 3);
    EXPECT_EQ((*steps)[5].text, "x.png");
    EXPECT_EQ((*steps)[6].keyCode, kVK_Escape);
}

TEST(ScriptRunner, RefusesStepsItDoesNotKnow) {
    for (const char* script : {"key:", "key:cmd-", "key:hyperspace", "click:0", "click:two",
                               "wait:forever", "snapshot:", "jump:1", "key:\xC3\xA9"}) {
        EXPECT_FALSE(ParseScript(script)) << script;
    }
    EXPECT_TRUE(ParseScript(""));
}

} // namespace
