// The open dialog's type popup, made through the public create call: its entries from type
// lists, type identifiers and the client's items, and what choosing an entry does.

#include "basalt/nodes/NodeProperties.h"
#include "tests/kel/dialogs/BrowseDialogTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"
#include "tests/kel/foundation/StringTesting.h"
#include "tests/support/TestEnvironment.h"

#include <cstring>
#include <gtest/gtest.h>

using basalt::headless::HeadlessDriver;
using namespace keltest;

namespace {

constexpr FourCharCode kAnyCreator = NodeCode("****");
constexpr FourCharCode kText = NodeCode("TEXT");
constexpr FourCharCode kJPEG = NodeCode("JPEG");
// A code no kind table knows.
constexpr FourCharCode kUnknown = NodeCode("zq9!");

std::vector<uint16_t> Kinds(const __KelDialog& dialog) {
    std::vector<uint16_t> kinds;
    for (const TTypeMenuItem& item : dialog.TypeMenuItems()) {
        kinds.push_back(item.kind);
    }
    return kinds;
}

BCArrayRef Strings(std::initializer_list<BCStringRef> strings) {
    std::vector<const void*> values(strings.begin(), strings.end());
    return BCArrayCreate(nullptr, values.data(), BCIndex(values.size()), &kBCTypeArrayCallBacks);
}

class KelGetFileDialogTest : public ::testing::Test {
protected:
    void SetUp() override {
        tree = MakeScratchFolder("open");
        WriteFile(tree / "notes.txt", "n");
        WriteFile(tree / "photo.jpg", "p");
        WriteFile(tree / "tune.ogg", "t");
        UseListView(true);
    }

    void Create(PublicDialog& open, KelDialogCreationOptions options, KelTypeList** types) {
        ASSERT_EQ(KelCreateGetFileDialog(&options, types, EventRecorder::Record, nullptr, nullptr,
                                         &open.recorder, &open.dialog),
                  noErr);
    }

    std::filesystem::path tree;
};

TEST_F(KelGetFileDialogTest, WithNoTypesThePopupAndItsLabelAreHiddenAndTheirRowMovesUp) {
    PublicDialog open;
    Create(open, Options(), nullptr);
    EXPECT_TRUE(open.Dialog().TypeMenuItems().empty());
    open.StartIn(tree);
    BGRect popupShown = BGRectZero;
    {
        TypeListHandle types(kAnyCreator, {kText});
        PublicDialog shown;
        Create(shown, Options(), types.Get());
        shown.StartIn(tree);
        shown.RunModal([&] {
            BTViewGetFrame(shown.Dialog().GetControlFromLayout(kBrowseTypePopup), &popupShown);
            EXPECT_TRUE(IsControlVisible(shown.Dialog().GetControlFromLayout(kBrowseTypePopup)));
            ClickItem(shown.Dialog(), kBrowseCancelButton);
        });
    }
    open.RunModal([&] {
        KelGetFileDialog& dialog = open.Dialog();
        EXPECT_EQ(dialog.TypePopup(), nullptr);
        EXPECT_FALSE(IsControlVisible(dialog.GetControlFromLayout(kBrowseTypePopup)));
        EXPECT_FALSE(IsControlVisible(dialog.GetControlFromLayout(kBrowseTypePopupLabel)));
        // The popup's row goes up by its height, and the rows bound under it follow.
        BGRect popupHidden = BGRectZero;
        BTViewGetFrame(dialog.GetControlFromLayout(kBrowseTypePopup), &popupHidden);
        EXPECT_EQ(popupHidden.origin.y, popupShown.origin.y - popupShown.size.height);
        ClickItem(dialog, kBrowseCancelButton);
    });
}

TEST_F(KelGetFileDialogTest, AGenericTypeListHasNoApplicationEntryAndAllFilesComesLast) {
    TypeListHandle types(kAnyCreator, {kText, kUnknown, kJPEG});
    KelDialogCreationOptions options =
        Options(kKelModalityAppModal, kKelOptDefaults | kKelOptAllFilesInPopup);
    options.clientName = BCSTR("Ledger");
    PublicDialog open;
    Create(open, options, types.Get());
    const __KelDialog& dialog = open.Dialog();
    EXPECT_EQ(MenuTitles(dialog),
              (std::vector<std::string>{"All Readable Documents", "-", "Text Documents", "Images",
                                        "-", "All Files"}));
    EXPECT_EQ(Kinds(dialog), (std::vector<uint16_t>{0, 0x400, 0x402, 0x402, 0x400, 2}));
    EXPECT_EQ(dialog.TypeMenuItems()[3].fileType, kJPEG);
    EXPECT_EQ(dialog.TypeMenuItems()[3].creator, kAnyCreator);
}

TEST_F(KelGetFileDialogTest, AnApplicationsTypeListStartsWithItsOwnEntry) {
    TypeListHandle types(NodeCode("LDGR"), {kText, kUnknown});
    KelDialogCreationOptions options = Options();
    PublicDialog anonymous;
    Create(anonymous, options, types.Get());
    options.clientName = BCSTR("Ledger");
    PublicDialog named;
    Create(named, options, types.Get());
    const std::vector<std::string> anonymousTitles = MenuTitles(anonymous.Dialog());
    const std::vector<std::string> namedTitles = MenuTitles(named.Dialog());
    ASSERT_GE(anonymousTitles.size(), 3u);
    ASSERT_GE(namedTitles.size(), 3u);
    EXPECT_EQ(anonymousTitles[2], "All Known Documents");
    EXPECT_EQ(namedTitles[2], "All Ledger Documents");
    // The unknown code has no kind in any table and stays out.
    EXPECT_EQ(namedTitles.size(), 4u);
}

TEST_F(KelGetFileDialogTest, TypeIdentifiersReplaceTheListAndTheClientsItemsSurviveThem) {
    TStringRef extra = TStringRef::Create("Plain Text Old Style", kBCStringEncodingUTF8);
    BCArrayRef extension = Strings({extra.AsBCStringRef()});
    KelDialogCreationOptions options = Options();
    options.popupExtension = extension;
    PublicDialog open;
    Create(open, options, nullptr);
    BCRelease(extension);
    EXPECT_EQ(MenuTitles(open.Dialog()), (std::vector<std::string>{"Plain Text Old Style"}));

    BCArrayRef identifiers = Strings({BCSTR("text/plain"), BCSTR("image/png")});
    EXPECT_EQ(KelDialogSetFilterTypeIdentifiers(open.dialog, identifiers), noErr);
    BCRelease(identifiers);
    const std::vector<std::string> titles = MenuTitles(open.Dialog());
    ASSERT_EQ(titles.size(), 6u);
    EXPECT_EQ(titles[0], "All Readable Documents");
    EXPECT_EQ(titles[1], "-");
    EXPECT_NE(titles[2].find("text"), std::string::npos) << titles[2];
    EXPECT_NE(titles[3].find("PNG"), std::string::npos) << titles[3];
    EXPECT_EQ(titles[4], "-");
    EXPECT_EQ(titles[5], "Plain Text Old Style");
    EXPECT_EQ(Utf8(TStringRef(open.Dialog().TypeMenuItems()[2].typeIdentifier)), "text/plain");
}

TEST_F(KelGetFileDialogTest, ChoosingATypeRefiltersKeepsWhatStillPassesAndTellsTheClient) {
    TypeListHandle types(kAnyCreator, {kText, kJPEG});
    PublicDialog open;
    Create(open, Options(), types.Get());
    open.StartIn(tree);
    std::vector<std::string> before;
    std::vector<std::string> after;
    open.RunModal([&] {
        KelGetFileDialog& dialog = open.Dialog();
        // The first entry, all readable documents, is in force from the start.
        EXPECT_EQ(GetControlValue(dialog.TypePopup()), 1);
        EXPECT_TRUE(RunUntil([&] {
            return KelCustomControl(open.dialog, 26, nullptr) == noErr &&
                   SelectedNames(dialog).size() > 1;
        }));
        before = SelectedNames(dialog);
        HeadlessDriver::ChooseMenuItem(3);
        ClickItem(dialog, kBrowseTypePopup);
        after = SelectedNames(dialog);
        ClickItem(dialog, kBrowseCancelButton);
    });
    EXPECT_EQ(before, (std::vector<std::string>{"notes.txt", "photo.jpg"}));
    EXPECT_EQ(after, (std::vector<std::string>{"notes.txt"}));
    ASSERT_EQ(open.popupChoices.size(), 2u);
    // Copied first: the record is packed and its codes may sit unaligned.
    const FourCharCode type = open.popupChoices[1].menuType;
    const FourCharCode creator = open.popupChoices[1].menuCreator;
    EXPECT_EQ(type, kText);
    EXPECT_EQ(creator, kAnyCreator);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(open.popupChoices[1].menuItemName + 1),
                          open.popupChoices[1].menuItemName[0]),
              "Text Documents");
}

TEST_F(KelGetFileDialogTest, SelectAllLeavesOutWhatTheTypeRefuses) {
    WriteFile(tree / "plan.txt", "p");
    TypeListHandle types(kAnyCreator, {kText, kJPEG});
    PublicDialog open;
    Create(open, Options(kKelModalityAppModal, kKelOptDefaults | kKelOptMultipleSelection),
           types.Get());
    open.StartIn(tree);
    std::vector<std::string> byMessage;
    std::vector<std::string> byKey;
    open.RunModal([&] {
        KelGetFileDialog& dialog = open.Dialog();
        HeadlessDriver::ChooseMenuItem(3); // "Text Documents"
        ClickItem(dialog, kBrowseTypePopup);
        EXPECT_TRUE(RunUntil([&] {
            return KelCustomControl(open.dialog, 26, nullptr) == noErr &&
                   !SelectedNames(dialog).empty();
        }));
        byMessage = SelectedNames(dialog);
        ClickListRow(dialog, 0); // the browser takes the keys, with one row selected
        HeadlessDriver::PressKey(kVK_ANSI_A, cmdKey, u'a');
        HeadlessDriver::RunUntilIdle();
        byKey = SelectedNames(dialog);
        ClickItem(dialog, kBrowseCancelButton);
    });
    EXPECT_EQ(byMessage, (std::vector<std::string>{"notes.txt", "plan.txt"}));
    EXPECT_EQ(byKey, (std::vector<std::string>{"notes.txt", "plan.txt"}));
}

TEST_F(KelGetFileDialogTest, TheClientPicksEntriesByCodeAndTitleOrByKind) {
    TypeListHandle types(kAnyCreator, {kText, kJPEG});
    PublicDialog open;
    Create(open, Options(kKelModalityAppModal, kKelOptDefaults | kKelOptAllFilesInPopup),
           types.Get());
    open.StartIn(tree);
    open.RunModal([&] {
        KelMenuItemSpec spec{};
        spec.menuCreator = kAnyCreator;
        spec.menuType = kJPEG;
        EXPECT_EQ(KelCustomControl(open.dialog, 21, &spec), noErr);
        EXPECT_EQ(GetControlValue(open.Dialog().TypePopup()), 4);
        // A title must match too, case aside.
        std::memcpy(spec.menuItemName, "\6images", 7);
        EXPECT_EQ(KelCustomControl(open.dialog, 21, &spec), noErr);
        std::memcpy(spec.menuItemName, "\6sounds", 7);
        EXPECT_EQ(KelCustomControl(open.dialog, 21, &spec), kKelBadCustomControlParamErr);
        uint16_t kind = TTypeMenuItem::kNoFilter;
        EXPECT_EQ(KelCustomControl(open.dialog, 22, &kind), noErr);
        EXPECT_EQ(GetControlValue(open.Dialog().TypePopup()), 6);
        kind = TTypeMenuItem::kFilterByTypeListAnyCreator;
        EXPECT_EQ(KelCustomControl(open.dialog, 22, &kind), kKelNotApplicableErr);
        ClickItem(open.Dialog(), kBrowseCancelButton);
    });
    // Each pick the dialog acted on was told to the client, the start's included.
    EXPECT_EQ(open.popupChoices.size(), 4u);
}

} // namespace
