#include "kel/interface/KelGenericAskDialog.h"

#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TMutableStringRef.h"
#include "kel/interface/KelCommandKeys.h"

namespace {

constexpr PropertyCreator kKelPropertyCreator = 0x6B656C73; // "kels"
constexpr PropertyTag kAskDialogTag = 0x61736B64;           // "askd"
constexpr int32_t kCancelCommandKey = 1;
constexpr uint16_t kReturnKeyCode = 0x24;
constexpr uint16_t kEnterKeyCode = 0x4C;
constexpr uint16_t kEscapeKeyCode = 0x35;
constexpr DialogItemIndex kOtherItem = 3;

void Press(DialogRef dialog, DialogItemIndex item) {
    ControlRef button = nullptr;
    if (GetDialogItemAsControl(dialog, item, &button) == noErr && button != nullptr) {
        BTViewSimulateClick(button, kControlButtonPart, 0, nullptr);
    }
}

} // namespace

KelGenericAskDialog::~KelGenericAskDialog() {
    // The alert goes first: a sheet it still shows closes with it, and dialogRef names it.
    alert.reset();
    SetDialogRef(nullptr);
}

bool KelGenericAskDialog::DoKeyEvent(uint8_t, uint32_t, uint32_t&) {
    return false;
}

StatusCode KelGenericAskDialog::CreateAlert(const AlertTexts& texts) {
    alert = std::make_unique<CStandardAlert>(
        kAlertCautionAlert, texts.banner.AsBCStringRef(), texts.explanation.AsBCStringRef(),
        nullptr, kAlertStdAlertCancelButton, false, texts.defaultText.AsBCStringRef(),
        texts.otherText.AsBCStringRef(), kAlertStdAlertOKButton, texts.position,
        parentWindow != nullptr ? nullptr : dialogFilter, false, true, parentWindow);
    if (modality == kKelModalitySheet) {
        alert->SetupEventHandler(myEventHandler, this);
    }
    return CreateDialogShared();
}

StatusCode KelGenericAskDialog::CreateDialogShared() {
    SetDialogRef(alert->GetDialog());
    client.record.window = windowRef;
    if (windowRef == nullptr) {
        return paramErr;
    }
    if (location.h != -1 && location.v != -1 && !alert->IsSheet()) {
        MoveWindow(windowRef, location.h, location.v, true);
    }
    if (alert->IsSheet()) {
        const EventTypeSpec key{kEventClassKeyboard, kEventRawKeyDown};
        if (StatusCode status = InstallEventHandler(GetWindowEventTarget(windowRef), myEventHandler,
                                                    1, &key, this, &keyHandler);
            status != noErr) {
            return status;
        }
    }
    KelGenericAskDialog* self = this;
    return SetWindowProperty(windowRef, kKelPropertyCreator, kAskDialogTag, sizeof self, &self);
}

StatusCode KelGenericAskDialog::StartDialog() {
    if (alert == nullptr) {
        return paramErr;
    }
    int16_t hit = 0;
    const StatusCode status = alert->Run(&hit);
    if (!alert->IsSheet()) {
        // A modal alert's window is gone once it has run.
        SetDialogRef(nullptr);
        client.record.window = nullptr;
        if (!running) {
            alert.reset(); // ended from a callback while it ran
        }
    }
    if ((modality == kKelModalityAppModal || modality == kKelModalityModal) && running) {
        TerminateWithAlertResult(hit);
    }
    return status;
}

void KelGenericAskDialog::TerminateDialog() {
    if (alert != nullptr && userAction == kKelUserActionNone) {
        alert->Terminate();
    }
    // A modal alert still in its loop ends by the filter and is dropped when its run returns.
    const bool inModalRun = alert != nullptr && !alert->IsSheet() && alert->GetDialog() != nullptr;
    if (!inModalRun) {
        alert.reset();
        // The window went with the alert; the client's last callbacks must not name it.
        client.record.window = nullptr;
    }
    // The key handler went with the sheet's window.
    keyHandler = nullptr;
    SetDialogRef(nullptr);
}

TStringRef KelGenericAskDialog::Localized(const char* key) {
    TStringRef text = KelBundle::GetStringResource(TStringRef::Create(key, kBCStringEncodingUTF8));
    // The bundle hands its texts out with a count for process-wide keeping; this one is not.
    BCRelease(text.AsBCStringRef());
    return text;
}

TStringRef KelGenericAskDialog::WithParam(const TStringRef& text, int32_t index,
                                          const TStringRef& value) {
    TMutableStringRef replaced = text.CopyMutable(0);
    replaced.ReplaceParam(index, value);
    return replaced;
}

StatusCode KelGenericAskDialog::TerminateWithHit(int16_t hit, uint32_t defaultAction,
                                                 uint32_t otherAction) {
    uint32_t action = kKelUserActionNone;
    switch (hit) {
    case kAlertStdAlertOKButton:
        action = defaultAction;
        break;
    case kAlertStdAlertCancelButton:
        action = kKelUserActionCancel;
        break;
    case kAlertStdAlertOtherButton:
        action = otherAction;
        break;
    default:
        break;
    }
    return TerminateWithUserAction(action);
}

KelGenericAskDialog* KelGenericAskDialog::FromWindow(WindowRef window) {
    KelGenericAskDialog* self = nullptr;
    if (window == nullptr || GetWindowProperty(window, kKelPropertyCreator, kAskDialogTag,
                                               sizeof self, nullptr, &self) != noErr) {
        return nullptr;
    }
    return self;
}

Boolean KelGenericAskDialog::dialogFilter(DialogRef dialog, EventRecord* event,
                                          DialogItemIndex* itemHit) {
    KelGenericAskDialog* self = FromWindow(GetDialogWindow(dialog));
    if (self == nullptr) {
        return false;
    }
    bool result = false;
    if (self->alert != nullptr && self->alert->IsTerminated()) {
        *itemHit = kAlertStdAlertCancelButton;
        result = true;
    } else if (event->what == keyDown) {
        result = self->FilterKey(dialog, *event, itemHit);
    }
    // The client sees every event, even one the filter has just taken.
    self->client.record.eventData = event;
    self->client.Event(kKelCBEvent);
    return result;
}

bool KelGenericAskDialog::FilterKey(DialogRef dialog, const EventRecord& event,
                                    DialogItemIndex* itemHit) {
    const auto character = static_cast<uint8_t>(event.message & charCodeMask);
    uint32_t hit = 0;
    if (DoKeyEvent(character, event.modifiers, hit)) {
        if (hit != kOtherItem) {
            return false;
        }
        Press(dialog, kOtherItem);
        *itemHit = kOtherItem;
        return true;
    }
    DialogItemIndex item = 0;
    if ((event.modifiers & cmdKey) == 0) {
        const auto keyCode = static_cast<uint16_t>((event.message & keyCodeMask) >> 8);
        if (keyCode == kReturnKeyCode || keyCode == kEnterKeyCode) {
            item = kAlertStdAlertOKButton;
        } else if (keyCode == kEscapeKeyCode) {
            item = kAlertStdAlertCancelButton;
        }
    } else if (GetCommandCharCode(static_cast<uint32_t>(event.message)) ==
               CommandKeyAt(kCancelCommandKey)) {
        item = kAlertStdAlertCancelButton;
    }
    if (item == 0) {
        return false;
    }
    Press(dialog, item);
    *itemHit = item;
    return true;
}

StatusCode KelGenericAskDialog::myEventHandler(EventHandlerCallRef, EventRef event, void* data) {
    auto* self = static_cast<KelGenericAskDialog*>(data);
    StRetainDialog hold(self);
    if (GetEventClass(event) == kEventClassKeyboard) {
        return self->HandleSheetKey(event);
    }
    return self->HandleSheetCommand(event);
}

StatusCode KelGenericAskDialog::HandleSheetKey(EventRef event) {
    if (GetEventKind(event) != kEventRawKeyDown) {
        return eventNotHandledErr;
    }
    uint32_t modifiers = 0;
    GetEventParameter(event, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers,
                      nullptr, &modifiers);
    uint8_t character = 0;
    if (GetEventParameter(event, kEventParamKeyMacCharCodes, typeChar, nullptr, sizeof character,
                          nullptr, &character) != noErr) {
        return eventNotHandledErr;
    }
    uint32_t hit = 0;
    if (!DoKeyEvent(character, modifiers, hit) || hit != kOtherItem || dialogRef == nullptr) {
        return eventNotHandledErr;
    }
    Press(dialogRef, kOtherItem);
    return noErr;
}

StatusCode KelGenericAskDialog::HandleSheetCommand(EventRef event) {
    BTCommand command{};
    if (GetEventParameter(event, kEventParamDirectObject, typeBTCommand, nullptr, sizeof command,
                          nullptr, &command) != noErr) {
        return eventNotHandledErr;
    }
    switch (command.commandID) {
    case kBTCommandOK:
        TerminateWithAlertResult(kAlertStdAlertOKButton);
        return noErr;
    case kBTCommandCancel:
        TerminateWithAlertResult(kAlertStdAlertCancelButton);
        return noErr;
    case kBTCommandOther:
        TerminateWithAlertResult(kAlertStdAlertOtherButton);
        return noErr;
    default:
        return eventNotHandledErr;
    }
}
