#pragma once

// The glob half of the shared-mime-info database: which type a file name suggests. Matching
// follows the order every freedesktop reader uses, so a file is typed here as it is in the
// other applications of the desktop: whole names first (exact, then ignoring case), then the
// longest matching suffix, then full patterns; the heaviest of the matches of a step wins.
// Globs marked case-sensitive match only in their own case.

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace basalt::types {

struct Glob {
    int weight = 50;
    std::string type;
    std::string pattern;
    bool caseSensitive = false;
};

// Splits a globs2 line ("weight:type:pattern[:flags]"); false for comments and bad lines.
bool ParseGlobLine(std::string_view line, Glob& glob);

class MimeGlobs {
public:
    // Adds the globs of one globs2 file. Files are added in order of precedence: a pattern
    // already known for a type, or a type that an earlier file cleared with __NOGLOBS__,
    // adds nothing.
    void AddFile(const std::string& path);
    void Add(Glob glob);
    // The type the name suggests; empty if no glob matches.
    std::string Match(std::string_view name) const;
    // The first "*.ext" glob of the type, as "ext"; empty if it has none.
    std::string Extension(const std::string& type) const;

private:
    struct Candidate {
        const Glob* glob;
        bool operator<(const Candidate& other) const { return glob->weight > other.glob->weight; }
    };
    void MatchSuffix(std::string_view name, bool exactCase, std::vector<Candidate>& out) const;
    void MatchPatterns(const std::string& name, bool exactCase, std::vector<Candidate>& out) const;

    // Looked up by string_view, so that matching a name makes no copies of its parts.
    struct Hash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    template <typename T>
    using Map = std::unordered_map<std::string, T, Hash, std::equal_to<>>;

    Map<std::string> literals_;       // pattern to type
    Map<std::string> foldedLiterals_; // lower case, to type
    // Globs of the form "*text", by their text: lower case unless case-sensitive.
    Map<std::vector<Glob>> suffixes_;
    size_t longestSuffix_ = 0;
    std::vector<Glob> patterns_;
    std::unordered_set<std::string> known_;   // "type\npattern"
    std::unordered_set<std::string> cleared_; // types without globs from later files
    std::unordered_map<std::string, std::string> extensions_;
};

} // namespace basalt::types
