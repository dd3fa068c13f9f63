#pragma once

// Lets a dialog's text fields use the application's own Edit menu, which the dialog does not
// own. The menu is found by the command keys of its items; item numbers stay 0 when the
// application has no such menu, and every edit command is then ignored. Undo keeps one step,
// and undoing an undo redoes.

#include "kel/foundation/TStringRef.h"

#include <basalt/BasaltToolbox.h>
#include <cstdint>

class KelBaseDialog;
class IMenuCommandHandler;

class TEditMenu {
public:
    TEditMenu() = default;
    TEditMenu(const TEditMenu&) = delete;
    TEditMenu& operator=(const TEditMenu&) = delete;
    virtual ~TEditMenu();
    virtual void Initialize(KelBaseDialog* owner);
    // The menu in the high half, the item in the low half.
    virtual bool HandleMenuChoice(long choice);
    virtual bool DoMenuChoice(int16_t menu, int16_t item);
    virtual void AdjustMenu();
    virtual void DisableEntireMenu();
    virtual void EnableSelectAllMenuItem(unsigned char enable);
    virtual void SaveUndoState();
    virtual void DoPaste();
    virtual bool CanPaste();
    virtual bool CanUndo();
    virtual void Undo();
    virtual void ClearUndoState();

    // Tells the menu which dialog it serves; the Edit menu itself is found by Initialize.
    void SetCommandHandler(IMenuCommandHandler* handler) { commandHandler = handler; }
    MenuID GetEditMenuID() const { return menuID; }

private:
    void GetEditMenuVars();
    // An empty undo text means no undo: going back to an empty field is not a step.
    bool HasUndo() const { return undoText.Length() > 0; }
    MenuRef Menu() const;
    ControlRef FocusControl() const;
    bool FieldHasFocus() const;
    void SetItemEnabled(int16_t item, bool enabled);
    static void TellFieldItChanged(ControlRef field);
    static StatusCode EditMenuHandler(EventHandlerCallRef call, EventRef event, void* data);

    KelBaseDialog* dialog = nullptr;
    MenuID menuID = 0;
    int16_t undoItem = 0;
    int16_t cutItem = 0;
    int16_t copyItem = 0;
    int16_t pasteItem = 0;
    int16_t selectAllItem = 0;
    EventHandlerRef eventHandler = nullptr;
    TMutableStringRef undoText;
    int16_t undoSelectionStart = 0;
    int16_t undoSelectionEnd = 0;
    ControlRef undoControl = nullptr;
    IMenuCommandHandler* commandHandler = nullptr;
};
