#pragma once

// One quoted value of a query: a pattern of literal characters and the wildcards * and ?,
// with the modifiers c (ignore case), d (ignore diacritics) and w (match at word starts).
// Subjects are UTF-8 (bytes that are not UTF-8 count as U+FFFD). A pattern is immutable once
// made, so worker threads share one freely.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace basalt::types {

struct PatternModifiers {
    bool ignoreCase = false;
    bool ignoreDiacritics = false;
    bool words = false;
};

class QueryPattern {
public:
    // text is the value with its escapes resolved; escaped marks which of its characters
    // (by UTF-32 index) were escaped and so stand for themselves, never as wildcards.
    QueryPattern(const std::u32string& text, const std::vector<bool>& escaped,
                 PatternModifiers modifiers);

    bool Matches(std::string_view utf8) const;
    bool HasWildcards() const { return hasWildcards_; }
    // The value as written, for comparisons that are no pattern match (type identifiers).
    const std::u32string& Literal() const { return literal_; }

private:
    // Tokens: a code point (>= 0) or one of the wildcards.
    static constexpr int32_t kAnyRun = -1;
    static constexpr int32_t kAnyOne = -2;

    bool MatchesFrom(const std::u32string& subject, size_t start,
                     const std::vector<bool>& ends) const;

    std::vector<int32_t> tokens_;
    std::u32string literal_;
    PatternModifiers modifiers_;
    bool hasWildcards_ = false;
};

// Subject text folded as the modifiers ask, with the word starts and ends of the original.
struct FoldedText {
    std::u32string text;
    std::vector<bool> wordStart; // size text.size() + 1
    std::vector<bool> wordEnd;   // size text.size() + 1
};
void FoldText(std::string_view utf8, PatternModifiers modifiers, FoldedText& out);

} // namespace basalt::types
