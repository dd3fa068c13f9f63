#include "kel/interface/KelBaseDialog.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "kel/interface/TKelClient.h"

#include <gtest/gtest.h>

namespace {

constexpr OSType kKels = 0x6B656C73; // "kels"

EventRecord Key(char character, uint32_t modifiers = 0) {
    EventRecord event{};
    event.what = keyDown;
    event.message = static_cast<unsigned char>(character);
    event.modifiers = static_cast<EventModifiers>(modifiers);
    return event;
}

// A window with the two dismiss buttons the layout file gives every dialog, bound to a dialog.
class KelBaseDialogWindow : public ::testing::Test {
protected:
    void SetUp() override {
        const Rect content{100, 100, 300, 400};
        ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &content, &window), noErr);
        okButton = AddButton(BCSTR("OK"), 1);
        cancelButton = AddButton(BCSTR("Cancel"), 2);
        DialogRef bound = nullptr;
        ASSERT_EQ(_CreatePrivateDialogRefAndBindToWindowRef(window, &bound), noErr);
        dialog.SetDialogRef(bound);
        dialog.CacheControlRefs();
    }

    ControlRef AddButton(BCStringRef title, int32_t id) {
        const Rect bounds{160, static_cast<int16_t>(100 * id), 180,
                          static_cast<int16_t>(100 * id + 80)};
        ControlRef button = nullptr;
        BTCreateControl(window, &bounds, kControlKindPushButton, title, &button);
        const ControlID controlID{kKels, id};
        SetControlID(button, &controlID);
        return button;
    }

    WindowRef window = nullptr;
    ControlRef okButton = nullptr;
    ControlRef cancelButton = nullptr;
    KelBaseDialog dialog;
};

TEST_F(KelBaseDialogWindow, BindingFindsTheWindowAndTheButtonsByTheirIds) {
    EXPECT_EQ(dialog.GetWindow(), window);
    EXPECT_EQ(dialog.GetControlFromLayout(1), okButton);
    EXPECT_EQ(dialog.GetControlFromLayout(2), cancelButton);
    EXPECT_EQ(dialog.GetControlFromLayout(99), nullptr);
}

TEST_F(KelBaseDialogWindow, ReturnEnterEscapeAndCommandPeriodPressTheDismissButtons) {
    int16_t item = 0;
    EventRecord returnKey = Key('\r');
    EXPECT_TRUE(dialog.DefaultKeydown(returnKey, item));
    EXPECT_EQ(item, 1);
    item = 0;
    EventRecord commandPeriod = Key('.', cmdKey);
    EXPECT_TRUE(dialog.DefaultKeydown(commandPeriod, item));
    EXPECT_EQ(item, 2);

    item = 0;
    EventRecord period = Key('.');
    EXPECT_FALSE(dialog.DefaultKeydown(period, item));
    EventRecord mouse{};
    mouse.what = mouseDown;
    EXPECT_FALSE(dialog.DefaultKeydown(mouse, item));
    EXPECT_EQ(item, 0);

    EXPECT_TRUE(dialog.DefaultKeydown(uint16_t{27}, item));
    EXPECT_EQ(item, 2);
    EXPECT_FALSE(dialog.DefaultKeydown(uint16_t{'a'}, item));
}

TEST_F(KelBaseDialogWindow, AButtonAlreadyPressedTakesTheKeyDifferentlyInTheTwoForms) {
    HiliteControl(okButton, kControlButtonPart);
    HiliteControl(cancelButton, kControlButtonPart);
    int16_t item = 0;
    EventRecord returnKey = Key('\r');
    EXPECT_TRUE(dialog.DefaultKeydown(returnKey, item));
    EXPECT_FALSE(dialog.DefaultKeydown(uint16_t{13}, item));
    EXPECT_TRUE(dialog.DefaultKeydown(uint16_t{27}, item));
    EXPECT_EQ(item, 0);
}

TEST_F(KelBaseDialogWindow, ClientCallbackDrawsIntoTheDialogWindow) {
    struct Ports {
        GrafPtr during = nullptr;
    } ports;
    auto record = [](long, KelCBRec*, void* data) { GetPort(&static_cast<Ports*>(data)->during); };
    TKelClient client(record, nullptr, nullptr, &ports, 0);
    client.record.window = window;
    GrafPtr before = nullptr;
    GetPort(&before);

    client.Event(kKelCBStart);

    EXPECT_EQ(ports.during, GetWindowPort(window));
    GrafPtr after = nullptr;
    GetPort(&after);
    EXPECT_EQ(after, before);
}

int gCopies = 0;
StatusCode CountCopy(EventHandlerCallRef, EventRef, void*) {
    ++gCopies;
    return noErr;
}

TEST_F(KelBaseDialogWindow, TheMenuBarComesBackOnlyWhenTheLastDisableIsUndone) {
    MenuRef menu = nullptr;
    CreateNewMenu(140, 0, &menu);
    AppendMenuItemTextWithBCString(menu, BCSTR("Copy"), 0, 0, nullptr);
    SetItemCmd(menu, 1, 'C');
    InsertMenu(menu, 0);
    const EventTypeSpec process = {kEventClassCommand, kEventCommandProcess};
    InstallEventHandler(GetMenuEventTarget(menu), CountCopy, 1, &process, nullptr, nullptr);
    ShowWindow(window);
    const auto copyReachesTheMenu = [] {
        const int before = gCopies;
        basalt::headless::HeadlessDriver::PressKey(kVK_ANSI_C, cmdKey);
        basalt::headless::HeadlessDriver::RunUntilIdle();
        return gCopies > before;
    };

    // A modal state the application began itself outlasts the dialog's.
    const uint32_t applicationState = _BeginAppModalState();
    dialog.DisableMenuBar();
    dialog.DisableMenuBar();
    dialog.ReEnableMenuBar();
    EXPECT_FALSE(copyReachesTheMenu());
    dialog.ReEnableMenuBar();
    EXPECT_FALSE(copyReachesTheMenu());
    _EndAppModalState(applicationState);
    EXPECT_TRUE(copyReachesTheMenu());

    dialog.DisableMenuBar();
    EXPECT_FALSE(copyReachesTheMenu());
    dialog.ReEnableMenuBar();
    dialog.ReEnableMenuBar();
    EXPECT_TRUE(copyReachesTheMenu());

    DeleteMenu(140);
    DisposeMenu(menu);
}

TEST(KelBaseDialog, WindowMissingFromTheLayoutFileLeavesNoDialog) {
    KelBaseDialog dialog;
    dialog.AllocateDialogFromLayout(BCSTR("No Such Window Movable Modal"));
    EXPECT_EQ(dialog.GetDialogRef(), nullptr);
    EXPECT_EQ(dialog.GetWindow(), nullptr);
    EXPECT_EQ(dialog.GetControlFromLayout(1), nullptr);
    EXPECT_EQ(dialog.GetItemControl(1), nullptr);
}

} // namespace
