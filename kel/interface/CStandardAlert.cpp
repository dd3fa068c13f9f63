#include "kel/interface/CStandardAlert.h"

#include "kel/interface/KelCommandKeys.h"

namespace {

constexpr int32_t kCancelCommandKey = 1;
constexpr uint16_t kReturnKeyCode = 0x24;
constexpr uint16_t kOldEnterKeyCode = 0x34;
constexpr uint16_t kEnterKeyCode = 0x4C;
constexpr uint16_t kEscapeKeyCode = 0x35;
constexpr OptionBits kAlertFlags = 8;

// Presses an alert button the way a click would and answers its item.
Boolean Press(DialogRef dialog, DialogItemIndex item, DialogItemIndex* itemHit) {
    ControlRef button = nullptr;
    if (GetDialogItemAsControl(dialog, item, &button) == noErr && button != nullptr) {
        BTViewSimulateClick(button, kControlButtonPart, 0, nullptr);
    }
    *itemHit = item;
    return true;
}

// The item of the alert's default button. An alert that could destroy something makes Cancel
// its default, so return must not simply mean item 1.
DialogItemIndex DefaultItem(DialogRef dialog) {
    ControlRef defaultButton = nullptr;
    GetWindowDefaultButton(GetDialogWindow(dialog), &defaultButton);
    for (DialogItemIndex item = 1; defaultButton != nullptr && item <= CountDITL(dialog); ++item) {
        ControlRef button = nullptr;
        if (GetDialogItemAsControl(dialog, item, &button) == noErr && button == defaultButton) {
            return item;
        }
    }
    return kAlertStdAlertOKButton;
}

} // namespace

CStandardAlert::CStandardAlert(AlertType alertType, BCStringRef error, BCStringRef explanation,
                               BCStringRef cancelText, int16_t cancelButton, bool runNow,
                               BCStringRef defaultText, BCStringRef otherText,
                               int16_t defaultButton, uint16_t position, ModalFilterUPP filter,
                               bool helpButton, bool movable, WindowRef parentWindow,
                               OptionBits moreFlags)
    : parentWindow(parentWindow),
      filter(filter != nullptr || parentWindow != nullptr ? filter : builtInFilter) {
    Initialize(alertType, error, explanation, cancelText, cancelButton, defaultText, otherText,
               defaultButton, position, helpButton, movable, moreFlags);
    if (dialog != nullptr && runNow) {
        int16_t ignored = 0;
        Run(&ignored);
    }
}

CStandardAlert::~CStandardAlert() {
    // An answered sheet has closed itself; only one the program ended is still up.
    if (IsSheet() && dialog != nullptr && terminated) {
        CloseStandardSheet(dialog, 0);
    }
    if (handlerRef != nullptr) {
        RemoveEventHandler(handlerRef);
    }
}

void CStandardAlert::Initialize(AlertType alertType, BCStringRef error, BCStringRef explanation,
                                BCStringRef cancelText, int16_t cancelButton,
                                BCStringRef defaultText, BCStringRef otherText,
                                int16_t defaultButton, uint16_t position, bool helpButton,
                                bool movable, OptionBits moreFlags) {
    AlertStdBCStringAlertParamRec param;
    GetStandardAlertDefaultParams(&param, kStdAlertVersionOne);
    param.movable = movable;
    param.helpButton = helpButton;
    param.flags = kAlertFlags | moreFlags;
    if (defaultText != nullptr) {
        param.defaultText = defaultText;
    }
    if (cancelText != nullptr) {
        param.cancelText = cancelText;
    } else if (cancelButton != 0) {
        param.cancelText = kAlertDefaultCancelText;
    }
    if (otherText != nullptr) {
        param.otherText = otherText;
    }
    param.defaultButton = defaultButton;
    param.cancelButton = cancelButton != defaultButton ? cancelButton : 0;
    param.position = position;
    if (parentWindow != nullptr) {
        parentTarget = GetWindowEventTarget(parentWindow);
        if (CreateStandardSheet(alertType, error, explanation, &param, parentTarget, &dialog) !=
            noErr) {
            dialog = nullptr;
        }
    } else if (CreateStandardAlert(alertType, error, explanation, &param, &dialog) != noErr) {
        dialog = nullptr;
    }
}

StatusCode CStandardAlert::Run(int16_t* itemHit) {
    *itemHit = 0;
    if (dialog == nullptr) {
        return paramErr;
    }
    InitCursor();
    if (IsSheet()) {
        if (eventHandlerProc != nullptr && handlerRef == nullptr) {
            const EventTypeSpec command{kEventClassCommand, kEventCommandProcess};
            InstallEventHandler(parentTarget, eventHandlerProc, 1, &command, eventHandlerData,
                                &handlerRef);
        }
        return ShowSheetWindow(GetDialogWindow(dialog), parentWindow);
    }
    DialogItemIndex hit = 0;
    const StatusCode status = RunStandardAlert(dialog, filter, &hit);
    // The toolbox has disposed of the alert's window by now.
    dialog = nullptr;
    *itemHit = hit;
    return status;
}

void CStandardAlert::SetupEventHandler(EventHandlerUPP proc, void* data) {
    eventHandlerProc = proc;
    eventHandlerData = data;
}

Boolean CStandardAlert::builtInFilter(DialogRef dialog, EventRecord* event,
                                      DialogItemIndex* itemHit) {
    if (event->what != keyDown) {
        return false;
    }
    if ((event->modifiers & cmdKey) != 0) {
        if (GetCommandCharCode(static_cast<uint32_t>(event->message)) ==
            CommandKeyAt(kCancelCommandKey)) {
            return Press(dialog, kAlertStdAlertCancelButton, itemHit);
        }
        return false;
    }
    const auto keyCode = static_cast<uint16_t>((event->message & keyCodeMask) >> 8);
    if (keyCode == kReturnKeyCode || keyCode == kOldEnterKeyCode || keyCode == kEnterKeyCode) {
        return Press(dialog, DefaultItem(dialog), itemHit);
    }
    if (keyCode == kEscapeKeyCode) {
        return Press(dialog, kAlertStdAlertCancelButton, itemHit);
    }
    return false;
}
