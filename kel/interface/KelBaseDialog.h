#pragma once

// The root of every dialog: the toolbox dialog bound to its window, the two dismiss buttons, the
// keys that press them, and the nesting of the application modal state. dialogRef, windowRef
// and rootControl are set together by SetDialogRef and are null until a window exists.

#include "kel/dialogs/IMenuCommandHandler.h"
#include "kel/dialogs/TEditMenu.h"
#include "kel/foundation/TRect.h"

#include <basalt/BasaltToolbox.h>
#include <cstdint>
#include <kel/KelServices.h>

class KelBaseDialog : public IMenuCommandHandler {
public:
    KelBaseDialog() { editMenu.SetCommandHandler(this); }
    KelBaseDialog(const KelBaseDialog&) = delete;
    KelBaseDialog& operator=(const KelBaseDialog&) = delete;

    bool IsBTCommandAllowed(uint32_t command) override;
    bool ExecuteBTCommand(uint32_t command) override;
    virtual ~KelBaseDialog();
    virtual int32_t ItemHit(int16_t item, int16_t part, uint32_t modifiers);
    virtual StatusCode InitDialog();
    virtual void CacheControlRefs();
    virtual void SetUpViewLayouts();
    // The keys of the dismiss buttons in a classic key event; item is set to the button hit.
    virtual bool DefaultKeydown(EventRecord& event, int16_t& item);
    virtual bool DefaultKeydown(uint16_t character, int16_t& item);
    virtual void ReEnableMenuBar();
    virtual void DisableMenuBar();
    // A menu choice while the dialog is up: the menu in the high half, the item in the low half.
    // True if the dialog's Edit menu handling took it.
    virtual bool HandleMenuChoice(int32_t choice);
    virtual bool DoMenuChoice(int16_t menu, int16_t item);

    // Reads the window name from the layout file "Dialogs" of the library's bundle and binds a
    // dialog to it. On failure dialogRef stays null.
    void AllocateDialogFromLayout(BCStringRef name);
    void SetDialogRef(DialogRef dialog);
    Point GetLocation() const;
    void GetBounds(TRect& bounds) const;
    Rect GetControlContentRelativeRect(ControlRef control) const;
    void SetControlContentRelativeRect(ControlRef control, const Rect& rect) const;
    ControlRef GetItemControl(int16_t item) const;
    ControlRef GetControlFromLayout(int16_t id) const;
    ControlRef GetDefaultControl() const;

    DialogRef GetDialogRef() const { return dialogRef; }
    WindowRef GetWindow() const { return windowRef; }

protected:
    DialogRef dialogRef = nullptr;
    WindowRef windowRef = nullptr;
    ControlRef rootControl = nullptr;
    ControlRef defaultControl = nullptr;
    ControlRef cancelControl = nullptr;
    TEditMenu editMenu;
    uint32_t menuBarDisableCount = 0;
    uint32_t modalState = 0;
};
