#include "basalt/core/BCStringSearch.h"

#include "basalt/core/BCString.h"
#include "basalt/core/Collation.h"

#include <algorithm>
#include <unicode/uchar.h>

namespace basalt {
namespace {

// Simple (one to one) case folding keeps indices of the folded text valid for the original.
std::u16string Folded(const std::u16string& text) {
    std::u16string out(text);
    for (char16_t& unit : out)
        if ((unit & 0xF800) != 0xD800)
            unit = static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
    return out;
}

bool MatchesAt(const std::u16string& text, const std::u16string& pattern, size_t at) {
    return at + pattern.size() <= text.size() &&
           std::equal(pattern.begin(), pattern.end(), text.begin() + static_cast<long>(at));
}

BCRange Search(const std::u16string& text, const std::u16string& pattern, BCRange range,
               BCOptionFlags options) {
    const BCRange none{kBCNotFound, 0};
    if (pattern.empty() || static_cast<BCIndex>(pattern.size()) > range.length)
        return none;
    size_t first = static_cast<size_t>(range.location);
    size_t last = static_cast<size_t>(range.location + range.length) - pattern.size();
    bool backwards = (options & kBCCompareBackwards) != 0;
    if (options & kBCCompareAnchored) {
        size_t at = backwards ? last : first;
        return MatchesAt(text, pattern, at) ? BCRange{BCIndex(at), BCIndex(pattern.size())} : none;
    }
    for (size_t step = 0; step <= last - first; ++step) {
        size_t at = backwards ? last - step : first + step;
        if (MatchesAt(text, pattern, at))
            return BCRange{BCIndex(at), BCIndex(pattern.size())};
    }
    return none;
}

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// Compares runs of digits by value and everything else unit by unit.
int CompareNumerically(const std::u16string& a, const std::u16string& b) {
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (IsDigit(a[i]) && IsDigit(b[j])) {
            size_t endA = i, endB = j;
            while (endA < a.size() && IsDigit(a[endA]))
                ++endA;
            while (endB < b.size() && IsDigit(b[endB]))
                ++endB;
            while (i + 1 < endA && a[i] == u'0')
                ++i;
            while (j + 1 < endB && b[j] == u'0')
                ++j;
            if (endA - i != endB - j)
                return endA - i < endB - j ? -1 : 1;
            int order = a.compare(i, endA - i, b, j, endB - j);
            if (order != 0)
                return order;
            i = endA;
            j = endB;
        } else if (a[i] != b[j]) {
            return a[i] < b[j] ? -1 : 1;
        } else {
            ++i;
            ++j;
        }
    }
    return (a.size() - i > 0) - (b.size() - j > 0);
}

BCComparisonResult Sign(long value) {
    return value < 0 ? kBCCompareLessThan : value > 0 ? kBCCompareGreaterThan : kBCCompareEqualTo;
}

} // namespace

BCRange FindOne(const std::u16string& text, const std::u16string& pattern, BCRange range,
                BCOptionFlags options) {
    if (options & kBCCompareCaseInsensitive)
        return Search(Folded(text), Folded(pattern), range, options);
    return Search(text, pattern, range, options);
}

std::vector<BCRange> FindAll(const std::u16string& text, const std::u16string& pattern,
                             BCRange range, BCOptionFlags options) {
    bool fold = (options & kBCCompareCaseInsensitive) != 0;
    const std::u16string haystack = fold ? Folded(text) : text;
    const std::u16string needle = fold ? Folded(pattern) : pattern;
    BCOptionFlags forward = options & ~BCOptionFlags(kBCCompareBackwards);
    std::vector<BCRange> hits;
    BCIndex end = range.location + range.length;
    for (BCRange rest = range; rest.length > 0;) {
        BCRange hit = Search(haystack, needle, rest, forward);
        if (hit.location == kBCNotFound)
            break;
        hits.push_back(hit);
        rest.location = hit.location + hit.length;
        rest.length = end - rest.location;
        if (forward & kBCCompareAnchored)
            break;
    }
    return hits;
}

BCComparisonResult CompareText(const std::u16string& a, const std::u16string& b,
                               BCOptionFlags options) {
    bool caseless = (options & kBCCompareCaseInsensitive) != 0;
    if (options & kBCCompareLocalized)
        return Sign(CompareCollated(a, b, caseless));
    const std::u16string left = caseless ? Folded(a) : a;
    const std::u16string right = caseless ? Folded(b) : b;
    if (options & kBCCompareNumerically)
        return Sign(CompareNumerically(left, right));
    return Sign(left.compare(right));
}

} // namespace basalt

extern "C" {

BCComparisonResult BCStringCompare(BCStringRef a, BCStringRef b, BCOptionFlags options) {
    return basalt::CompareText(basalt::TextOf(a), basalt::TextOf(b), options);
}

BCRange BCStringFind(BCStringRef string, BCStringRef toFind, BCOptionFlags options) {
    const auto& text = basalt::TextOf(string);
    return basalt::FindOne(text, basalt::TextOf(toFind), BCRange{0, BCIndex(text.size())}, options);
}

Boolean BCStringFindWithOptions(BCStringRef string, BCStringRef toFind, BCRange rangeToSearch,
                                BCOptionFlags options, BCRange* result) {
    const auto& text = basalt::TextOf(string);
    if (rangeToSearch.location < 0 || rangeToSearch.length < 0 ||
        static_cast<size_t>(rangeToSearch.location + rangeToSearch.length) > text.size())
        return false;
    BCRange found = basalt::FindOne(text, basalt::TextOf(toFind), rangeToSearch, options);
    if (found.location == kBCNotFound)
        return false;
    if (result != nullptr)
        *result = found;
    return true;
}

Boolean BCStringHasPrefix(BCStringRef string, BCStringRef prefix) {
    return !basalt::TextOf(prefix).empty() &&
           basalt::TextOf(string).starts_with(basalt::TextOf(prefix));
}

Boolean BCStringHasSuffix(BCStringRef string, BCStringRef suffix) {
    return !basalt::TextOf(suffix).empty() &&
           basalt::TextOf(string).ends_with(basalt::TextOf(suffix));
}

} // extern "C"
