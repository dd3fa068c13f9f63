// The menu bar. Linux has no global bar to draw into, so the bar is the list of a client's
// menus: what the library searches for command keys and the Edit menu. Menus with negative
// ids are the toolbox's own (system) menus.

#include "basalt/toolbox/menus/MenuBar.h"

#include "basalt/toolbox/backend/Backend.h"
#include "basalt/toolbox/windows/WindowList.h"

#include <algorithm>
#include <cwctype>

namespace basalt::toolbox::menus {
namespace {

struct BarState {
    std::vector<std::shared_ptr<Menu>> menus;
    MenuID hilited = 0;
    int modalDepth = 0;
};

BarState& TheBar() {
    static auto* bar = new BarState;
    return *bar;
}

Menu* InBar(MenuID id) {
    for (const auto& menu : TheBar().menus)
        if (menu->id == id)
            return menu.get();
    return nullptr;
}

bool ItemMatches(const Menu::Item& item, char16_t key, uint32_t modifiers) {
    if (!item.enabled || item.commandKey == 0 || (item.attributes & kMenuItemAttrSeparator))
        return false;
    bool wantShift = (item.commandModifiers & kMenuShiftModifier) != 0;
    bool wantOption = (item.commandModifiers & kMenuOptionModifier) != 0;
    return std::towupper(item.commandKey) == std::towupper(key) &&
           wantShift == ((modifiers & shiftKey) != 0) &&
           wantOption == ((modifiers & optionKey) != 0);
}

bool FindKey(Menu& menu, char16_t key, uint32_t modifiers, MenuItemIndex* outItem) {
    if (!menu.enabled)
        return false;
    for (size_t i = menu.items.size(); i-- > 0;)
        if (ItemMatches(menu.items[i], key, modifiers)) {
            *outItem = MenuItemIndex(i + 1);
            return true;
        }
    return false;
}

} // namespace

std::shared_ptr<Menu> Retained(Menu* menu);

const std::vector<std::shared_ptr<Menu>>& Bar() {
    return TheBar().menus;
}

bool IsBarDisabled() {
    return TheBar().modalDepth > 0;
}

StatusCode DispatchMenuKey(EventRef keyEvent) {
    MenuRef menu = nullptr;
    MenuItemIndex item = 0;
    if (IsBarDisabled() || !IsMenuKeyEvent(nullptr, keyEvent, 0, &menu, &item))
        return eventNotHandledErr;
    HiliteMenu(GetMenuID(menu));
    StatusCode status = SendMenuCommand(*Menu::From(menu), item);
    HiliteMenu(0);
    return status;
}

} // namespace basalt::toolbox::menus

using namespace basalt::toolbox;
using namespace basalt::toolbox::menus;

extern "C" {

void InsertMenu(MenuRef theMenu, MenuID beforeID) {
    if (!IsLiveMenu(theMenu) || InBar(GetMenuID(theMenu)) != nullptr)
        return;
    auto menu = Retained(Menu::From(theMenu));
    auto& menus = TheBar().menus;
    auto at = std::find_if(menus.begin(), menus.end(),
                           [&](const auto& m) { return beforeID != 0 && m->id == beforeID; });
    menus.insert(at, menu);
}

void DeleteMenu(MenuID menuID) {
    std::erase_if(TheBar().menus, [&](const auto& menu) { return menu->id == menuID; });
}

void ClearMenuBar(void) {
    TheBar().menus.clear();
}

MenuRef GetMenuHandle(MenuID menuID) {
    Menu* menu = InBar(menuID);
    return menu != nullptr ? menu->Ref() : nullptr;
}

MenuRef GetMenuRef(MenuID menuID) {
    return GetMenuHandle(menuID);
}

MenuRef GetNextMenuInBar(MenuRef inMenu) {
    const auto& menus = TheBar().menus;
    if (inMenu == nullptr)
        return menus.empty() ? nullptr : menus.front()->Ref();
    for (size_t i = 0; i + 1 < menus.size(); ++i)
        if (menus[i]->Ref() == inMenu)
            return menus[i + 1]->Ref();
    return nullptr;
}

Boolean IsThisASystemMenu(MenuRef inMenu) {
    return IsLiveMenu(inMenu) && GetMenuID(inMenu) < 0;
}

// Nothing is drawn for the bar, so there is nothing to mark for redrawing.
void InvalMenuBar(void) {}
void DrawMenuBar(void) {}

void HiliteMenu(MenuID menuID) {
    TheBar().hilited = menuID;
}

uint32_t _BeginAppModalState(void) {
    return static_cast<uint32_t>(TheBar().modalDepth++);
}

void _EndAppModalState(uint32_t inSavedState) {
    TheBar().modalDepth = std::min(TheBar().modalDepth, static_cast<int>(inSavedState));
}

Boolean IsMenuKeyEvent(MenuRef inStartMenu, EventRef inEvent, OptionBits, MenuRef* outMenu,
                       MenuItemIndex* outMenuItem) {
    if (inEvent == nullptr || GetEventClass(inEvent) != kEventClassKeyboard)
        return false;
    uint32_t modifiers = 0;
    GetParam(inEvent, kEventParamKeyModifiers, typeUInt32, &modifiers);
    if (!(modifiers & cmdKey))
        return false;
    char16_t key = 0;
    char character = 0;
    if (!GetParam(inEvent, kEventParamKeyUnicodes, typeUnicodeText, &key)) {
        if (!GetParam(inEvent, kEventParamKeyMacCharCodes, typeChar, &character))
            return false;
        key = char16_t(uint8_t(character));
    }
    MenuItemIndex item = 0;
    auto found = [&](Menu& menu) {
        if (!FindKey(menu, key, modifiers, &item))
            return false;
        if (outMenu != nullptr)
            *outMenu = menu.Ref();
        if (outMenuItem != nullptr)
            *outMenuItem = item;
        return true;
    };
    if (inStartMenu != nullptr)
        return IsLiveMenu(inStartMenu) && found(*Menu::From(inStartMenu));
    for (const auto& menu : std::vector(TheBar().menus))
        if (found(*menu))
            return true;
    return false;
}

long PopUpMenuSelect(MenuRef menu, int16_t top, int16_t left, int16_t popUpItem) {
    if (!IsLiveMenu(menu))
        return 0;
    Menu& popup = *Menu::From(menu);
    SendMenuOpening(popup);
    MenuItemIndex item =
        CurrentBackend().TrackPopupMenu(menu, Point{top, left}, MenuItemIndex(popUpItem));
    if (item == 0 || !IsMenuItemEnabled(menu, item))
        return 0;
    return (long(uint16_t(popup.id)) << 16) | item;
}

StatusCode ProcessBTCommand(const BTCommand* inCommand) {
    if (inCommand == nullptr)
        return paramErr;
    EventHolder event(kEventClassCommand, kEventCommandProcess);
    SetParam(event.get(), kEventParamDirectObject, typeBTCommand, *inCommand);
    return SendEventToEventTarget(event.get(), GetEventDispatcherTarget());
}

} // extern "C"
