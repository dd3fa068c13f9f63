// Drawing column view: one column per container of the path, each with the rows in sight and
// an arrow on containers, then the preview slot, drawn by the data source's custom callback.

#include "basalt/gridbrowser/CellDrawing.h"
#include "basalt/gridbrowser/GridBrowserView.h"

#include <algorithm>
#include <cmath>

namespace basalt::gridbrowser {
namespace {

constexpr BGFloat kArrowWidth = 14;

void DrawArrow(BGContextRef context, BGRect rect, const CellLook& look) {
    BGFloat midY = rect.origin.y + rect.size.height / 2;
    BGFloat left = rect.origin.x + (rect.size.width - 5) / 2;
    uint32_t color = look.textColor;
    if (color != kBTThemeTextColorOnAccent)
        color = kBTThemeTextColorSecondary;
    BTThemeSetTextColor(color, look.state, context);
    BGContextBeginPath(context);
    BGContextMoveToPoint(context, left, midY - 4);
    BGContextAddLineToPoint(context, left + 5, midY);
    BGContextAddLineToPoint(context, left, midY + 4);
    BGContextClosePath(context);
    BGContextFillPath(context);
}

} // namespace

void GridBrowserView::DrawColumns(BGContextRef context) {
    BGRect bounds = Bounds();
    for (size_t column = 0; column < ColumnCount(); ++column) {
        BGRect area = ColumnRowArea(column);
        if (BGRectGetMaxX(area) <= bounds.origin.x || area.origin.x >= BGRectGetMaxX(bounds))
            continue;
        BGContextSaveGState(context);
        BGContextClipToRect(context, area);
        if (column < path_.size())
            DrawColumn(context, column);
        else
            DrawPreview(context);
        BGContextRestoreGState(context);
        BGRect divider = BGRectMake(BGRectGetMaxX(area) - 1, area.origin.y, 1, area.size.height);
        BTThemeDrawSeparator(&divider, kBTThemeStateActive, context);
    }
}

void GridBrowserView::DrawColumn(BGContextRef context, size_t column) {
    BGRect area = ColumnRowArea(column);
    const std::vector<GridBrowserItemID>& items = tree_.Children(path_[column]);
    BGFloat scroll = ColumnScroll(column);
    auto first = size_t(std::floor(scroll / rowHeight));
    auto end =
        std::min(items.size(), size_t(std::ceil((scroll + area.size.height) / rowHeight)) + 1);
    GridBrowserItemID opened = column + 1 < path_.size() ? path_[column + 1] : 0;
    bool emphasised = SelectionActive() && column == FocusColumn();
    for (size_t index = first; index < end; ++index) {
        GridBrowserItemID item = items[index];
        BGFloat top = area.origin.y + BGFloat(index) * rowHeight - scroll;
        BGRect row = BGRectMake(area.origin.x, top, area.size.width, rowHeight);
        bool selected = IsSelected(item) || item == opened;
        if (selected) {
            BTThemeDrawState state = emphasised ? kBTThemeStateActive : kBTThemeStateInactive;
            BTThemeApplyBackground(&row, kBTThemeBackgroundSelection, state, context);
            BGContextFillRect(context, row);
        }
        CellLook look;
        look.selected = selected;
        look.state = AskBool(item, kGridBrowserItemIsActiveProperty, true)
                         ? kBTThemeStateActive
                         : kBTThemeStateUnavailable;
        look.textColor =
            selected && emphasised ? kBTThemeTextColorOnAccent : kBTThemeTextColorPlain;
        BGRect cell =
            BGRectMake(row.origin.x + 4, top, row.size.width - kArrowWidth - 4, rowHeight);
        CellData data(kGridBrowserItemSelfIdentityProperty);
        if (AskCell(item, data) == noErr)
            DrawCell(context, data, kGridBrowserIconAndTextType, kGridBrowserListViewTruncateMiddle,
                     cell, look);
        if (AskBool(item, kGridBrowserItemIsContainerProperty, false))
            DrawArrow(context,
                      BGRectMake(BGRectGetMaxX(row) - kArrowWidth - 1, top, kArrowWidth, rowHeight),
                      look);
    }
    Bar(BarKind::Column, column)
        .Draw(context, IsActive() ? kBTThemeStateActive : kBTThemeStateInactive);
}

void GridBrowserView::DrawPreview(BGContextRef context) {
    GridBrowserItemID item = PreviewItem();
    if (item == 0 || customCallbacks.drawItemCallback == nullptr)
        return;
    Rect rect = PreviewRect();
    auto keep = Shared();
    drawContext = context;
    BGContextSaveGState(context);
    customCallbacks.drawItemCallback(Ref(), item, kGridBrowserColumnViewPreviewProperty,
                                     kGridBrowserItemIsSelected, &rect, 32, true);
    BGContextRestoreGState(context);
    drawContext = nullptr;
}

} // namespace basalt::gridbrowser
