#pragma once

// A menu: a counted list of items with text, command key, command id, attributes and icon,
// and an event target. Item indexes are 1-based, as in every menu call.

#include "basalt/toolbox/events/EventTarget.h"

#include <string>
#include <vector>

namespace basalt::toolbox {

class Menu final : public TargetOwner {
public:
    struct Item {
        std::u16string text;
        MenuCommand command = 0;
        MenuItemAttributes attributes = 0;
        char16_t commandKey = 0;
        uint8_t commandModifiers = kMenuNoModifiers;
        bool enabled = true;
        bool checked = false;
        IconRef icon = nullptr;
    };

    explicit Menu(MenuID id) : id(id) {}
    ~Menu() override;

    static Menu* From(MenuRef ref) { return reinterpret_cast<Menu*>(ref); }
    MenuRef Ref() { return reinterpret_cast<MenuRef>(this); }

    MenuID id;
    std::u16string title;
    std::vector<Item> items;
    long count = 1; // client references, besides the bar's and popups' shared ownership
    bool enabled = true;

    Item* At(MenuItemIndex index);
    const Item* At(MenuItemIndex index) const;
    void SetIcon(MenuItemIndex index, IconRef icon);
    EventTargetRef PropagationParent() override;
};

bool IsLiveMenu(MenuRef ref);
// Sends "cmds" 1 for an item to the menu's target, then to the user focus; the status.
StatusCode SendMenuCommand(Menu& menu, MenuItemIndex item);
// Sends "menu" 1 (about to open) to the menu's target.
void SendMenuOpening(Menu& menu);

} // namespace basalt::toolbox
