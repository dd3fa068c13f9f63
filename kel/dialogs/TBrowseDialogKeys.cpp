// The keyboard commands of a browse dialog. Keys come by two roads: the raw key event of the
// window handler, which live use takes, and the classic road through DoKeyEvents, which a
// subclass may call. The desktop key sits at index 12 of "Command Keys" on the raw road and at
// index 3 on the classic one.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/interface/KelCommandKeys.h"
#include "kel/widgets/TGoToWindow.h"

#include <cctype>

namespace {

constexpr uint16_t kReturn = 13;
constexpr uint16_t kUpArrow = 30;
constexpr uint16_t kDownArrow = 31;
constexpr int16_t kUserDomain = -32763;
constexpr int16_t kLocalDomain = -32766;

enum CommandKeyIndex : int32_t {
    kOpenKey = 0,
    kCancelKey = 1,
    kClassicDesktopKey = 3,
    kUndoKey = 4,
    kSelectAllKey = 8,
    kRawDesktopKey = 12,
};

bool IsCommandKey(uint16_t key, CommandKeyIndex index) {
    const uint8_t character = CommandKeyAt(index);
    return character != 0 && std::tolower(key) == std::tolower(character);
}

bool HasShift(uint32_t modifiers) {
    return (modifiers & shiftKey) != 0;
}

} // namespace

bool TBrowseDialog::FilterRawKeyEvent(uint16_t key, uint32_t modifiers, EventRef event) {
    if ((modifiers & cmdKey) == 0 && key != kReturn) {
        return false;
    }
    if (IsCommandKey(key, kOpenKey) || key == kDownArrow || key == kReturn) {
        if (StepIntoSelectedFolder(key)) {
            return true;
        }
    } else if ((modifiers & cmdKey) != 0 && CommandKey(key, modifiers)) {
        return true;
    }
    return FinishWithEditMenu(key, event);
}

// Return, command-O and command-down on a single selected folder in the list go into it; in
// columns only return does anything, and it goes on to the default button.
bool TBrowseDialog::StepIntoSelectedFolder(uint16_t key) {
    if (browser->ViewStyle() == kColumnViewStyle) {
        return key != kReturn;
    }
    TKelNodeArray selection;
    if (GetSelection(selection) != noErr || selection.size() != 1 ||
        !selection.front().IsContainer()) {
        return false;
    }
    const TKelNode folder = selection.front();
    if (key == kReturn && filter.CanChoose(folder)) {
        return false;
    }
    browser->SetTarget(folder, folder, TKelNode());
    return true;
}

bool TBrowseDialog::CommandKey(uint16_t key, uint32_t modifiers) {
    if (IsCommandKey(key, kRawDesktopKey)) {
        return GotoDesktop();
    }
    switch (std::tolower(key)) {
    case 'h':
        return HasShift(modifiers) ? GotoHome() : HandleWayfarerCommandKeys(key, modifiers);
    case '2':
        SwitchView(TKelPrefs::kListView, kPrefOptionSaveRestore);
        return true;
    case '3':
        SwitchView(TKelPrefs::kColumnView, kPrefOptionSaveRestore);
        return true;
    case '[':
    case ']':
        searchTextStale = true;
        browser->SetHistoryViewSnapshot(key == '[' ? 1 : 0, prefs);
        return true;
    case 'g':
        if (!HasShift(modifiers)) {
            return HandleWayfarerCommandKeys(key, modifiers);
        }
        GoToFolder();
        return true;
    case 'n':
        ItemHit(kBrowseNewFolder, 0, modifiers);
        return true;
    default:
        return HandleWayfarerCommandKeys(key, modifiers);
    }
}

// Undo and select-all in the browser go to the Edit menu; every other key is left to the text
// field, with the undo state saved first.
bool TBrowseDialog::FinishWithEditMenu(uint16_t key, EventRef event) {
    MenuRef menu = GetMenuHandle(editMenu.GetEditMenuID());
    if (menu == nullptr) {
        return false;
    }
    MenuRef hitMenu = nullptr;
    MenuItemIndex hitItem = 0;
    const bool isMenuKey = event != nullptr && IsMenuKeyEvent(menu, event, 0, &hitMenu, &hitItem);
    if (isMenuKey &&
        ((IsCommandKey(key, kSelectAllKey) && BrowserHasFocus()) || IsCommandKey(key, kUndoKey))) {
        const bool handled = HandleMenuChoice((int32_t(editMenu.GetEditMenuID()) << 16) | hitItem);
        HiliteMenu(0);
        return handled;
    }
    editMenu.SaveUndoState();
    HiliteMenu(0);
    return false;
}

void TBrowseDialog::GoToFolder() {
    RunGoToWindow(0);
}

bool TBrowseDialog::RunGoToWindow(char firstCharacter) {
    TKelNodeArray path;
    TGoToWindow goTo;
    if (!goTo.Run(path, firstCharacter) || path.empty()) {
        return false;
    }
    const TKelNode leaf = path.back();
    if (filter.CanTarget(leaf)) {
        return browser->SetTarget(leaf, leaf, TKelNode()) == noErr;
    }
    // A file: its folder, with the file selected.
    const TKelNode folder = leaf.GetParent();
    if (folder.IsEmpty() || browser->SetTarget(folder, folder, TKelNode()) != noErr) {
        return false;
    }
    browser->SetSelection(NodeList(leaf), 1);
    return true;
}

bool TBrowseDialog::HandleWayfarerCommandKeys(uint16_t key, uint32_t modifiers) {
    TKelNode target;
    Target(target);
    TKelNode destination;
    bool rooted = false;
    const int lower = std::tolower(key);
    if (HasShift(modifiers) && lower == 'c') {
        browser->SetTarget(TKelNode(TKelNode::GetRootNodeRef(), true), TKelNode(), TKelNode());
        return true;
    }
    if (HasShift(modifiers) && (lower == 'f' || lower == 'a')) {
        TKelNode::FindContainer(lower == 'f' ? kUserDomain : kLocalDomain,
                                lower == 'f' ? NodeCode("favs") : NodeCode("apps"), 0, destination);
        rooted = true;
    } else if (key == kUpArrow && !target.IsEmpty()) {
        destination = target.GetParent();
    }
    if (destination.IsEmpty() || !destination.Validate()) {
        return false;
    }
    if (destination == target) {
        return true;
    }
    const StatusCode status =
        browser->SetTarget(destination, rooted ? destination : TKelNode(), TKelNode());
    if (status == noErr && key == kUpArrow) {
        browser->SetSelection(NodeList(target), 1);
    }
    return true;
}

bool TBrowseDialog::ProcessModifierKeys(uint16_t key, uint32_t modifiers, int16_t& itemHit) {
    if ((modifiers & cmdKey) == 0) {
        return false;
    }
    if (IsCommandKey(key, kCancelKey)) {
        if (cancelControl != nullptr && !IsControlHilited(cancelControl)) {
            BTViewSimulateClick(cancelControl, kControlButtonPart, 0, nullptr);
            itemHit = kBrowseCancelButton;
        }
        return true;
    }
    if (IsCommandKey(key, kOpenKey)) {
        if (!CanChoose()) {
            return false;
        }
        itemHit = kBrowseDefaultButton;
        return true;
    }
    if (IsCommandKey(key, kClassicDesktopKey)) {
        return GotoDesktop();
    }
    if (std::tolower(key) == 'h' && HasShift(modifiers)) {
        return GotoHome();
    }
    if (HasShift(modifiers) && HandleWayfarerCommandKeys(key, modifiers)) {
        return true;
    }
    return FinishWithEditMenu(key, nullptr);
}

bool TBrowseDialog::DoKeyEvents(uint16_t key, uint32_t modifiers, int16_t& itemHit) {
    if (DefaultKeydown(key, itemHit)) {
        return true;
    }
    return ProcessModifierKeys(key, modifiers, itemHit);
}

bool TBrowseDialog::HandleKeyEvents(EventRecord& event, int16_t& itemHit) {
    if (event.what != keyDown) {
        return false;
    }
    // Only the command bit goes on, so no shifted command fires on this road.
    return DoKeyEvents(GetCommandCharCode(uint32_t(event.message)), event.modifiers & cmdKey,
                       itemHit);
}

bool TBrowseDialog::GotoDesktop() {
    if (IsLocationDesktop() || !CanOpen()) {
        return true;
    }
    TKelNode desktop;
    if (TKelNode::FindContainer(kUserDomain, NodeCode("desk"), 0, desktop) != noErr ||
        desktop.IsEmpty()) {
        return false;
    }
    return browser->SetTarget(desktop, desktop, TKelNode()) == noErr;
}

bool TBrowseDialog::GotoHome() {
    const TKelNode home = TKelNode::GetHomeNode();
    return !home.IsEmpty() && browser->SetTarget(home, home, TKelNode()) == noErr;
}

bool TBrowseDialog::BrowserHasFocus() {
    ControlRef focus = nullptr;
    return GetKeyboardFocus(windowRef, &focus) == noErr && focus != nullptr && focus == browserView;
}

bool TBrowseDialog::IsBTCommandAllowed(uint32_t command) {
    const bool browserFocused = BrowserHasFocus();
    ControlRef focus = nullptr;
    GetKeyboardFocus(windowRef, &focus);
    const bool fieldFocused = !browserFocused && focus != nullptr;
    switch (command) {
    case kBTCommandCopy:
    case kBTCommandCut: {
        ControlEditTextSelectionRec selection{0, 0};
        return fieldFocused &&
               GetControlData(focus, 0, kControlEditTextSelectionTag, sizeof selection, &selection,
                              nullptr) == noErr &&
               selection.selStart != selection.selEnd;
    }
    case kBTCommandPaste:
    case kBTCommandUndo:
        return fieldFocused;
    case kBTCommandSelectAll:
        if ((optionFlags & kKelOptMultipleSelection) != 0 && browserFocused) {
            return true;
        }
        return fieldFocused;
    default:
        return false;
    }
}

bool TBrowseDialog::ExecuteBTCommand(uint32_t command) {
    return command == kBTCommandSelectAll && BrowserHasFocus() && browser->SelectAll() == noErr;
}
