// A toolbox window with one popup button, for driving popup menus on a real display: it prints
// "opening" when the menu is about to show, "chose: N" for each item chosen, and
// "value: N" when the window is closed. The menu is Alpha, Beta, a disabled Gamma, a
// separator, a checked Delta, Epsilon; with the argument "long", Item 7 to Item 60 follow, more
// than a screen holds.

#include <basalt/BasaltToolbox.h>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

ControlRef gPopup = nullptr;

StatusCode Opening(EventHandlerCallRef call, EventRef event, void*) {
    std::printf("opening\n");
    std::fflush(stdout);
    return CallNextEventHandler(call, event);
}

StatusCode Hit(EventHandlerCallRef call, EventRef event, void*) {
    std::printf("chose: %d\n", int(GetControlValue(gPopup)));
    std::fflush(stdout);
    return CallNextEventHandler(call, event);
}

StatusCode Closing(EventHandlerCallRef call, EventRef event, void*) {
    std::printf("value: %d\n", int(GetControlValue(gPopup)));
    std::fflush(stdout);
    QuitApplicationEventLoop();
    return CallNextEventHandler(call, event);
}

void Append(MenuRef menu, const std::string& text, MenuItemAttributes attributes) {
    BCStringRef title = BCStringCreateWithCString(nullptr, text.c_str(), kBCStringEncodingUTF8);
    AppendMenuItemTextWithBCString(menu, title, attributes, 0, nullptr);
    BCRelease(title);
}

MenuRef MakeMenu(bool isLong) {
    MenuRef menu = nullptr;
    CreateNewMenu(300, 0, &menu);
    Append(menu, "Alpha", 0);
    Append(menu, "Beta", 0);
    Append(menu, "Gamma", kMenuItemAttrDisabled);
    Append(menu, "", kMenuItemAttrSeparator);
    Append(menu, "Delta", 0);
    Append(menu, "Epsilon", 0);
    CheckMenuItem(menu, 5, true);
    for (int item = 7; isLong && item <= 60; ++item)
        Append(menu, "Item " + std::to_string(item), 0);
    const EventTypeSpec opening = {kEventClassMenu, kEventMenuOpening};
    InstallEventHandler(GetMenuEventTarget(menu), Opening, 1, &opening, nullptr, nullptr);
    return menu;
}

} // namespace

int main(int argc, char** argv) {
    bool isLong = argc > 1 && std::strcmp(argv[1], "long") == 0;
    Rect bounds = {120, 160, 240, 560};
    WindowRef window = nullptr;
    if (CreateNewWindow(kDocumentWindowClass, kWindowCloseBoxAttribute, &bounds, &window) != noErr)
        return 2;
    Rect popupBounds = {40, 20, 62, 220};
    if (BTCreateControl(window, &popupBounds, kControlKindPopupButton, nullptr, &gPopup) != noErr)
        return 2;
    MenuRef menu = MakeMenu(isLong);
    SetControlData(gPopup, 0, kControlPopupButtonMenuRefTag, sizeof menu, &menu);
    ReleaseMenu(menu);
    SetControlValue(gPopup, 1);
    const EventTypeSpec hit = {kEventClassControl, kEventControlHit};
    InstallEventHandler(GetControlEventTarget(gPopup), Hit, 1, &hit, nullptr, nullptr);
    const EventTypeSpec close = {kEventClassWindow, kEventWindowClose};
    InstallEventHandler(GetWindowEventTarget(window), Closing, 1, &close, nullptr, nullptr);
    ShowWindow(window);
    RunApplicationEventLoop();
    return 0;
}
