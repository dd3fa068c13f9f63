// A dialog's field driven through the application's own Edit menu, found by its command keys.

#include "kel/dialogs/TEditMenu.h"

#include "kel/interface/KelCommandKeys.h"
#include "tests/kel/dialogs/EditFieldWindow.h"

using basalt::headless::HeadlessDriver;

namespace {

constexpr MenuID kFileMenu = 128;
constexpr MenuID kEditMenu = 129;
enum : MenuItemIndex { kUndo = 1, kCut = 3, kCopy = 4, kPaste = 5, kSelectAll = 6 };

// A dialog that allows every edit command and can keep copy for itself.
class EditingDialog : public KelBaseDialog {
public:
    bool IsBTCommandAllowed(uint32_t command) override { return command != refused; }
    bool ExecuteBTCommand(uint32_t command) override {
        if (command != taken) {
            return false;
        }
        ++takenCount;
        return true;
    }
    uint32_t refused = 0;
    uint32_t taken = 0;
    int takenCount = 0;
};

MenuRef AddMenu(MenuID id, const std::vector<std::pair<const char*, int32_t>>& items) {
    MenuRef menu = nullptr;
    CreateNewMenu(id, 0, &menu);
    for (const auto& [title, keyIndex] : items) {
        TStringRef text = TStringRef::Create(title, kBCStringEncodingUTF8);
        MenuItemIndex item = 0;
        AppendMenuItemTextWithBCString(menu, text.AsBCStringRef(), 0, 0, &item);
        if (keyIndex >= 0) {
            SetItemCmd(menu, item, static_cast<int16_t>(CommandKeyAt(keyIndex)));
        }
    }
    InsertMenu(menu, 0);
    return menu;
}

class TEditMenuTest : public keltest::EditFieldWindow {
protected:
    void SetUp() override {
        ClearMenuBar();
        // The File menu's keys sit at other positions; only the Edit menu has the undo key.
        menus.push_back(AddMenu(kFileMenu, {{"New", 2}, {"Open", 0}}));
        if (withEditMenu) {
            menus.push_back(AddMenu(kEditMenu, {{"Undo", 4},
                                                {"-", -1},
                                                {"Cut", 5},
                                                {"Copy", 6},
                                                {"Paste", 7},
                                                {"Select All", 8}}));
        }
        EditFieldWindow::SetUp();
        dialog->InitDialog();
    }
    void TearDown() override {
        EditFieldWindow::TearDown();
        ClearMenuBar();
        for (MenuRef menu : menus) {
            DisposeMenu(menu);
        }
    }
    std::unique_ptr<KelBaseDialog> MakeDialog() override {
        return std::make_unique<EditingDialog>();
    }
    EditingDialog& Dialog() { return static_cast<EditingDialog&>(*dialog); }
    bool Choose(MenuItemIndex item) { return dialog->DoMenuChoice(kEditMenu, item); }
    void OpenEditMenu() {
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassMenu, kEventMenuEnableItems, 0, 0, &event);
        SendEventToEventTarget(event, GetMenuEventTarget(GetMenuHandle(kEditMenu)));
        ReleaseEvent(event);
    }
    static void PutOnScrap(const std::u16string& text) {
        ClearCurrentScrap();
        ScrapRef scrap = nullptr;
        GetCurrentScrap(&scrap);
        PutScrapFlavor(scrap, kScrapFlavorTypeUnicode, 0, static_cast<int32_t>(text.size() * 2),
                       text.data());
    }
    bool Enabled(MenuItemIndex item) { return IsMenuItemEnabled(GetMenuHandle(kEditMenu), item); }

    bool withEditMenu = true;
    std::vector<MenuRef> menus;
};

} // namespace

TEST_F(TEditMenuTest, SelectAllCutAndPasteWorkOnTheFocusedField) {
    ASSERT_NE(CommandKeyAt(4), 0) << "the library's command keys are not available";
    SetText("report");
    EXPECT_TRUE(Choose(kSelectAll));
    EXPECT_TRUE(TTextEdit::HasTextSelection(dialog->GetDialogRef()));
    EXPECT_TRUE(Choose(kCut));
    EXPECT_EQ(Text(), "");
    EXPECT_TRUE(Choose(kPaste));
    EXPECT_EQ(Text(), "report");

    // A pasted name loses its colons and slashes.
    ClearCurrentScrap();
    ScrapRef scrap = nullptr;
    GetCurrentScrap(&scrap);
    const char16_t pasted[] = u"a:b/c";
    PutScrapFlavor(scrap, kScrapFlavorTypeUnicode, 0, 10, pasted);
    Choose(kSelectAll);
    Choose(kPaste);
    HeadlessDriver::RunUntilIdle();
    EXPECT_EQ(Text(), "a-b-c");
}

TEST_F(TEditMenuTest, UndoBringsTheTextBackAndASecondUndoRedoes) {
    SetText("draft");
    PutOnScrap(u"final");
    Choose(kSelectAll);
    Choose(kPaste);
    EXPECT_EQ(Text(), "final");
    Choose(kUndo);
    EXPECT_EQ(Text(), "draft");
    Choose(kUndo);
    EXPECT_EQ(Text(), "final");
    Choose(kUndo);
    EXPECT_EQ(Text(), "draft");
}

TEST_F(TEditMenuTest, AnEmptyFieldIsNoStepToUndoBackTo) {
    PutOnScrap(u"first");
    Choose(kPaste);
    EXPECT_EQ(Text(), "first");
    OpenEditMenu();
    EXPECT_FALSE(Enabled(kUndo));
    Choose(kUndo);
    EXPECT_EQ(Text(), "first");
    EXPECT_EQ(Beeps(), 1);
}

TEST_F(TEditMenuTest, EveryChangeByTheMenuOrUndoReachesTheObserver) {
    SetText("draft");
    observer.texts.clear();
    Choose(kSelectAll);
    Choose(kCut);
    Choose(kPaste);
    PutOnScrap(u"x");
    Choose(kPaste);
    Choose(kUndo);
    Choose(kSelectAll);
    DialogDelete(dialog->GetDialogRef());
    EXPECT_EQ(observer.texts, (std::vector<std::string>{"", "draft", "draftx", "draft", ""}));
}

TEST_F(TEditMenuTest, ItemsAreEnabledByTheDialogAndByWhatCanBeDone) {
    ClearCurrentScrap();
    SetText("name");
    OpenEditMenu();
    EXPECT_FALSE(Enabled(kUndo));
    EXPECT_FALSE(Enabled(kPaste));
    EXPECT_TRUE(Enabled(kCopy));

    Dialog().refused = kBTCommandCopy;
    Choose(kSelectAll);
    Choose(kCut);
    OpenEditMenu();
    EXPECT_TRUE(Enabled(kUndo));
    EXPECT_TRUE(Enabled(kPaste));
    EXPECT_FALSE(Enabled(kCopy));
}

TEST_F(TEditMenuTest, ACommandTheDialogTakesIsNotDoneAgainAndOtherMenusAreLeftAlone) {
    SetText("kept");
    Dialog().taken = kBTCommandCut;
    Choose(kSelectAll);
    EXPECT_TRUE(Choose(kCut));
    EXPECT_EQ(Dialog().takenCount, 1);
    EXPECT_EQ(Text(), "kept");
    EXPECT_FALSE(dialog->DoMenuChoice(kFileMenu, 1));
    EXPECT_FALSE(dialog->HandleMenuChoice((static_cast<int32_t>(kFileMenu) << 16) | 1));
    EXPECT_TRUE(dialog->HandleMenuChoice((static_cast<int32_t>(kEditMenu) << 16) | kCut));
    EXPECT_EQ(Dialog().takenCount, 2);
}

class NoEditMenuTest : public TEditMenuTest {
protected:
    void SetUp() override {
        withEditMenu = false;
        TEditMenuTest::SetUp();
    }
};

TEST_F(NoEditMenuTest, TheFieldStillTakesTypingButEditCommandsAreIgnored) {
    Type("memo");
    EXPECT_EQ(Text(), "memo");
    EXPECT_FALSE(Choose(kSelectAll));
    EXPECT_FALSE(dialog->DoMenuChoice(kFileMenu, kUndo));
}
