#include "basalt/core/Collation.h"

#include <map>
#include <memory>
#include <mutex>
#include <unicode/ucol.h>
#include <unicode/uloc.h>

namespace basalt {
namespace {

struct CollatorCloser {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};

std::unique_ptr<UCollator, CollatorCloser> MakeCollator(const std::string& locale,
                                                        UCCollateOptions options) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UCollator, CollatorCloser> collator(ucol_open(locale.c_str(), &status));
    if (U_FAILURE(status))
        return nullptr;
    UColAttributeValue strength = UCOL_TERTIARY;
    if (options & kUCCollateCaseInsensitiveMask)
        strength = UCOL_SECONDARY;
    if (options & kUCCollateDiacritInsensitiveMask) {
        strength = UCOL_PRIMARY;
        bool caseMatters = (options & kUCCollateCaseInsensitiveMask) == 0;
        ucol_setAttribute(collator.get(), UCOL_CASE_LEVEL, caseMatters ? UCOL_ON : UCOL_OFF,
                          &status);
    }
    ucol_setStrength(collator.get(), strength);
    bool numeric = (options & kUCCollateDigitsAsNumberMask) != 0;
    ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, numeric ? UCOL_ON : UCOL_OFF,
                      &status);
    return U_SUCCESS(status) ? std::move(collator) : nullptr;
}

// Made once per locale and option set, and never closed.
const UCollator* SharedCollator(std::string locale, UCCollateOptions options) {
    static std::mutex mutex;
    static std::map<std::pair<std::string, UCCollateOptions>,
                    std::unique_ptr<UCollator, CollatorCloser>>
        collators;
    // The C locale's collation is byte order, which would make case and accents primary
    // differences; names sort as people expect under the root rules instead.
    if (locale == "en_US_POSIX" || locale == "c" || locale == "posix")
        locale = "root";
    std::lock_guard lock(mutex);
    auto& slot = collators[{locale, options}];
    if (!slot)
        slot = MakeCollator(locale, options);
    return slot.get();
}

} // namespace

const UCollator* CollatorFor(UCCollateOptions options) {
    // Sorting asks by the thousand with the same options: each thread keeps its last answer
    // until the locale or the options change.
    thread_local std::string lastLocale;
    thread_local UCCollateOptions lastOptions = 0;
    thread_local const UCollator* last = nullptr;
    const char* locale = uloc_getDefault();
    if (last != nullptr && options == lastOptions && lastLocale == locale)
        return last;
    last = SharedCollator(locale, options);
    lastLocale = locale;
    lastOptions = options;
    return last;
}

int CompareCollated(const std::u16string& a, const std::u16string& b, bool caseInsensitive) {
    const UCollator* collator = CollatorFor(caseInsensitive ? 0x3800Eu : 0x38006u);
    if (collator == nullptr)
        return a.compare(b);
    return ucol_strcoll(collator, a.data(), static_cast<int32_t>(a.size()), b.data(),
                        static_cast<int32_t>(b.size()));
}

} // namespace basalt

extern "C" {

StatusCode UCCompareTextDefault(UCCollateOptions options, const UniChar* text1, BCIndex text1Length,
                                const UniChar* text2, BCIndex text2Length, Boolean* equivalent,
                                int32_t* order) {
    if (text1Length < 0 || text2Length < 0 || (text1 == nullptr && text1Length > 0) ||
        (text2 == nullptr && text2Length > 0))
        return paramErr;
    const UCollator* collator = basalt::CollatorFor(options);
    if (collator == nullptr)
        return kBCUnimpErr;
    UCollationResult result = ucol_strcoll(
        collator, reinterpret_cast<const UChar*>(text1), static_cast<int32_t>(text1Length),
        reinterpret_cast<const UChar*>(text2), static_cast<int32_t>(text2Length));
    if (equivalent != nullptr)
        *equivalent = result == UCOL_EQUAL;
    if (order != nullptr)
        *order = result == UCOL_LESS ? -1 : result == UCOL_GREATER ? 1 : 0;
    return noErr;
}

BCIndex UCGetCollationKey(UCCollateOptions options, const UniChar* text, BCIndex textLength,
                          uint8_t* key, BCIndex capacity) {
    const UCollator* collator = basalt::CollatorFor(options);
    if (collator == nullptr || textLength < 0 || (text == nullptr && textLength > 0))
        return 0;
    bool hasBuffer = key != nullptr && capacity > 0;
    return ucol_getSortKey(collator, reinterpret_cast<const UChar*>(text),
                           static_cast<int32_t>(textLength), hasBuffer ? key : nullptr,
                           hasBuffer ? static_cast<int32_t>(capacity) : 0);
}

} // extern "C"
