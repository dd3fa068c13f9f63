#pragma once

// The base of the three alerts that ask about unsaved work. The alert is a CStandardAlert that
// exists only while the dialog runs. Modal: the alert runs inside StartDialog, dialogFilter
// serves its keys and forwards every event to the client, and the hit becomes the user
// action. Sheet: StartDialog returns at once; the sheet's buttons reach myEventHandler as
// commands on the parent window, its keys through keyHandler on the sheet window.

#include "kel/interface/CStandardAlert.h"
#include "kel/interface/__KelDialog.h"

#include <memory>

class KelGenericAskDialog : public __KelDialog {
public:
    using __KelDialog::__KelDialog;
    ~KelGenericAskDialog() override;

    StatusCode StartDialog() override;
    void TerminateDialog() override;
    // Ends the dialog with the user action of the alert's button hit.
    virtual StatusCode TerminateWithAlertResult(int16_t hit) = 0;
    // A key of the dialog's own; true with hit set to the item it presses.
    virtual bool DoKeyEvent(uint8_t character, uint32_t modifiers, uint32_t& hit);

protected:
    struct AlertTexts {
        TStringRef banner;
        TStringRef explanation;
        TStringRef defaultText;
        TStringRef otherText;
        uint16_t position;
    };

    // Makes the alert from the texts a subclass chose, then the shared set-up; its status
    // is ignored by the callers, so that a failed key handler does not stop the run.
    StatusCode CreateAlert(const AlertTexts& texts);
    // The localised text of key, for the length of this dialog.
    static TStringRef Localized(const char* key);
    // text with the parameter mark ^index replaced; a text without the mark stays as it is.
    static TStringRef WithParam(const TStringRef& text, int32_t index, const TStringRef& value);
    // Buttons are numbered from 1: default, cancel, other.
    StatusCode TerminateWithHit(int16_t hit, uint32_t defaultAction, uint32_t otherAction);

private:
    StatusCode CreateDialogShared();
    static Boolean dialogFilter(DialogRef dialog, EventRecord* event, DialogItemIndex* itemHit);
    static StatusCode myEventHandler(EventHandlerCallRef callRef, EventRef event, void* data);
    static KelGenericAskDialog* FromWindow(WindowRef window);
    bool FilterKey(DialogRef dialog, const EventRecord& event, DialogItemIndex* itemHit);
    StatusCode HandleSheetKey(EventRef event);
    StatusCode HandleSheetCommand(EventRef event);

    std::unique_ptr<CStandardAlert> alert;
    EventHandlerRef keyHandler = nullptr;
};
