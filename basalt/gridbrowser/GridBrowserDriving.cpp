// Finding a row by what it shows, for drivers that act as a person does: read a name, click
// where it is. Only rows that are listed count: list view's visible rows (open containers
// included), column view's columns from the last back to the first.

#include "basalt/gridbrowser/GridBrowserView.h"

#include <algorithm>
#include <optional>

namespace basalt::gridbrowser {
namespace {

std::u16string Characters(BCStringRef string) {
    std::u16string text(size_t(BCStringGetLength(string)), u'\0');
    BCStringGetCharacters(string, {0, BCIndex(text.size())},
                          reinterpret_cast<UniChar*>(text.data()));
    return text;
}

std::optional<size_t> IndexOf(const std::vector<GridBrowserItemID>& items, GridBrowserItemID item) {
    auto it = std::find(items.begin(), items.end(), item);
    return it == items.end() ? std::nullopt : std::optional(size_t(it - items.begin()));
}

// The containers a name is looked up in, in the order they are searched.
std::vector<GridBrowserItemID> SearchOrder(GridBrowserView& view, GridBrowserItemID container) {
    if (container != 0)
        return {container};
    if (view.Style() == kGridBrowserListView)
        return {0};
    std::vector<GridBrowserItemID> path = view.Path();
    std::reverse(path.begin(), path.end());
    return path;
}

// Where a list row's cell of the property is across the row; the whole row without one.
std::pair<BGFloat, BGFloat> CellSpan(GridBrowserView& view, GridBrowserPropertyID property) {
    BGRect area = view.RowArea();
    BGFloat left = area.origin.x - view.ScrollPosition().x;
    for (const ListColumn& column : view.Columns()) {
        if (column.desc.propertyID == property)
            return {left, column.width};
        left += column.width;
    }
    return {area.origin.x, area.size.width};
}

// The cell's rectangle in the view's coordinates, once its row has been scrolled into sight.
std::optional<BGRect> CellRect(GridBrowserView& view, GridBrowserItemID item,
                               GridBrowserPropertyID property) {
    if (view.Reveal(item, kGridBrowserNameProperty, false) != noErr)
        return std::nullopt;
    if (view.Style() == kGridBrowserListView) {
        std::vector<GridBrowserItemID> ids;
        for (const Row& row : view.Rows())
            ids.push_back(row.id);
        std::optional<size_t> index = IndexOf(ids, item);
        if (!index)
            return std::nullopt;
        auto [left, width] = CellSpan(view, property);
        BGFloat top = view.RowArea().origin.y + BGFloat(*index) * view.rowHeight;
        return BGRectMake(left, top - view.ScrollPosition().y, width, view.rowHeight);
    }
    const std::vector<GridBrowserItemID>& path = view.Path();
    auto column = std::find(path.begin(), path.end(), view.Tree().ContainerOf(item));
    if (column == path.end())
        return std::nullopt;
    const size_t at = size_t(column - path.begin());
    std::optional<size_t> index = IndexOf(view.Tree().Children(*column), item);
    if (!index)
        return std::nullopt;
    BGRect area = view.ColumnRowArea(at);
    BGFloat top = area.origin.y + BGFloat(*index) * view.rowHeight - view.ColumnScroll(at);
    return BGRectMake(area.origin.x, top, area.size.width, view.rowHeight);
}

} // namespace
} // namespace basalt::gridbrowser

using basalt::gridbrowser::GridBrowserView;

StatusCode FindGridBrowserItemNamed(ControlRef control, GridBrowserItemID container,
                                    BCStringRef name, GridBrowserItemID* item) {
    GridBrowserView* view = GridBrowserView::FromControl(control);
    if (view == nullptr)
        return errUnknownControl;
    if (name == nullptr || item == nullptr)
        return paramErr;
    auto keep = view->Shared();
    const std::u16string wanted = basalt::gridbrowser::Characters(name);
    for (GridBrowserItemID in : basalt::gridbrowser::SearchOrder(*view, container)) {
        for (GridBrowserItemID candidate : view->Items(in, in == 0, kGridBrowserItemAnyState)) {
            if (view->AskName(candidate) == wanted) {
                *item = candidate;
                return noErr;
            }
        }
    }
    *item = 0;
    return kGridBrowserItemNotFound;
}

StatusCode GetGridBrowserItemPartBounds(ControlRef control, GridBrowserItemID item,
                                        GridBrowserPropertyID property, Rect* bounds) {
    GridBrowserView* view = GridBrowserView::FromControl(control);
    if (view == nullptr)
        return errUnknownControl;
    if (bounds == nullptr)
        return paramErr;
    auto keep = view->Shared();
    std::optional<BGRect> rect = basalt::gridbrowser::CellRect(*view, item, property);
    if (!rect)
        return kGridBrowserItemNotFound;
    BGPoint topLeft = view->ToWindow(rect->origin);
    *bounds = {int16_t(topLeft.y), int16_t(topLeft.x), int16_t(topLeft.y + rect->size.height),
               int16_t(topLeft.x + rect->size.width)};
    return noErr;
}
