#include "basalt/gridbrowser/CellDrawing.h"

#include "basalt/gridbrowser/GridBrowserView.h"

#include <memory>
#include <string>
#include <unicode/udat.h>
#include <unicode/uloc.h>

namespace basalt::gridbrowser {
namespace {

constexpr BGFloat kPadding = 4;
// Seconds from 1904-01-01 to 1970-01-01.
constexpr int64_t kEpochOffset = 2082844800;

struct DateFormatCloser {
    void operator()(UDateFormat* format) const { udat_close(format); }
};

UDateFormat* SharedDateFormat() {
    static std::unique_ptr<UDateFormat, DateFormatCloser> format = [] {
        UErrorCode status = U_ZERO_ERROR;
        // The dates given are local already, so they are shown as they are, in UTC.
        UDateFormat* made =
            udat_open(UDAT_SHORT, UDAT_MEDIUM, uloc_getDefault(), u"UTC", -1, nullptr, 0, &status);
        return std::unique_ptr<UDateFormat, DateFormatCloser>(U_SUCCESS(status) ? made : nullptr);
    }();
    return format.get();
}

std::u16string ToU16(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

} // namespace

void DrawOwnedText(BGContextRef context, const std::u16string& text, BGRect rect,
                   GridBrowserPropertyFlags flags, const CellLook& look) {
    BCStringRef string = BCStringCreateWithCharacters(
        nullptr, reinterpret_cast<const UniChar*>(text.data()), BCIndex(text.size()));
    DrawCellText(context, string, rect, flags, look);
    BCRelease(string);
}

std::u16string FormatDate(LongDateTime date) {
    UDateFormat* format = SharedDateFormat();
    if (format == nullptr)
        return {};
    UDate when = double(date - kEpochOffset) * 1000.0;
    std::u16string text(64, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = udat_format(format, when, text.data(), int32_t(text.size()), nullptr, &status);
    if (U_FAILURE(status))
        return {};
    text.resize(size_t(length));
    return text;
}

void DrawCellText(BGContextRef context, BCStringRef text, BGRect rect,
                  GridBrowserPropertyFlags flags, const CellLook& look) {
    if (text == nullptr || rect.size.width <= 2 * kPadding)
        return;
    BTThemeTextInfo info{};
    info.state = look.state;
    info.fontID = kBTThemeFontViews;
    info.horizontalFlush =
        (flags & kGridBrowserListViewAlignEnd) ? kBTThemeTextFlushRight : kBTThemeTextFlushLeft;
    info.verticalFlush = kBTThemeTextFlushCenter;
    info.truncationPosition = (flags & kGridBrowserListViewTruncateMiddle)
                                  ? kBTThemeTextTruncationMiddle
                                  : kBTThemeTextTruncationEnd;
    info.truncationMaxLines = 1;
    BGRect box = BGRectInset(rect, kPadding, 0);
    BTThemeSetTextColor(look.textColor, look.state, context);
    BTThemeDrawTextBox(text, &box, &info, context);
}

void DrawCellIcon(BGContextRef context, IconRef icon, BGRect rect, const CellLook& look) {
    if (icon == nullptr)
        return;
    BGFloat size = GridBrowserView::kIconSize;
    BGRect box =
        BGRectMake(rect.origin.x, rect.origin.y + (rect.size.height - size) / 2, size, size);
    BTIconTransform transform = look.state == kBTThemeStateUnavailable
                                    ? BTIconTransform(kBTIconTransformDisabled)
                                    : BTIconTransform(kBTIconTransformNone);
    PlotIconRefInContext(context, &box, kBTIconAlignCenter, transform, nullptr, kBTPlotIconNormal,
                         icon);
}

void DrawCell(BGContextRef context, const CellData& cell, GridBrowserPropertyType type,
              GridBrowserPropertyFlags flags, BGRect rect, const CellLook& look) {
    switch (type) {
    case kGridBrowserIconAndTextType: {
        BGFloat iconWidth = GridBrowserView::kIconSize + 2;
        DrawCellIcon(context, cell.Icon(),
                     BGRectMake(rect.origin.x + 2, rect.origin.y, iconWidth, rect.size.height),
                     look);
        BGRect text = rect;
        text.origin.x += iconWidth + 1;
        text.size.width -= iconWidth + 1;
        DrawCellText(context, cell.Text(), text, flags, look);
        return;
    }
    case kGridBrowserDateTimeType:
        if (cell.Date())
            DrawOwnedText(context, FormatDate(*cell.Date()), rect, flags, look);
        return;
    default:
        if (cell.Text() != nullptr)
            DrawCellText(context, cell.Text(), rect, flags, look);
        else if (cell.Value())
            DrawOwnedText(context, ToU16(std::to_string(*cell.Value())), rect, flags, look);
        return;
    }
}

} // namespace basalt::gridbrowser
