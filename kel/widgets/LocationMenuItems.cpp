// Recent places are read from the shared domain, where the dialogs add them when they end, and
// read anew at every filling: another application may have added one since.

#include "kel/widgets/LocationMenuItems.h"

#include "basalt/nodes/NodeIterator.h"
#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/TKelPrefs.h"
#include "kel/foundation/TKelPrefsStore.h"
#include "kel/nodes/TNodeFilter.h"
#include "kel/nodes/TNodePathHelper.h"

#include <iterator>

namespace {

constexpr FourCharCode kDisplayName = NodeCode("dnam");
constexpr FourCharCode kIconProperty = NodeCode("icon");

// The complete path of a stored URL string, or an empty array.
TKelNodeArray PathOfURLText(BCTypeRef entry) {
    if (entry == nullptr || BCGetTypeID(entry) != BCStringGetTypeID()) {
        return {};
    }
    TObjectRef url(BCURLCreateWithString(nullptr, static_cast<BCStringRef>(entry), nullptr), false);
    if (url.IsNil()) {
        return {};
    }
    TNodePathHelper helper(static_cast<BCURLRef>(url.Get()));
    return helper.IsComplete() ? helper.NodePath() : TKelNodeArray();
}

} // namespace

void SetMenuItemIcon(MenuRef menu, MenuItemIndex item, const TIcon& icon) {
    if (icon) {
        SetMenuItemIconHandle(menu, item, kMenuIconRefType, reinterpret_cast<Handle>(icon.Get()));
    }
}

void AppendMenuSeparator(MenuRef menu) {
    InsertMenuItemTextWithBCString(menu, BCSTR(""), CountMenuItems(menu), kMenuItemAttrSeparator,
                                   0);
}

MenuItemIndex AppendNodeItem(MenuRef menu, const TKelNode& node, const TIcon& icon) {
    InsertMenuItemTextWithBCString(menu, BCSTR(""), CountMenuItems(menu), 0, 0);
    const MenuItemIndex item = CountMenuItems(menu);
    SetItemTextToName(menu, item, node);
    SetMenuItemIcon(menu, item, icon);
    return item;
}

TIcon PlainIcon(const TKelNode& node) {
    TIcon icon;
    node.GetPropertyAsIcon(kIconProperty, icon, false);
    return icon;
}

TIcon EntryIcon(const TKelNode& node) {
    TIcon icon;
    IconRef found = nullptr;
    if (GetNodePropertyAsIconRef(node.PeekNodeRef(), kIconProperty, &found, 0) == noErr) {
        icon.Adopt(found);
    }
    return icon;
}

TIcon SystemIcon(OSType type, StatusCode& status) {
    TIcon icon;
    IconRef found = nullptr;
    status = GetIconRef(kBTSystemVolume, kBTSystemIconsCreator, type, &found);
    if (status == noErr) {
        icon.Adopt(found);
    }
    return icon;
}

void SetItemTextToName(MenuRef menu, MenuItemIndex item, const TKelNode& node) {
    TUniString name;
    if (node.GetPropertyAsString(kDisplayName, name) == noErr) {
        SetMenuItemTextWithBCString(menu, item, name.AsBCString().AsBCStringRef());
    }
}

bool CanNodeAppear(const TNodeFilter& filter, const TKelNode& node) {
    if (node.IsEmpty() || !node.IsContainer() || !filter.CanSee(node)) {
        return false;
    }
    return filter.CanTarget(node) || filter.CanChoose(node);
}

TKelNodeArray ChoicePathOf(const TKelNode& node) {
    if (node.IsRoot()) {
        TKelNodeArray alone;
        alone.push_back(node);
        return alone;
    }
    TNodePathHelper helper(node.PeekNodeRef());
    return helper.NodePath();
}

StatusCode CopyChildNodes(const TKelNode& container, std::vector<TKelNode>& out) {
    out.clear();
    NodeIteratorRef iterator = nullptr;
    if (StatusCode status = NewNodeIterator(container.PeekNodeRef(), &iterator, 0, true)) {
        return status;
    }
    for (NodeRef child = NodeIteratorFirst(iterator); child != nullptr;
         child = NodeIteratorNext(iterator)) {
        out.emplace_back(child, false);
    }
    DisposeNodeIterator(iterator);
    return noErr;
}

namespace {

// The menu item the "cmds" 1 event of a menu chose, 0 if it names none of that menu's.
MenuItemIndex ChosenMenuItem(EventRef event, MenuRef menu) {
    BTCommand command{};
    if (GetEventParameter(event, kEventParamDirectObject, typeBTCommand, nullptr, sizeof command,
                          nullptr, &command) != noErr ||
        command.menu.menuRef != menu) {
        return 0;
    }
    return command.menu.menuItemIndex;
}

} // namespace

StatusCode InstallLocationMenuHandler(MenuRef menu, EventHandlerUPP handler, void* popup,
                                      EventHandlerRef* out) {
    static const EventTypeSpec kMenuEvents[] = {{kEventClassCommand, kEventCommandProcess},
                                                {kEventClassMenu, kEventMenuOpening}};
    return InstallEventHandler(GetMenuEventTarget(menu), handler, std::size(kMenuEvents),
                               kMenuEvents, popup, out);
}

void ShowFirstItem(ControlRef control, MenuRef menu) {
    SetControlMaximum(control, int16_t(CountMenuItems(menu)));
    SetControlValue(control, 1);
    CalcMenuSize(menu);
}

StatusCode HandleLocationMenuEvent(EventRef event, MenuRef menu, ControlRef control,
                                   bool& menuIsValid, const std::function<void()>& fill,
                                   const std::function<bool(MenuItemIndex, TKelNodeArray&)>& choose,
                                   IFavoritesCommandHandler& handler) {
    if (GetEventClass(event) == kEventClassMenu) {
        if (!menuIsValid) {
            fill();
            menuIsValid = true;
        }
        return eventNotHandledErr;
    }
    const MenuItemIndex item = ChosenMenuItem(event, menu);
    if (item == 0) {
        return eventNotHandledErr;
    }
    TKelNodeArray path;
    if (choose(item, path) && !path.empty()) {
        handler.SetTargetCommand(path.back(), path.back());
        SetControlValue(control, 1);
    }
    return noErr;
}

MenuItemIndex TRecentPlaces::AppendGroup(MenuRef menu, const TNodeFilter& filter) {
    paths.clear();
    AppendMenuSeparator(menu);
    InsertMenuItemTextWithBCString(menu, BundleText("Recent Places").AsBCStringRef(),
                                   CountMenuItems(menu), kMenuItemAttrDisabled, 0);
    TObjectRef stored(kel_prefs::CopySharedValueFromDisk(TKelPrefs::RecentFoldersKey()), false);
    if (stored.IsNil() || BCGetTypeID(stored.Get()) != BCArrayGetTypeID()) {
        return 0;
    }
    auto list = static_cast<BCArrayRef>(stored.Get());
    std::vector<TKelNodeArray> found;
    for (BCIndex index = 0; index < BCArrayGetCount(list); ++index) {
        TKelNodeArray path = PathOfURLText(BCArrayGetValueAtIndex(list, index));
        if (!path.empty() && CanNodeAppear(filter, path.back())) {
            found.push_back(std::move(path));
        }
    }
    if (found.empty()) {
        return 0;
    }
    std::vector<TKelNodeArray*> order;
    for (TKelNodeArray& path : found) {
        order.push_back(&path);
    }
    SortPathsByLeaf(order, kDisplayName);
    const auto first = MenuItemIndex(CountMenuItems(menu) + 1);
    for (TKelNodeArray* path : order) {
        AppendNodeItem(menu, path->back(), PlainIcon(path->back()));
        paths.push_back(std::move(*path));
    }
    return first;
}

TKelNodeArray TRecentPlaces::PathAt(size_t index) const {
    return index < paths.size() ? paths[index] : TKelNodeArray();
}
