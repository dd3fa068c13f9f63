// Drawing the sidebar's rows: the selection picture, the icon, the name and the eject button of
// each row, with a line between the two sections.

#include "kel/nodes/TNodeFilter.h"
#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/views/BTSidebarItemsView.h"
#include "kel/widgets/views/BundlePicture.h"

#include <cmath>

namespace {

// Loaded on first use and kept for the process.
struct ItemImages {
    BGImageRef blueSelection = LoadBundlePicture("_internal_BlueSelection").image;
    BGImageRef greySelection = LoadBundlePicture("_internal_GreySelection").image;
    BGImageRef ejectClick = LoadBundlePicture("_internal_mb_eject_click").image;
    BGImageRef ejectRoll = LoadBundlePicture("_internal_mb_eject_roll").image;
    BGImageRef ejectWhite = LoadBundlePicture("_internal_mb_eject_white").image;
    BGImageRef ejectGray = LoadBundlePicture("_internal_mb_eject_gray").image;
};

const ItemImages& Images() {
    static const auto* images = new ItemImages;
    return *images;
}

} // namespace

bool BTSidebarItemsView::IsSelectable(OpaqueNodeRef* node) const {
    TKelNode held(node, true);
    return filter == nullptr || filter->CanSelect(held, 0) || NodeIsSavedQuery(node);
}

bool BTSidebarItemsView::ItemSelectable(const SidebarItem& item) const {
    OpaqueNodeRef* original = nullptr;
    if (NodeFollowAlias(item.node.PeekNodeRef(), false, &original) != noErr)
        return true;
    bool selectable = IsSelectable(original);
    DisposeNode(original);
    return selectable;
}

bool BTSidebarItemsView::HasFocus() const {
    return BTViewGetFocusPart(GetViewRef()) != kControlFocusNoPart;
}

BGImageRef BTSidebarItemsView::SelectionImage() const {
    bool grey = (focusable && !HasFocus()) || !IsActive() || !IsEnabled();
    return grey ? Images().greySelection : Images().blueSelection;
}

BGImageRef BTSidebarItemsView::GetEjectButtonImage(bool selected, bool hover, bool pressed,
                                                   bool tracking) {
    if (pressed)
        return Images().ejectClick;
    if (hover && !tracking)
        return Images().ejectRoll;
    return selected ? Images().ejectWhite : Images().ejectGray;
}

void BTSidebarItemsView::Draw(RgnHandle, BGContextRef context) {
    BGContextSetRGBFillColor(context, background[0], background[1], background[2], background[3]);
    BGContextFillRect(context, Bounds());
    int count = sidebar->CountItems();
    int top = sidebar->CountTopItems();
    for (int row = 1; row <= count; ++row) {
        if (row == top + 1)
            DrawSeparator(context);
        BGRect rect{};
        GetItemBounds(row, &rect);
        DrawItem(sidebar->GetItem(row - 1), row, rect, context);
    }
    if (top == count)
        DrawSeparator(context);
}

void BTSidebarItemsView::DrawSeparator(BGContextRef context) {
    BGRect last{};
    GetItemBounds(sidebar->CountTopItems(), &last);
    BGFloat y = BGRectGetMaxY(last) + 6;
    BGRect bounds = Bounds();
    BGContextSetLineWidth(context, 2.0);
    BGContextSetGrayStrokeColor(context, 0.7, 1.0);
    BGPoint line[2] = {{bounds.origin.x + 3, y}, {bounds.origin.x + bounds.size.width - 3, y}};
    BGContextStrokeLineSegments(context, line, 2);
}

void BTSidebarItemsView::DrawItem(const SidebarItem* item, int row, const BGRect& rowRect,
                                  BGContextRef context) {
    bool selectable = ItemSelectable(*item);
    bool selected = row == selectedRow;
    if (selected) {
        BGRect highlight = BGRectMake(rowRect.origin.x, std::trunc(rowRect.origin.y),
                                      rowRect.size.width, iconSize + 2);
        BTViewDrawBGImage(context, &highlight, SelectionImage());
    }
    if (item->icon && iconSize > 0) {
        BGRect square =
            BGRectMake(rowRect.origin.x + 5, std::trunc(rowRect.origin.y + 1), iconSize, iconSize);
        PlotIconRefInContext(context, &square, kBTIconAlignCenter,
                             selectable ? kBTIconTransformNone : kBTIconTransformDisabled, nullptr,
                             kBTPlotIconNormal, item->icon.Get());
    }
    if (!item->name.IsNil()) {
        BTThemeTextInfo info = {0,
                                selectable ? kBTThemeStateActive : kBTThemeStateUnavailableInactive,
                                kBTThemeFontViews,
                                kBTThemeTextFlushLeft,
                                1,
                                0,
                                kBTThemeTextTruncationEnd,
                                1,
                                false};
        BGRect text{};
        GetItemTextBounds(item, rowRect, &text);
        BGFloat grey = selected ? 1.0 : 0.0;
        BGContextSetRGBFillColor(context, grey, grey, grey, 1.0);
        if (text.size.width > 0)
            BTThemeDrawTextBox(item->name.AsBCStringRef(), &text, &info, context);
    }
    BGRect button{};
    GetItemButtonBounds(item, rowRect, &button);
    if (item->IsEjectable() && button.size.width > 0)
        BTViewDrawBGImage(
            context, &button,
            GetEjectButtonImage(selected, row == hoverRow, row == pressedRow, trackingRow != 0));
}
