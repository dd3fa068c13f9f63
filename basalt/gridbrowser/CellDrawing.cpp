#include "basalt/gridbrowser/CellDrawing.h"

#include "basalt/gridbrowser/CellDate.h"
#include "basalt/gridbrowser/GridBrowserView.h"

#include <string>

namespace basalt::gridbrowser {
namespace {

constexpr BGFloat kPadding = 4;
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
            DrawOwnedText(context, FormatDate(*cell.Date(), rect.size.width - 2 * kPadding), rect,
                          flags, look);
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
