#include "tools/kelpick/ScriptStep.h"

#include <basalt/BasaltToolbox.h>
#include <gtest/gtest.h>

namespace {

std::vector<ScriptStep> Parse(const char* script) {
    auto steps = ParseScript(script);
    EXPECT_TRUE(steps) << script;
    return steps.value_or(std::vector<ScriptStep>{});
}

TEST(ScriptSteps, ParsesKeysWithModifiersAndTheOtherSteps) {
    auto steps = Parse("wait:idle;key:cmd-shift-d;key:return;type:a b;click:3;"
                       "snapshot:x.png;;key:escape");
    ASSERT_EQ(steps.size(), 7u);
    EXPECT_EQ(steps[0].kind, ScriptStep::Kind::waitIdle);
    EXPECT_EQ(steps[1].kind, ScriptStep::Kind::key);
    EXPECT_EQ(steps[1].keyCode, kVK_ANSI_D);
    EXPECT_EQ(steps[1].modifiers, uint32_t{cmdKey | shiftKey});
    EXPECT_EQ(steps[2].keyCode, kVK_Return);
    EXPECT_EQ(steps[3].text, "a b");
    EXPECT_EQ(steps[4].kind, ScriptStep::Kind::click);
    EXPECT_EQ(steps[4].item, 3);
    EXPECT_EQ(steps[5].text, "x.png");
    EXPECT_EQ(steps[6].keyCode, kVK_Escape);
}

TEST(ScriptSteps, KnowsTheNavigationKeysAndBothSpellingsOfOption) {
    auto steps = Parse("key:home;key:end;key:pageup;key:pagedown;key:option-up;key:opt-down;"
                       "key:cmd-option-shift-g;key:7;key:enter");
    ASSERT_EQ(steps.size(), 9u);
    EXPECT_EQ(steps[0].keyCode, kVK_Home);
    EXPECT_EQ(steps[1].keyCode, kVK_End);
    EXPECT_EQ(steps[2].keyCode, kVK_PageUp);
    EXPECT_EQ(steps[3].keyCode, kVK_PageDown);
    EXPECT_EQ(steps[4].modifiers, uint32_t{optionKey});
    EXPECT_EQ(steps[4].keyCode, kVK_UpArrow);
    EXPECT_EQ(steps[5].modifiers, uint32_t{optionKey});
    EXPECT_EQ(steps[6].modifiers, uint32_t{cmdKey | optionKey | shiftKey});
    EXPECT_EQ(steps[6].character, u'g');
    EXPECT_EQ(steps[7].character, u'7');
    EXPECT_EQ(steps[8].keyCode, kVK_ANSI_KeypadEnter);
}

TEST(ScriptSteps, RowsButtonsViewsAndWaitsAreReadWithWhatTheyName) {
    auto steps = Parse("select:a b.txt;select+:c:d;open:Docs;click:Open;click:12;side:Home;"
                       "view:list;view:column;wait:250;popup:Text (.txt)");
    ASSERT_EQ(steps.size(), 10u);
    EXPECT_EQ(steps[0].kind, ScriptStep::Kind::select);
    EXPECT_EQ(steps[0].text, "a b.txt");
    EXPECT_EQ(steps[0].modifiers, 0u);
    EXPECT_EQ(steps[1].kind, ScriptStep::Kind::select);
    EXPECT_EQ(steps[1].text, "c:d") << "only the first colon separates";
    EXPECT_EQ(steps[1].modifiers, uint32_t{cmdKey});
    EXPECT_EQ(steps[2].kind, ScriptStep::Kind::open);
    EXPECT_EQ(steps[3].kind, ScriptStep::Kind::clickLabel);
    EXPECT_EQ(steps[3].text, "Open");
    EXPECT_EQ(steps[4].kind, ScriptStep::Kind::click);
    EXPECT_EQ(steps[4].item, 12);
    EXPECT_EQ(steps[5].kind, ScriptStep::Kind::side);
    EXPECT_FALSE(steps[6].columnView);
    EXPECT_TRUE(steps[7].columnView);
    EXPECT_EQ(steps[8].kind, ScriptStep::Kind::wait);
    EXPECT_DOUBLE_EQ(steps[8].seconds, 0.25);
    EXPECT_EQ(steps[9].kind, ScriptStep::Kind::popup);
    EXPECT_EQ(steps[9].text, "Text (.txt)");
}

TEST(ScriptSteps, RefusesStepsItDoesNotKnowNamingTheStep) {
    for (const char* script :
         {"key:", "key:cmd-", "key:hyperspace", "key:option-", "click:0", "click:", "wait:forever",
          "wait:-5", "wait:600001", "snapshot:", "jump:1", "key:\xC3\xA9",
          "select:", "open:", "side:", "popup:", "view:icons", "view:"}) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(ParseScript(std::string("wait:idle;") + script)) << script;
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said.rfind("kelpick: step 2: ", 0), 0u) << said;
    }
    EXPECT_TRUE(ParseScript(""));
}

} // namespace
