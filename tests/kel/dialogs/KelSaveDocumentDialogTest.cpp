// The save dialog's name on real temporary folders: what the field shows, how the extension is
// hidden and shown, the limits, the questions about endings and leading dots, the client's name
// messages, and what the reply names.

#include "basalt/toolbox/drag/Drag.h"
#include "kel/foundation/TKelPrefs.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/SaveDialogTesting.h"
#include "tests/kel/foundation/StringTesting.h"
#include "tests/support/TestEnvironment.h"
#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using basalt::headless::HeadlessDriver;
using basalt::toolbox::drag::DeliverFileDrop;
using namespace keltest;

namespace {

constexpr int16_t kUseOne = 1;
constexpr int16_t kCancelAlert = 2;
constexpr int16_t kUseBoth = 3;

// Types as the user does and lets the dialog take the keys in.
void Type(const std::string& text) {
    HeadlessDriver::TypeText(text);
    HeadlessDriver::RunUntilIdle();
}

void Press(uint16_t key, uint32_t modifiers = 0, char16_t character = 0) {
    HeadlessDriver::PressKey(key, modifiers, character);
    HeadlessDriver::RunUntilIdle();
}

class KelSaveDocumentDialogTest : public ::testing::Test {
protected:
    // An application of this user claims Markdown, so ".md" is an ending that means something.
    // The applications folder is read once per process, at the first question about an ending,
    // which only these tests ask.
    static void SetUpTestSuite() {
        WriteFile(ScratchHome() / ".local/share/applications/writer.desktop",
                  "[Desktop Entry]\nName=Writer\nExec=writer %f\nMimeType=text/markdown;\n");
    }

    void SetUp() override {
        tree = MakeScratchFolder("save");
        WriteFile(tree / "notes.txt", "old notes");
        fs::create_directory(tree / "Archive");
        RememberSaveForm(true, true);
    }

    // Runs a dialog with name whose field the user sets to typed; alert answers the ending
    // question if one comes. Returns the saved name, or "" when the dialog didn't end.
    std::string SaveTyped(const std::string& name, const std::string& typed, int16_t answer,
                          bool* asked = nullptr) {
        SaveRun run(tree, {name});
        std::string alertText;
        run.RunModal([&] {
            Type(typed);
            WhenAlertShows(run, [&](WindowRef alert) {
                alertText = AlertText(alert);
                PressAlertItem(alert, answer);
            });
            // The alert runs inside the click; a dialog that stays up is cancelled.
            ClickItem(run.Save(), kBrowseDefaultButton);
            if (run.Save().IsRunning()) {
                ClickItem(run.Save(), kBrowseCancelButton);
            }
        });
        if (asked != nullptr) {
            *asked = !alertText.empty();
        }
        return KelDialogGetUserAction(run.dialog) == kKelUserActionSaveAs ? ReplyOf(run).name : "";
    }

    fs::path tree;
};

TEST_F(KelSaveDocumentDialogTest, AHiddenExtensionShowsTheStemAndComesBackInTheName) {
    SaveRun run(tree, {"Report.txt"});
    std::string shown;
    std::string whole;
    int16_t checkbox = -1;
    const uint32_t action = run.RunModal([&] {
        shown = run.FieldText();
        whole = Utf8(TStringRef(KelDialogGetSaveFileName(run.dialog)));
        checkbox = GetControlValue(ControlOf(run.Save(), kBrowseHideExtension));
        Type("Plan");
        ClickItem(run.Save(), kBrowseDefaultButton);
    });
    EXPECT_EQ(shown, "Report");
    EXPECT_EQ(whole, "Report.txt");
    EXPECT_EQ(checkbox, 1);
    EXPECT_EQ(action, uint32_t(kKelUserActionSaveAs));
    const SaveReply reply = ReplyOf(run);
    EXPECT_EQ(reply.status, noErr);
    EXPECT_EQ(reply.folder, tree.string());
    EXPECT_EQ(reply.name, "Plan.txt");
    EXPECT_TRUE(reply.extensionHidden);
    EXPECT_FALSE(reply.replacing);
}

TEST_F(KelSaveDocumentDialogTest, TypingTheExtensionShowsItAndDeletingItHidesIt) {
    RememberSaveForm(false, false);
    SaveRun run(tree, {"Report.txt"});
    std::vector<std::string> fields;
    std::vector<int16_t> checks;
    int16_t start = -1;
    int16_t end = -1;
    const auto note = [&] {
        fields.push_back(run.FieldText());
        checks.push_back(GetControlValue(ControlOf(run.Save(), kBrowseHideExtension)));
    };
    run.RunModal([&] {
        run.Save().NameField()->GetSelectionEndpoints(start, end);
        note();
        ClickItem(run.Save(), kBrowseHideExtension);
        note();
        Type("Memo.TXT");
        note();
        for (int key = 0; key < 4; ++key) {
            Press(kVK_Delete);
        }
        note();
        ClickItem(run.Save(), kBrowseDefaultButton);
    });
    // Only the stem is selected at first: typing keeps the extension.
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 6);
    EXPECT_EQ(fields, (std::vector<std::string>{"Report.txt", "Report", "Memo.TXT", "Memo"}));
    EXPECT_EQ(checks, (std::vector<int16_t>{0, 1, 0, 1}));
    EXPECT_EQ(ReplyOf(run).name, "Memo.txt");
    // What is remembered is what the user had before the field hid the extension by itself.
    TKelPrefs prefs;
    prefs.SetClientKeys(TStringRef(BCSTR("PutFile")), TStringRef(BCSTR("0")));
    EXPECT_FALSE(prefs.GetExtensionHiddenPref());
}

TEST_F(KelSaveDocumentDialogTest, HidingTheExtensionAnswersWhatTheDialogCanDo) {
    SaveRun plain(tree, {"Report.txt", kKelOptDefaults});
    EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(plain.dialog, true), kKelWrongDialogClassErr);
    SaveRun bare(tree, {"README"});
    EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(bare.dialog, true), kKelWrongStateErr);
    EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(bare.dialog, false), noErr);

    SaveRun run(tree, {"Report.txt"});
    std::vector<std::string> fields;
    run.RunModal([&] {
        EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(run.dialog, false), noErr);
        fields.push_back(run.FieldText());
        EXPECT_EQ(KelDialogSetSaveFileName(run.dialog, BCSTR("Minutes.rtf")), noErr);
        fields.push_back(run.FieldText());
        EXPECT_EQ(KelDialogSetSaveFileExtensionHidden(run.dialog, true), noErr);
        fields.push_back(run.FieldText());
        fields.push_back(Utf8(TStringRef(KelDialogGetSaveFileName(run.dialog))));
        // A name without extension leaves nothing to hide: the checkbox goes off.
        EXPECT_EQ(KelDialogSetSaveFileName(run.dialog, BCSTR("Minutes")), noErr);
        fields.push_back(run.FieldText());
        EXPECT_FALSE(KelDialogGetSaveFileExtensionHidden(run.dialog));
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    EXPECT_EQ(fields, (std::vector<std::string>{"Report.txt", "Minutes.rtf", "Minutes",
                                                "Minutes.rtf", "Minutes"}));
}

TEST_F(KelSaveDocumentDialogTest, TheFieldNeverTakesMoreThanTheFileSystemDoes) {
    SaveRun run(tree, {"Report.txt"});
    std::string hidden;
    std::string wide;
    run.RunModal([&] {
        Type(std::string(300, 'a'));
        hidden = run.FieldText();
        KelDialogSetSaveFileExtensionHidden(run.dialog, false);
        ControlEditTextSelectionRec all{0, 0x7FFF};
        run.Save().NameField()->SelectTextContent(all);
        std::string accents;
        for (int count = 0; count < 200; ++count) {
            accents += "\xC3\xA9";
        }
        Type(accents);
        wide = Utf8(run.Save().SaveFileName());
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    // 251 characters, a dot and "txt": 255 bytes.
    EXPECT_EQ(hidden, std::string(251, 'a'));
    EXPECT_LE(wide.size(), 255U);
    EXPECT_GT(wide.size(), 200U);
}

TEST_F(KelSaveDocumentDialogTest, AKnownEndingInFrontOfTheHiddenOneIsQuestioned) {
    bool asked = false;
    EXPECT_EQ(SaveTyped("Report.txt", "minutes.md", kUseOne, &asked), "minutes.txt");
    EXPECT_TRUE(asked);
    EXPECT_EQ(SaveTyped("Report.txt", "minutes.md", kUseBoth), "minutes.md.txt");
    EXPECT_EQ(SaveTyped("Report.txt", "minutes.md", kCancelAlert), "");
    // An ending no application claims is part of the name.
    EXPECT_EQ(SaveTyped("Report.txt", "draft.zqx", kCancelAlert, &asked), "draft.zqx.txt");
    EXPECT_FALSE(asked);
}

TEST_F(KelSaveDocumentDialogTest, ALeadingDotIsSavedOnlyWhenTheUserInsists) {
    bool asked = false;
    // Return presses Cancel, the alert's default: the dialog stays.
    EXPECT_EQ(SaveTyped("Report", ".profile", kCancelAlert, &asked), "");
    EXPECT_TRUE(asked);
    EXPECT_EQ(SaveTyped("Report", ".profile", kUseOne), ".profile");
}

TEST_F(KelSaveDocumentDialogTest, AnEmptyNameTurnsSaveOffAndReturnDoesNothing) {
    SaveRun run(tree, {"Report.txt"});
    bool activeWhenEmpty = true;
    bool runningAfterKeys = false;
    bool activeAgain = false;
    run.RunModal([&] {
        Press(kVK_Delete);
        activeWhenEmpty = run.DefaultButtonActive();
        Press(kVK_Return);
        Press(kVK_ANSI_S, cmdKey, u's');
        runningAfterKeys = run.Save().IsRunning();
        Type("B");
        activeAgain = run.DefaultButtonActive();
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    EXPECT_FALSE(activeWhenEmpty);
    EXPECT_TRUE(runningAfterKeys);
    EXPECT_TRUE(activeAgain);
}

TEST_F(KelSaveDocumentDialogTest, NamesNoFileCanHaveAreNotSaved) {
    // "." and ".." name the folder and its parent: a reply with them would lead the client out
    // of the folder the user chose. A hidden extension makes "..", typed, a good name.
    for (const char* name : {".", ".."}) {
        SaveRun run(tree, {"Report", kKelOptDefaults});
        bool active = true;
        bool choosable = true;
        run.RunModal([&] {
            Type(name);
            active = run.DefaultButtonActive();
            choosable = run.Save().CanChoose();
            ClickItem(run.Save(), kBrowseCancelButton);
        });
        EXPECT_FALSE(active) << name;
        EXPECT_FALSE(choosable) << name;
    }
    EXPECT_EQ(SaveTyped("Report.txt", "..", kUseOne), "...txt");
}

TEST_F(KelSaveDocumentDialogTest, NothingSavesIntoAFolderTheUserMayNotWrite) {
    fs::create_directory(tree / "Sealed");
    // Root writes through any mode bits: the check runs as an ordinary user.
    const int failures = RunUnprivileged(tree, [&] {
        ::chmod((tree / "Sealed").c_str(), 0555);
        SaveRun run(tree / "Sealed", {"Report.txt"});
        bool active = true;
        const uint32_t action = run.RunModal([&] {
            active = run.DefaultButtonActive();
            Press(kVK_ANSI_S, cmdKey, u's');
            Press(kVK_Return);
            ClickItem(run.Save(), kBrowseCancelButton);
        });
        return (active ? 1 : 0) | (action != kKelUserActionCancel ? 2 : 0);
    });
    EXPECT_EQ(failures, 0);
}

TEST_F(KelSaveDocumentDialogTest, CommandSSaves) {
    SaveRun run(tree, {"Report.txt"});
    const uint32_t action = run.RunModal([] { Press(kVK_ANSI_S, cmdKey, u's'); });
    EXPECT_EQ(action, uint32_t(kKelUserActionSaveAs));
    EXPECT_EQ(ReplyOf(run).name, "Report.txt");
}

TEST_F(KelSaveDocumentDialogTest, ReturnWhileTextIsComposedDoesNotSave) {
    const auto compose = [](const std::u16string& text, int32_t fixed) {
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassTextInput, kEventTextInputUpdateActiveInputArea, 0, 0,
                    &event);
        SetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, text.size() * 2,
                          text.data());
        SetEventParameter(event, 0x74736678 /* "tsfx" */, typeSInt32, sizeof fixed, &fixed);
        PostEventToQueue(GetMainEventQueue(), event, kEventPriorityStandard);
        ReleaseEvent(event);
        HeadlessDriver::RunUntilIdle();
    };
    SaveRun run(tree, {"Report.txt"});
    bool composing = false;
    bool stayed = false;
    const uint32_t action = run.RunModal([&] {
        compose(u"\u306B", 0);
        composing = run.Save().NameField()->IsComposing();
        Press(kVK_Return);
        stayed = run.Save().IsRunning();
        compose(u"\u65E5", 1);
        Press(kVK_Return);
    });
    EXPECT_TRUE(composing);
    EXPECT_TRUE(stayed);
    EXPECT_EQ(action, uint32_t(kKelUserActionSaveAs));
    EXPECT_EQ(ReplyOf(run).name, "\xE6\x97\xA5.txt");
}

TEST_F(KelSaveDocumentDialogTest, AClickOnAFileTakesItsStemAndKeepsTheExtension) {
    RememberSaveForm(false, false);
    TKelPrefs prefs;
    prefs.SetView(TKelPrefs::kListView, BCSTR("KelPanelFileListModeForSaveMode"));
    SaveRun run(tree, {"Letter.rtf"});
    std::string field;
    run.RunModal([&] {
        // Rows by name: the folder "Archive", then "notes.txt".
        ClickListRow(run.Save(), 1);
        field = run.FieldText();
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    EXPECT_EQ(field, "notes.rtf");
}

TEST_F(KelSaveDocumentDialogTest, AClickedFileWhoseNameIsNotUtf8IsTheFileSaved) {
    RememberSaveForm(false, false);
    TKelPrefs prefs;
    prefs.SetView(TKelPrefs::kListView, BCSTR("KelPanelFileListModeForSaveMode"));
    // Latin-1 bytes: the list shows "résumé.txt", which is not this file's name.
    const std::string latin1 = "r\xE9sum\xE9.txt";
    WriteFile(tree / latin1, "old");
    struct Saved {
        std::string field;
        std::string alert;
        SaveReply reply;
    };
    // Clicks the file (rows by name: "Archive", "notes.txt", then it), lets edit change the
    // field, and says yes to any replace question.
    auto saveClicked = [&](const std::function<void(KelSaveDocumentDialog&)>& edit) {
        SaveRun run(tree, {"Letter.txt"});
        Saved saved;
        run.RunModal([&] {
            ClickListRow(run.Save(), 2);
            saved.field = run.FieldText();
            edit(run.Save());
            WhenAlertShows(run, [&](WindowRef alert) {
                saved.alert = AlertText(alert);
                PressAlertItem(alert, kUseOne);
            });
            ClickItem(run.Save(), kBrowseDefaultButton);
            if (run.Save().IsRunning()) {
                ClickItem(run.Save(), kBrowseCancelButton);
            }
        });
        saved.reply = ReplyOf(run);
        return saved;
    };

    const Saved unedited = saveClicked([](KelSaveDocumentDialog&) {});
    EXPECT_EQ(unedited.field, "r\xC3\xA9sum\xC3\xA9.txt");
    EXPECT_NE(
        unedited.alert.find("\xE2\x80\x9Cr\xC3\xA9sum\xC3\xA9.txt\xE2\x80\x9D already exists"),
        std::string::npos);
    EXPECT_EQ(unedited.reply.name, latin1);
    EXPECT_TRUE(unedited.reply.replacing);

    // Typed over, even with the same letters, the field is the user's name.
    const Saved retyped = saveClicked([](KelSaveDocumentDialog& dialog) {
        ClickItem(dialog, kBrowseSaveName);
        Press(kVK_ANSI_A, cmdKey, u'a');
        Type("r\xC3\xA9sum\xC3\xA9.txt");
    });
    EXPECT_EQ(retyped.alert, "");
    EXPECT_EQ(retyped.reply.name, "r\xC3\xA9sum\xC3\xA9.txt");
    EXPECT_FALSE(retyped.reply.replacing);
    EXPECT_EQ(ReadFile(tree / latin1), "old");
}

TEST_F(KelSaveDocumentDialogTest, ADroppedFileGivesItsFolderAndItsStem) {
    WriteFile(tree / "Archive" / "old-minutes.txt", "old");
    SaveRun run(tree, {"Letter.rtf", kSaveOptions, kKelModalityModeless});
    ASSERT_EQ(KelDialogRun(run.dialog), noErr);
    EXPECT_EQ(DeliverFileDrop(run.Save().GetWindow(), Point{60, 300},
                              {"file://" + (tree / "Archive" / "old-minutes.txt").string()}),
              noErr);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(TargetName(run.Save()), "Archive");
    EXPECT_EQ(run.FieldText(), "old-minutes");
    EXPECT_EQ(Utf8(run.Save().SaveFileName()), "old-minutes.rtf");
}

TEST_F(KelSaveDocumentDialogTest, TheFormatPopupOffersTheClientsKindFirstAndTellsItsChoice) {
    const void* names[] = {BCSTR("Plain Text"), BCSTR("Rich Text")};
    BCArrayRef formats = BCArrayCreate(nullptr, names, 2, &kBCTypeArrayCallBacks);
    SaveSetup setup{"Report.txt"};
    setup.creator = NodeCode("ttxt");
    setup.formats = formats;
    SaveRun run(tree, setup);
    bool shown = false;
    std::vector<std::string> heard;
    run.RunModal([&] {
        shown = IsControlVisible(ControlOf(run.Save(), kBrowseFormatPopup)) != 0;
        for (const KelMenuItemSpec& spec : run.popupChoices) {
            heard.emplace_back(reinterpret_cast<const char*>(spec.menuItemName + 1),
                               spec.menuItemName[0]);
        }
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    BCRelease(formats);
    EXPECT_TRUE(shown);
    const std::vector<std::string> titles = MenuTitles(run.Save());
    ASSERT_EQ(titles.size(), 4U);
    EXPECT_EQ(titles[1], "-");
    EXPECT_EQ(titles[2], "Plain Text");
    EXPECT_EQ(titles[3], "Rich Text");
    // The first line is the client's own kind: it is picked when the dialog starts.
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard.front(), titles[0]);

    SaveRun plain(tree, {"Report.txt"});
    plain.RunModal([&] {
        shown = IsControlVisible(ControlOf(plain.Save(), kBrowseFormatPopup)) != 0;
        ClickItem(plain.Save(), kBrowseCancelButton);
    });
    EXPECT_FALSE(shown);
}

TEST_F(KelSaveDocumentDialogTest, AsASheetItTakesANameInTheClientsOwnLoop) {
    const Rect bounds{100, 100, 700, 900};
    WindowRef parent = nullptr;
    ASSERT_EQ(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &parent), noErr);
    ShowWindow(parent);
    {
        SaveSetup setup{"Report.txt"};
        setup.modality = kKelModalitySheet;
        setup.parent = parent;
        SaveRun run(tree, setup);
        ASSERT_EQ(KelDialogRun(run.dialog), noErr);
        WindowRef sheetParent = nullptr;
        EXPECT_EQ(GetSheetWindowParent(run.Save().GetWindow(), &sheetParent), noErr);
        EXPECT_EQ(sheetParent, parent);
        Type("Budget");
        ClickItem(run.Save(), kBrowseDefaultButton);
        EXPECT_EQ(KelDialogGetUserAction(run.dialog), uint32_t(kKelUserActionSaveAs));
        EXPECT_EQ(ReplyOf(run).name, "Budget.txt");
    }
    DisposeWindow(parent);
}

TEST_F(KelSaveDocumentDialogTest, TheClientReadsSetsAndSelectsTheNameByMessage) {
    SaveRun run(tree, {"Report.txt"});
    uint8_t name[33] = {};
    StatusCode tooLong = 0;
    std::string set;
    int16_t start = -1;
    int16_t end = -1;
    run.RunModal([&] {
        EXPECT_EQ(KelCustomControl(run.dialog, kKelCtlGetEditFileName, name), noErr);
        const uint8_t letter[] = "\x0ALetter.doc";
        EXPECT_EQ(
            KelCustomControl(run.dialog, kKelCtlSetEditFileName, const_cast<uint8_t*>(letter)),
            noErr);
        set = run.FieldText();
        ControlEditTextSelectionRec range{1, 3};
        EXPECT_EQ(KelCustomControl(run.dialog, kKelCtlSelectEditFileName, &range), noErr);
        run.Save().NameField()->GetSelectionEndpoints(start, end);
        KelDialogSetSaveFileName(run.dialog, BCSTR("a name far longer than the message holds.txt"));
        tooLong = KelCustomControl(run.dialog, kKelCtlGetEditFileName, name);
        ClickItem(run.Save(), kBrowseCancelButton);
    });
    EXPECT_EQ(std::string(reinterpret_cast<char*>(name + 1), name[0]), "Report.txt");
    EXPECT_EQ(set, "Letter");
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 3);
    EXPECT_EQ(tooLong, -8738);
}

} // namespace
