// A client's Edit menu in the bar: found by its command keys, and its commands reach the menu.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

StatusCode RecordCommand(EventHandlerCallRef, EventRef event, void* data) {
    BTCommand command{};
    GetParam(event, kEventParamDirectObject, typeBTCommand, &command);
    *static_cast<BTCommand*>(data) = command;
    return noErr;
}

MenuRef MakeEditMenu() {
    MenuRef menu = nullptr;
    CreateNewMenu(130, 0, &menu);
    const std::pair<const char16_t*, uint32_t> items[] = {{u"Undo", kBTCommandUndo},
                                                          {u"-", 0},
                                                          {u"Cut", kBTCommandCut},
                                                          {u"Copy", kBTCommandCopy},
                                                          {u"Paste", kBTCommandPaste}};
    for (auto [text, command] : items) {
        StringHolder title(MakeBCString(text));
        AppendMenuItemTextWithBCString(menu, title.get(),
                                       command == 0 ? uint32_t(kMenuItemAttrSeparator) : 0u,
                                       command, nullptr);
    }
    SetItemCmd(menu, 1, 'Z');
    SetItemCmd(menu, 3, 'X');
    SetItemCmd(menu, 4, 'C');
    SetItemCmd(menu, 5, 'V');
    InsertMenu(menu, 0);
    return menu;
}

} // namespace

TEST(MenuBar, CommandKeysFindTheItemAndSendItsCommandToTheMenu) {
    MenuRef menu = MakeEditMenu();
    EXPECT_EQ(GetMenuHandle(130), menu);
    EXPECT_EQ(GetNextMenuInBar(nullptr), menu);
    EXPECT_EQ(CountMenuItems(menu), 5);
    EXPECT_FALSE(IsMenuItemEnabled(menu, 2));

    BTCommand command{};
    const EventTypeSpec process = {kEventClassCommand, kEventCommandProcess};
    InstallEventHandler(GetMenuEventTarget(menu), RecordCommand, 1, &process, &command, nullptr);
    Rect bounds = {100, 100, 200, 300};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ShowWindow(window);
    HeadlessDriver::PressKey(kVK_ANSI_C, cmdKey);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(command.commandID, uint32_t(kBTCommandCopy));
    EXPECT_EQ(command.menu.menuRef, menu);
    EXPECT_EQ(command.menu.menuItemIndex, 4);

    // A disabled item takes no key.
    DisableMenuItem(menu, 5);
    EventHolder key(kEventClassKeyboard, kEventRawKeyDown);
    uint32_t modifiers = cmdKey;
    char character = 'v';
    SetParam(key.get(), kEventParamKeyModifiers, typeUInt32, modifiers);
    SetParam(key.get(), kEventParamKeyMacCharCodes, typeChar, character);
    MenuRef found = nullptr;
    MenuItemIndex item = 0;
    EXPECT_FALSE(IsMenuKeyEvent(nullptr, key.get(), 0, &found, &item));
    character = 'z';
    SetParam(key.get(), kEventParamKeyMacCharCodes, typeChar, character);
    EXPECT_TRUE(IsMenuKeyEvent(nullptr, key.get(), 0, &found, &item));
    EXPECT_EQ(item, 1);

    DisposeWindow(window);
    DeleteMenu(130);
    ReleaseMenu(menu);
    EXPECT_FALSE(IsValidMenu(menu));
}

TEST(MenuBar, TheModalStateEndsAtTheStateItWasHandedEvenOutOfOrder) {
    MenuRef menu = MakeEditMenu();
    BTCommand command{};
    const EventTypeSpec process = {kEventClassCommand, kEventCommandProcess};
    InstallEventHandler(GetMenuEventTarget(menu), RecordCommand, 1, &process, &command, nullptr);
    Rect bounds = {100, 100, 200, 300};
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &window);
    ShowWindow(window);
    const auto copyReachesTheMenu = [&] {
        command = BTCommand{};
        HeadlessDriver::PressKey(kVK_ANSI_C, cmdKey);
        HeadlessDriver::RunUntilIdle();
        return command.commandID == uint32_t(kBTCommandCopy);
    };

    const uint32_t outer = _BeginAppModalState();
    const uint32_t inner = _BeginAppModalState();
    EXPECT_FALSE(copyReachesTheMenu());
    // The outer state ends first: the bar is enabled again, and ending the inner one later
    // does not disable it.
    _EndAppModalState(outer);
    EXPECT_TRUE(copyReachesTheMenu());
    _EndAppModalState(inner);
    EXPECT_TRUE(copyReachesTheMenu());

    DisposeWindow(window);
    DeleteMenu(130);
    ReleaseMenu(menu);
}
