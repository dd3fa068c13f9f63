#include "basalt/gridbrowser/TypeSelect.h"

#include "basalt/core/Collation.h"

#include <unicode/unorm2.h>

namespace basalt::gridbrowser {
namespace {

// Composed form, so that a name stored with combining accents is cut after as many letters as
// the prefix typed has; the text itself if ICU can't compose it.
std::u16string Composed(const std::u16string& text) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* nfc = unorm2_getNFCInstance(&status);
    if (U_FAILURE(status) || unorm2_isNormalized(nfc, text.data(), int32_t(text.size()), &status) ||
        U_FAILURE(status))
        return text;
    std::u16string composed(text.size(), u'\0');
    int32_t length = unorm2_normalize(nfc, text.data(), int32_t(text.size()), composed.data(),
                                      int32_t(composed.size()), &status);
    if (U_FAILURE(status))
        return text;
    composed.resize(size_t(length));
    return composed;
}

} // namespace

const std::u16string& TypeSelect::Type(char16_t character, double now) {
    if (now - last_ > kPause)
        prefix_.clear();
    last_ = now;
    prefix_.push_back(character);
    return prefix_;
}

std::optional<size_t>
TypeSelect::Find(const std::u16string& prefix, size_t count,
                 const std::function<std::optional<std::u16string>(size_t)>& name) {
    std::optional<size_t> after, last;
    std::u16string afterName;
    const std::u16string typed = Composed(prefix);
    for (size_t i = 0; i < count; ++i) {
        std::optional<std::u16string> candidate = name(i);
        if (!candidate)
            continue;
        last = i;
        std::u16string head = Composed(*candidate).substr(0, typed.size());
        if (CompareCollated(head, typed, true) == 0)
            return i;
        if (CompareCollated(*candidate, typed, true) > 0 &&
            (!after || CompareCollated(*candidate, afterName, true) < 0)) {
            after = i;
            afterName = std::move(*candidate);
        }
    }
    return after ? after : last;
}

} // namespace basalt::gridbrowser
