#include "kel/dialogs/TEditMenu.h"

#include "kel/dialogs/IMenuCommandHandler.h"
#include "kel/dialogs/TTextEdit.h"
#include "kel/interface/KelBaseDialog.h"
#include "kel/interface/KelCommandKeys.h"

#include <cctype>

namespace {

constexpr uint32_t kAlertBeep = 4096;
constexpr int32_t kUndoKeyIndex = 4;
constexpr int16_t kWholeText = 0x7FFF;

// The last item whose command key is the character, 0 if none.
int16_t GetItemByCommandChar(MenuRef menu, uint8_t character) {
    if (character == 0) {
        return 0;
    }
    for (int16_t item = static_cast<int16_t>(CountMenuItems(menu)); item > 0; --item) {
        int16_t command = 0;
        GetItemCmd(menu, static_cast<MenuItemIndex>(item), &command);
        if (std::toupper(command) == std::toupper(character)) {
            return item;
        }
    }
    return 0;
}

ControlEditTextSelectionRec SelectionOf(ControlRef control) {
    ControlEditTextSelectionRec selection{0, 0};
    GetControlData(control, 0, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
    return selection;
}

TStringRef TextOf(ControlRef control) {
    BCStringRef text = nullptr;
    if (GetControlData(control, 0, kControlEditTextCFStringTag, sizeof text, &text, nullptr) !=
        noErr) {
        return TStringRef();
    }
    return TStringRef(text, false);
}

} // namespace

TEditMenu::~TEditMenu() {
    if (eventHandler != nullptr) {
        RemoveEventHandler(eventHandler);
    }
}

void TEditMenu::Initialize(KelBaseDialog* owner) {
    dialog = owner;
    GetEditMenuVars();
    MenuRef menu = Menu();
    if (menu == nullptr || eventHandler != nullptr) {
        return;
    }
    const EventTypeSpec events[] = {{kEventClassCommand, kEventCommandProcess},
                                    {kEventClassMenu, kEventMenuEnableItems}};
    InstallEventHandler(GetMenuEventTarget(menu), EditMenuHandler, 2, events, this, &eventHandler);
}

void TEditMenu::GetEditMenuVars() {
    menuID = 0;
    undoItem = cutItem = copyItem = pasteItem = selectAllItem = 0;
    const uint8_t undoKey = CommandKeyAt(kUndoKeyIndex);
    for (MenuRef menu = GetNextMenuInBar(nullptr); menu != nullptr; menu = GetNextMenuInBar(menu)) {
        if (IsThisASystemMenu(menu) || !IsValidMenu(menu) ||
            GetItemByCommandChar(menu, undoKey) == 0) {
            continue;
        }
        menuID = ::GetMenuID(menu);
        int16_t* const items[] = {&undoItem, &cutItem, &copyItem, &pasteItem, &selectAllItem};
        for (int32_t index = 0; index < 5; ++index) {
            *items[index] = GetItemByCommandChar(menu, CommandKeyAt(kUndoKeyIndex + index));
        }
        return;
    }
}

MenuRef TEditMenu::Menu() const {
    return menuID != 0 ? GetMenuHandle(menuID) : nullptr;
}

ControlRef TEditMenu::FocusControl() const {
    ControlRef focus = nullptr;
    if (dialog == nullptr || GetKeyboardFocus(dialog->GetWindow(), &focus) != noErr) {
        return nullptr;
    }
    return focus;
}

bool TEditMenu::FieldHasFocus() const {
    return dialog != nullptr && TTextEdit::TextControlHasKeyboardFocus(dialog->GetDialogRef());
}

bool TEditMenu::HandleMenuChoice(long choice) {
    return DoMenuChoice(static_cast<int16_t>(choice >> 16), static_cast<int16_t>(choice & 0xFFFF));
}

bool TEditMenu::DoMenuChoice(int16_t menu, int16_t item) {
    if (menuID == 0 || menu != menuID || item == 0 || !FieldHasFocus()) {
        return false;
    }
    const auto offered = [this](uint32_t command) {
        return commandHandler != nullptr && commandHandler->ExecuteBTCommand(command);
    };
    DialogRef dialogRef = dialog->GetDialogRef();
    if (item == undoItem) {
        if (!offered(kBTCommandUndo)) {
            Undo();
        }
    } else if (item == cutItem) {
        if (!offered(kBTCommandCut)) {
            ClearCurrentScrap();
            SaveUndoState();
            DialogCut(dialogRef);
        }
    } else if (item == copyItem) {
        if (!offered(kBTCommandCopy)) {
            ClearCurrentScrap();
            DialogCopy(dialogRef);
        }
    } else if (item == pasteItem) {
        if (!offered(kBTCommandPaste)) {
            DoPaste();
        }
    } else if (item == selectAllItem) {
        if (!offered(kBTCommandSelectAll)) {
            ControlEditTextSelectionRec all{0, kWholeText};
            SetControlData(FocusControl(), 0, kControlEditTextSelectionTag, sizeof all, &all);
        }
    } else {
        return false;
    }
    return true;
}

void TEditMenu::SetItemEnabled(int16_t item, bool enabled) {
    if (item == 0) {
        return;
    }
    if (enabled) {
        EnableMenuItem(Menu(), static_cast<MenuItemIndex>(item));
    } else {
        DisableMenuItem(Menu(), static_cast<MenuItemIndex>(item));
    }
}

void TEditMenu::AdjustMenu() {
    if (Menu() == nullptr) {
        return;
    }
    const auto allowed = [this](uint32_t command) {
        return commandHandler != nullptr && commandHandler->IsBTCommandAllowed(command);
    };
    SetItemEnabled(undoItem, allowed(kBTCommandUndo) && CanUndo());
    SetItemEnabled(cutItem, allowed(kBTCommandCut));
    SetItemEnabled(copyItem, allowed(kBTCommandCopy));
    SetItemEnabled(pasteItem, allowed(kBTCommandPaste) && CanPaste());
    SetItemEnabled(selectAllItem, allowed(kBTCommandSelectAll));
}

void TEditMenu::DisableEntireMenu() {
    for (const int16_t item : {undoItem, cutItem, copyItem, pasteItem, selectAllItem}) {
        SetItemEnabled(item, false);
    }
}

void TEditMenu::EnableSelectAllMenuItem(unsigned char enable) {
    if (Menu() != nullptr) {
        SetItemEnabled(selectAllItem, enable != 0);
    }
}

void TEditMenu::SaveUndoState() {
    ClearUndoState();
    undoControl = FocusControl();
    if (undoControl == nullptr) {
        return;
    }
    undoText = TextOf(undoControl).CopyMutable(0);
    const ControlEditTextSelectionRec selection =
        undoText.Length() > 0 ? SelectionOf(undoControl) : ControlEditTextSelectionRec{0, 0};
    undoSelectionStart = selection.selStart;
    undoSelectionEnd = selection.selEnd;
}

void TEditMenu::DoPaste() {
    SaveUndoState();
    DialogPaste(dialog->GetDialogRef());
}

bool TEditMenu::CanPaste() {
    ScrapRef scrap = nullptr;
    if (GetCurrentScrap(&scrap) != noErr) {
        return false;
    }
    for (const ScrapFlavorType flavor : {kScrapFlavorTypeText, kScrapFlavorTypeTextStyle,
                                         kScrapFlavorTypeUnicode, kScrapFlavorTypeUnicodeStyle}) {
        ScrapFlavorFlags flags = 0;
        if (GetScrapFlavorFlags(scrap, flavor, &flags) == noErr) {
            return true;
        }
    }
    return false;
}

bool TEditMenu::CanUndo() {
    if (FocusControl() != undoControl) {
        ClearUndoState();
    }
    return HasUndo() && undoItem != 0;
}

void TEditMenu::Undo() {
    if (FocusControl() != undoControl) {
        ClearUndoState();
    }
    if (!HasUndo()) {
        AudioServicesPlayAlertSound(kAlertBeep);
        return;
    }
    const TStringRef taken = undoText;
    const ControlEditTextSelectionRec selection{undoSelectionStart, undoSelectionEnd};
    undoText = TMutableStringRef();
    // What the field holds now becomes the undo, so a second undo redoes.
    SaveUndoState();
    BCStringRef text = taken.AsBCStringRef();
    SetControlData(undoControl, 0, kControlEditTextCFStringTag, sizeof text, &text);
    SetControlData(undoControl, 0, kControlEditTextSelectionTag, sizeof selection, &selection);
    Draw1Control(undoControl);
    TellFieldItChanged(undoControl);
}

// Writing the text directly says nothing to the field; tell it as the toolbox does after its own
// edits, so that its observer hears of the change.
void TEditMenu::TellFieldItChanged(ControlRef field) {
    EventRef event = nullptr;
    if (CreateEvent(nullptr, kEventClassTextField, kEventTextFieldTextDidChange, 0, 0, &event) !=
        noErr) {
        return;
    }
    SendEventToEventTargetWithOptions(event, GetControlEventTarget(field),
                                      kEventTargetDontPropagate);
    ReleaseEvent(event);
}

void TEditMenu::ClearUndoState() {
    undoText = TMutableStringRef();
    undoSelectionStart = 0;
    undoSelectionEnd = 0;
    undoControl = nullptr;
}

StatusCode TEditMenu::EditMenuHandler(EventHandlerCallRef, EventRef event, void* data) {
    auto* self = static_cast<TEditMenu*>(data);
    if (!self->FieldHasFocus()) {
        return eventNotHandledErr;
    }
    if (GetEventClass(event) == kEventClassMenu) {
        self->AdjustMenu();
        return noErr;
    }
    BTCommand command{};
    if (GetEventParameter(event, kEventParamDirectObject, typeBTCommand, nullptr, sizeof command,
                          nullptr, &command) != noErr ||
        (command.attributes & kBTCommandFromMenu) == 0) {
        return eventNotHandledErr;
    }
    const bool done = self->DoMenuChoice(::GetMenuID(command.menu.menuRef),
                                         static_cast<int16_t>(command.menu.menuItemIndex));
    return done ? noErr : eventNotHandledErr;
}
