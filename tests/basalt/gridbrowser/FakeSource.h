#pragma once

// A small data source for driving a GridBrowser in tests: items with names, folders with
// children, and a record of every message and every cell asked for. Opening a folder (message
// 8) adds its children at once, as a source with everything at hand would.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/gridbrowser/GridBrowser.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace gridtest {

struct Item {
    std::string name;
    GridBrowserItemID parent = 0;
    bool folder = false;
    bool active = true;
    bool selectable = true;
    LongDateTime date = 0;
};

class FakeSource {
public:
    FakeSource();
    ~FakeSource();

    // Items get ids from 1 up; the root container is id 1000000.
    static constexpr GridBrowserItemID kRoot = 1000000;
    GridBrowserItemID Add(GridBrowserItemID parent, const std::string& name, bool folder = false);
    GridBrowserItemID Find(const std::string& name) const;
    std::vector<GridBrowserItemID> ChildrenOf(GridBrowserItemID parent) const;
    std::map<GridBrowserItemID, Item> items;

    // Installs the callbacks on a control and makes this its data source.
    void Attach(ControlRef control);
    // The list columns of a file list: name (with triangles) and date.
    void AddFileColumns();

    std::vector<std::pair<GridBrowserItemID, GridBrowserItemNotification>> messages;
    // Messages as "8:docs 14:- 15:docs".
    std::string MessageLog() const;
    std::multiset<GridBrowserItemID> cellsAsked; // items asked for a drawn cell
    int compares = 0;
    std::vector<std::pair<GridBrowserItemID, Rect>> previewsDrawn;
    bool fillOnOpen = true;

    ControlRef control = nullptr;
    IconRef folderIcon = nullptr;
    IconRef fileIcon = nullptr;

private:
    static StatusCode ItemData(ControlRef, GridBrowserItemID, GridBrowserPropertyID,
                               GridBrowserItemDataRef, bool);
    static bool Compare(ControlRef, GridBrowserItemID, GridBrowserItemID, GridBrowserPropertyID);
    static void Notify(ControlRef, GridBrowserItemID, GridBrowserItemNotification);
    static void DrawPreview(ControlRef, GridBrowserItemID, GridBrowserPropertyID,
                            GridBrowserItemState, const Rect*, short, bool);
    static FakeSource& Of(ControlRef control);
    GridBrowserItemID next_ = 1;
};

// A shown window with one GridBrowser filling it.
class BrowserWindow {
public:
    BrowserWindow(GridBrowserViewStyle style, int16_t width = 500, int16_t height = 300);
    ~BrowserWindow();
    WindowRef window = nullptr;
    ControlRef control = nullptr;
};

// The ids that a GridBrowser call put into a handle, read and the handle disposed of.
std::vector<GridBrowserItemID> TakeIds(Handle handle);
// The ids of a container's rows in a state, as GetGridBrowserItems gives them.
std::vector<GridBrowserItemID> ItemsOf(ControlRef control, GridBrowserItemID container,
                                       bool recurse, GridBrowserItemState state);
// The height of list view's header, above the first row.
BGFloat HeaderHeight();

// The colour (0xAARRGGBB) of a point of the window's content as last drawn.
uint32_t PixelAt(WindowRef window, BGPoint local);

// Posts one mouse event at a point of the window's content, for presses held across loop runs
// (the driver's Drag releases at once) and wheel turns with modifiers.
void PostMouse(WindowRef window, EventKind kind, BGPoint local, uint32_t modifiers = 0,
               int32_t wheelLines = 0, EventMouseWheelAxis axis = kEventMouseWheelAxisY);

// Runs the loop until the condition holds or a generous deadline passes; the condition's last
// answer.
bool RunUntil(const std::function<bool()>& condition);

} // namespace gridtest
