#pragma once

// The rows of the sidebar, drawn inside its scroll view, with their mouse and keyboard. All
// rows have one height; icons shrink from 32 to 16 pixels and rows from 34 to 18 before the
// view begins to scroll. The rows themselves belong to the sidebar; this view holds only the
// state of showing them: which row is selected, hovered, tracked or pressed (1-based, 0 none).
// It also decides how wide the sidebar wants to be when the user drags the splitter.

#include "kel/widgets/views/TView.h"

class BTSidebar;
struct OpaqueNodeRef;
struct SidebarItem;
class TNodeFilter;

class BTSidebarItemsView : public TView {
public:
    static BCStringRef ClassID();
    // Makes the items view of sidebar, registering the class on first use.
    static StatusCode Create(BTSidebar* sidebar, ControlRef* out);

    explicit BTSidebarItemsView(ControlRef control);
    ~BTSidebarItemsView() override;

    uint64_t GetKind() override;
    uint32_t GetBehaviors() override { return TView::GetBehaviors() | 0x2000100; }
    StatusCode Initialize(TBasaltEvent& event) override;
    void BoundsChanged(unsigned long attributes, const BGRect& original,
                       const BGRect& current) override;
    void Draw(RgnHandle limit, BGContextRef context) override;
    short HitTest(const BGPoint& point) override;
    StatusCode SetFocusPart(short part, bool everywhere, short* outPart) override;
    StatusCode TextInput(TBasaltEvent& event) override;
    StatusCode Track(TBasaltEvent& event, short* outPart) override;
    StatusCode GetSizeConstraints(BGSize* minimum, BGSize* maximum) override;
    void TrackingAreaEntered(BTViewTrackingAreaRef area) override;
    void TrackingAreaExited(BTViewTrackingAreaRef area) override;

    // Geometry.
    void ConstrainFrame(BGRect* frame);
    float GetOptimalWidth();
    void CalculateRowAndIconHeight(const BGRect& frame);
    void GetItemBounds(int row, BGRect* out);
    void GetItemTextBounds(const SidebarItem* item, const BGRect& rowRect, BGRect* out) const;
    void GetItemButtonBounds(const SidebarItem* item, const BGRect& rowRect, BGRect* out) const;
    int FindItemHit(const BGPoint& point);
    int IconSize() const { return iconSize; }
    float RowHeight() const { return rowHeight; }

    // Selection and the dialog.
    int SelectedRow() const { return selectedRow; }
    void SelectItem(int row, unsigned long modifiers, bool notify);
    void MakeItemVisible(int row);
    void SetFilter(const TNodeFilter* newFilter) { filter = newFilter; }
    bool IsSelectable(OpaqueNodeRef* node) const;

    // Changes of the rows.
    void InvalidateItems(int first, int second);
    void ContentsChanged(int row);
    void RebuildTrackingAreas();
    void ReleaseTrackingAreas();
    void ScrollingInfoChanged();

private:
    static StatusCode ScrollEventHandler(EventHandlerCallRef call, EventRef event, void* data);
    static void SetClientRootTimer(EventLoopTimerRef timer, void* data);
    StatusCode ScrollEvent(TBasaltEvent& event);
    void SetClientRoot(int row, unsigned long modifiers);
    void ReportAfterKeyRepeat();
    StatusCode MoveSelection(char16_t key, unsigned long modifiers, bool repeat);
    void TrackItemButton(const SidebarItem* item, int row, const BGRect& buttonBounds);
    bool ItemSelectable(const SidebarItem& item) const;
    void DrawItem(const SidebarItem* item, int row, const BGRect& rowRect, BGContextRef context);
    void DrawSeparator(BGContextRef context);
    static BGImageRef GetEjectButtonImage(bool selected, bool hover, bool pressed, bool tracking);
    BGImageRef SelectionImage() const;
    bool HasFocus() const;

    BTSidebar* sidebar = nullptr;
    int iconSize = 32;
    float rowHeight = 34;
    int selectedRow = 0;
    int hoverRow = 0;
    int trackingRow = 0;
    int pressedRow = 0;
    EventLoopTimerRef clientRootTimer = nullptr;
    bool widestTextValid = false;
    float widestText = 0;
    const TNodeFilter* filter = nullptr;
    float background[4] = {1, 1, 1, 1};
    bool focusable = true;
    EventHandlerRef scrollHandler = nullptr;
};
