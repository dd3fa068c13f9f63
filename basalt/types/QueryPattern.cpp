#include "basalt/types/QueryPattern.h"

#include <algorithm>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace basalt::types {
namespace {

enum class CharClass : uint8_t { Other, Lower, Upper, Digit };

inline CharClass ClassOf(char32_t c) {
    if (c < 0x80) {
        if (c >= 'a' && c <= 'z')
            return CharClass::Lower;
        if (c >= 'A' && c <= 'Z')
            return CharClass::Upper;
        return c >= '0' && c <= '9' ? CharClass::Digit : CharClass::Other;
    }
    if (u_isdigit(static_cast<UChar32>(c)))
        return CharClass::Digit;
    if (!u_isalpha(static_cast<UChar32>(c)))
        return CharClass::Other;
    return u_isupper(static_cast<UChar32>(c)) ? CharClass::Upper : CharClass::Lower;
}

char32_t FoldCase(char32_t c) {
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? c + 32 : c;
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
}

// Appends c as the modifiers ask: decomposed without its marks, case folded.
template <typename Emit>
void FoldInto(char32_t c, PatternModifiers modifiers, Emit emit) {
    if (c >= 0x80 && modifiers.ignoreDiacritics) {
        UErrorCode error = U_ZERO_ERROR;
        const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(error);
        icu::UnicodeString pieces;
        if (U_SUCCESS(error) && nfd->getDecomposition(static_cast<UChar32>(c), pieces)) {
            for (int32_t at = 0; at < pieces.length();) {
                UChar32 piece = pieces.char32At(at);
                at += U16_LENGTH(piece);
                if (u_charType(piece) != U_NON_SPACING_MARK)
                    emit(modifiers.ignoreCase ? FoldCase(static_cast<char32_t>(piece))
                                              : static_cast<char32_t>(piece));
            }
            return;
        }
        if (u_charType(static_cast<UChar32>(c)) == U_NON_SPACING_MARK)
            return;
    }
    emit(modifiers.ignoreCase ? FoldCase(c) : c);
}

bool IsAlnum(CharClass k) {
    return k != CharClass::Other;
}

// A word starts where a run of letters and digits starts, where a capital follows a small
// letter, where a capital that begins a word follows a run of capitals ("HTMLFile"), and
// where letters turn into digits or back.
bool StartsWord(CharClass before, CharClass at, CharClass after) {
    if (!IsAlnum(at))
        return false;
    if (!IsAlnum(before))
        return true;
    if ((before == CharClass::Digit) != (at == CharClass::Digit))
        return true;
    if (at == CharClass::Upper && before == CharClass::Lower)
        return true;
    return at == CharClass::Upper && before == CharClass::Upper && after == CharClass::Lower;
}

void Decode(std::string_view utf8, std::vector<char32_t>& out) {
    out.resize(utf8.size());
    size_t count = 0;
    const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
    int32_t length = static_cast<int32_t>(utf8.size());
    for (int32_t at = 0; at < length;) {
        UChar32 c;
        U8_NEXT(bytes, at, length, c);
        out[count++] = c < 0 ? U'\uFFFD' : static_cast<char32_t>(c);
    }
    out.resize(count);
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The characters of an ASCII name by class, for finding its words without folding it.
class AsciiClasses {
public:
    explicit AsciiClasses(std::string_view ascii) : ascii_(ascii) {}
    // Other before the start and after the end, as the folded text has it.
    CharClass At(ptrdiff_t i) const {
        return i < 0 || i >= ptrdiff_t(ascii_.size())
                   ? CharClass::Other
                   : ClassOf(static_cast<char32_t>(ascii_[size_t(i)]));
    }
    bool WordStart(ptrdiff_t i) const { return StartsWord(At(i - 1), At(i), At(i + 1)); }
    bool WordEnd(ptrdiff_t i) const {
        CharClass before = At(i - 1);
        return IsAlnum(before) && (StartsWord(before, At(i), At(i + 1)) || !IsAlnum(At(i)));
    }
    bool AnyWordEndFrom(ptrdiff_t i) const {
        for (; i <= ptrdiff_t(ascii_.size()); ++i) {
            if (WordEnd(i))
                return true;
        }
        return false;
    }

private:
    std::string_view ascii_;
};

// Most names are ASCII: they fold one character for one, without decoding or the character
// database, which is most of the cost of testing a name.
void FoldAscii(std::string_view ascii, PatternModifiers modifiers, FoldedText& out) {
    const size_t size = ascii.size();
    const AsciiClasses classes(ascii);
    out.text.resize(size);
    out.wordStart.resize(size + 1);
    out.wordEnd.resize(size + 1);
    for (size_t i = 0; i <= size; ++i) {
        out.wordStart[i] = i < size && classes.WordStart(ptrdiff_t(i));
        out.wordEnd[i] = classes.WordEnd(ptrdiff_t(i));
    }
    for (size_t i = 0; i < size; ++i) {
        const auto c = static_cast<char32_t>(ascii[i]);
        out.text[i] = modifiers.ignoreCase ? FoldCase(c) : c;
    }
}

} // namespace

void FoldText(std::string_view utf8, PatternModifiers modifiers, FoldedText& out) {
    if (IsAscii(utf8)) {
        FoldAscii(utf8, modifiers, out);
        return;
    }
    Decode(utf8, out.original);
    out.text.clear();
    out.wordStart.clear();
    out.wordEnd.clear();
    const std::vector<char32_t>& original = out.original;
    CharClass before = CharClass::Other;
    for (size_t i = 0; i < original.size(); ++i) {
        CharClass at = ClassOf(original[i]);
        if (modifiers.ignoreDiacritics && original[i] >= 0x80 &&
            u_charType(static_cast<UChar32>(original[i])) == U_NON_SPACING_MARK)
            continue; // a mark belongs to the letter before it
        CharClass after = i + 1 < original.size() ? ClassOf(original[i + 1]) : CharClass::Other;
        bool starts = StartsWord(before, at, after);
        bool endsBefore = IsAlnum(before) && (starts || !IsAlnum(at));
        size_t first = out.text.size();
        FoldInto(original[i], modifiers, [&](char32_t c) {
            out.wordStart.push_back(out.text.size() == first && starts);
            out.wordEnd.push_back(out.text.size() == first && endsBefore);
            out.text.push_back(c);
        });
        before = at;
    }
    out.wordStart.push_back(false);
    out.wordEnd.push_back(IsAlnum(before));
}

QueryPattern::QueryPattern(const std::u32string& text, const std::vector<bool>& escaped,
                           PatternModifiers modifiers)
    : modifiers_(modifiers) {
    for (size_t i = 0; i < text.size(); ++i) {
        bool isEscaped = i < escaped.size() && escaped[i];
        if (!isEscaped && (text[i] == U'*' || text[i] == U'?')) {
            hasWildcards_ = true;
            // Runs of stars are one star, which keeps the match linear in the subject.
            if (text[i] == U'?' || tokens_.empty() || tokens_.back() != kAnyRun)
                tokens_.push_back(text[i] == U'*' ? kAnyRun : kAnyOne);
            continue;
        }
        FoldInto(text[i], modifiers,
                 [&](char32_t c) { tokens_.push_back(static_cast<int32_t>(c)); });
    }
    auto wildcard = std::find_if(tokens_.begin(), tokens_.end(), [](int32_t t) { return t < 0; });
    for (auto token = tokens_.begin(); token != wildcard; ++token)
        literal_.push_back(static_cast<char32_t>(*token));
    if (wildcard == tokens_.end())
        shape_ = Shape::Literal;
    else if (*wildcard == kAnyRun && wildcard + 1 == tokens_.end())
        shape_ = Shape::Prefix;
    else
        shape_ = Shape::General;
    asciiLiteral_ =
        std::all_of(literal_.begin(), literal_.end(), [](char32_t c) { return c < 0x80; });
}

bool QueryPattern::MatchesAscii(std::string_view ascii) const {
    const size_t size = ascii.size(), length = literal_.size();
    auto literalAt = [&](size_t start) {
        for (size_t i = 0; i < length; ++i) {
            auto c = static_cast<char32_t>(ascii[start + i]);
            if ((modifiers_.ignoreCase ? FoldCase(c) : c) != literal_[i])
                return false;
        }
        return true;
    };
    if (!modifiers_.words)
        return size >= length && literalAt(0) && (shape_ == Shape::Prefix || size == length);
    const AsciiClasses classes(ascii);
    for (size_t start = 0; start + length <= size; ++start) {
        // The first character rules out most places before their class is looked at.
        if (!literalAt(start) || !classes.WordStart(ptrdiff_t(start)))
            continue;
        const size_t end = start + length;
        if (shape_ == Shape::Literal ? classes.WordEnd(ptrdiff_t(end))
                                     : classes.AnyWordEndFrom(ptrdiff_t(end)))
            return true;
    }
    return false;
}

bool QueryPattern::MatchesLiteralFrom(const FoldedText& folded, size_t start,
                                      bool anyWordEnd) const {
    const std::vector<char32_t>& subject = folded.text;
    if (subject.size() - start < literal_.size() ||
        !std::equal(literal_.begin(), literal_.end(), subject.begin() + std::ptrdiff_t(start)))
        return false;
    const size_t end = start + literal_.size();
    if (shape_ == Shape::Literal)
        return anyWordEnd ? folded.wordEnd[end] != 0 : end == subject.size();
    // The star reaches every position from the end of the literal on.
    return !anyWordEnd || std::find(folded.wordEnd.begin() + std::ptrdiff_t(end),
                                    folded.wordEnd.end(), 1) != folded.wordEnd.end();
}

bool QueryPattern::MatchesFrom(Scratch& scratch, size_t start, bool anyWordEnd) const {
    const std::vector<char32_t>& subject = scratch.folded.text;
    size_t size = subject.size();
    std::vector<uint8_t>& reach = scratch.reach;
    std::vector<uint8_t>& next = scratch.next;
    reach.assign(size + 1, 0);
    next.assign(size + 1, 0);
    reach[start] = 1;
    for (int32_t token : tokens_) {
        std::fill(next.begin() + static_cast<std::ptrdiff_t>(start), next.end(), 0);
        bool any = false;
        if (token == kAnyRun) {
            uint8_t on = 0;
            for (size_t p = start; p <= size; ++p) {
                on |= reach[p];
                next[p] = on;
                any |= on != 0;
            }
        } else {
            for (size_t p = start; p < size; ++p) {
                if (reach[p] && (token == kAnyOne || subject[p] == static_cast<char32_t>(token))) {
                    next[p + 1] = 1;
                    any = true;
                }
            }
        }
        if (!any)
            return false;
        reach.swap(next);
    }
    if (!anyWordEnd)
        return reach[size] != 0;
    for (size_t p = start; p <= size; ++p) {
        if (reach[p] && scratch.folded.wordEnd[p])
            return true;
    }
    return false;
}

bool QueryPattern::Matches(std::string_view utf8) const {
    // Names are tested by the hundred thousand: the common case folds nothing, and the
    // buffers of the others are kept between calls.
    if (shape_ != Shape::General && asciiLiteral_ && !literal_.empty() && IsAscii(utf8))
        return MatchesAscii(utf8);
    thread_local Scratch scratch;
    FoldText(utf8, modifiers_, scratch.folded);
    const FoldedText& folded = scratch.folded;
    auto matchesFrom = [&](size_t start, bool anyWordEnd) {
        return shape_ == Shape::General ? MatchesFrom(scratch, start, anyWordEnd)
                                        : MatchesLiteralFrom(folded, start, anyWordEnd);
    };
    if (!modifiers_.words)
        return matchesFrom(0, false);
    bool literalFirst = !tokens_.empty() && tokens_.front() >= 0;
    for (size_t start = 0; start < folded.text.size(); ++start) {
        if (!folded.wordStart[start])
            continue;
        if (literalFirst && folded.text[start] != static_cast<char32_t>(tokens_.front()))
            continue; // most words fail on their first character
        if (matchesFrom(start, true))
            return true;
    }
    return false;
}

} // namespace basalt::types
