#include "basalt/gridbrowser/CellDate.h"

#include <memory>
#include <unicode/udat.h>
#include <unicode/uloc.h>

namespace basalt::gridbrowser {
namespace {

// Seconds from 1904-01-01 to 1970-01-01.
constexpr int64_t kEpochOffset = 2082844800;
// 2026-12-28 22:58: two-digit month, day, hour and minute, and the afternoon.
constexpr LongDateTime kWidestDate = 3881343480;

struct DateFormatCloser {
    void operator()(UDateFormat* format) const { udat_close(format); }
};
using DateFormat = std::unique_ptr<UDateFormat, DateFormatCloser>;

DateFormat OpenFormat(UDateFormatStyle time) {
    UErrorCode status = U_ZERO_ERROR;
    // The dates given are local already, so they are shown as they are, in UTC.
    UDateFormat* made =
        udat_open(time, UDAT_SHORT, uloc_getDefault(), u"UTC", -1, nullptr, 0, &status);
    return DateFormat(U_SUCCESS(status) ? made : nullptr);
}

std::u16string Format(const DateFormat& format, LongDateTime date) {
    if (!format)
        return {};
    UDate when = double(date - kEpochOffset) * 1000.0;
    std::u16string text(64, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length =
        udat_format(format.get(), when, text.data(), int32_t(text.size()), nullptr, &status);
    if (U_FAILURE(status))
        return {};
    text.resize(size_t(length));
    return text;
}

} // namespace

BGFloat ViewsTextWidth(const std::u16string& text) {
    BCStringRef string = BCStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(text.data()), BCIndex(text.size()));
    BTThemeTextInfo info{};
    info.fontID = kBTThemeFontViews;
    BGFloat width = 0;
    BTThemeGetTextDimensions(string, 0, &info, &width, nullptr, nullptr);
    BCRelease(string);
    return width;
}

std::u16string FormatDate(LongDateTime date, BGFloat width) {
    static const DateFormat withTime = OpenFormat(UDAT_SHORT);
    static const DateFormat dateOnly = OpenFormat(UDAT_NONE);
    // Every row of a column gets the same form, decided by the widest date of the year; the
    // answer for the column's width is kept, as the column draws many dates at one width.
    thread_local BGFloat decidedWidth = -1;
    thread_local bool timeFits = false;
    if (width != decidedWidth) {
        decidedWidth = width;
        timeFits = ViewsTextWidth(Format(withTime, kWidestDate)) <= width;
    }
    std::u16string text = timeFits ? Format(withTime, date) : std::u16string();
    return text.empty() ? Format(dateOnly, date) : text;
}

} // namespace basalt::gridbrowser
