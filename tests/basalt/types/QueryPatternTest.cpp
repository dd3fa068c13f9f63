#include "basalt/types/QueryPattern.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using basalt::types::PatternModifiers;
using basalt::types::QueryPattern;

namespace {

QueryPattern Pattern(const std::u32string& text, PatternModifiers modifiers = {},
                     std::vector<bool> escaped = {}) {
    return QueryPattern(text, escaped, modifiers);
}

constexpr PatternModifiers kCase{true, false, false};
constexpr PatternModifiers kCaseDiacritics{true, true, false};
constexpr PatternModifiers kTyped{true, true, true};

TEST(QueryPatternTest, WildcardsMatchRunsAndSingleCharactersOfTheWholeValue) {
    EXPECT_TRUE(Pattern(U"*.txt").Matches("notes.txt"));
    EXPECT_FALSE(Pattern(U"*.txt").Matches("notes.txt.bak"));
    EXPECT_TRUE(Pattern(U"a?c").Matches("abc"));
    EXPECT_FALSE(Pattern(U"a?c").Matches("ac"));
    EXPECT_TRUE(Pattern(U"a**b***c").Matches("a-b-c"));
    EXPECT_TRUE(Pattern(U"*").Matches(""));
    EXPECT_FALSE(Pattern(U"report").Matches("report2"));
}

TEST(QueryPatternTest, EscapedWildcardsStandForThemselves) {
    QueryPattern star = Pattern(U"a*", {}, {false, true});
    EXPECT_TRUE(star.Matches("a*"));
    EXPECT_FALSE(star.Matches("ab"));
    EXPECT_FALSE(star.HasWildcards());
}

TEST(QueryPatternTest, ModifiersFoldCaseAndDiacritics) {
    EXPECT_FALSE(Pattern(U"resume").Matches("Resume"));
    EXPECT_TRUE(Pattern(U"resume", kCase).Matches("RESUME"));
    EXPECT_FALSE(Pattern(U"resume", kCase).Matches("R\u00e9sum\u00e9"));
    EXPECT_TRUE(Pattern(U"resume", kCaseDiacritics).Matches("R\u00c9SUM\u00c9"));
    // A name stored decomposed matches the same way.
    EXPECT_TRUE(Pattern(U"resume", kCaseDiacritics).Matches("Re\u0301sume\u0301"));
    EXPECT_TRUE(Pattern(U"stra\u00dfe", kCase).Matches("STRA\u00dfE"));
}

TEST(QueryPatternTest, WordMatchesStartAtWordsOfTheName) {
    QueryPattern rep = Pattern(U"rep*", kTyped);
    for (const char* name : {"report.pdf", "Annual Report.pdf", "annual_report", "AnnualReport",
                             "2024rep", "HTMLReport", "\xc3\xa9t\xc3\xa9-Rep"})
        EXPECT_TRUE(rep.Matches(name)) << name;
    for (const char* name : {"prepare.txt", "deprep", "HTMLREP"})
        EXPECT_FALSE(rep.Matches(name)) << name;
    // Without a trailing star the typed text must be a whole word.
    QueryPattern word = Pattern(U"pdf", kTyped);
    EXPECT_TRUE(word.Matches("report.pdf"));
    EXPECT_FALSE(word.Matches("report.pdfx"));
    EXPECT_TRUE(Pattern(U"annual rep*", kTyped).Matches("My Annual Report"));
}

TEST(QueryPatternTest, LiteralsAndPrefixesMatchAtTheEdgesOfTheName) {
    EXPECT_TRUE(Pattern(U"rep*", kTyped).Matches("Annual rep"));
    EXPECT_FALSE(Pattern(U"report", kTyped).Matches("rep"));
    EXPECT_FALSE(Pattern(U"report*", kTyped).Matches("Annual repo"));
    EXPECT_TRUE(Pattern(U"rep*", kCase).Matches("Report"));
    EXPECT_FALSE(Pattern(U"rep*", kCase).Matches("a rep"));
    EXPECT_TRUE(Pattern(U"", kCase).Matches(""));
    EXPECT_FALSE(Pattern(U"", kCase).Matches("a"));
    EXPECT_FALSE(Pattern(U"rep.", kTyped).Matches("rep.pdf"));
}

// ASCII names take a shorter way through folding; a character beyond ASCII that starts no
// word sends the same name the long way, which must find the same words.
TEST(QueryPatternTest, AsciiNamesFindTheWordsOtherNamesDo) {
    const std::vector<QueryPattern> patterns = {
        Pattern(U"rep*", kTyped), Pattern(U"report", kTyped), Pattern(U"file", kTyped),
        Pattern(U"2024", kTyped), Pattern(U"*port", kTyped),  Pattern(U"an?ual*", kTyped)};
    for (std::string name : {"report.pdf", "Annual Report.pdf", "annual_report", "AnnualReport",
                             "2024rep", "HTMLReport", "HTMLFile", "HTMLREP", "prepare", "x2024y",
                             "reporting", "Report2024", "", "  report  "}) {
        for (const QueryPattern& pattern : patterns)
            EXPECT_EQ(pattern.Matches(name), pattern.Matches("\u00b7" + name)) << name;
    }
}

TEST(QueryPatternTest, BytesThatAreNotUtf8DoNotBreakMatching) {
    EXPECT_TRUE(Pattern(U"*x", kTyped).Matches("\xff\xfe x"));
    EXPECT_FALSE(Pattern(U"a", kTyped).Matches("\xff"));
}

} // namespace
