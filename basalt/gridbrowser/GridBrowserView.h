#pragma once

// The GridBrowser as a toolbox view.
//
// State: the item tree (open containers and their ordered ids), the target (list view) or the
// column path (column view), the selection with its anchor, the list columns, scroll offsets.
// Rows of list view are the target's children with those of open rows below them, flattened
// again only when the tree changes; drawing asks the data source for the visible rows alone.
// Every call into the data source may change the control (add rows, set a target, dispose
// of the window), so nothing computed before a message is trusted after it.

#include "basalt/gridbrowser/GridBrowser.h"
#include "basalt/gridbrowser/ItemTree.h"
#include "basalt/gridbrowser/ScrollBar.h"
#include "basalt/gridbrowser/TypeSelect.h"
#include "basalt/toolbox/views/View.h"

#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace basalt::gridbrowser {

class CellData;

struct ListColumn {
    GridBrowserListViewColumnDesc desc;
    std::u16string title;
    BGFloat width = 100;
};

struct Row {
    GridBrowserItemID id;
    uint16_t depth;
};

class GridBrowserView : public toolbox::View {
public:
    static constexpr BGFloat kBarWidth = 11;
    static constexpr BGFloat kIndent = 16;
    static constexpr BGFloat kIconSize = 16;
    static constexpr BGFloat kTriangleWidth = 14;

    GridBrowserView();
    ~GridBrowserView() override;
    // The view behind a control of this kind; null for any other control.
    static GridBrowserView* FromControl(ControlRef control);

    // Time source for double clicks and type-to-select, in seconds.
    std::function<double()> clock;

    // ---- Set-up
    GridBrowserViewStyle Style() const { return style_; }
    StatusCode SetStyle(GridBrowserViewStyle style);
    GridBrowserCallbacks callbacks;
    GridBrowserCustomCallbacks customCallbacks;
    OptionBits attributes = 0;
    GridBrowserSelectionFlags selectionFlags = 0;
    uint32_t hiliteStyle = kGridBrowserTableViewFillHilite;
    BGFloat rowHeight = 18;
    BGFloat columnWidth = 170; // shared by the columns of column view
    BGContextRef drawContext = nullptr;

    // ---- Items
    ItemTree& Tree() { return tree_; }
    GridBrowserItemID Target() const;
    StatusCode SetTarget(GridBrowserItemID target);
    StatusCode AddItems(GridBrowserItemID container, std::span<const GridBrowserItemID> items,
                        bool presorted);
    StatusCode RemoveItems(GridBrowserItemID container, std::span<const GridBrowserItemID> items);
    StatusCode UpdateItems(GridBrowserItemID container, std::span<const GridBrowserItemID> items,
                           bool sort);
    StatusCode OpenContainer(GridBrowserItemID container);
    StatusCode CloseContainer(GridBrowserItemID container);
    // Ids of the container's rows (0: the target's, or the first column's) in row order.
    std::vector<GridBrowserItemID> Items(GridBrowserItemID container, bool recurse,
                                         GridBrowserItemState state);

    // ---- Selection
    bool IsSelected(GridBrowserItemID item) const { return selected_.contains(item); }
    StatusCode SetSelection(std::span<const GridBrowserItemID> items,
                            GridBrowserSetOption operation);

    // ---- Column view
    const std::vector<GridBrowserItemID>& Path() const { return path_; }
    StatusCode SetPath(std::span<const GridBrowserItemID> path);
    std::vector<GridBrowserItemID> ReportedPath() const;

    // ---- Sorting and columns
    GridBrowserPropertyID SortProperty() const { return sortProperty_; }
    GridBrowserSortOrder SortOrder() const { return sortOrder_; }
    void SetSort(GridBrowserPropertyID property, GridBrowserSortOrder order);
    std::vector<ListColumn>& Columns() { return columns_; }
    ListColumn* FindColumn(GridBrowserPropertyID property);
    GridBrowserPropertyID disclosureColumn = 0;
    // Only read back: the column alone decides where triangles show.
    bool expandableRows = false;
    void ColumnsChanged();

    // ---- Scrolling
    BGPoint ScrollPosition() const { return scroll_; }
    void ScrollTo(BGPoint position);
    StatusCode Reveal(GridBrowserItemID item, GridBrowserPropertyID property, bool center);

    // ---- View behaviour
    void Draw(BGContextRef context) override;
    ControlPartCode HitTest(BGPoint local) override;
    ControlPartCode PerformClick(ControlPartCode part, uint32_t modifiers) override;
    bool Drag(BGPoint local) override;
    uint32_t Cursor(BGPoint local) override;
    bool Wheel(BGPoint local, BGFloat lines) override;
    bool WheelSideways(BGPoint local, BGFloat lines) override;
    // Scrolls by a wheel's or a touchpad's deltas in points, positive up and left, as whole
    // lines or the fractions that smooth scrolling gives: sideways through the columns, up and
    // down through the list or the column under the mouse.
    bool ScrollByWheel(BGPoint local, BGFloat dx, BGFloat dy);
    void FrameChanged() override;
    bool AcceptsFocus() const override { return true; }
    void FocusChanged(bool) override { SetNeedsDisplay(); }
    bool HandleText(EventRef textEvent) override;
    StatusCode HandleStandardEvent(EventHandlerCallRef call, EventRef event) override;

    // ---- Asking the data source
    StatusCode AskCell(GridBrowserItemID item, CellData& cell);
    bool AskBool(GridBrowserItemID item, GridBrowserPropertyID property, bool fallback);
    std::u16string AskName(GridBrowserItemID item);
    void Send(GridBrowserItemID item, GridBrowserItemNotification message);

    // ---- Geometry shared by drawing and the mouse
    const std::vector<Row>& Rows();
    BGFloat HeaderHeight() const;
    BGRect RowArea() const;  // list view: below the header, left of the bar
    BGFloat ContentHeight(); // list view: all rows
    BGRect VerticalBar();
    BGFloat ColumnLeft(size_t column) const; // column view, scrolled
    size_t ColumnCount() const;              // column view, the preview slot included
    GridBrowserItemID PreviewItem() const;   // the file whose preview column shows, or 0
    BGFloat& ColumnScroll(size_t column);
    BGFloat ColumnsWidth() const;
    BGFloat PreviewWidth() const;
    BGRect ColumnRowArea(size_t column) const;
    Rect PreviewRect() const; // the preview slot, in whole points
    bool HorizontalBarShown() const;
    BGFloat HorizontalContent() const; // the width of all columns
    BGFloat HorizontalVisible() const; // the width they are seen through
    bool ListNeedsVerticalBar() const;
    // The scroll bars: of the list's rows, of everything sideways, of one column's rows.
    enum class BarKind { Rows, Sideways, Column };
    ScrollBar Bar(BarKind kind, size_t column = 0);
    void ScrollBarTo(BarKind kind, size_t column, BGFloat position);

private:
    // drawing (GridBrowserDrawList.cpp, GridBrowserDrawColumns.cpp)
    void DrawList(BGContextRef context);
    void DrawHeader(BGContextRef context);
    void DrawListRow(BGContextRef context, const Row& row, BGFloat top, size_t index);
    void DrawColumns(BGContextRef context);
    void DrawColumn(BGContextRef context, size_t column);
    void DrawPreview(BGContextRef context);
    void DrawRowBackground(BGContextRef context, BGRect rect, GridBrowserItemID item, size_t index,
                           bool emphasised);
    void DrawBars(BGContextRef context);
    bool SelectionActive() const;

    // mouse (GridBrowserMouse.cpp)
    StatusCode Track(EventRef event);
    bool ClickHeader(BGPoint local);
    void ClickListRow(BGPoint local, uint32_t modifiers, double time);
    void ClickColumn(BGPoint local, uint32_t modifiers, double time);
    // True when the click made a double click.
    bool ClickRow(GridBrowserItemID item, uint32_t modifiers, double time);
    bool ClickBar(BGPoint local);
    std::optional<size_t> ColumnEdgeAt(BGPoint local);
    bool StartColumnResize(BGPoint local);
    std::optional<size_t> RowAt(BGPoint local);
    bool TrackPreview(BGPoint local, uint32_t modifiers);

    // rubber band of list view (GridBrowserBand.cpp)
    void BeginBand(BGPoint local, uint32_t modifiers, std::unordered_set<GridBrowserItemID> before);
    bool DragBand(BGPoint local);
    void ApplyBand();
    void EndBand();
    void DrawBand(BGContextRef context);
    void AutoScroll(bool wanted);
    static void AutoScrollTick(EventLoopTimerRef timer, void* view);

    // keys (GridBrowserKeys.cpp)
    bool HandleKey(uint32_t code, uint32_t modifiers, char16_t typed);
    bool MoveInList(int delta, bool toEnd, uint32_t modifiers);
    bool MoveInColumn(int delta, bool toEnd);
    bool KeyRight();
    bool KeyLeft();
    void TypeToSelect(char16_t character);
    void SelectAll();
    size_t PageRows();

    // selection (GridBrowserSelection.cpp)
    bool Selectable(GridBrowserItemID item);
    void ChangeSelection(std::unordered_set<GridBrowserItemID> selection);
    void SelectOnly(GridBrowserItemID item);
    void SelectRange(const std::vector<GridBrowserItemID>& sequence, GridBrowserItemID to);
    // Drops rows that are no longer listed from the selection; true if any were selected.
    bool ForgetRemoved();
    size_t FocusColumn() const;
    void SelectInColumn(size_t column, GridBrowserItemID item);

    // model helpers (GridBrowserView.cpp)
    ItemTree::Less SortLess();
    void SortAll();
    void CloseAndNotify(GridBrowserItemID container);
    void SendClosed(const std::vector<GridBrowserItemID>& closed);
    void RowsChanged();
    void ClampScroll();
    void TrimPath(size_t length);
    void OpenColumnFor(GridBrowserItemID item);
    void RevealRow(size_t index, bool center);
    void RevealInColumn(size_t column, GridBrowserItemID item, bool center);
    // Scrolls the column up or down alone; false if the item isn't one of its rows.
    bool RevealRowInColumn(size_t column, GridBrowserItemID item, bool center);
    void RevealColumn(size_t column);
    GridBrowserItemID ContainerOrTarget(GridBrowserItemID container) const;

    GridBrowserViewStyle style_;
    ItemTree tree_;
    GridBrowserItemID target_ = 0;
    std::vector<GridBrowserItemID> path_;
    std::vector<BGFloat> columnScroll_;
    std::unordered_set<GridBrowserItemID> selected_;
    GridBrowserItemID anchor_ = 0; // where shift-ranges start
    GridBrowserItemID lead_ = 0;   // where the keys move from
    GridBrowserPropertyID sortProperty_ = kGridBrowserNameProperty;
    GridBrowserSortOrder sortOrder_ = kGridBrowserOrderIncreasing;
    std::vector<ListColumn> columns_;
    std::vector<Row> rows_;
    bool rowsDirty_ = true;
    BGPoint scroll_{};
    TypeSelect typeSelect_;

    // mouse state
    enum class DragKind { None, ListColumn, SharedWidth, Thumb, Band };
    DragKind drag_ = DragKind::None;
    BarKind dragBar_ = BarKind::Rows;
    size_t dragColumn_ = 0;
    BGFloat dragStart_ = 0;
    BGFloat dragOrigin_ = 0;
    GridBrowserItemID lastClickItem_ = 0;
    double lastClickTime_ = -1e9;

    // A press in the rows of list view that may become a rubber band. Its start is kept in
    // content coordinates so that it stays put while the rows scroll under it.
    struct Band {
        BGPoint start;
        BGPoint last;                               // the mouse, in the view
        std::unordered_set<GridBrowserItemID> base; // what the band adds to or toggles in
        bool toggle = false;
        bool moved = false; // far enough from the press to be a band
    };
    std::optional<Band> band_;
    EventLoopTimerRef autoScroll_ = nullptr;
};

} // namespace basalt::gridbrowser
