#pragma once

// The pieces the where popup and the path popup share: items for nodes, separators, the
// question of which folders may be offered, and the "Recent Places" group, which both build
// the same way from the user's list of recent folders.

#include "kel/nodes/TKelNodeArray.h"
#include "kel/widgets/IFavoritesCommandHandler.h"

#include <basalt/BasaltToolbox.h>
#include <functional>
#include <vector>

class TNodeFilter;

void SetMenuItemIcon(MenuRef menu, MenuItemIndex item, const TIcon& icon);
void AppendMenuSeparator(MenuRef menu);
// An item with the node's display name (empty if unreadable) and the icon; its number.
MenuItemIndex AppendNodeItem(MenuRef menu, const TKelNode& node, const TIcon& icon);
// The icon of a file-system node, unbadged; none if there is none.
TIcon PlainIcon(const TKelNode& node);
// The icon the node service gives an entry of its virtual lists.
TIcon EntryIcon(const TKelNode& node);
// The system's icon of that type; none, and status non-zero, if the system has none.
TIcon SystemIcon(OSType type, StatusCode& status);
// Sets an item's text to the node's display name, if it can be read.
void SetItemTextToName(MenuRef menu, MenuItemIndex item, const TKelNode& node);

// A folder may be offered when the filter lets it be seen and gone into, or chosen.
bool CanNodeAppear(const TNodeFilter& filter, const TKelNode& node);

// The path a choice of the node leads to: the top of the tree alone for the top of the tree
// (whose text path would name the boot volume), else the node's full path.
TKelNodeArray ChoicePathOf(const TKelNode& node);

// The children of a container in the service's order.
StatusCode CopyChildNodes(const TKelNode& container, std::vector<TKelNode>& out);

// The popup shows item 1 of its menu, whatever its length now.
void ShowFirstItem(ControlRef control, MenuRef menu);

// Installs the popup's handler for the two events below on its menu.
StatusCode InstallLocationMenuHandler(MenuRef menu, EventHandlerUPP handler, void* popup,
                                      EventHandlerRef* out);
// The two events of both popups' menus. About to open: fill runs unless the lists are current,
// and the menu opens as usual. A command: the path that choose makes of the item goes to the
// handler, and the popup shows item 1 again.
StatusCode HandleLocationMenuEvent(EventRef event, MenuRef menu, ControlRef control,
                                   bool& menuIsValid, const std::function<void()>& fill,
                                   const std::function<bool(MenuItemIndex, TKelNodeArray&)>& choose,
                                   IFavoritesCommandHandler& handler);

class TRecentPlaces {
public:
    // Appends a separator, the disabled header and the recent folders that resolve and that
    // the filter allows, sorted by their names. The number of the first folder's item, 0 if
    // none.
    MenuItemIndex AppendGroup(MenuRef menu, const TNodeFilter& filter);
    size_t Count() const { return paths.size(); }
    // The full path of the recent folder at that index; empty if out of range.
    TKelNodeArray PathAt(size_t index) const;

private:
    std::vector<TKelNodeArray> paths;
};
