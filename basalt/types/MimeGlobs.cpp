#include "basalt/types/MimeGlobs.h"

#include <algorithm>
#include <charconv>
#include <fnmatch.h>
#include <fstream>

namespace basalt::types {
namespace {

constexpr std::string_view kNoGlobs = "__NOGLOBS__";

std::string Lower(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](unsigned char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    });
    return out;
}

bool HasWildcard(std::string_view text) {
    return text.find_first_of("*?[") != std::string_view::npos;
}

bool IsSuffixGlob(std::string_view pattern) {
    return pattern.size() > 1 && pattern[0] == '*' && !HasWildcard(pattern.substr(1));
}

} // namespace

bool ParseGlobLine(std::string_view line, Glob& glob) {
    if (line.empty() || line[0] == '#')
        return false;
    size_t first = line.find(':');
    size_t second = first == std::string_view::npos ? first : line.find(':', first + 1);
    if (second == std::string_view::npos || second == first + 1)
        return false;
    size_t third = line.find(':', second + 1);
    std::string_view weight = line.substr(0, first);
    if (std::from_chars(weight.data(), weight.data() + weight.size(), glob.weight).ec !=
            std::errc() ||
        glob.weight < 0 || glob.weight > 100)
        return false;
    glob.type = std::string(line.substr(first + 1, second - first - 1));
    glob.pattern = std::string(line.substr(second + 1, third - second - 1));
    glob.caseSensitive = false;
    if (third != std::string_view::npos) {
        std::string_view flags = line.substr(third + 1);
        flags = flags.substr(0, flags.find(':'));
        glob.caseSensitive = flags == "cs" || flags.starts_with("cs,") ||
                             flags.find(",cs") != std::string_view::npos;
    }
    return !glob.pattern.empty();
}

void MimeGlobs::AddFile(const std::string& path) {
    std::ifstream file(path);
    std::unordered_set<std::string> clearedHere;
    Glob glob;
    for (std::string line; std::getline(file, line);) {
        if (!ParseGlobLine(line, glob))
            continue;
        if (glob.pattern == kNoGlobs)
            clearedHere.insert(glob.type);
        else
            Add(glob);
    }
    cleared_.merge(clearedHere);
}

void MimeGlobs::Add(Glob glob) {
    if (cleared_.contains(glob.type) || !known_.insert(glob.type + '\n' + glob.pattern).second)
        return;
    if (!glob.caseSensitive)
        glob.pattern = Lower(glob.pattern);
    if (IsSuffixGlob(glob.pattern) && glob.pattern[1] == '.')
        extensions_.try_emplace(glob.type, glob.pattern.substr(2));
    if (!HasWildcard(glob.pattern)) {
        if (!glob.caseSensitive)
            foldedLiterals_.try_emplace(glob.pattern, glob.type);
        literals_.try_emplace(std::move(glob.pattern), std::move(glob.type));
    } else if (IsSuffixGlob(glob.pattern)) {
        std::string suffix = glob.pattern.substr(1);
        longestSuffix_ = std::max(longestSuffix_, suffix.size());
        suffixes_[suffix].push_back(std::move(glob));
    } else {
        patterns_.push_back(std::move(glob));
    }
}

// The longest suffix with a glob that may match in this case; all of its globs.
void MimeGlobs::MatchSuffix(std::string_view name, bool exactCase,
                            std::vector<Candidate>& out) const {
    for (size_t length = std::min(name.size(), longestSuffix_); length > 0; --length) {
        auto found = suffixes_.find(name.substr(name.size() - length));
        if (found == suffixes_.end())
            continue;
        size_t before = out.size();
        for (const Glob& glob : found->second) {
            if (exactCase || !glob.caseSensitive)
                out.push_back({&glob});
        }
        if (out.size() > before)
            return;
    }
}

void MimeGlobs::MatchPatterns(const std::string& name, bool exactCase,
                              std::vector<Candidate>& out) const {
    for (const Glob& glob : patterns_) {
        if ((exactCase || !glob.caseSensitive) &&
            fnmatch(glob.pattern.c_str(), name.c_str(), 0) == 0)
            out.push_back({&glob});
    }
}

std::string MimeGlobs::Match(std::string_view name) const {
    std::string lower = Lower(name);
    if (auto found = literals_.find(name); found != literals_.end())
        return found->second;
    if (auto found = foldedLiterals_.find(lower); found != foldedLiterals_.end())
        return found->second;
    // Full patterns count only when no suffix matches, however heavy they are.
    std::vector<Candidate> found;
    MatchSuffix(lower, false, found);
    if (found.size() < 2)
        MatchSuffix(name, true, found);
    if (found.empty())
        MatchPatterns(lower, false, found);
    if (found.empty())
        MatchPatterns(std::string(name), true, found);
    if (found.empty())
        return {};
    std::stable_sort(found.begin(), found.end());
    return found.front().glob->type;
}

std::string MimeGlobs::Extension(const std::string& type) const {
    auto found = extensions_.find(type);
    return found != extensions_.end() ? found->second : std::string();
}

} // namespace basalt::types
