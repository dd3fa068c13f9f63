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

// Subject text folded as the modifiers ask, with the word starts and ends of the original.
struct FoldedText {
    std::vector<char32_t> original; // the decoded subject, kept to reuse its buffer
    std::vector<char32_t> text;
    std::vector<uint8_t> wordStart; // per character of text, and one more
    std::vector<uint8_t> wordEnd;   // per position in text, the end included
};

class QueryPattern {
public:
    // text is the value with its escapes resolved; escaped marks which of its characters
    // (by UTF-32 index) were escaped and so stand for themselves, never as wildcards.
    QueryPattern(const std::u32string& text, const std::vector<bool>& escaped,
                 PatternModifiers modifiers);

    bool Matches(std::string_view utf8) const;
    bool HasWildcards() const { return hasWildcards_; }

private:
    // Tokens: a code point (>= 0) or one of the wildcards.
    static constexpr int32_t kAnyRun = -1;
    static constexpr int32_t kAnyOne = -2;

    struct Scratch {
        FoldedText folded;
        std::vector<uint8_t> reach;
        std::vector<uint8_t> next;
    };
    // What the tokens amount to: most typed searches are a literal with perhaps one star
    // after it, which a comparison decides without stepping through every token.
    enum class Shape : uint8_t { Literal, Prefix, General };

    // From start over the folded subject to its end, or with anyWordEnd to any word's end.
    bool MatchesFrom(Scratch& scratch, size_t start, bool anyWordEnd) const;
    // The same for a Literal or Prefix pattern.
    bool MatchesLiteralFrom(const FoldedText& folded, size_t start, bool anyWordEnd) const;
    // A Literal or Prefix pattern with a non-empty ASCII literal against an ASCII name.
    bool MatchesAscii(std::string_view ascii) const;

    std::vector<int32_t> tokens_;
    std::u32string literal_; // the tokens before the first wildcard
    Shape shape_ = Shape::Literal;
    bool asciiLiteral_ = true;
    PatternModifiers modifiers_;
    bool hasWildcards_ = false;
};

// Decodes and folds a subject, finding its words.
void FoldText(std::string_view utf8, PatternModifiers modifiers, FoldedText& out);

} // namespace basalt::types
