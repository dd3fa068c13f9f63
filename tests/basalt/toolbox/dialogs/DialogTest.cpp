// Dialogs over windows: item numbers from the layout's ids, appended item lists, and the
// classic DialogSelect.

#include "basalt/backend/headless/HeadlessDriver.h"
#include "basalt/toolbox/views/UnicodeText.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using basalt::headless::HeadlessDriver;
using namespace basalt::toolbox;

namespace {

struct ItemSpec {
    Rect rect;
    uint8_t type;
    std::string text;
};

// Builds an item list handle in the toolbox's in-memory format.
Handle MakeItemList(const std::vector<ItemSpec>& items) {
    std::vector<uint8_t> bytes(2);
    auto countMinusOne = int16_t(items.size() - 1);
    std::memcpy(bytes.data(), &countMinusOne, 2);
    for (const ItemSpec& item : items) {
        bytes.insert(bytes.end(), 4, 0);
        auto* rect = reinterpret_cast<const uint8_t*>(&item.rect);
        bytes.insert(bytes.end(), rect, rect + sizeof(Rect));
        bytes.push_back(item.type);
        bytes.push_back(uint8_t(item.text.size()));
        bytes.insert(bytes.end(), item.text.begin(), item.text.end());
        if (item.text.size() & 1)
            bytes.push_back(0);
    }
    Handle handle = NewHandle(Size(bytes.size()));
    std::memcpy(*handle, bytes.data(), bytes.size());
    return handle;
}

WindowRef NewFolderWindow() {
    std::string path =
        std::string(KEL_BUILD_BUNDLE_DIR) + "/KelServices.bundle/Resources/Dialogs.json";
    LayoutRef layout = nullptr;
    CreateLayoutReferenceWithPath(path.c_str(), &layout);
    StringHolder name(MakeBCString(u"New Folder"));
    WindowRef window = nullptr;
    CreateWindowFromLayout(layout, name.get(), &window);
    DisposeLayoutReference(layout);
    return window;
}

} // namespace

TEST(Dialog, ItemsAreTheControlsWithKelsIds) {
    WindowRef window = NewFolderWindow();
    ASSERT_NE(window, nullptr);
    DialogRef dialog = nullptr;
    ASSERT_EQ(_CreatePrivateDialogRefAndBindToWindowRef(window, &dialog), noErr);
    EXPECT_EQ(GetDialogFromWindow(window), dialog);
    EXPECT_EQ(GetDialogWindow(dialog), window);
    EXPECT_EQ(CountDITL(dialog), 4);
    ControlRef field = nullptr;
    ASSERT_EQ(GetDialogItemAsControl(dialog, 4, &field), noErr);
    ControlKind kind{};
    GetControlKind(field, &kind);
    EXPECT_EQ(kind.kind, uint32_t(kControlKindEditUnicodeText));
    ControlRef none = nullptr;
    EXPECT_EQ(GetDialogItemAsControl(dialog, 9, &none), errUnknownControl);
    DisposeDialog(dialog);
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST(Dialog, AppendedItemListsGoBelowOrRightAndTheirRectanglesCanMove) {
    WindowRef window = NewFolderWindow();
    DialogRef dialog = nullptr;
    _CreatePrivateDialogRefAndBindToWindowRef(window, &dialog);
    Handle list = MakeItemList({{{0, 0, 20, 120}, kDialogItemCheckBox, "Show hidden files"},
                                {{0, 130, 20, 200}, kDialogItemUserItem, ""},
                                {{24, 0, 44, 80}, kDialogItemButton | kDialogItemDisabled, "Odd"}});
    AppendDITL(dialog, list, appendDITLBottom);
    DisposeHandle(list);
    ASSERT_EQ(CountDITL(dialog), 7);

    Rect rect{};
    GetDITLItemRectangle(dialog, 5, &rect);
    EXPECT_EQ(rect.top, 108); // below the lowest item, the buttons ending at 108
    EXPECT_EQ(rect.left, 0);
    ControlRef box = nullptr;
    GetDialogItemAsControl(dialog, 5, &box);
    EXPECT_EQ(FromBCString(StringHolder(BTViewCopyText(box)).get()), u"Show hidden files");
    ControlRef userItem = nullptr;
    EXPECT_EQ(GetDialogItemAsControl(dialog, 6, &userItem), errUnknownControl);
    ControlRef odd = nullptr;
    GetDialogItemAsControl(dialog, 7, &odd);
    EXPECT_FALSE(IsControlEnabled(odd));

    Rect moved = {200, 20, 220, 140};
    SetDialogItemRectangle(dialog, 5, &moved);
    Rect bounds{};
    GetControlBounds(box, &bounds);
    EXPECT_TRUE(EqualRect(&bounds, &moved));

    // A list that ends early is refused whole.
    Handle broken = NewHandle(5);
    std::memset(*broken, 0, 5);
    AppendDITL(dialog, broken, overlayDITL);
    DisposeHandle(broken);
    EXPECT_EQ(CountDITL(dialog), 7);
    ShortenDITL(dialog, 3);
    EXPECT_EQ(CountDITL(dialog), 4);
    DisposeDialog(dialog);
}

TEST(Dialog, DialogSelectClicksTheItemUnderAMouseDown) {
    WindowRef window = NewFolderWindow();
    DialogRef dialog = nullptr;
    _CreatePrivateDialogRefAndBindToWindowRef(window, &dialog);
    MoveWindow(window, 200, 150, true);
    ShowWindow(window);
    EventRecord click{};
    click.what = mouseDown;
    click.where = {int16_t(150 + 96), int16_t(200 + 300)}; // the Create button
    DialogRef hitDialog = nullptr;
    DialogItemIndex item = 0;
    ASSERT_TRUE(DialogSelect(&click, &hitDialog, &item));
    EXPECT_EQ(hitDialog, dialog);
    EXPECT_EQ(item, 2);

    click.where = {int16_t(150 + 52), int16_t(200 + 100)}; // the name field takes the focus
    ASSERT_TRUE(DialogSelect(&click, &hitDialog, &item));
    EXPECT_EQ(item, 4);
    ControlRef focus = nullptr;
    GetKeyboardFocus(window, &focus);
    ControlRef field = nullptr;
    GetDialogItemAsControl(dialog, 4, &field);
    EXPECT_EQ(focus, field);

    click.where = {10, 10}; // nowhere near
    EXPECT_FALSE(DialogSelect(&click, &hitDialog, &item));
    DisposeDialog(dialog);
}

TEST(Dialog, CutCopyAndPasteWorkOnTheFocusedField) {
    WindowRef window = NewFolderWindow();
    DialogRef dialog = nullptr;
    _CreatePrivateDialogRefAndBindToWindowRef(window, &dialog);
    ShowWindow(window);
    ControlRef field = nullptr;
    GetDialogItemAsControl(dialog, 4, &field);
    SetKeyboardFocus(window, field, kControlEditTextPart);
    StringHolder text(MakeBCString(u"Untitled Folder"));
    BTViewSetText(field, text.get());
    ControlEditTextSelectionRec all = {0, 0x7FFF};
    SetControlData(field, 0, kControlEditTextSelectionTag, sizeof all, &all);
    DialogCut(dialog);
    EXPECT_EQ(FromBCString(StringHolder(BTViewCopyText(field)).get()), u"");
    DialogPaste(dialog);
    DialogPaste(dialog);
    EXPECT_EQ(FromBCString(StringHolder(BTViewCopyText(field)).get()),
              u"Untitled FolderUntitled Folder");

    ScrapRef scrap = nullptr;
    GetCurrentScrap(&scrap);
    ScrapFlavorFlags flags = 0;
    EXPECT_EQ(GetScrapFlavorFlags(scrap, kScrapFlavorTypeUnicode, &flags), noErr);
    EXPECT_EQ(GetScrapFlavorFlags(scrap, kScrapFlavorTypeTextStyle, &flags), noTypeErr);
    DisposeDialog(dialog);
}
