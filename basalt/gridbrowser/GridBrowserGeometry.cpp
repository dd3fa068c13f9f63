// Where things are: the header, the rows and the scroll bar of list view, the columns and the
// preview slot of column view, and scrolling to keep a row or a column in sight.

#include "basalt/gridbrowser/GridBrowserView.h"

#include <algorithm>
#include <cmath>

namespace basalt::gridbrowser {

BGFloat GridBrowserView::HeaderHeight() const {
    if (style_ != kGridBrowserListView)
        return 0;
    int32_t height = 20;
    GetThemeMetric(kBTThemeMetricListHeaderHeight, &height);
    return height;
}

bool GridBrowserView::ListNeedsVerticalBar() const {
    return BGFloat(rows_.size()) * rowHeight > Bounds().size.height - HeaderHeight();
}

BGRect GridBrowserView::RowArea() const {
    BGRect bounds = Bounds();
    BGFloat header = HeaderHeight();
    BGFloat bar = HorizontalBarShown() ? kBarWidth : 0;
    BGFloat height = std::max<BGFloat>(0, bounds.size.height - header - bar);
    BGFloat width =
        std::max<BGFloat>(0, bounds.size.width - (ListNeedsVerticalBar() ? kBarWidth : 0));
    return BGRectMake(bounds.origin.x, bounds.origin.y + header, width, height);
}

BGFloat GridBrowserView::HorizontalContent() const {
    if (style_ == kGridBrowserColumnView)
        return ColumnsWidth();
    BGFloat width = 0;
    for (const ListColumn& column : columns_)
        width += column.width;
    return width;
}

BGFloat GridBrowserView::HorizontalVisible() const {
    BGFloat width = Bounds().size.width;
    if (style_ == kGridBrowserListView && ListNeedsVerticalBar())
        width -= kBarWidth;
    return std::max<BGFloat>(0, width);
}

BGFloat GridBrowserView::ContentHeight() {
    return BGFloat(Rows().size()) * rowHeight;
}

BGRect GridBrowserView::VerticalBar() {
    BGRect area = RowArea();
    return BGRectMake(BGRectGetMaxX(area), area.origin.y, kBarWidth, area.size.height);
}

ScrollBar GridBrowserView::Bar(BarKind kind, size_t column) {
    ScrollBar bar;
    BGRect bounds = Bounds();
    switch (kind) {
    case BarKind::Rows:
        if (style_ == kGridBrowserListView)
            bar = {VerticalBar(), ContentHeight(), RowArea().size.height, scroll_.y};
        break;
    case BarKind::Sideways: {
        BGFloat visible = HorizontalVisible();
        BGRect track =
            BGRectMake(bounds.origin.x, BGRectGetMaxY(bounds) - kBarWidth, visible, kBarWidth);
        bar = {track, HorizontalContent(), visible, scroll_.x};
        break;
    }
    case BarKind::Column:
        if (style_ == kGridBrowserColumnView && column < path_.size()) {
            BGRect area = ColumnRowArea(column);
            BGRect track = BGRectMake(BGRectGetMaxX(area) - kBarWidth - 1, area.origin.y, kBarWidth,
                                      area.size.height);
            BGFloat content = BGFloat(tree_.Children(path_[column]).size()) * rowHeight;
            bar = {track, content, area.size.height, ColumnScroll(column)};
        }
        break;
    }
    return bar;
}

void GridBrowserView::ScrollBarTo(BarKind kind, size_t column, BGFloat position) {
    switch (kind) {
    case BarKind::Rows:
        ScrollTo({scroll_.x, position});
        return;
    case BarKind::Sideways:
        ScrollTo({position, scroll_.y});
        return;
    case BarKind::Column:
        if (column < path_.size())
            ColumnScroll(column) = position;
        ClampScroll();
        SetNeedsDisplay();
        return;
    }
}

size_t GridBrowserView::ColumnCount() const {
    return path_.size() + (PreviewItem() != 0 ? 1 : 0);
}

GridBrowserItemID GridBrowserView::PreviewItem() const {
    if (style_ != kGridBrowserColumnView || selected_.size() != 1 || path_.empty())
        return 0;
    GridBrowserItemID item = *selected_.begin();
    return tree_.ContainerOf(item) == path_.back() ? item : 0;
}

BGFloat GridBrowserView::PreviewWidth() const {
    BGFloat rest = Bounds().size.width - BGFloat(path_.size()) * columnWidth;
    return std::max(columnWidth, rest);
}

BGFloat GridBrowserView::ColumnsWidth() const {
    return BGFloat(path_.size()) * columnWidth + (PreviewItem() != 0 ? PreviewWidth() : 0);
}

BGFloat GridBrowserView::ColumnLeft(size_t column) const {
    return Bounds().origin.x + BGFloat(column) * columnWidth - scroll_.x;
}

bool GridBrowserView::HorizontalBarShown() const {
    return HorizontalContent() > HorizontalVisible();
}

BGRect GridBrowserView::ColumnRowArea(size_t column) const {
    BGRect bounds = Bounds();
    BGFloat height = bounds.size.height - (HorizontalBarShown() ? kBarWidth : 0);
    BGFloat width = column < path_.size() ? columnWidth : PreviewWidth();
    return BGRectMake(ColumnLeft(column), bounds.origin.y, width, std::max<BGFloat>(0, height));
}

Rect GridBrowserView::PreviewRect() const {
    BGRect area = ColumnRowArea(path_.size());
    return {int16_t(area.origin.y), int16_t(area.origin.x), int16_t(BGRectGetMaxY(area)),
            int16_t(BGRectGetMaxX(area))};
}

BGFloat& GridBrowserView::ColumnScroll(size_t column) {
    columnScroll_.resize(path_.size(), 0);
    return columnScroll_.at(column);
}

size_t GridBrowserView::PageRows() {
    BGFloat height =
        style_ == kGridBrowserListView ? RowArea().size.height : ColumnRowArea(0).size.height;
    return std::max<size_t>(1, size_t(height / rowHeight) - 1);
}

std::optional<size_t> GridBrowserView::RowAt(BGPoint local) {
    BGRect area = RowArea();
    if (!BGRectContainsPoint(area, local))
        return std::nullopt;
    auto index = size_t(std::floor((local.y - area.origin.y + scroll_.y) / rowHeight));
    if (index >= Rows().size())
        return std::nullopt;
    return index;
}

// ---- Scrolling -------------------------------------------------------------------------------

void GridBrowserView::ClampScroll() {
    BGFloat wide = HorizontalContent() - HorizontalVisible();
    scroll_.x = std::clamp<BGFloat>(scroll_.x, 0, std::max<BGFloat>(0, wide));
    if (style_ == kGridBrowserListView) {
        BGFloat most = BGFloat(rows_.size()) * rowHeight - RowArea().size.height;
        scroll_.y = std::clamp<BGFloat>(scroll_.y, 0, std::max<BGFloat>(0, most));
    } else {
        scroll_.y = 0;
        for (size_t column = 0; column < path_.size(); ++column) {
            ScrollBar bar = Bar(BarKind::Column, column);
            ColumnScroll(column) = std::clamp<BGFloat>(
                bar.position, 0, std::max<BGFloat>(0, bar.content - bar.visible));
        }
    }
}

// A resized control, or one with a new column width, shows as much as it can; column view
// keeps its last column in sight.
void GridBrowserView::FrameChanged() {
    rowsDirty_ = true;
    if (style_ == kGridBrowserColumnView && ColumnCount() > 0)
        RevealColumn(ColumnCount() - 1);
    ClampScroll();
    SetNeedsDisplay();
}

void GridBrowserView::ScrollTo(BGPoint position) {
    Rows();
    scroll_ = position;
    ClampScroll();
    SetNeedsDisplay();
}

void GridBrowserView::RevealRow(size_t index, bool center) {
    BGRect area = RowArea();
    BGFloat top = BGFloat(index) * rowHeight;
    if (top >= scroll_.y && top + rowHeight <= scroll_.y + area.size.height)
        return;
    if (center)
        ScrollTo({scroll_.x, top - (area.size.height - rowHeight) / 2});
    else if (top < scroll_.y)
        ScrollTo({scroll_.x, top});
    else
        ScrollTo({scroll_.x, top + rowHeight - area.size.height});
}

void GridBrowserView::RevealColumn(size_t column) {
    BGFloat left = BGFloat(column) * columnWidth;
    BGFloat width = column < path_.size() ? columnWidth : PreviewWidth();
    BGFloat visible = Bounds().size.width;
    if (left < scroll_.x)
        scroll_.x = left;
    else if (left + width > scroll_.x + visible)
        scroll_.x = left + width - visible;
    ClampScroll();
    SetNeedsDisplay();
}

void GridBrowserView::RevealInColumn(size_t column, GridBrowserItemID item, bool center) {
    if (RevealRowInColumn(column, item, center))
        RevealColumn(column);
}

bool GridBrowserView::RevealRowInColumn(size_t column, GridBrowserItemID item, bool center) {
    const auto& items = tree_.Children(path_[column]);
    auto it = std::find(items.begin(), items.end(), item);
    if (it == items.end())
        return false;
    ScrollBar bar = Bar(BarKind::Column, column);
    BGFloat top = BGFloat(it - items.begin()) * rowHeight;
    if (top >= bar.position && top + rowHeight <= bar.position + bar.visible)
        return true;
    if (center)
        ScrollBarTo(BarKind::Column, column, top - (bar.visible - rowHeight) / 2);
    else if (top < bar.position)
        ScrollBarTo(BarKind::Column, column, top);
    else
        ScrollBarTo(BarKind::Column, column, top + rowHeight - bar.visible);
    return true;
}

StatusCode GridBrowserView::Reveal(GridBrowserItemID item, GridBrowserPropertyID property,
                                   bool center) {
    if (style_ == kGridBrowserListView) {
        const std::vector<Row>& rows = Rows();
        auto it =
            std::find_if(rows.begin(), rows.end(), [&](const Row& r) { return r.id == item; });
        if (it == rows.end())
            return kGridBrowserItemNotFound;
        RevealRow(size_t(it - rows.begin()), center);
        return noErr;
    }
    if (property == kGridBrowserColumnViewPreviewProperty && PreviewItem() == item && item != 0) {
        RevealColumn(path_.size());
        return noErr;
    }
    auto column = std::find(path_.begin(), path_.end(), tree_.ContainerOf(item));
    if (item == 0 || column == path_.end())
        return kGridBrowserItemNotFound;
    RevealInColumn(size_t(column - path_.begin()), item, center);
    return noErr;
}

} // namespace basalt::gridbrowser
