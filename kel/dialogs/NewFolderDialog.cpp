#include "kel/dialogs/NewFolderDialog.h"

#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TUniString.h"
#include "kel/interface/CStandardAlert.h"

namespace {

constexpr int16_t kCancelItem = 1;
constexpr int16_t kCreateItem = 2;
constexpr int16_t kNameField = 4;
constexpr uint32_t kMaxNameLength = 255;
constexpr AlertType kErrorAlert = 0;
constexpr AlertType kNoteAlert = 1;
constexpr AlertType kCautionAlert = 2;
constexpr int16_t kUseDotItem = 1;

// Shows a one-button alert over the modal window; only its dismissal matters.
void Alert(AlertType kind, const TStringRef& text) {
    CStandardAlert alert(kind, text.AsBCStringRef(), nullptr, nullptr, 0, false, nullptr, nullptr,
                         1, 0, nullptr, false, true, nullptr);
    int16_t ignored = 0;
    alert.Run(&ignored);
}

TStringRef WithParameter(const char* key, const TStringRef& value) {
    TMutableStringRef text =
        KelBundle::GetStringResource(TStringRef::Create(key, kBCStringEncodingUTF8)).CopyMutable(0);
    text.ReplaceParam(0, value);
    return text;
}

} // namespace

NewFolderDialog::NewFolderDialog(TKelClient& client) : client(&client) {
    DisableMenuBar();
}

NewFolderDialog::~NewFolderDialog() {
    nameField.reset();
    ReEnableMenuBar();
    if (eventHandler != nullptr) {
        RemoveEventHandler(eventHandler);
    }
}

bool NewFolderDialog::StartCreateNewFolder(const TKelNode& into, TStringRef& nameOut) {
    if (windowRef == nullptr) {
        return false;
    }
    target = into;
    GrafPtr savedPort = nullptr;
    GetPort(&savedPort);
    SetPortWindowPort(windowRef);
    InitDialog();
    ShowWindow(windowRef);
    SetupEventHandler();
    RunAppModalLoopForWindow(windowRef);
    HideWindow(windowRef);
    SetPort(savedPort);
    nameOut = folderName.Copy();
    return result == kAccepted;
}

StatusCode NewFolderDialog::InitDialog() {
    KelBaseDialog::InitDialog();
    // In this window the buttons go by the items the commands hit: Create is 2, Cancel 1.
    defaultControl = GetControlFromLayout(kCreateItem);
    cancelControl = GetControlFromLayout(kCancelItem);
    nameField = std::make_unique<TTextEdit>(this, this, true, GetControlFromLayout(kNameField));
    nameField->SetMaxTextLength(kMaxNameLength);
    nameField->SetMaxTextLengthIsUnicode(true);
    nameField->SetFocus(kControlEditTextPart);
    // No number is tried against the folder's names: a clash shows up when the user accepts.
    nameField->SetTextContent(KelBundle::GetStringResource(TStringRef(BCSTR("Untitled Folder"))));
    ControlEditTextSelectionRec all{0, 0x7FFF};
    nameField->SelectTextContent(all);
    AutoPositionWindow(windowRef, kWindowCenterOnParentWindow, true, true);
    return noErr;
}

void NewFolderDialog::SetupEventHandler() {
    ChangeWindowAttributes(windowRef, kWindowStandardHandlerAttribute, 0);
    const EventTypeSpec command{kEventClassCommand, kEventCommandProcess};
    InstallEventHandler(GetWindowEventTarget(windowRef), HandleCommand, 1, &command, this,
                        &eventHandler);
}

StatusCode NewFolderDialog::HandleCommand(EventHandlerCallRef, EventRef event, void* data) {
    auto* self = static_cast<NewFolderDialog*>(data);
    BTCommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeBTCommand, nullptr, sizeof command,
                      nullptr, &command);
    StatusCode status = noErr;
    if (command.commandID == kBTCommandOK) {
        self->ItemHit(kCreateItem, 0, 0);
    } else if (command.commandID == kBTCommandCancel) {
        self->ItemHit(kCancelItem, 0, 0);
    } else {
        EventRecord record{};
        if (ConvertEventRefToEventRecord(event, &record)) {
            self->client->record.eventData = &record;
            self->client->Event(kKelCBEvent);
            self->client->record.eventData = nullptr;
        }
        status = eventNotHandledErr;
    }
    if (self->result != kRunning) {
        QuitAppModalLoopForWindow(self->windowRef);
    }
    return status;
}

int32_t NewFolderDialog::ItemHit(int16_t item, int16_t, uint32_t) {
    if (item == kCancelItem) {
        result = kCancelled;
        return true;
    }
    return item == kCreateItem && AcceptName();
}

bool NewFolderDialog::AcceptName() {
    const TStringRef text = nameField->GetTextContent();
    nameField->ValidateAndUpdateWithNotification(false);
    if (nameField->GetTextContent().Length() == 0) {
        return false;
    }
    folderName = text;
    if (!target.GetChild(TUniString(text.AsBCStringRef())).IsEmpty()) {
        Alert(kNoteAlert, WithParameter("Name Already Taken", text));
        return false;
    }
    if (text.CharacterAtIndex(0) == u'.') {
        // Either way the window answers through result; the call itself keeps the window up.
        result = ConfirmDotName() ? kAccepted : kRunning;
        return false;
    }
    result = kAccepted;
    return true;
}

bool NewFolderDialog::ConfirmDotName() const {
    const TStringRef useDot = KelBundle::GetStringResource(TStringRef(BCSTR("Use Dot Button")));
    CStandardAlert alert(
        kCautionAlert,
        KelBundle::GetStringResource(TStringRef(BCSTR("Cant use period"))).AsBCStringRef(), nullptr,
        nullptr, kCreateItem, false, useDot.AsBCStringRef(), nullptr, kCreateItem, 0, nullptr,
        false, true, nullptr);
    int16_t hit = 0;
    alert.Run(&hit);
    return hit == kUseDotItem;
}

void NewFolderDialog::TextChanged(const TStringRef& text) {
    if (defaultControl != nullptr) {
        // An inactive default button is what hilite 255 means.
        if (text.Length() > 0) {
            ActivateControl(defaultControl);
        } else {
            DeactivateControl(defaultControl);
        }
    }
}

void NewFolderDialog::KeyError(TStringRef message) {
    if (message.Length() > 0) {
        Alert(kErrorAlert, message);
    }
}
