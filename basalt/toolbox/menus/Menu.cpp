#include "basalt/toolbox/menus/Menu.h"

#include "basalt/toolbox/menus/MenuBar.h"
#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>
#include <set>
#include <utility>

namespace basalt::toolbox {
namespace {

// Live menus, so that IsValidMenu can answer for a handle that was disposed.
std::set<MenuRef>& LiveMenus() {
    static std::set<MenuRef> live;
    return live;
}

std::vector<std::shared_ptr<Menu>>& Owned() {
    static std::vector<std::shared_ptr<Menu>> owned;
    return owned;
}

} // namespace

Menu::~Menu() {
    for (auto& item : items)
        if (item.icon != nullptr)
            ReleaseIconRef(item.icon);
    LiveMenus().erase(Ref());
}

Menu::Item* Menu::At(MenuItemIndex index) {
    return const_cast<Item*>(std::as_const(*this).At(index));
}

const Menu::Item* Menu::At(MenuItemIndex index) const {
    return index >= 1 && index <= items.size() ? &items[index - 1] : nullptr;
}

void Menu::SetIcon(MenuItemIndex index, IconRef icon) {
    Item* item = At(index);
    if (item == nullptr)
        return;
    if (icon != nullptr)
        AcquireIconRef(icon);
    if (item->icon != nullptr)
        ReleaseIconRef(item->icon);
    item->icon = icon;
}

EventTargetRef Menu::PropagationParent() {
    Window* focus = windows::UserFocus();
    if (focus == nullptr)
        return GetApplicationEventTarget();
    View* view = focus->Focus();
    return view != nullptr ? view->Target() : focus->Target();
}

bool IsLiveMenu(MenuRef ref) {
    return ref != nullptr && LiveMenus().count(ref) != 0;
}

StatusCode SendMenuCommand(Menu& menu, MenuItemIndex index) {
    Menu::Item* item = menu.At(index);
    if (item == nullptr)
        return menuItemNotFoundErr;
    BTCommand command{};
    command.attributes = kBTCommandFromMenu;
    command.commandID = item->command;
    command.menu.menuRef = menu.Ref();
    command.menu.menuItemIndex = index;
    EventHolder event(kEventClassCommand, kEventCommandProcess);
    SetParam(event.get(), kEventParamDirectObject, typeBTCommand, command);
    return SendEventToEventTarget(event.get(), menu.Target());
}

void SendMenuOpening(Menu& menu) {
    EventHolder event(kEventClassMenu, kEventMenuOpening);
    MenuRef ref = menu.Ref();
    SetParam(event.get(), kEventParamDirectObject, typeMenuRef, ref);
    SendEventToEventTargetWithOptions(event.get(), menu.Target(), kEventTargetDontPropagate);
    EventHolder enable(kEventClassMenu, kEventMenuEnableItems);
    SetParam(enable.get(), kEventParamDirectObject, typeMenuRef, ref);
    SendEventToEventTargetWithOptions(enable.get(), menu.Target(), kEventTargetDontPropagate);
}

} // namespace basalt::toolbox

using namespace basalt::toolbox;

namespace {

Menu* Live(MenuRef ref) {
    return IsLiveMenu(ref) ? Menu::From(ref) : nullptr;
}

StatusCode InsertItem(Menu* menu, BCStringRef text, MenuItemIndex after,
                      MenuItemAttributes attributes, MenuCommand command) {
    if (menu == nullptr)
        return errInvalidMenuRef;
    Menu::Item item;
    item.text = FromBCString(text);
    item.attributes = attributes;
    item.command = command;
    item.enabled = !(attributes & (kMenuItemAttrDisabled | kMenuItemAttrSeparator));
    size_t at = std::min<size_t>(after, menu->items.size());
    menu->items.insert(menu->items.begin() + long(at), item);
    return noErr;
}

} // namespace

extern "C" {

StatusCode CreateNewMenu(MenuID inMenuID, uint32_t, MenuRef* outMenuRef) {
    if (outMenuRef == nullptr)
        return paramErr;
    auto menu = std::make_shared<Menu>(inMenuID);
    LiveMenus().insert(menu->Ref());
    Owned().push_back(menu);
    *outMenuRef = menu->Ref();
    return noErr;
}

StatusCode RetainMenu(MenuRef inMenu) {
    Menu* menu = Live(inMenu);
    if (menu == nullptr)
        return errInvalidMenuRef;
    ++menu->count;
    return noErr;
}

StatusCode ReleaseMenu(MenuRef inMenu) {
    Menu* menu = Live(inMenu);
    if (menu == nullptr)
        return errInvalidMenuRef;
    if (--menu->count == 0) {
        LiveMenus().erase(inMenu);
        std::erase_if(Owned(), [&](const auto& owned) { return owned.get() == menu; });
    }
    return noErr;
}

void DisposeMenu(MenuRef theMenu) {
    ReleaseMenu(theMenu);
}

Boolean IsValidMenu(MenuRef inMenu) {
    return Live(inMenu) != nullptr;
}

MenuID GetMenuID(MenuRef menu) {
    return Live(menu) ? Menu::From(menu)->id : 0;
}

EventTargetRef GetMenuEventTarget(MenuRef inMenu) {
    Menu* menu = Live(inMenu);
    return menu != nullptr ? menu->Target() : nullptr;
}

StatusCode SetMenuTitleWithBCString(MenuRef inMenu, BCStringRef inString) {
    Menu* menu = Live(inMenu);
    if (menu == nullptr)
        return errInvalidMenuRef;
    menu->title = FromBCString(inString);
    return noErr;
}

StatusCode AppendMenuItemTextWithBCString(MenuRef inMenu, BCStringRef inString,
                                          MenuItemAttributes inAttributes, MenuCommand inCommandID,
                                          MenuItemIndex* outNewItem) {
    Menu* menu = Live(inMenu);
    StatusCode status = InsertItem(menu, inString, MenuItemIndex(menu ? menu->items.size() : 0),
                                   inAttributes, inCommandID);
    if (status == noErr && outNewItem != nullptr)
        *outNewItem = MenuItemIndex(menu->items.size());
    return status;
}

StatusCode InsertMenuItemTextWithBCString(MenuRef inMenu, BCStringRef inString,
                                          MenuItemIndex inAfterItem,
                                          MenuItemAttributes inAttributes,
                                          MenuCommand inCommandID) {
    return InsertItem(Live(inMenu), inString, inAfterItem, inAttributes, inCommandID);
}

StatusCode SetMenuItemTextWithBCString(MenuRef inMenu, MenuItemIndex inItem, BCStringRef inString) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    item->text = FromBCString(inString);
    return noErr;
}

StatusCode CopyMenuItemTextAsBCString(MenuRef inMenu, MenuItemIndex inItem,
                                      BCStringRef* outString) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr || outString == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    *outString = MakeBCString(item->text);
    return noErr;
}

StatusCode DeleteMenuItems(MenuRef inMenu, MenuItemIndex inFirstItem, unsigned long inNumItems) {
    Menu* menu = Live(inMenu);
    if (menu == nullptr)
        return errInvalidMenuRef;
    if (inFirstItem < 1 || inFirstItem > menu->items.size())
        return menuItemNotFoundErr;
    size_t first = inFirstItem - 1;
    size_t last = std::min(menu->items.size(), first + inNumItems);
    for (size_t i = first; i < last; ++i)
        if (menu->items[i].icon != nullptr)
            ReleaseIconRef(menu->items[i].icon);
    menu->items.erase(menu->items.begin() + long(first), menu->items.begin() + long(last));
    return noErr;
}

void DeleteMenuItem(MenuRef theMenu, MenuItemIndex item) {
    DeleteMenuItems(theMenu, item, 1);
}

uint16_t CountMenuItems(MenuRef theMenu) {
    Menu* menu = Live(theMenu);
    return menu != nullptr ? uint16_t(menu->items.size()) : 0;
}

// Sizes are measured when the menu is drawn; there is nothing to cache ahead of that.
void CalcMenuSize(MenuRef) {}

void EnableMenuItem(MenuRef theMenu, MenuItemIndex index) {
    Menu* menu = Live(theMenu);
    if (menu == nullptr)
        return;
    if (index == 0)
        menu->enabled = true;
    else if (Menu::Item* item = menu->At(index))
        item->enabled = true;
}

void DisableMenuItem(MenuRef theMenu, MenuItemIndex index) {
    Menu* menu = Live(theMenu);
    if (menu == nullptr)
        return;
    if (index == 0)
        menu->enabled = false;
    else if (Menu::Item* item = menu->At(index))
        item->enabled = false;
}

Boolean IsMenuItemEnabled(MenuRef theMenu, MenuItemIndex index) {
    Menu* menu = Live(theMenu);
    if (menu == nullptr)
        return false;
    if (index == 0)
        return menu->enabled;
    Menu::Item* item = menu->At(index);
    return item != nullptr && item->enabled && menu->enabled;
}

void SetItemCmd(MenuRef theMenu, MenuItemIndex index, int16_t cmdChar) {
    Menu* menu = Live(theMenu);
    if (Menu::Item* item = menu != nullptr ? menu->At(index) : nullptr)
        item->commandKey = char16_t(uint8_t(cmdChar));
}

void GetItemCmd(MenuRef theMenu, MenuItemIndex index, int16_t* cmdChar) {
    Menu* menu = Live(theMenu);
    Menu::Item* item = menu != nullptr ? menu->At(index) : nullptr;
    if (cmdChar != nullptr)
        *cmdChar = item != nullptr ? int16_t(item->commandKey) : 0;
}

StatusCode SetMenuItemModifiers(MenuRef inMenu, MenuItemIndex inItem, uint8_t inModifiers) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    item->commandModifiers = inModifiers;
    return noErr;
}

StatusCode SetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem, MenuCommand inCommandID) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    item->command = inCommandID;
    return noErr;
}

StatusCode GetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem, MenuCommand* outCommandID) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr || outCommandID == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    *outCommandID = item->command;
    return noErr;
}

void CheckMenuItem(MenuRef theMenu, MenuItemIndex index, Boolean checked) {
    Menu* menu = Live(theMenu);
    if (Menu::Item* item = menu != nullptr ? menu->At(index) : nullptr)
        item->checked = checked;
}

StatusCode SetMenuItemIconHandle(MenuRef inMenu, MenuItemIndex inItem, uint8_t inIconType,
                                 Handle inIconHandle) {
    Menu* menu = Live(inMenu);
    if (menu == nullptr)
        return errInvalidMenuRef;
    if (menu->At(inItem) == nullptr)
        return menuItemNotFoundErr;
    if (inIconType != kMenuIconRefType && inIconType != kMenuNoIcon)
        return paramErr;
    menu->SetIcon(inItem,
                  inIconType == kMenuNoIcon ? nullptr : reinterpret_cast<IconRef>(inIconHandle));
    return noErr;
}

StatusCode GetMenuItemIconHandle(MenuRef inMenu, MenuItemIndex inItem, uint8_t* outIconType,
                                 Handle* outIconHandle) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    if (outIconType != nullptr)
        *outIconType = item->icon != nullptr ? uint8_t(kMenuIconRefType) : uint8_t(kMenuNoIcon);
    if (outIconHandle != nullptr)
        *outIconHandle = reinterpret_cast<Handle>(item->icon);
    return noErr;
}

StatusCode ChangeMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem,
                                    MenuItemAttributes inSetTheseAttributes,
                                    MenuItemAttributes inClearTheseAttributes) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    item->attributes = (item->attributes | inSetTheseAttributes) & ~inClearTheseAttributes;
    if (inSetTheseAttributes & kMenuItemAttrDisabled)
        item->enabled = false;
    if (inClearTheseAttributes & kMenuItemAttrDisabled)
        item->enabled = true;
    return noErr;
}

StatusCode GetMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem,
                                 MenuItemAttributes* outAttributes) {
    Menu* menu = Live(inMenu);
    Menu::Item* item = menu != nullptr ? menu->At(inItem) : nullptr;
    if (item == nullptr || outAttributes == nullptr)
        return menu == nullptr ? errInvalidMenuRef : menuItemNotFoundErr;
    *outAttributes = item->attributes | (item->enabled ? 0u : uint32_t(kMenuItemAttrDisabled));
    return noErr;
}

} // extern "C"

namespace basalt::toolbox::menus {
std::shared_ptr<Menu> Retained(Menu* menu) {
    for (const auto& owned : Owned())
        if (owned.get() == menu)
            return owned;
    return nullptr;
}
} // namespace basalt::toolbox::menus
