// Drawing list view: the header with its sort indicator, then only the rows in sight, each
// cell asked of the data source as it is drawn, the rubber band over them, then the scroll bar
// and the focus ring.

#include "basalt/gridbrowser/CellDrawing.h"
#include "basalt/gridbrowser/GridBrowserView.h"
#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <cmath>

namespace basalt::gridbrowser {
namespace {

BGFloat FocusOutset() {
    int32_t outset = 3;
    GetThemeMetric(kBTThemeMetricFocusRectOutset, &outset);
    return outset;
}

} // namespace

bool GridBrowserView::SelectionActive() const {
    toolbox::Window* window = OwnerWindow();
    return IsActive() && window != nullptr && window->Focus() == this;
}

void GridBrowserView::Draw(BGContextRef context) {
    BGRect bounds = Bounds();
    BTThemeApplyBackground(&bounds, kBTThemeBackgroundListView, kBTThemeStateActive, context);
    BGContextFillRect(context, bounds);
    if (style_ == kGridBrowserListView)
        DrawList(context);
    else
        DrawColumns(context);
    DrawBars(context);
    toolbox::Window* window = OwnerWindow();
    if (window != nullptr && window->Focus() == this && IsActive()) {
        BGFloat outset = FocusOutset();
        BGRect ring = BGRectInset(bounds, outset, outset);
        BTThemeDrawFocusRect(&ring, true, context);
    }
}

void GridBrowserView::DrawRowBackground(BGContextRef context, BGRect rect, GridBrowserItemID item,
                                        size_t index, bool emphasised) {
    if (item != 0 && IsSelected(item)) {
        BTThemeDrawState state = emphasised ? kBTThemeStateActive : kBTThemeStateInactive;
        BTThemeApplyBackground(&rect, kBTThemeBackgroundSelection, state, context);
        BGContextFillRect(context, rect);
    } else if ((attributes & kGridBrowserAttributeStripedRows) && index % 2 == 1) {
        BTThemeApplyBackground(&rect, kBTThemeBackgroundListStripe, kBTThemeStateActive, context);
        BGContextFillRect(context, rect);
    }
}

void GridBrowserView::DrawList(BGContextRef context) {
    const std::vector<Row>& rows = Rows();
    BGRect area = RowArea();
    auto first = size_t(std::max<BGFloat>(0, std::floor(scroll_.y / rowHeight)));
    auto end =
        std::min(rows.size(), size_t(std::ceil((scroll_.y + area.size.height) / rowHeight)) + 1);
    BGContextSaveGState(context);
    BGContextClipToRect(context, area);
    // Rows past the end keep the stripes going, so a short list still reads as a list.
    size_t filler = size_t(std::ceil(area.size.height / rowHeight)) + first + 1;
    for (size_t index = first; index < std::max(end, filler); ++index) {
        BGFloat top = area.origin.y + BGFloat(index) * rowHeight - scroll_.y;
        if (index < end) {
            Row row = rows[index];
            DrawListRow(context, row, top, index);
        } else {
            DrawRowBackground(context, BGRectMake(area.origin.x, top, area.size.width, rowHeight),
                              0, index, false);
        }
    }
    DrawBand(context);
    BGContextRestoreGState(context);
    DrawHeader(context);
}

void GridBrowserView::DrawListRow(BGContextRef context, const Row& row, BGFloat top, size_t index) {
    BGRect area = RowArea();
    bool selected = IsSelected(row.id);
    bool emphasised = SelectionActive();
    CellLook look;
    look.selected = selected;
    look.state = AskBool(row.id, kGridBrowserItemIsActiveProperty, true) ? kBTThemeStateActive
                                                                         : kBTThemeStateUnavailable;
    look.textColor = selected && emphasised ? kBTThemeTextColorOnAccent : kBTThemeTextColorPlain;
    BGRect rowRect = BGRectMake(area.origin.x, top, area.size.width, rowHeight);
    if (hiliteStyle == kGridBrowserTableViewFillHilite || !selected)
        DrawRowBackground(context, rowRect, row.id, index, emphasised);
    BGFloat x = area.origin.x - scroll_.x;
    for (size_t i = 0; i < columns_.size(); ++i) {
        const ListColumn& column = columns_[i];
        BGRect cell = BGRectMake(x, top, column.width, rowHeight);
        x += column.width;
        bool disclosure = column.desc.propertyID == disclosureColumn;
        if (hiliteStyle != kGridBrowserTableViewFillHilite && selected && (disclosure || i == 0))
            DrawRowBackground(context, cell, row.id, index, emphasised);
        if (disclosure) {
            BGFloat indent = 2 + row.depth * kIndent;
            if (AskBool(row.id, kGridBrowserItemIsContainerProperty, false)) {
                BTThemeButtonDrawInfo info{0, look.state, BTThemeButtonValue(tree_.IsOpen(row.id)),
                                           0};
                BGRect triangle =
                    BGRectMake(cell.origin.x + indent, top, kTriangleWidth, rowHeight);
                BTThemeDrawButton(&triangle, kBTThemeDisclosureTriangle, &info, context, nullptr);
            }
            cell.origin.x += indent + kTriangleWidth;
            cell.size.width -= indent + kTriangleWidth;
        }
        CellData data(column.desc.propertyID);
        if (AskCell(row.id, data) == noErr)
            DrawCell(context, data, column.desc.propertyType, column.desc.propertyFlags, cell,
                     look);
    }
}

void GridBrowserView::DrawHeader(BGContextRef context) {
    BGRect bounds = Bounds();
    BGFloat height = HeaderHeight();
    BGFloat x = bounds.origin.x - scroll_.x;
    BTThemeDrawState state = IsActive() ? kBTThemeStateActive : kBTThemeStateInactive;
    for (const ListColumn& column : columns_) {
        BGRect rect = BGRectMake(x, bounds.origin.y, column.width, height);
        x += column.width;
        bool sorted = column.desc.propertyID == sortProperty_;
        BTThemeButtonDrawInfo info{0, state, kBTThemeButtonOff, kBTThemeAdornmentNone};
        if (sorted)
            info.adornment =
                kBTThemeAdornmentHeaderSorted |
                (sortOrder_ == kGridBrowserOrderDecreasing ? kBTThemeAdornmentHeaderDescending
                                                           : kBTThemeAdornmentNone);
        BGRect label{};
        BTThemeDrawButton(&rect, kBTThemeListHeaderButton, &info, context, &label);
        label.origin.x += column.desc.titleOffset;
        CellLook look;
        look.textColor = kBTThemeTextColorSecondary;
        DrawOwnedText(context, column.title, label,
                      column.desc.propertyFlags & kGridBrowserListViewAlignEnd, look);
    }
    BGFloat rest = BGRectGetMaxX(bounds) - x;
    if (rest > 0) {
        BGRect filler = BGRectMake(x, bounds.origin.y, rest, height);
        BTThemeButtonDrawInfo info{0, state, kBTThemeButtonOff, kBTThemeAdornmentNone};
        BTThemeDrawButton(&filler, kBTThemeListHeaderButton, &info, context, nullptr);
    }
}

void GridBrowserView::DrawBars(BGContextRef context) {
    BTThemeDrawState state = IsActive() ? kBTThemeStateActive : kBTThemeStateInactive;
    Bar(BarKind::Rows).Draw(context, state);
    Bar(BarKind::Sideways).Draw(context, state);
}

} // namespace basalt::gridbrowser
