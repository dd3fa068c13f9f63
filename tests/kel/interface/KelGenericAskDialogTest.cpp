// The three ask alerts driven through the public calls and the headless driver: modal and as a
// sheet, every key and button, the texts each one chooses, and the order of what the client hears.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "tests/kel/interface/AlertIconTesting.h"
#include "tests/kel/interface/EventRecorder.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <kel/KelServices.h>
#include <string>

using basalt::headless::HeadlessDriver;
using keltest::EventRecorder;

namespace {

std::string UTF8(BCStringRef string) {
    if (string == nullptr) {
        return {};
    }
    char buffer[4096] = {};
    BCStringGetCString(string, buffer, sizeof buffer, kBCStringEncodingUTF8);
    return buffer;
}

// Every text the window shows, joined with "|": the static texts, then the button titles.
std::string WindowText(WindowRef window) {
    ControlRef root = nullptr;
    GetRootControl(window, &root);
    std::string text;
    for (BTViewRef view = BTViewGetFirstSubview(root); view != nullptr;
         view = BTViewGetNextView(view)) {
        BCStringRef copy = BTViewCopyText(view);
        text += UTF8(copy) + "|";
        if (copy != nullptr) {
            BCRelease(copy);
        }
    }
    return text;
}

ControlRef Item(WindowRef window, int16_t item) {
    ControlRef control = nullptr;
    GetDialogItemAsControl(GetDialogFromWindow(window), item, &control);
    return control;
}

struct Strings {
    BCStringRef document = BCSTR("Quarterly Report");
    BCStringRef app = BCSTR("Ledger");
};

enum class Kind { save, discard, review };

struct AskRun {
    KelDialogRef dialog = nullptr;
    EventRecorder recorder;
    std::string text;
    bool hadThirdButton = false;
    std::vector<uint32_t> icon;
};

StatusCode Create(Kind kind, KelDialogCreationOptions& options, uint32_t detail,
                  EventRecorder& recorder, KelDialogRef* dialog) {
    switch (kind) {
    case Kind::save:
        return KelCreateAskSaveChangesDialog(&options, detail, EventRecorder::Record, &recorder,
                                             dialog);
    case Kind::discard:
        return KelCreateAskDiscardChangesDialog(&options, EventRecorder::Record, &recorder, dialog);
    case Kind::review:
        return KelCreateAskReviewDocumentsDialog(&options, detail, EventRecorder::Record, &recorder,
                                                 dialog);
    }
    return paramErr;
}

// Runs an alert modally; answer acts on its window once it shows. Returns the user action.
uint32_t RunModal(Kind kind, KelDialogCreationOptions options, uint32_t detail,
                  std::function<void(WindowRef)> answer, AskRun* out = nullptr) {
    AskRun local;
    AskRun& run = out != nullptr ? *out : local;
    options.modality = kKelModalityAppModal;
    if (Create(kind, options, detail, run.recorder, &run.dialog) != noErr) {
        ADD_FAILURE() << "no dialog";
        return kKelUserActionNone;
    }
    HeadlessDriver::Soon([&run, answer] {
        WindowRef window = KelDialogGetWindow(run.dialog);
        run.text = WindowText(window);
        run.hadThirdButton = Item(window, 3) != nullptr;
        run.icon = keltest::AlertIconPixels(window);
        answer(window);
    });
    KelDialogRun(run.dialog);
    const uint32_t action = KelDialogGetUserAction(run.dialog);
    KelDialogDispose(run.dialog);
    return action;
}

KelDialogCreationOptions Options(BCStringRef name, BCStringRef app) {
    KelDialogCreationOptions options;
    KelGetDefaultDialogCreationOptions(&options);
    options.saveFileName = name;
    options.clientName = app;
    return options;
}

std::function<void(WindowRef)> Press(uint16_t keyCode, uint32_t modifiers = 0,
                                     char16_t character = 0) {
    return [=](WindowRef) { HeadlessDriver::PressKey(keyCode, modifiers, character); };
}

std::function<void(WindowRef)> ClickItem(int16_t item) {
    return [=](WindowRef window) { HeadlessDriver::Click(Item(window, item)); };
}

TEST(KelAskDialogs, EveryKeyAndButtonOfAModalAlertGivesItsAction) {
    Strings strings;
    const KelDialogCreationOptions named = Options(strings.document, strings.app);
    struct Case {
        Kind kind;
        std::function<void(WindowRef)> answer;
        uint32_t action;
    };
    const Case cases[] = {
        {Kind::save, Press(kVK_Return), kKelUserActionSaveChanges},
        {Kind::save, Press(kVK_ANSI_KeypadEnter), kKelUserActionSaveChanges},
        {Kind::save, Press(kVK_Escape), kKelUserActionCancel},
        {Kind::save, Press(kVK_ANSI_Period, cmdKey, u'.'), kKelUserActionCancel},
        {Kind::save, Press(kVK_ANSI_D, cmdKey, u'd'), kKelUserActionDontSaveChanges},
        {Kind::save, Press(kVK_ANSI_D, 0, u'd'), kKelUserActionDontSaveChanges},
        {Kind::save, ClickItem(1), kKelUserActionSaveChanges},
        {Kind::save, ClickItem(2), kKelUserActionCancel},
        {Kind::save, ClickItem(3), kKelUserActionDontSaveChanges},
        {Kind::discard, Press(kVK_Return), kKelUserActionDiscardChanges},
        {Kind::discard, Press(kVK_ANSI_D, cmdKey, u'd'), kKelUserActionNone},
        {Kind::discard, ClickItem(2), kKelUserActionCancel},
        {Kind::review, ClickItem(1), kKelUserActionReviewDocuments},
        {Kind::review, ClickItem(3), kKelUserActionDiscardDocuments},
        {Kind::review, Press(kVK_Escape), kKelUserActionCancel},
    };
    for (size_t index = 0; index < std::size(cases); ++index) {
        const Case& test = cases[index];
        // The discard alert has no don't-save key: command-D is ignored, then escape ends it.
        auto answer =
            test.action != kKelUserActionNone
                ? test.answer
                : [first = test.answer](WindowRef window) {
                      first(window);
                      HeadlessDriver::Soon([] { HeadlessDriver::PressKey(kVK_Escape); }, 0.1);
                  };
        const uint32_t expected =
            test.action != kKelUserActionNone ? test.action : uint32_t{kKelUserActionCancel};
        EXPECT_EQ(RunModal(test.kind, named, 3, answer), expected) << "case " << index;
    }
}

TEST(KelAskDialogs, ClientHearsStartThenUserActionThenTerminateAndNothingAfter) {
    Strings strings;
    AskRun run;
    RunModal(Kind::save, Options(strings.document, nullptr), 1, Press(kVK_Return), &run);
    std::vector<long> lifecycle;
    std::copy_if(run.recorder.selectors.begin(), run.recorder.selectors.end(),
                 std::back_inserter(lifecycle), [](long selector) { return selector != 0; });
    EXPECT_EQ(lifecycle, (std::vector<long>{kKelCBStart, kKelCBUserAction, kKelCBTerminate}));
    EXPECT_EQ(run.recorder.selectors.back(), kKelCBTerminate);
    // The filter hands every event to the client while the alert runs.
    EXPECT_NE(std::count(run.recorder.selectors.begin(), run.recorder.selectors.end(), 0L), 0);
    EXPECT_EQ(run.recorder.userActions.back(), uint32_t{kKelUserActionSaveChanges});
}

// The client ends the alert from its callback without any input arriving: idle events reach it.
TEST(KelAskDialogs, ClientMayEndAModalAlertFromItsCallback) {
    Strings strings;
    KelDialogCreationOptions options = Options(strings.document, nullptr);
    options.modality = kKelModalityAppModal;
    EventRecorder recorder;
    KelDialogRef dialog = nullptr;
    ASSERT_EQ(Create(Kind::save, options, 1, recorder, &dialog), noErr);
    recorder.onEvent = [&](long selector, KelCBRec*) {
        if (selector == kKelCBEvent) {
            EXPECT_EQ(KelCustomControl(dialog, kKelCtlTerminate, nullptr), noErr);
        }
    };
    EXPECT_EQ(KelDialogRun(dialog), noErr);
    EXPECT_EQ(KelDialogGetUserAction(dialog), uint32_t{kKelUserActionNone});
    EXPECT_EQ(KelCustomControl(dialog, kKelCtlTerminate, nullptr), -5694);
    EXPECT_EQ(recorder.selectors.back(), kKelCBTerminate);
    KelDialogDispose(dialog);
}

TEST(KelAskDialogs, EachAlertChoosesItsTextsAndThirdButton) {
    Strings strings;
    AskRun run;
    auto escape = Press(kVK_Escape);

    RunModal(Kind::save, Options(strings.document, strings.app), 1, escape, &run);
    EXPECT_NE(run.text.find("before closing"), std::string::npos) << run.text;
    EXPECT_NE(run.text.find("\u201CQuarterly Report\u201D"), std::string::npos) << run.text;
    EXPECT_TRUE(run.hadThirdButton);

    // Quitting with no document named asks about the application's documents, without don't save.
    RunModal(Kind::save, Options(nullptr, strings.app), 2, escape, &run);
    EXPECT_NE(run.text.find("your Ledger documents"), std::string::npos) << run.text;
    EXPECT_FALSE(run.hadThirdButton);

    // A client's message replaces the explanation; the third button rule looks only at the
    // action and the name.
    KelDialogCreationOptions custom = Options(nullptr, nullptr);
    custom.message = BCSTR("Keep the new layout?");
    RunModal(Kind::save, custom, 2, escape, &run);
    EXPECT_NE(run.text.find("|Save your changes?|"), std::string::npos) << run.text;
    EXPECT_NE(run.text.find("|Keep the new layout?|"), std::string::npos) << run.text;
    EXPECT_FALSE(run.hadThirdButton);

    RunModal(Kind::discard, Options(strings.document, strings.app), 0, escape, &run);
    EXPECT_NE(run.text.find("discard your changes to \u201CQuarterly Report\u201D"),
              std::string::npos)
        << run.text;
    EXPECT_FALSE(run.hadThirdButton);

    // A count of 0 fills only ^1; a text without a mark stays as it is.
    RunModal(Kind::review, Options(nullptr, strings.app), 0, escape, &run);
    EXPECT_NE(run.text.find("Several Ledger documents"), std::string::npos) << run.text;
    RunModal(Kind::review, Options(nullptr, nullptr), 12, escape, &run);
    EXPECT_NE(run.text.find("12 documents have"), std::string::npos) << run.text;
    EXPECT_TRUE(run.hadThirdButton);
}

TEST(KelAskDialogs, EveryAskAlertShowsTheCautionIcon) {
    const std::vector<uint32_t> caution = keltest::AlertIconPixelsOfType(kAlertCautionAlert);
    ASSERT_FALSE(caution.empty());
    Strings strings;
    for (Kind kind : {Kind::save, Kind::discard, Kind::review}) {
        AskRun run;
        RunModal(kind, Options(strings.document, strings.app), 1, Press(kVK_Escape), &run);
        EXPECT_EQ(run.icon, caution) << int(kind);
    }
}

// A location with both halves set places the alert; one half at -1 leaves it to the toolbox.
TEST(KelAskDialogs, AlertGoesWhereTheOptionsPutIt) {
    Strings strings;
    const auto topLeft = [](KelDialogCreationOptions options) {
        Rect bounds{};
        RunModal(Kind::save, options, 1, [&bounds](WindowRef window) {
            GetWindowBounds(window, kWindowContentRgn, &bounds);
            HeadlessDriver::PressKey(kVK_Escape);
        });
        return std::pair<int, int>{bounds.left, bounds.top};
    };
    KelDialogCreationOptions options = Options(strings.document, nullptr);
    options.location = Point{-1, -1};
    const std::pair<int, int> toolboxPlace = topLeft(options);
    const std::pair<int, int> asked{90, 140};
    ASSERT_NE(toolboxPlace, asked) << "the toolbox's own place cannot tell a move";
    options.location = Point{140, 90};
    EXPECT_EQ(topLeft(options), asked);
    for (const Point half : {Point{140, -1}, Point{-1, 90}}) {
        options.location = half;
        EXPECT_EQ(topLeft(options), toolboxPlace) << half.v << "," << half.h;
    }
}

TEST(KelAskDialogs, AVeryLongNameIsShownWithoutHarm) {
    const std::string longName(10000, 'x');
    BCStringRef name = BCStringCreateWithCString(nullptr, longName.c_str(), kBCStringEncodingUTF8);
    EXPECT_EQ(RunModal(Kind::discard, Options(name, nullptr), 0, Press(kVK_Return)),
              uint32_t{kKelUserActionDiscardChanges});
    BCRelease(name);
}

// A client window for sheets, visible, with its own surface.
struct ClientWindow {
    WindowRef window = nullptr;
    ClientWindow() {
        Rect bounds{60, 60, 360, 620};
        CreateNewWindow(kDocumentWindowClass, kWindowNoAttributes, &bounds, &window);
        SetWindowTitleWithBCString(window, BCSTR("Quarterly Report"));
        ShowWindow(window);
        HeadlessDriver::RunUntilIdle();
    }
    ~ClientWindow() { DisposeWindow(window); }
};

TEST(KelAskDialogs, SheetReturnsAtOnceAndEndsFromItsButtons) {
    Strings strings;
    struct Case {
        std::function<void(WindowRef)> answer;
        uint32_t action;
    };
    const Case cases[] = {
        {ClickItem(1), kKelUserActionSaveChanges},
        {ClickItem(2), kKelUserActionCancel},
        {ClickItem(3), kKelUserActionDontSaveChanges},
        {Press(kVK_Return), kKelUserActionSaveChanges},
        {Press(kVK_Escape), kKelUserActionCancel},
        {Press(kVK_ANSI_D, cmdKey, u'd'), kKelUserActionDontSaveChanges},
    };
    for (size_t index = 0; index < std::size(cases); ++index) {
        ClientWindow client;
        KelDialogCreationOptions options = Options(strings.document, strings.app);
        options.modality = kKelModalitySheet;
        options.parentWindow = client.window;
        EventRecorder recorder;
        KelDialogRef dialog = nullptr;
        ASSERT_EQ(Create(Kind::save, options, 1, recorder, &dialog), noErr);
        ASSERT_EQ(KelDialogRun(dialog), noErr);
        HeadlessDriver::RunUntilIdle();
        WindowRef sheet = KelDialogGetWindow(dialog);
        ASSERT_NE(sheet, nullptr);
        if (index == 0) {
            HeadlessDriver::WritePNG(client.window, KEL_TEST_BINARY_DIR "/ask-save-sheet.png");
        }
        EXPECT_EQ(recorder.selectors, std::vector<long>{kKelCBStart}) << "case " << index;
        cases[index].answer(sheet);
        HeadlessDriver::RunUntilIdle();
        EXPECT_EQ(KelDialogGetUserAction(dialog), cases[index].action) << "case " << index;
        EXPECT_EQ(recorder.selectors,
                  (std::vector<long>{kKelCBStart, kKelCBUserAction, kKelCBTerminate}))
            << "case " << index;
        // The sheet's window is gone by then, and the record must not name it.
        EXPECT_EQ(recorder.windows, (std::vector<WindowRef>{sheet, nullptr, nullptr}))
            << "case " << index;
        EXPECT_EQ(KelDialogGetWindow(dialog), nullptr);
        KelDialogDispose(dialog);
    }
}

TEST(KelAskDialogs, SheetEndedByTheClientOrByDisposeCloses) {
    Strings strings;
    ClientWindow client;
    KelDialogCreationOptions options = Options(strings.document, nullptr);
    options.modality = kKelModalitySheet;
    options.parentWindow = client.window;
    EventRecorder recorder;
    KelDialogRef dialog = nullptr;
    ASSERT_EQ(Create(Kind::discard, options, 0, recorder, &dialog), noErr);
    ASSERT_EQ(KelDialogRun(dialog), noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(KelCustomControl(dialog, kKelCtlTerminate, nullptr), noErr);
    EXPECT_EQ(KelDialogGetUserAction(dialog), uint32_t{kKelUserActionNone});
    KelDialogDispose(dialog);

    // Disposed while it still shows, the sheet goes with the dialog.
    ASSERT_EQ(Create(Kind::review, options, 2, recorder, &dialog), noErr);
    ASSERT_EQ(KelDialogRun(dialog), noErr);
    HeadlessDriver::RunUntilIdle();
    KelDialogDispose(dialog);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(recorder.selectors.back(), kKelCBTerminate);
}

// With a parent but modal, the alert is a sheet that ends at once with no action.
TEST(KelAskDialogs, ModalDialogWithAParentEndsAtOnce) {
    Strings strings;
    ClientWindow client;
    KelDialogCreationOptions options = Options(strings.document, nullptr);
    options.modality = kKelModalityModal;
    options.parentWindow = client.window;
    EventRecorder recorder;
    KelDialogRef dialog = nullptr;
    ASSERT_EQ(Create(Kind::save, options, 1, recorder, &dialog), noErr);
    EXPECT_EQ(KelDialogRun(dialog), noErr);
    EXPECT_EQ(KelDialogGetUserAction(dialog), uint32_t{kKelUserActionNone});
    EXPECT_EQ(recorder.selectors.back(), kKelCBTerminate);
    KelDialogDispose(dialog);
}

TEST(KelAskDialogs, SnapshotsOfTheThreeAlerts) {
    Strings strings;
    const auto shoot = [](const char* file) {
        return [file](WindowRef window) {
            EXPECT_EQ(HeadlessDriver::WritePNG(window, std::string(KEL_TEST_BINARY_DIR "/") + file),
                      noErr);
            HeadlessDriver::PressKey(kVK_Escape);
        };
    };
    RunModal(Kind::save, Options(strings.document, strings.app), 1, shoot("ask-save.png"));
    RunModal(Kind::discard, Options(strings.document, nullptr), 0, shoot("ask-discard.png"));
    RunModal(Kind::review, Options(nullptr, strings.app), 3, shoot("ask-review.png"));
}

} // namespace
