#include "basalt/gridbrowser/TypeSelect.h"

#include <gtest/gtest.h>
#include <vector>

using basalt::gridbrowser::TypeSelect;

namespace {

std::optional<size_t> FindIn(const std::vector<std::u16string>& names,
                             const std::u16string& prefix) {
    // An empty name stands for a row that can't be chosen.
    return TypeSelect::Find(prefix, names.size(), [&](size_t i) -> std::optional<std::u16string> {
        if (names[i].empty())
            return std::nullopt;
        return names[i];
    });
}

} // namespace

TEST(TypeSelectTest, TypingQuicklyBuildsAPrefixThatAPauseStartsAgain) {
    TypeSelect typing;
    EXPECT_EQ(typing.Type(u'r', 10.0), u"r");
    EXPECT_EQ(typing.Type(u'e', 10.5), u"re");
    EXPECT_EQ(typing.Type(u'a', 11.4), u"rea");
    EXPECT_EQ(typing.Type(u'x', 11.4 + TypeSelect::kPause + 0.1), u"x");
}

TEST(TypeSelectTest, PrefixMatchesIgnoreCaseAndAccentsFollowCollation) {
    std::vector<std::u16string> names = {u"alpha", u"Beta", u"Émile", u"zeta"};
    EXPECT_EQ(FindIn(names, u"be"), 1u);
    EXPECT_EQ(FindIn(names, u"BET"), 1u);
    EXPECT_EQ(FindIn(names, u"ém"), 2u);
    std::vector<std::u16string> decomposed = {u"E\u0301mile", u"émila"};
    EXPECT_EQ(FindIn(decomposed, u"émil"), 0u) << "an accent stored apart from its letter";
}

TEST(TypeSelectTest, WithoutAMatchTheNextNameInCollationOrderIsChosen) {
    // The order of the rows needn't be by name: the nearest following name wins.
    std::vector<std::u16string> names = {u"zeta", u"delta", u"Gamma", u"alpha"};
    EXPECT_EQ(FindIn(names, u"c"), 1u) << "delta follows c";
    EXPECT_EQ(FindIn(names, u"e"), 2u) << "Gamma follows e";
    EXPECT_EQ(FindIn(names, u"zz"), 3u) << "past every name: the last row";
    EXPECT_EQ(FindIn({}, u"a"), std::nullopt);
}

TEST(TypeSelectTest, RowsThatCannotBeChosenAreSkipped) {
    std::vector<std::u16string> names = {u"alpha", u"", u"Beta", u""};
    EXPECT_EQ(FindIn(names, u"b"), 2u);
    EXPECT_EQ(FindIn(names, u"zz"), 2u) << "the last row that can be chosen";
    EXPECT_EQ(FindIn({u"", u""}, u"a"), std::nullopt);
}
