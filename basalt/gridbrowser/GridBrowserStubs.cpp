// Placeholder bodies so that users of the header link; the control replaces them.
#include "basalt/gridbrowser/GridBrowser.h"

StatusCode CreateGridBrowserControl(WindowRef, const Rect*, GridBrowserViewStyle, ControlRef*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserViewStyle(ControlRef, GridBrowserViewStyle) {
    return errUnknownControl;
}
StatusCode GetGridBrowserViewStyle(ControlRef, GridBrowserViewStyle*) {
    return errUnknownControl;
}
StatusCode InitGridBrowserCallbacks(GridBrowserCallbacks*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserCallbacks(ControlRef, const GridBrowserCallbacks*) {
    return errUnknownControl;
}
StatusCode InitGridBrowserCustomCallbacks(GridBrowserCustomCallbacks*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserCustomCallbacks(ControlRef, const GridBrowserCustomCallbacks*) {
    return errUnknownControl;
}
StatusCode GetGridBrowserDrawContext(ControlRef, BGContextRef*) {
    return errUnknownControl;
}
StatusCode GridBrowserChangeAttributes(ControlRef, OptionBits, OptionBits) {
    return errUnknownControl;
}
StatusCode GetGridBrowserAttributes(ControlRef, OptionBits*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserSelectionFlags(ControlRef, GridBrowserSelectionFlags) {
    return errUnknownControl;
}
StatusCode GetGridBrowserSelectionFlags(ControlRef, GridBrowserSelectionFlags*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserTarget(ControlRef, GridBrowserItemID) {
    return errUnknownControl;
}
StatusCode GetGridBrowserTarget(ControlRef, GridBrowserItemID*) {
    return errUnknownControl;
}
StatusCode AddGridBrowserItems(ControlRef, GridBrowserItemID, uint32_t, const GridBrowserItemID*,
                               GridBrowserPropertyID) {
    return errUnknownControl;
}
StatusCode RemoveGridBrowserItems(ControlRef, GridBrowserItemID, uint32_t, const GridBrowserItemID*,
                                  GridBrowserPropertyID) {
    return errUnknownControl;
}
StatusCode UpdateGridBrowserItems(ControlRef, GridBrowserItemID, uint32_t, const GridBrowserItemID*,
                                  GridBrowserPropertyID, GridBrowserPropertyID) {
    return errUnknownControl;
}
StatusCode _UpdateGridBrowserItemsNoSort(ControlRef, GridBrowserItemID, uint32_t,
                                         const GridBrowserItemID*, GridBrowserPropertyID,
                                         GridBrowserPropertyID) {
    return errUnknownControl;
}
StatusCode GetGridBrowserItems(ControlRef, GridBrowserItemID, bool, GridBrowserItemState, Handle) {
    return errUnknownControl;
}
StatusCode GetGridBrowserItemCount(ControlRef, GridBrowserItemID, bool, GridBrowserItemState,
                                   uint32_t*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserSelectedItems(ControlRef, uint32_t, const GridBrowserItemID*,
                                       GridBrowserSetOption) {
    return errUnknownControl;
}
bool IsGridBrowserItemSelected(ControlRef, GridBrowserItemID) {
    return false;
}
StatusCode RevealGridBrowserItem(ControlRef, GridBrowserItemID, GridBrowserPropertyID,
                                 GridBrowserRevealOptions) {
    return errUnknownControl;
}
StatusCode OpenGridBrowserContainer(ControlRef, GridBrowserItemID) {
    return errUnknownControl;
}
StatusCode CloseGridBrowserContainer(ControlRef, GridBrowserItemID) {
    return errUnknownControl;
}
StatusCode SetGridBrowserScrollPosition(ControlRef, uint32_t, uint32_t) {
    return errUnknownControl;
}
StatusCode GetGridBrowserScrollPosition(ControlRef, uint32_t*, uint32_t*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserColumnViewPath(ControlRef, uint32_t, const GridBrowserItemID*) {
    return errUnknownControl;
}
StatusCode GetGridBrowserColumnViewPath(ControlRef, Handle) {
    return errUnknownControl;
}
StatusCode GetGridBrowserColumnViewPathLength(ControlRef, uint32_t*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserSortProperty(ControlRef, GridBrowserPropertyID) {
    return errUnknownControl;
}
StatusCode GetGridBrowserSortProperty(ControlRef, GridBrowserPropertyID*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserSortOrder(ControlRef, GridBrowserSortOrder) {
    return errUnknownControl;
}
StatusCode GetGridBrowserSortOrder(ControlRef, GridBrowserSortOrder*) {
    return errUnknownControl;
}
StatusCode AddGridBrowserListViewColumn(ControlRef, const GridBrowserListViewColumnDesc*,
                                        uint32_t) {
    return errUnknownControl;
}
StatusCode RemoveGridBrowserTableViewColumn(ControlRef, GridBrowserPropertyID) {
    return errUnknownControl;
}
StatusCode GetGridBrowserTableViewColumnCount(ControlRef, uint32_t*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserListViewDisclosureColumn(ControlRef, GridBrowserPropertyID, bool) {
    return errUnknownControl;
}
StatusCode GetGridBrowserListViewDisclosureColumn(ControlRef, GridBrowserPropertyID*, bool*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserTableViewColumnWidth(ControlRef, uint16_t) {
    return errUnknownControl;
}
StatusCode GetGridBrowserTableViewColumnWidth(ControlRef, uint16_t*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserTableViewNamedColumnWidth(ControlRef, GridBrowserPropertyID, uint16_t) {
    return errUnknownControl;
}
StatusCode GetGridBrowserTableViewNamedColumnWidth(ControlRef, GridBrowserPropertyID, uint16_t*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserTableViewHiliteStyle(ControlRef, uint32_t) {
    return errUnknownControl;
}
StatusCode SetGridBrowserTableViewRowHeight(ControlRef, uint16_t) {
    return errUnknownControl;
}
StatusCode GetGridBrowserTableViewRowHeight(ControlRef, uint16_t*) {
    return errUnknownControl;
}
StatusCode SetGridBrowserItemDataBooleanValue(GridBrowserItemDataRef, bool) {
    return errUnknownControl;
}
StatusCode SetGridBrowserItemDataItemID(GridBrowserItemDataRef, GridBrowserItemID) {
    return errUnknownControl;
}
StatusCode SetGridBrowserItemDataValue(GridBrowserItemDataRef, int32_t) {
    return errUnknownControl;
}
StatusCode SetGridBrowserItemDataIcon(GridBrowserItemDataRef, IconRef) {
    return errUnknownControl;
}
StatusCode SetGridBrowserItemDataText(GridBrowserItemDataRef, BCStringRef) {
    return errUnknownControl;
}
StatusCode SetGridBrowserItemDataLongDateTime(GridBrowserItemDataRef, const LongDateTime*) {
    return errUnknownControl;
}
StatusCode GetGridBrowserItemDataProperty(GridBrowserItemDataRef, GridBrowserPropertyID*) {
    return errUnknownControl;
}
