#pragma once

// The GridBrowser control: a list ("lstv") or column ("clmv") browser over item ids.
//
// The control holds item ids and their tree (which container lists which item), the open
// containers, the selection and the order of each container's rows. Everything shown comes
// from the data source's callbacks, asked only for the rows on screen: cell data by property,
// comparison for sorting, item messages for what happened, and custom drawing and tracking for
// cells of property 10 (the preview column of column view). Ids are opaque to the control; 0
// means no item. Main thread only.
//
// Containers. The target (list view) or each id of the column path (column view) is an open
// container whose children the source adds with AddGridBrowserItems. Opening a container (its
// disclosure triangle, a column) sends message 8 for it, closing sends message 10; the control
// forgets the container's rows when it closes.

#include <basalt/BasaltToolbox.h>
#include <cstdint>

using GridBrowserItemID = uintptr_t;
using GridBrowserPropertyID = unsigned long;
using GridBrowserPropertyType = OSType;
using GridBrowserItemState = unsigned long;
using GridBrowserItemNotification = unsigned long;
using GridBrowserItemDataRef = void*;
using GridBrowserViewStyle = OSType;
using GridBrowserSortOrder = uint16_t;
using GridBrowserSelectionFlags = uint32_t;
using GridBrowserSetOption = uint32_t;
using GridBrowserRevealOptions = uint8_t;
using GridBrowserPropertyFlags = uint32_t;
// Seconds since 1904-01-01, in local time.
using LongDateTime = int64_t;

enum : GridBrowserViewStyle {
    kGridBrowserListView = 0x6C737476,  // "lstv"
    kGridBrowserColumnView = 0x636C6D76 // "clmv"
};

// The kind, with kControlKindSignature, for GetControlKind and layout files ("grid-browser").
enum : OSType { kControlKindGridBrowser = 0x67726462 }; // "grdb"

// Properties the control asks the item data callback for.
enum : GridBrowserPropertyID {
    kGridBrowserItemIsActiveProperty = 1,         // bool: false draws the row dimmed
    kGridBrowserItemIsSelectableProperty = 2,     // bool: false refuses selection (message 1000)
    kGridBrowserItemIsEditableProperty = 3,       // bool
    kGridBrowserItemIsContainerProperty = 4,      // bool: shows a triangle or leads to a column
    kGridBrowserContainerIsOpenableProperty = 5,  // bool: the triangle or column may open
    kGridBrowserContainerIsClosableProperty = 6,  // bool
    kGridBrowserContainerIsSortableProperty = 7,  // bool
    kGridBrowserItemSelfIdentityProperty = 8,     // icon and text of the item itself
    kGridBrowserColumnViewPreviewProperty = 10,   // custom-drawn preview column of column view
    kGridBrowserItemParentContainerProperty = 11, // item id of the parent
    kGridBrowserItemLabelProperty = 12,           // value: colour label, 0 for none
    kGridBrowserNameProperty = 0x4E414D45,        // "NAME": icon and text
    kGridBrowserDateProperty = 0x44415445,        // "DATE": long date time
    kGridBrowserNameTextProperty = 1024           // the name alone, for type-to-select
};

// Column property types.
enum : GridBrowserPropertyType {
    kGridBrowserIconAndTextType = 0x7469636E, // "ticn"
    kGridBrowserTextType = 0x74657874,        // "text"
    kGridBrowserDateTimeType = 0x64617465     // "date"
};

// Column flags.
enum : GridBrowserPropertyFlags {
    kGridBrowserListViewAlignEnd = 0x00000100,       // text sits at the column's right edge
    kGridBrowserListViewTruncateMiddle = 0x00010000, // long texts keep their ends (extensions)
    kGridBrowserListViewSortableColumn = 0x00020000, // a header click sorts by the column
    kGridBrowserListViewResizableColumn = 0x00040000,
    kGridBrowserListViewSelectionColumn = 0x00080000 // a click in the column selects the row
};

// Item messages sent to the item notification callback.
enum : GridBrowserItemNotification {
    kGridBrowserItemDoubleClicked = 7,
    kGridBrowserContainerOpened = 8,
    kGridBrowserContainerClosed = 10,
    kGridBrowserSelectionChanged = 14, // item 0
    kGridBrowserTargetChanged = 15,    // item: the new target
    kGridBrowserUnselectableItemClicked = 1000,
    kGridBrowserPresortedContainerSortChanged = 1001 // item: the container to order anew
};

// Item states for GetGridBrowserItems and the draw callback.
enum : GridBrowserItemState {
    kGridBrowserItemAnyState = 0,
    kGridBrowserItemIsSelected = 1,
    kGridBrowserContainerIsOpen = 2
};

enum : GridBrowserSortOrder { kGridBrowserOrderIncreasing = 1, kGridBrowserOrderDecreasing = 2 };

enum : GridBrowserSelectionFlags { kGridBrowserSelectOnlyOne = 2 };

enum : GridBrowserSetOption {
    kGridBrowserItemsAssign = 1, // replaces the selection
    kGridBrowserItemsAdd = 2,
    kGridBrowserItemsRemove = 3,
    kGridBrowserItemsToggle = 4
};

enum : GridBrowserRevealOptions { kGridBrowserRevealAndCenterInView = 1 };

// Attributes for GridBrowserChangeAttributes.
enum : OptionBits { kGridBrowserAttributeStripedRows = 1 };

// Hilite styles: 0 highlights the row's disclosure column only, 1 the whole row.
enum : uint32_t { kGridBrowserTableViewMinimalHilite = 0, kGridBrowserTableViewFillHilite = 1 };

enum : StatusCode {
    kGridBrowserItemNotFound = -4971,
    kGridBrowserPropertyNotSupported = -4979,
    kGridBrowserBadStyle = -4
};

// Asks for one cell: answers with a SetGridBrowserItemData... call on itemData, or a status.
// setValue is always false: the control never writes cells back.
using GridBrowserItemDataProcPtr = StatusCode (*)(ControlRef, GridBrowserItemID item,
                                                  GridBrowserPropertyID property,
                                                  GridBrowserItemDataRef itemData, bool setValue);
// True if item1 sorts before item2 by the property.
using GridBrowserItemCompareProcPtr = bool (*)(ControlRef, GridBrowserItemID item1,
                                               GridBrowserItemID item2,
                                               GridBrowserPropertyID sortProperty);
using GridBrowserItemNotificationProcPtr = void (*)(ControlRef, GridBrowserItemID item,
                                                    GridBrowserItemNotification message);
// Draws a custom cell. rect is in the control's coordinates; GetGridBrowserDrawContext gives
// the context to draw into during the call.
using GridBrowserDrawItemProcPtr = void (*)(ControlRef, GridBrowserItemID item,
                                            GridBrowserPropertyID property,
                                            GridBrowserItemState state, const Rect* rect,
                                            short depth, bool colorDevice);
// Follows a click in a custom cell; the answer is the part hit, -1 for none.
using GridBrowserTrackingProcPtr = long (*)(ControlRef, GridBrowserItemID item,
                                            GridBrowserPropertyID property, const Rect* rect,
                                            Point start, unsigned short modifiers);

struct GridBrowserCallbacks {
    uint32_t version = 0;
    GridBrowserItemDataProcPtr itemDataCallback = nullptr;
    GridBrowserItemCompareProcPtr itemCompareCallback = nullptr;
    GridBrowserItemNotificationProcPtr itemNotificationCallback = nullptr;
};

struct GridBrowserCustomCallbacks {
    uint32_t version = 0;
    GridBrowserDrawItemProcPtr drawItemCallback = nullptr;
    GridBrowserTrackingProcPtr trackingCallback = nullptr;
};

struct GridBrowserListViewColumnDesc {
    GridBrowserPropertyID propertyID = 0;
    GridBrowserPropertyType propertyType = kGridBrowserTextType;
    GridBrowserPropertyFlags propertyFlags = 0;
    uint16_t minimumWidth = 0;
    uint16_t maximumWidth = 0;
    int16_t titleOffset = 0;
    BCStringRef titleString = nullptr; // copied
    GridBrowserSortOrder initialOrder = kGridBrowserOrderIncreasing;
};

// ---- Creation, style, callbacks -----------------------------------------------------------

// Makes a GridBrowser of the style in the window's content view.
StatusCode CreateGridBrowserControl(WindowRef window, const Rect* bounds,
                                    GridBrowserViewStyle style, ControlRef* outControl);
// Switches between list and column view; the rows of the old style's containers are closed.
StatusCode SetGridBrowserViewStyle(ControlRef control, GridBrowserViewStyle style);
StatusCode GetGridBrowserViewStyle(ControlRef control, GridBrowserViewStyle* style);
// Fills a record with the current version and no functions.
StatusCode InitGridBrowserCallbacks(GridBrowserCallbacks* callbacks);
// Installs the callbacks; a record without functions clears them.
StatusCode SetGridBrowserCallbacks(ControlRef control, const GridBrowserCallbacks* callbacks);
StatusCode InitGridBrowserCustomCallbacks(GridBrowserCustomCallbacks* callbacks);
StatusCode SetGridBrowserCustomCallbacks(ControlRef control,
                                         const GridBrowserCustomCallbacks* callbacks);
// The context to draw into, valid only inside the draw callback.
StatusCode GetGridBrowserDrawContext(ControlRef control, BGContextRef* context);
StatusCode GridBrowserChangeAttributes(ControlRef control, OptionBits set, OptionBits clear);
StatusCode GetGridBrowserAttributes(ControlRef control, OptionBits* attributes);
StatusCode SetGridBrowserSelectionFlags(ControlRef control, GridBrowserSelectionFlags flags);
StatusCode GetGridBrowserSelectionFlags(ControlRef control, GridBrowserSelectionFlags* flags);

// ---- Items --------------------------------------------------------------------------------

// List view: shows the children of target at the top level (0 closes everything). Sends 8 for
// the new target, 10 for the containers that close, then 15.
StatusCode SetGridBrowserTarget(ControlRef control, GridBrowserItemID target);
StatusCode GetGridBrowserTarget(ControlRef control, GridBrowserItemID* target);
// Adds rows to an open container. preSortProperty 8: the ids come in their order, which
// sorting keeps; 0: they are sorted in with the compare callback.
StatusCode AddGridBrowserItems(ControlRef control, GridBrowserItemID container, uint32_t count,
                               const GridBrowserItemID* items,
                               GridBrowserPropertyID preSortProperty);
// Removes rows (and what is open under them); count 0 removes all rows of the container.
StatusCode RemoveGridBrowserItems(ControlRef control, GridBrowserItemID container, uint32_t count,
                                  const GridBrowserItemID* items,
                                  GridBrowserPropertyID preSortProperty);
// Redraws the rows (count 0: all of the container) and sorts them anew.
StatusCode UpdateGridBrowserItems(ControlRef control, GridBrowserItemID container, uint32_t count,
                                  const GridBrowserItemID* items,
                                  GridBrowserPropertyID preSortProperty,
                                  GridBrowserPropertyID property);
// Redraws the rows without moving them.
StatusCode _UpdateGridBrowserItemsNoSort(ControlRef control, GridBrowserItemID container,
                                         uint32_t count, const GridBrowserItemID* items,
                                         GridBrowserPropertyID preSortProperty,
                                         GridBrowserPropertyID property);
// Sets the handle to the ids of the container's rows in the state (0: any), in row order;
// recurse includes rows of open containers below. Container 0: the whole control.
StatusCode GetGridBrowserItems(ControlRef control, GridBrowserItemID container, bool recurse,
                               GridBrowserItemState state, Handle items);
StatusCode GetGridBrowserItemCount(ControlRef control, GridBrowserItemID container, bool recurse,
                                   GridBrowserItemState state, uint32_t* count);
// Changes the selection by the option; sends 14 when it changed.
StatusCode SetGridBrowserSelectedItems(ControlRef control, uint32_t count,
                                       const GridBrowserItemID* items,
                                       GridBrowserSetOption operation);
bool IsGridBrowserItemSelected(ControlRef control, GridBrowserItemID item);
// Scrolls so that the item's row (or column, for 10: the preview column) is in sight.
StatusCode RevealGridBrowserItem(ControlRef control, GridBrowserItemID item,
                                 GridBrowserPropertyID property, GridBrowserRevealOptions options);
// Opens a row as its disclosure triangle would (message 8).
StatusCode OpenGridBrowserContainer(ControlRef control, GridBrowserItemID container);
StatusCode CloseGridBrowserContainer(ControlRef control, GridBrowserItemID container);
// Scroll offsets in pixels from the top and from the left.
StatusCode SetGridBrowserScrollPosition(ControlRef control, uint32_t top, uint32_t left);
StatusCode GetGridBrowserScrollPosition(ControlRef control, uint32_t* top, uint32_t* left);

// ---- Column view --------------------------------------------------------------------------

// Shows one column per container of the path; the last item may be a file, shown selected.
StatusCode SetGridBrowserColumnViewPath(ControlRef control, uint32_t length,
                                        const GridBrowserItemID* path);
// Sets the handle to the ids of the path shown, the item selected in the last column included.
StatusCode GetGridBrowserColumnViewPath(ControlRef control, Handle path);
StatusCode GetGridBrowserColumnViewPathLength(ControlRef control, uint32_t* length);

// ---- Sorting and list columns -------------------------------------------------------------

StatusCode SetGridBrowserSortProperty(ControlRef control, GridBrowserPropertyID property);
StatusCode GetGridBrowserSortProperty(ControlRef control, GridBrowserPropertyID* property);
StatusCode SetGridBrowserSortOrder(ControlRef control, GridBrowserSortOrder order);
StatusCode GetGridBrowserSortOrder(ControlRef control, GridBrowserSortOrder* order);
// Adds a list view column at position (past the end: last). A column of a property shown
// already takes the new description and keeps its place and width.
StatusCode AddGridBrowserListViewColumn(ControlRef control,
                                        const GridBrowserListViewColumnDesc* column,
                                        uint32_t position);
StatusCode RemoveGridBrowserTableViewColumn(ControlRef control, GridBrowserPropertyID column);
StatusCode GetGridBrowserTableViewColumnCount(ControlRef control, uint32_t* count);
// The column that shows disclosure triangles on its container rows; 0 shows none. expandableRows
// is kept and read back but hides nothing: callers set the column with it false.
StatusCode SetGridBrowserListViewDisclosureColumn(ControlRef control, GridBrowserPropertyID column,
                                                  bool expandableRows);
StatusCode GetGridBrowserListViewDisclosureColumn(ControlRef control, GridBrowserPropertyID* column,
                                                  bool* expandableRows);
// The width of the columns of column view, shared by all of them.
StatusCode SetGridBrowserTableViewColumnWidth(ControlRef control, uint16_t width);
StatusCode GetGridBrowserTableViewColumnWidth(ControlRef control, uint16_t* width);
StatusCode SetGridBrowserTableViewNamedColumnWidth(ControlRef control, GridBrowserPropertyID column,
                                                   uint16_t width);
StatusCode GetGridBrowserTableViewNamedColumnWidth(ControlRef control, GridBrowserPropertyID column,
                                                   uint16_t* width);
StatusCode SetGridBrowserTableViewHiliteStyle(ControlRef control, uint32_t style);
StatusCode SetGridBrowserTableViewRowHeight(ControlRef control, uint16_t height);
StatusCode GetGridBrowserTableViewRowHeight(ControlRef control, uint16_t* height);

// ---- Cell setters, for the item data callback ---------------------------------------------

StatusCode SetGridBrowserItemDataBooleanValue(GridBrowserItemDataRef itemData, bool value);
StatusCode SetGridBrowserItemDataItemID(GridBrowserItemDataRef itemData, GridBrowserItemID item);
StatusCode SetGridBrowserItemDataValue(GridBrowserItemDataRef itemData, int32_t value);
// The icon is retained for the time the cell is drawn.
StatusCode SetGridBrowserItemDataIcon(GridBrowserItemDataRef itemData, IconRef icon);
// The text is copied.
StatusCode SetGridBrowserItemDataText(GridBrowserItemDataRef itemData, BCStringRef text);
StatusCode SetGridBrowserItemDataLongDateTime(GridBrowserItemDataRef itemData,
                                              const LongDateTime* dateTime);
// The property asked for, for callbacks that serve several.
StatusCode GetGridBrowserItemDataProperty(GridBrowserItemDataRef itemData,
                                          GridBrowserPropertyID* property);

// ---- For drivers that act as a person does --------------------------------------------------

// The row listed with this name in a container; container 0 looks in list view's rows (open
// containers included) or column view's columns, the last first. kGridBrowserItemNotFound if
// no row shows the name.
StatusCode FindGridBrowserItemNamed(ControlRef control, GridBrowserItemID container,
                                    BCStringRef name, GridBrowserItemID* item);
// Scrolls the item's row into sight and gives, in window content coordinates, its cell of the
// property in list view (the whole row if no column shows the property), its row in column view.
StatusCode GetGridBrowserItemPartBounds(ControlRef control, GridBrowserItemID item,
                                        GridBrowserPropertyID property, Rect* bounds);
