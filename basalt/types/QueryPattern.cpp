#include "basalt/types/QueryPattern.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace basalt::types {
namespace {

enum class CharClass : uint8_t { Other, Lower, Upper, Digit };

CharClass ClassOf(char32_t c) {
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

std::u32string Decode(std::string_view utf8) {
    std::u32string out;
    out.reserve(utf8.size());
    const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
    int32_t length = static_cast<int32_t>(utf8.size());
    for (int32_t at = 0; at < length;) {
        UChar32 c;
        U8_NEXT(bytes, at, length, c);
        out.push_back(c < 0 ? U'\uFFFD' : static_cast<char32_t>(c));
    }
    return out;
}

} // namespace

void FoldText(std::string_view utf8, PatternModifiers modifiers, FoldedText& out) {
    std::u32string original = Decode(utf8);
    out.text.clear();
    out.wordStart.clear();
    out.wordEnd.clear();
    CharClass before = CharClass::Other;
    for (size_t i = 0; i < original.size(); ++i) {
        CharClass at = ClassOf(original[i]);
        if (modifiers.ignoreDiacritics && original[i] >= 0x80 &&
            u_charType(static_cast<UChar32>(original[i])) == U_NON_SPACING_MARK)
            continue; // a mark belongs to the letter before it
        CharClass after = i + 1 < original.size() ? ClassOf(original[i + 1]) : CharClass::Other;
        bool starts = StartsWord(before, at, after);
        if (starts || (IsAlnum(before) && !IsAlnum(at))) {
            out.wordEnd.resize(out.text.size() + 1, false);
            out.wordEnd.back() = IsAlnum(before);
        }
        size_t first = out.text.size();
        FoldInto(original[i], modifiers, [&](char32_t c) { out.text.push_back(c); });
        out.wordStart.resize(out.text.size() + 1, false);
        if (starts && out.text.size() > first)
            out.wordStart[first] = true;
        before = at;
    }
    out.wordStart.resize(out.text.size() + 1, false);
    out.wordEnd.resize(out.text.size() + 1, false);
    out.wordEnd.back() = IsAlnum(before);
}

QueryPattern::QueryPattern(const std::u32string& text, const std::vector<bool>& escaped,
                           PatternModifiers modifiers)
    : literal_(text), modifiers_(modifiers) {
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
}

bool QueryPattern::MatchesFrom(const std::u32string& subject, size_t start,
                               const std::vector<bool>& ends) const {
    size_t size = subject.size();
    std::vector<uint8_t> reach(size + 1, 0);
    std::vector<uint8_t> next(size + 1, 0);
    reach[start] = 1;
    for (int32_t token : tokens_) {
        std::fill(next.begin(), next.end(), 0);
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
    for (size_t p = start; p <= size; ++p) {
        if (reach[p] && ends[p])
            return true;
    }
    return false;
}

bool QueryPattern::Matches(std::string_view utf8) const {
    thread_local FoldedText folded;
    FoldText(utf8, modifiers_, folded);
    if (!modifiers_.words) {
        std::vector<bool> ends(folded.text.size() + 1, false);
        ends.back() = true;
        return MatchesFrom(folded.text, 0, ends);
    }
    for (size_t start = 0; start < folded.text.size(); ++start) {
        if (folded.wordStart[start] && MatchesFrom(folded.text, start, folded.wordEnd))
            return true;
    }
    return false;
}

} // namespace basalt::types
