// The GridBrowser's operations over a ControlRef. Each checks that the control is a
// GridBrowser (errUnknownControl otherwise) and hands over to the view.

#include "basalt/gridbrowser/GridBrowserView.h"
#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <cstring>

using basalt::gridbrowser::GridBrowserView;
using basalt::gridbrowser::ListColumn;

namespace {

template <typename Work>
StatusCode With(ControlRef control, Work work) {
    GridBrowserView* view = GridBrowserView::FromControl(control);
    if (view == nullptr)
        return errUnknownControl;
    auto keep = view->Shared();
    return work(*view);
}

std::span<const GridBrowserItemID> Ids(uint32_t count, const GridBrowserItemID* items) {
    if (items == nullptr)
        return {};
    return {items, count};
}

StatusCode FillHandle(Handle handle, const std::vector<GridBrowserItemID>& ids) {
    if (handle == nullptr)
        return paramErr;
    Size size = Size(ids.size() * sizeof(GridBrowserItemID));
    SetHandleSize(handle, size);
    if (GetHandleSize(handle) != size)
        return memFullErr;
    if (size > 0)
        std::memcpy(*handle, ids.data(), size_t(size));
    return noErr;
}

std::u16string TextOf(BCStringRef string) {
    if (string == nullptr)
        return {};
    std::u16string text(size_t(BCStringGetLength(string)), u'\0');
    BCStringGetCharacters(string, {0, BCIndex(text.size())},
                          reinterpret_cast<UniChar*>(text.data()));
    return text;
}

} // namespace

// ---- Creation, style, callbacks --------------------------------------------------------------

StatusCode CreateGridBrowserControl(WindowRef window, const Rect* bounds,
                                    GridBrowserViewStyle style, ControlRef* outControl) {
    if ((style != kGridBrowserListView && style != kGridBrowserColumnView) || outControl == nullptr)
        return paramErr;
    StatusCode status =
        BTCreateControl(window, bounds, kControlKindGridBrowser, nullptr, outControl);
    if (status == noErr)
        GridBrowserView::FromControl(*outControl)->SetStyle(style);
    return status;
}

StatusCode SetGridBrowserViewStyle(ControlRef control, GridBrowserViewStyle style) {
    return With(control, [&](GridBrowserView& view) -> StatusCode { return view.SetStyle(style); });
}

StatusCode GetGridBrowserViewStyle(ControlRef control, GridBrowserViewStyle* style) {
    if (style == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *style = view.Style();
        return noErr;
    });
}

StatusCode InitGridBrowserCallbacks(GridBrowserCallbacks* callbacks) {
    if (callbacks == nullptr)
        return paramErr;
    *callbacks = GridBrowserCallbacks{};
    return noErr;
}

StatusCode SetGridBrowserCallbacks(ControlRef control, const GridBrowserCallbacks* callbacks) {
    if (callbacks == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.callbacks = *callbacks;
        view.SetNeedsDisplay();
        return noErr;
    });
}

StatusCode InitGridBrowserCustomCallbacks(GridBrowserCustomCallbacks* callbacks) {
    if (callbacks == nullptr)
        return paramErr;
    *callbacks = GridBrowserCustomCallbacks{};
    return noErr;
}

StatusCode SetGridBrowserCustomCallbacks(ControlRef control,
                                         const GridBrowserCustomCallbacks* callbacks) {
    if (callbacks == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.customCallbacks = *callbacks;
        view.SetNeedsDisplay();
        return noErr;
    });
}

StatusCode GetGridBrowserDrawContext(ControlRef control, BGContextRef* context) {
    if (context == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *context = view.drawContext;
        return view.drawContext != nullptr ? noErr : paramErr;
    });
}

StatusCode GridBrowserChangeAttributes(ControlRef control, OptionBits set, OptionBits clear) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.attributes = (view.attributes | set) & ~clear;
        view.SetNeedsDisplay();
        return noErr;
    });
}

StatusCode GetGridBrowserAttributes(ControlRef control, OptionBits* attributes) {
    if (attributes == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *attributes = view.attributes;
        return noErr;
    });
}

StatusCode SetGridBrowserSelectionFlags(ControlRef control, GridBrowserSelectionFlags flags) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.selectionFlags = flags;
        return noErr;
    });
}

StatusCode GetGridBrowserSelectionFlags(ControlRef control, GridBrowserSelectionFlags* flags) {
    if (flags == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *flags = view.selectionFlags;
        return noErr;
    });
}

// ---- Items -----------------------------------------------------------------------------------

StatusCode SetGridBrowserTarget(ControlRef control, GridBrowserItemID target) {
    return With(control,
                [&](GridBrowserView& view) -> StatusCode { return view.SetTarget(target); });
}

StatusCode GetGridBrowserTarget(ControlRef control, GridBrowserItemID* target) {
    if (target == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *target = view.Target();
        return noErr;
    });
}

StatusCode AddGridBrowserItems(ControlRef control, GridBrowserItemID container, uint32_t count,
                               const GridBrowserItemID* items,
                               GridBrowserPropertyID preSortProperty) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.AddItems(container, Ids(count, items),
                             preSortProperty == kGridBrowserItemSelfIdentityProperty);
    });
}

StatusCode RemoveGridBrowserItems(ControlRef control, GridBrowserItemID container, uint32_t count,
                                  const GridBrowserItemID* items, GridBrowserPropertyID) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.RemoveItems(container, Ids(count, items));
    });
}

StatusCode UpdateGridBrowserItems(ControlRef control, GridBrowserItemID container, uint32_t count,
                                  const GridBrowserItemID* items, GridBrowserPropertyID,
                                  GridBrowserPropertyID) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.UpdateItems(container, Ids(count, items), true);
    });
}

StatusCode _UpdateGridBrowserItemsNoSort(ControlRef control, GridBrowserItemID container,
                                         uint32_t count, const GridBrowserItemID* items,
                                         GridBrowserPropertyID, GridBrowserPropertyID) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.UpdateItems(container, Ids(count, items), false);
    });
}

StatusCode GetGridBrowserItems(ControlRef control, GridBrowserItemID container, bool recurse,
                               GridBrowserItemState state, Handle items) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return FillHandle(items, view.Items(container, recurse, state));
    });
}

StatusCode GetGridBrowserItemCount(ControlRef control, GridBrowserItemID container, bool recurse,
                                   GridBrowserItemState state, uint32_t* count) {
    if (count == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *count = uint32_t(view.Items(container, recurse, state).size());
        return noErr;
    });
}

StatusCode SetGridBrowserSelectedItems(ControlRef control, uint32_t count,
                                       const GridBrowserItemID* items,
                                       GridBrowserSetOption operation) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.SetSelection(Ids(count, items), operation);
    });
}

bool IsGridBrowserItemSelected(ControlRef control, GridBrowserItemID item) {
    GridBrowserView* view = GridBrowserView::FromControl(control);
    return view != nullptr && view->IsSelected(item);
}

StatusCode RevealGridBrowserItem(ControlRef control, GridBrowserItemID item,
                                 GridBrowserPropertyID property, GridBrowserRevealOptions options) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.Reveal(item, property, (options & kGridBrowserRevealAndCenterInView) != 0);
    });
}

StatusCode OpenGridBrowserContainer(ControlRef control, GridBrowserItemID container) {
    return With(control,
                [&](GridBrowserView& view) -> StatusCode { return view.OpenContainer(container); });
}

StatusCode CloseGridBrowserContainer(ControlRef control, GridBrowserItemID container) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.CloseContainer(container);
    });
}

StatusCode SetGridBrowserScrollPosition(ControlRef control, uint32_t top, uint32_t left) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.ScrollTo({BGFloat(left), BGFloat(top)});
        return noErr;
    });
}

StatusCode GetGridBrowserScrollPosition(ControlRef control, uint32_t* top, uint32_t* left) {
    if (top == nullptr || left == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *top = uint32_t(view.ScrollPosition().y);
        *left = uint32_t(view.ScrollPosition().x);
        return noErr;
    });
}

// ---- Column view -----------------------------------------------------------------------------

StatusCode SetGridBrowserColumnViewPath(ControlRef control, uint32_t length,
                                        const GridBrowserItemID* path) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return view.SetPath(Ids(length, path));
    });
}

StatusCode GetGridBrowserColumnViewPath(ControlRef control, Handle path) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        return FillHandle(path, view.ReportedPath());
    });
}

StatusCode GetGridBrowserColumnViewPathLength(ControlRef control, uint32_t* length) {
    if (length == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *length = uint32_t(view.ReportedPath().size());
        return noErr;
    });
}

// ---- Sorting and list columns ----------------------------------------------------------------

StatusCode SetGridBrowserSortProperty(ControlRef control, GridBrowserPropertyID property) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.SetSort(property, view.SortOrder());
        return noErr;
    });
}

StatusCode GetGridBrowserSortProperty(ControlRef control, GridBrowserPropertyID* property) {
    if (property == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *property = view.SortProperty();
        return noErr;
    });
}

StatusCode SetGridBrowserSortOrder(ControlRef control, GridBrowserSortOrder order) {
    if (order != kGridBrowserOrderIncreasing && order != kGridBrowserOrderDecreasing)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.SetSort(view.SortProperty(), order);
        return noErr;
    });
}

StatusCode GetGridBrowserSortOrder(ControlRef control, GridBrowserSortOrder* order) {
    if (order == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *order = view.SortOrder();
        return noErr;
    });
}

StatusCode AddGridBrowserListViewColumn(ControlRef control,
                                        const GridBrowserListViewColumnDesc* column,
                                        uint32_t position) {
    if (column == nullptr || column->propertyID == 0)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        ListColumn added{*column, TextOf(column->titleString),
                         std::max<BGFloat>(column->minimumWidth, 100)};
        added.desc.titleString = nullptr;
        if (ListColumn* shown = view.FindColumn(column->propertyID)) {
            // Set up again (a return to list view): the column keeps its place and width.
            added.width = shown->width;
            *shown = added;
            view.ColumnsChanged();
            return noErr;
        }
        auto& columns = view.Columns();
        columns.insert(columns.begin() + std::min<size_t>(position, columns.size()), added);
        view.ColumnsChanged();
        return noErr;
    });
}

StatusCode RemoveGridBrowserTableViewColumn(ControlRef control, GridBrowserPropertyID column) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        auto& columns = view.Columns();
        auto erased = std::erase_if(
            columns, [&](const ListColumn& each) { return each.desc.propertyID == column; });
        view.ColumnsChanged();
        return erased > 0 ? StatusCode(noErr) : StatusCode(kGridBrowserItemNotFound);
    });
}

StatusCode GetGridBrowserTableViewColumnCount(ControlRef control, uint32_t* count) {
    if (count == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *count = uint32_t(view.Columns().size());
        return noErr;
    });
}

StatusCode SetGridBrowserListViewDisclosureColumn(ControlRef control, GridBrowserPropertyID column,
                                                  bool expandableRows) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        if (column != 0 && view.FindColumn(column) == nullptr)
            return kGridBrowserItemNotFound;
        view.disclosureColumn = column;
        view.expandableRows = column != 0 && expandableRows;
        view.SetNeedsDisplay();
        return noErr;
    });
}

StatusCode GetGridBrowserListViewDisclosureColumn(ControlRef control, GridBrowserPropertyID* column,
                                                  bool* expandableRows) {
    if (column == nullptr || expandableRows == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *column = view.disclosureColumn;
        *expandableRows = view.expandableRows;
        return noErr;
    });
}

StatusCode SetGridBrowserTableViewColumnWidth(ControlRef control, uint16_t width) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.columnWidth = std::max<BGFloat>(width, 50);
        // A width restored after the path was shown must not push the last column away.
        view.FrameChanged();
        return noErr;
    });
}

StatusCode GetGridBrowserTableViewColumnWidth(ControlRef control, uint16_t* width) {
    if (width == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *width = uint16_t(view.columnWidth);
        return noErr;
    });
}

StatusCode SetGridBrowserTableViewNamedColumnWidth(ControlRef control, GridBrowserPropertyID column,
                                                   uint16_t width) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        ListColumn* found = view.FindColumn(column);
        if (found == nullptr)
            return kGridBrowserItemNotFound;
        found->width = width;
        view.ColumnsChanged();
        return noErr;
    });
}

StatusCode GetGridBrowserTableViewNamedColumnWidth(ControlRef control, GridBrowserPropertyID column,
                                                   uint16_t* width) {
    if (width == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        ListColumn* found = view.FindColumn(column);
        if (found == nullptr)
            return kGridBrowserItemNotFound;
        *width = uint16_t(found->width);
        return noErr;
    });
}

StatusCode SetGridBrowserTableViewHiliteStyle(ControlRef control, uint32_t style) {
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.hiliteStyle = style;
        view.SetNeedsDisplay();
        return noErr;
    });
}

StatusCode SetGridBrowserTableViewRowHeight(ControlRef control, uint16_t height) {
    if (height < 8)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        view.rowHeight = height;
        view.ColumnsChanged();
        return noErr;
    });
}

StatusCode GetGridBrowserTableViewRowHeight(ControlRef control, uint16_t* height) {
    if (height == nullptr)
        return paramErr;
    return With(control, [&](GridBrowserView& view) -> StatusCode {
        *height = uint16_t(view.rowHeight);
        return noErr;
    });
}
