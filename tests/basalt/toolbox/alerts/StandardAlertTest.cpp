// Standard alerts and sheets answered through the driver: the item numbers and commands that
// the ask dialogs rely on.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/events/Event.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

struct Texts {
    StringHolder message{MakeBCString(u"Do you want to save the changes you made?")};
    StringHolder explanation{MakeBCString(u"Your changes will be lost if you don\u2019t save.")};
    StringHolder save{MakeBCString(u"Save")};
    StringHolder dontSave{MakeBCString(u"Don\u2019t Save")};
};

AlertStdBCStringAlertParamRec SaveParams(const Texts& texts) {
    AlertStdBCStringAlertParamRec params;
    GetStandardAlertDefaultParams(&params, kStdAlertVersionOne);
    params.movable = true;
    params.defaultText = texts.save.get();
    params.cancelText = kAlertDefaultCancelText;
    params.otherText = texts.dontSave.get();
    params.defaultButton = kAlertStdAlertOKButton;
    params.cancelButton = kAlertStdAlertCancelButton;
    params.position = kWindowAlertPositionParentWindowScreen;
    return params;
}

DialogItemIndex RunAnswering(std::function<void(DialogRef)> answer,
                             ModalFilterUPP filter = nullptr) {
    Texts texts;
    AlertStdBCStringAlertParamRec params = SaveParams(texts);
    DialogRef alert = nullptr;
    EXPECT_EQ(CreateStandardAlert(kAlertCautionAlert, texts.message.get(), texts.explanation.get(),
                                  &params, &alert),
              noErr);
    HeadlessDriver::Soon([answer, alert] { answer(alert); });
    DialogItemIndex hit = 0;
    RunStandardAlert(alert, filter, &hit);
    return hit;
}

ControlRef Button(DialogRef alert, DialogItemIndex item) {
    ControlRef control = nullptr;
    GetDialogItemAsControl(alert, item, &control);
    return control;
}

StatusCode RecordCommand(EventHandlerCallRef, EventRef event, void* data) {
    BTCommand command{};
    GetParam(event, kEventParamDirectObject, typeBTCommand, &command);
    *static_cast<uint32_t*>(data) = command.commandID;
    return noErr;
}

} // namespace

TEST(StandardAlert, ButtonsAnswerWithTheirItemNumbers) {
    for (DialogItemIndex item : {1, 2, 3})
        EXPECT_EQ(RunAnswering([item](DialogRef alert) {
                      if (item == 1)
                          HeadlessDriver::WritePNG(GetDialogWindow(alert),
                                                   KEL_TEST_BINARY_DIR "/standard-alert.png");
                      HeadlessDriver::Click(Button(alert, item));
                  }),
                  item);
}

TEST(StandardAlert, ReturnAndEnterAnswerTheDefaultEscapeTheCancel) {
    EXPECT_EQ(RunAnswering([](DialogRef) { HeadlessDriver::PressKey(kVK_Return); }), 1);
    EXPECT_EQ(RunAnswering([](DialogRef) { HeadlessDriver::PressKey(kVK_ANSI_KeypadEnter); }), 1);
    EXPECT_EQ(RunAnswering([](DialogRef) { HeadlessDriver::PressKey(kVK_Escape); }), 2);
}

TEST(StandardAlert, TheFilterSeesNullEventsAndMayEndTheAlert) {
    static int nullEvents;
    nullEvents = 0;
    auto filter = [](DialogRef, EventRecord* event, DialogItemIndex* item) -> Boolean {
        if (event->what == nullEvent && ++nullEvents == 2) {
            *item = 2;
            return true;
        }
        return false;
    };
    EXPECT_EQ(RunAnswering([](DialogRef) {}, filter), 2);
    EXPECT_EQ(nullEvents, 2);
}

TEST(StandardAlert, KeysReachTheFilterAsClassicRecords) {
    static uint32_t message;
    auto filter = [](DialogRef dialog, EventRecord* event, DialogItemIndex* item) -> Boolean {
        if (event->what != keyDown || !(event->modifiers & cmdKey))
            return false;
        message = uint32_t(event->message);
        BTViewSimulateClick(Button(dialog, 3), kControlButtonPart, 0, nullptr);
        *item = 3;
        return true;
    };
    EXPECT_EQ(RunAnswering([](DialogRef) { HeadlessDriver::PressKey(kVK_ANSI_D, cmdKey); }, filter),
              3);
    EXPECT_EQ(message & charCodeMask, uint32_t('d'));
    EXPECT_EQ((message & keyCodeMask) >> 8, uint32_t(kVK_ANSI_D));
    EXPECT_EQ(KeyTranslate(nullptr, (message & keyCodeMask) >> 8, nullptr), uint32_t('d'));
}

TEST(StandardSheet, ButtonsSendTheirCommandToTheTargetAndCloseTheSheet) {
    Rect bounds = {100, 100, 400, 600};
    WindowRef parent = nullptr;
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, kWindowCloseBoxAttribute, &bounds, &parent),
              noErr);
    ShowWindow(parent);
    uint32_t command = 0;
    const EventTypeSpec commands = {kEventClassCommand, kEventCommandProcess};
    InstallEventHandler(GetWindowEventTarget(parent), RecordCommand, 1, &commands, &command,
                        nullptr);
    Texts texts;
    AlertStdBCStringAlertParamRec params = SaveParams(texts);
    const std::pair<DialogItemIndex, uint32_t> answers[] = {
        {1, kBTCommandOK}, {2, kBTCommandCancel}, {3, kBTCommandOther}};
    for (auto [item, expected] : answers) {
        DialogRef sheet = nullptr;
        ASSERT_EQ(CreateStandardSheet(kAlertCautionAlert, texts.message.get(), nullptr, &params,
                                      GetWindowEventTarget(parent), &sheet),
                  noErr);
        WindowRef sheetWindow = GetDialogWindow(sheet);
        ASSERT_EQ(ShowSheetWindow(sheetWindow, parent), noErr);
        EXPECT_EQ(GetUserFocusWindow(), sheetWindow);

        // The parent takes no clicks while the sheet shows.
        HeadlessDriver::ResetBeepCount();
        HeadlessDriver::ClickAt(parent, {20, 380});
        HeadlessDriver::RunUntilIdle();
        EXPECT_EQ(HeadlessDriver::BeepCount(), 1);

        command = 0;
        HeadlessDriver::Click(Button(sheet, item));
        HeadlessDriver::RunUntilIdle();
        EXPECT_EQ(command, expected);
        EXPECT_FALSE(IsValidWindowPtr(sheetWindow));
        EXPECT_EQ(GetUserFocusWindow(), parent);
    }
    DisposeWindow(parent);
}

TEST(StandardSheet, ClosingWithoutACommandSendsNothing) {
    Rect bounds = {100, 100, 300, 500};
    WindowRef parent = nullptr;
    CreateNewWindow(kDocumentWindowClass, 0, &bounds, &parent);
    ShowWindow(parent);
    uint32_t command = 0;
    const EventTypeSpec commands = {kEventClassCommand, kEventCommandProcess};
    InstallEventHandler(GetWindowEventTarget(parent), RecordCommand, 1, &commands, &command,
                        nullptr);
    Texts texts;
    DialogRef sheet = nullptr;
    CreateStandardSheet(kAlertNoteAlert, texts.message.get(), nullptr, nullptr,
                        GetWindowEventTarget(parent), &sheet);
    ShowSheetWindow(GetDialogWindow(sheet), parent);
    EXPECT_EQ(CloseStandardSheet(sheet, 0), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(command, 0u);
    DisposeWindow(parent);
}

// A sheet has no filter: the toolbox's own keys answer it. With Cancel as the default (and so
// no separate cancel item), return and escape must both mean Cancel.
TEST(StandardSheet, KeysAnswerTheDefaultAndCancelWhenCancelIsTheDefault) {
    Rect bounds = {100, 100, 400, 600};
    WindowRef parent = nullptr;
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &parent), noErr);
    ShowWindow(parent);
    uint32_t command = 0;
    const EventTypeSpec commands = {kEventClassCommand, kEventCommandProcess};
    InstallEventHandler(GetWindowEventTarget(parent), RecordCommand, 1, &commands, &command,
                        nullptr);
    Texts texts;
    AlertStdBCStringAlertParamRec params = SaveParams(texts);
    params.otherText = nullptr;
    params.defaultButton = kAlertStdAlertCancelButton;
    params.cancelButton = 0;
    for (uint16_t key : {kVK_Return, kVK_ANSI_KeypadEnter, kVK_Escape}) {
        DialogRef sheet = nullptr;
        ASSERT_EQ(CreateStandardSheet(kAlertCautionAlert, texts.message.get(), nullptr, &params,
                                      GetWindowEventTarget(parent), &sheet),
                  noErr);
        ASSERT_EQ(ShowSheetWindow(GetDialogWindow(sheet), parent), noErr);
        command = 0;
        HeadlessDriver::PressKey(key);
        HeadlessDriver::RunUntilIdle();
        EXPECT_EQ(command, kBTCommandCancel) << "key " << key;
    }
    DisposeWindow(parent);
}
