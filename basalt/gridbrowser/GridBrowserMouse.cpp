// The mouse. A press arrives as "cntl" 51 so that the control sees where it happened and with
// which modifiers: clicks on rows, triangles, headers and scroll bar tracks are done at once;
// dragging a column edge or a scroll bar's thumb, or a press in the rows of list view that may
// become a rubber band, hands the rest of the press to the window's tracking, which calls Drag
// until the release ends it in PerformClick.

#include "basalt/gridbrowser/GridBrowserView.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <cmath>

namespace basalt::gridbrowser {
namespace {

constexpr double kDoubleClickTime = 0.5;
constexpr BGFloat kEdgeSlop = 3;
constexpr BGFloat kMinimumColumnWidth = 100;
constexpr BGFloat kMaximumColumnWidth = 1000;
constexpr BGFloat kSidewaysLine = 40; // a wheel step sideways, a quarter of a column or so

} // namespace

StatusCode GridBrowserView::HandleStandardEvent(EventHandlerCallRef call, EventRef event) {
    if (event->eventClass == kEventClassControl && event->kind == kEventControlTrack)
        return Track(event);
    return View::HandleStandardEvent(call, event);
}

StatusCode GridBrowserView::Track(EventRef event) {
    BGPoint local{};
    uint32_t modifiers = 0;
    toolbox::GetParam(event, kEventParamMouseLocation, typeBTPoint, &local);
    toolbox::GetParam(event, kEventParamKeyModifiers, typeUInt32, &modifiers);
    auto keep = Shared();
    if (toolbox::Window* window = OwnerWindow())
        window->SetFocus(this, kControlEditTextPart);
    drag_ = DragKind::None;
    EndBand();
    if (!StartColumnResize(local) && !ClickBar(local)) {
        double time = clock();
        if (style_ == kGridBrowserListView) {
            if (local.y < Bounds().origin.y + HeaderHeight())
                ClickHeader(local);
            else
                ClickListRow(local, modifiers, time);
        } else {
            ClickColumn(local, modifiers, time);
        }
    }
    // A drag goes on through the window's tracking, which needs a part to follow.
    return drag_ == DragKind::None || OwnerWindow() == nullptr ? noErr : eventNotHandledErr;
}

ControlPartCode GridBrowserView::HitTest(BGPoint) {
    return drag_ != DragKind::None ? ControlPartCode(kControlIndicatorPart)
                                   : ControlPartCode(kControlNoPart);
}

ControlPartCode GridBrowserView::PerformClick(ControlPartCode, uint32_t) {
    drag_ = DragKind::None;
    EndBand();
    return kControlNoPart;
}

bool GridBrowserView::Drag(BGPoint local) {
    BGFloat moved = local.x - dragStart_;
    switch (drag_) {
    case DragKind::Band:
        return DragBand(local);
    case DragKind::ListColumn: {
        if (dragColumn_ >= columns_.size())
            return false;
        ListColumn& column = columns_[dragColumn_];
        BGFloat low = std::max<BGFloat>(16, column.desc.minimumWidth);
        BGFloat high = column.desc.maximumWidth > 0 ? BGFloat(column.desc.maximumWidth) : 10000;
        column.width = std::clamp<BGFloat>(dragOrigin_ + moved, low, std::max(low, high));
        ColumnsChanged();
        return true;
    }
    case DragKind::SharedWidth:
        // The dragged edge follows the mouse: every column takes the same width.
        columnWidth = std::clamp<BGFloat>(dragOrigin_ + moved / BGFloat(dragColumn_ + 1),
                                          kMinimumColumnWidth, kMaximumColumnWidth);
        ClampScroll();
        SetNeedsDisplay();
        return true;
    case DragKind::Thumb: {
        ScrollBar bar = Bar(dragBar_, dragColumn_);
        BGFloat along = bar.Vertical() ? local.y : local.x;
        ScrollBarTo(dragBar_, dragColumn_, bar.PositionAfterDrag(dragOrigin_, along - dragStart_));
        return true;
    }
    default:
        return false;
    }
}

// Shift turns the wheel sideways, as on most desktops for a mouse without a second wheel.
bool GridBrowserView::Wheel(BGPoint local, BGFloat lines) {
    if (GetCurrentKeyModifiers() & shiftKey)
        return ScrollByWheel(local, lines * kSidewaysLine, 0);
    return ScrollByWheel(local, 0, lines * rowHeight);
}

bool GridBrowserView::WheelSideways(BGPoint local, BGFloat lines) {
    return ScrollByWheel(local, lines * kSidewaysLine, 0);
}

bool GridBrowserView::ScrollByWheel(BGPoint local, BGFloat dx, BGFloat dy) {
    if (dx != 0)
        ScrollBarTo(BarKind::Sideways, 0, scroll_.x - dx);
    if (dy == 0)
        return true;
    if (style_ == kGridBrowserListView) {
        ScrollBarTo(BarKind::Rows, 0, scroll_.y - dy);
        return true;
    }
    for (size_t column = 0; column < path_.size(); ++column) {
        BGRect area = ColumnRowArea(column);
        if (local.x >= area.origin.x && local.x < BGRectGetMaxX(area)) {
            ScrollBarTo(BarKind::Column, column, ColumnScroll(column) - dy);
            break;
        }
    }
    return true;
}

// ---- Bars and edges --------------------------------------------------------------------------

// A click in a bar's track pages; a press on its thumb drags it.
bool GridBrowserView::ClickBar(BGPoint local) {
    std::vector<std::pair<BarKind, size_t>> bars = {{BarKind::Sideways, 0}, {BarKind::Rows, 0}};
    for (size_t column = 0; column < path_.size(); ++column)
        bars.emplace_back(BarKind::Column, column);
    for (auto [kind, column] : bars) {
        ScrollBar bar = Bar(kind, column);
        switch (bar.PartAt(local)) {
        case ScrollBar::Part::None:
            continue;
        case ScrollBar::Part::Before:
            ScrollBarTo(kind, column, bar.position - bar.visible);
            return true;
        case ScrollBar::Part::After:
            ScrollBarTo(kind, column, bar.position + bar.visible);
            return true;
        case ScrollBar::Part::Thumb:
            drag_ = DragKind::Thumb;
            dragBar_ = kind;
            dragColumn_ = column;
            dragStart_ = bar.Vertical() ? local.y : local.x;
            dragOrigin_ = bar.position;
            return true;
        }
    }
    return false;
}

// The column edge at the point, if one is there to drag: a resizable column's right edge in
// list view's header, or any column's edge in column view, where they share one width.
std::optional<size_t> GridBrowserView::ColumnEdgeAt(BGPoint local) {
    if (style_ == kGridBrowserListView) {
        if (local.y >= Bounds().origin.y + HeaderHeight())
            return std::nullopt;
        BGFloat x = Bounds().origin.x - scroll_.x;
        for (size_t i = 0; i < columns_.size(); ++i) {
            x += columns_[i].width;
            if (std::abs(local.x - x) <= kEdgeSlop &&
                (columns_[i].desc.propertyFlags & kGridBrowserListViewResizableColumn))
                return i;
        }
        return std::nullopt;
    }
    if (path_.empty() || local.y >= BGRectGetMaxY(ColumnRowArea(0)))
        return std::nullopt; // the bottom bar
    for (size_t column = 0; column < path_.size(); ++column)
        if (std::abs(local.x - (ColumnLeft(column) + columnWidth)) <= kEdgeSlop)
            return column;
    return std::nullopt;
}

bool GridBrowserView::StartColumnResize(BGPoint local) {
    std::optional<size_t> edge = ColumnEdgeAt(local);
    if (!edge)
        return false;
    bool list = style_ == kGridBrowserListView;
    drag_ = list ? DragKind::ListColumn : DragKind::SharedWidth;
    dragColumn_ = *edge;
    dragStart_ = local.x;
    dragOrigin_ = list ? columns_[*edge].width : columnWidth;
    return true;
}

uint32_t GridBrowserView::Cursor(BGPoint local) {
    return ColumnEdgeAt(local) ? uint32_t(kThemeResizeLeftRightCursor)
                               : uint32_t(kThemeArrowCursor);
}

// ---- Header and rows -------------------------------------------------------------------------

bool GridBrowserView::ClickHeader(BGPoint local) {
    BGFloat x = Bounds().origin.x - scroll_.x;
    for (const ListColumn& column : columns_) {
        if (local.x >= x && local.x < x + column.width) {
            if (!(column.desc.propertyFlags & kGridBrowserListViewSortableColumn))
                return false;
            GridBrowserSortOrder order = column.desc.initialOrder;
            if (column.desc.propertyID == sortProperty_)
                order = sortOrder_ == kGridBrowserOrderIncreasing ? kGridBrowserOrderDecreasing
                                                                  : kGridBrowserOrderIncreasing;
            SetSort(column.desc.propertyID, order);
            // Rows given in the source's own order (the hits of a search) are ordered there.
            for (GridBrowserItemID container : tree_.OpenContainers())
                if (tree_.IsPresorted(container))
                    Send(container, kGridBrowserPresortedContainerSortChanged);
            return true;
        }
        x += column.width;
    }
    return false;
}

void GridBrowserView::ClickListRow(BGPoint local, uint32_t modifiers, double time) {
    auto keep = Shared();
    std::unordered_set<GridBrowserItemID> before = selected_;
    std::optional<size_t> index = RowAt(local);
    if (!index) {
        if (!BGRectContainsPoint(RowArea(), local))
            return;
        // The empty space below the rows: a plain press lets go of the selection, a press
        // with shift or command keeps it for the band to add to.
        if ((modifiers & (cmdKey | shiftKey)) == 0) {
            anchor_ = lead_ = 0;
            ChangeSelection({});
        }
        if (OwnerWindow() != nullptr)
            BeginBand(local, modifiers, std::move(before));
        return;
    }
    Row row = Rows()[*index];
    BGFloat x = Bounds().origin.x - scroll_.x;
    for (const ListColumn& column : columns_) {
        bool inside = local.x >= x && local.x < x + column.width;
        if (inside && column.desc.propertyID == disclosureColumn) {
            BGFloat triangle = x + 2 + row.depth * kIndent;
            if (local.x >= triangle && local.x < triangle + kTriangleWidth &&
                AskBool(row.id, kGridBrowserItemIsContainerProperty, false)) {
                if (tree_.IsOpen(row.id))
                    CloseContainer(row.id);
                else if (AskBool(row.id, kGridBrowserContainerIsOpenableProperty, true))
                    OpenContainer(row.id);
                return;
            }
        }
        if (inside && !(column.desc.propertyFlags & kGridBrowserListViewSelectionColumn))
            return;
        x += column.width;
    }
    if (!ClickRow(row.id, modifiers, time) && OwnerWindow() != nullptr)
        BeginBand(local, modifiers, std::move(before));
}

void GridBrowserView::ClickColumn(BGPoint local, uint32_t modifiers, double time) {
    for (size_t column = 0; column < ColumnCount(); ++column) {
        BGRect area = ColumnRowArea(column);
        if (!BGRectContainsPoint(area, local))
            continue;
        if (column == path_.size()) {
            TrackPreview(local, modifiers);
            return;
        }
        const std::vector<GridBrowserItemID>& items = tree_.Children(path_[column]);
        auto index =
            size_t(std::floor((local.y - area.origin.y + ColumnScroll(column)) / rowHeight));
        if (index >= items.size()) {
            SelectInColumn(column, 0);
            return;
        }
        GridBrowserItemID item = items[index];
        if (column != FocusColumn() && (modifiers & (cmdKey | shiftKey)))
            modifiers = 0; // a range or toggle lives in one column
        if (modifiers & (cmdKey | shiftKey))
            TrimPath(column + 1);
        ClickRow(item, modifiers, time);
        return;
    }
}

bool GridBrowserView::ClickRow(GridBrowserItemID item, uint32_t modifiers, double time) {
    auto keep = Shared();
    if (!Selectable(item)) {
        Send(item, kGridBrowserUnselectableItemClicked);
        return false;
    }
    bool plain = (modifiers & (cmdKey | shiftKey)) == 0;
    bool twice = plain && item == lastClickItem_ && time - lastClickTime_ <= kDoubleClickTime;
    lastClickItem_ = item;
    lastClickTime_ = twice ? -1e9 : time;
    bool single = (selectionFlags & kGridBrowserSelectOnlyOne) != 0;
    if ((modifiers & cmdKey) && !single) {
        auto selection = selected_;
        if (!selection.erase(item))
            selection.insert(item);
        anchor_ = lead_ = item;
        ChangeSelection(std::move(selection));
    } else if ((modifiers & shiftKey) && !single && anchor_ != 0) {
        SelectRange(style_ == kGridBrowserListView ? Items(0, true, kGridBrowserItemAnyState)
                                                   : tree_.Children(tree_.ContainerOf(item)),
                    item);
    } else if (style_ == kGridBrowserColumnView) {
        auto column = std::find(path_.begin(), path_.end(), tree_.ContainerOf(item));
        if (!twice && column != path_.end())
            SelectInColumn(size_t(column - path_.begin()), item);
    } else {
        SelectOnly(item);
    }
    if (twice)
        Send(item, kGridBrowserItemDoubleClicked);
    return twice;
}

bool GridBrowserView::TrackPreview(BGPoint local, uint32_t modifiers) {
    GridBrowserItemID item = PreviewItem();
    if (item == 0 || customCallbacks.trackingCallback == nullptr)
        return false;
    Rect rect = PreviewRect();
    Point start = {int16_t(local.y), int16_t(local.x)};
    customCallbacks.trackingCallback(Ref(), item, kGridBrowserColumnViewPreviewProperty, &rect,
                                     start, uint16_t(modifiers));
    return true;
}

} // namespace basalt::gridbrowser
