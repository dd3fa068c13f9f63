#include "kel/widgets/TGoToWindow.h"

#include "kel/foundation/KelBundle.h"
#include "kel/foundation/TStringRef.h"
#include "kel/foundation/TUniString.h"
#include "kel/nodes/NameCompletion.h"
#include "kel/nodes/TNodePathHelper.h"

namespace {

constexpr OSType kGoToSignature = 0x6B6C6774; // "klgt"
constexpr int32_t kEditFieldID = 1;
constexpr int32_t kMessageTextID = 2;
constexpr int32_t kOKButtonID = 3;
constexpr EventTimerInterval kAutoCompleteDelay = 1.0;
constexpr uint32_t kUserAlertSound = 4096;
// The field's positions are signed 16-bit: this one stands for "the end, however long".
constexpr int16_t kEndOfText = 0x7FFF;
constexpr UniChar kTab = 9;
constexpr UniChar kSlash = '/';

const EventTypeSpec kGoToWindowEvents[] = {{kEventClassCommand, kEventCommandProcess},
                                           {kEventClassKeyboard, kEventRawKeyDown}};
const EventTypeSpec kGoToEditFieldEvents[] = {
    {kEventClassTextInput, kEventTextInputUnicodeForKeyEvent}};

ControlRef FindControl(WindowRef window, int32_t id) {
    const ControlID controlID{kGoToSignature, id};
    ControlRef control = nullptr;
    return GetControlByID(window, &controlID, &control) == noErr ? control : nullptr;
}

TStringRef FieldText(ControlRef field) {
    BCStringRef text = nullptr;
    GetControlData(field, kControlNoPart, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return text != nullptr ? TStringRef(text, false) : TStringRef(BCSTR(""));
}

void SetFieldText(ControlRef field, BCStringRef text) {
    SetControlData(field, kControlNoPart, kControlEditTextCFStringTag, sizeof text, &text);
}

ControlEditTextSelectionRec FieldSelection(ControlRef field) {
    ControlEditTextSelectionRec selection{0, 0};
    GetControlData(field, kControlNoPart, kControlEditTextSelectionTag, sizeof selection,
                   &selection, nullptr);
    return selection;
}

void SelectInField(ControlRef field, int16_t start, int16_t end) {
    const ControlEditTextSelectionRec selection{start, end};
    SetControlData(field, kControlNoPart, kControlEditTextSelectionTag, sizeof selection,
                   &selection);
}

TStringRef Trimmed(const TStringRef& text) {
    BCMutableStringRef copy = BCStringCreateMutableCopy(nullptr, 0, text.AsBCStringRef());
    BCStringTrimWhitespace(copy);
    return TStringRef(copy, false);
}

} // namespace

TGoToWindow::~TGoToWindow() {
    if (autoCompleteTimer != nullptr) {
        RemoveEventLoopTimer(autoCompleteTimer);
    }
    if (window != nullptr) {
        DisposeWindow(window);
    }
}

bool TGoToWindow::Run(TKelNodeArray& path, char firstCharacter) {
    nodePath = &path;
    result = false;
    if (window == nullptr && !AllocateGoToWindow()) {
        return false;
    }
    ControlRef focus = nullptr;
    if (GetKeyboardFocus(window, &focus) != noErr || focus != editField) {
        SetKeyboardFocus(window, editField, kControlEditTextPart);
    }
    if (firstCharacter != 0) {
        const UniChar character = UniChar(static_cast<unsigned char>(firstCharacter));
        SetFieldText(editField,
                     TStringRef(BCStringCreateWithCharacters(nullptr, &character, 1), false)
                         .AsBCStringRef());
        SelectInField(editField, 1, 1);
    } else {
        SetFieldText(editField, BCSTR(""));
        DisableControl(okButton);
    }
    HideControl(messageText);
    ShowWindow(window);
    RunAppModalLoopForWindow(window);
    HideWindow(window);
    SetEventLoopTimerNextFireTime(autoCompleteTimer, kEventDurationForever);
    nodePath = nullptr;
    return result;
}

bool TGoToWindow::AllocateGoToWindow() {
    LayoutRef layout = nullptr;
    if (CreateLayoutReferenceWithBCBundle(KelBundle::KelGetBundle(), BCSTR("Dialogs"), &layout) !=
        noErr) {
        return false;
    }
    const StatusCode status = CreateWindowFromLayout(layout, BCSTR("Go To"), &window);
    DisposeLayoutReference(layout);
    if (status != noErr || window == nullptr) {
        window = nullptr;
        return false;
    }
    ChangeWindowAttributes(window, kWindowStandardHandlerAttribute, 0);
    // Over the window the user was working in, which is the one in front until this one shows.
    AutoPositionWindow(window, kWindowCenterOnParentWindow, true, false);
    editField = FindControl(window, kEditFieldID);
    messageText = FindControl(window, kMessageTextID);
    okButton = FindControl(window, kOKButtonID);
    const bool made =
        InstallEventHandler(GetWindowEventTarget(window), WindowEventHandlerProc,
                            std::size(kGoToWindowEvents), kGoToWindowEvents, this,
                            nullptr) == noErr &&
        editField != nullptr && messageText != nullptr && okButton != nullptr &&
        InstallEventHandler(GetControlEventTarget(editField), EditFieldEventHandlerProc,
                            std::size(kGoToEditFieldEvents), kGoToEditFieldEvents, this,
                            nullptr) == noErr &&
        // Parked until a key arms it; an interval of 0 parks it again once it has fired.
        InstallEventLoopTimer(GetMainEventLoop(), kEventDurationForever, 0, AutoCompleteTimerProc,
                              this, &autoCompleteTimer) == noErr;
    if (!made) {
        // The handlers go with the window and the field.
        DisposeWindow(window);
        window = nullptr;
        editField = messageText = okButton = nullptr;
        autoCompleteTimer = nullptr;
    }
    return made;
}

StatusCode TGoToWindow::WindowEventHandlerProc(EventHandlerCallRef, EventRef event, void* data) {
    auto* self = static_cast<TGoToWindow*>(data);
    if (GetEventClass(event) == kEventClassKeyboard) {
        return self->HandleTabKey(event);
    }
    BTCommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeBTCommand, nullptr, sizeof command,
                      nullptr, &command);
    switch (command.commandID) {
    case kBTCommandCancel:
        self->result = false;
        QuitAppModalLoopForWindow(self->window);
        return noErr;
    case kBTCommandOK:
        self->AcceptTypedPath();
        return noErr;
    default:
        return eventNotHandledErr;
    }
}

// The window moves the focus on tab before the field could see the key, so the field's tab is
// taken here; one that completes nothing goes on and moves the focus.
StatusCode TGoToWindow::HandleTabKey(EventRef event) {
    uint32_t code = 0;
    uint32_t modifiers = 0;
    GetEventParameter(event, kEventParamKeyCode, typeUInt32, nullptr, sizeof code, nullptr, &code);
    GetEventParameter(event, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers,
                      nullptr, &modifiers);
    ControlRef focus = nullptr;
    if (code != kVK_Tab || (modifiers & (cmdKey | shiftKey)) != 0 ||
        GetKeyboardFocus(window, &focus) != noErr || focus != editField) {
        return eventNotHandledErr;
    }
    const bool eaten = TakeKey(kTab);
    KeyDone(kTab);
    return eaten ? noErr : eventNotHandledErr;
}

void TGoToWindow::AcceptTypedPath() {
    const TStringRef text = Trimmed(FieldText(editField));
    TNodePathHelper helper(text.AsBCStringRef());
    // Blank text makes the empty path, which leads nowhere the browser can go.
    if (text.Length() == 0 || !helper.IsComplete()) {
        AudioServicesPlayAlertSound(kUserAlertSound);
        ShowControl(messageText);
        SelectInField(editField, 0, kEndOfText);
        return;
    }
    if (BCEqual(text.AsBCStringRef(), BCSTR("/"))) {
        // The root itself, not the boot volume that a longer text would go through.
        nodePath->push_back(TKelNode(TKelNode::GetRootNodeRef(), true));
    } else {
        *nodePath = helper.NodePath();
    }
    result = true;
    QuitAppModalLoopForWindow(window);
}

StatusCode TGoToWindow::EditFieldEventHandlerProc(EventHandlerCallRef call, EventRef event,
                                                  void* data) {
    auto* self = static_cast<TGoToWindow*>(data);
    UniChar typed = 0;
    size_t size = 0;
    GetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, nullptr, sizeof typed,
                      &size, &typed);
    // Only a key of one unit can be tab or slash; anything longer is an ordinary key.
    const UniChar key = size == sizeof typed ? typed : 0;
    const StatusCode status = self->TakeKey(key) ? noErr : CallNextEventHandler(call, event);
    self->KeyDone(key);
    return status;
}

bool TGoToWindow::TakeKey(UniChar key) {
    HideControl(messageText);
    if (key == kTab) {
        AttemptAutoComplete();
    }
    return (key == kTab || key == kSlash) && ConfirmLastAutoComplete();
}

void TGoToWindow::KeyDone(UniChar key) {
    if (FieldText(editField).Length() > 0) {
        EnableControl(okButton);
    } else {
        DisableControl(okButton);
    }
    // Every other key restarts the wait, so completion comes after a pause in typing.
    SetEventLoopTimerNextFireTime(autoCompleteTimer, key == kTab || key == kSlash
                                                         ? kEventDurationForever
                                                         : kAutoCompleteDelay);
}

void TGoToWindow::AutoCompleteTimerProc(EventLoopTimerRef, void* data) {
    static_cast<TGoToWindow*>(data)->AttemptAutoComplete();
}

void TGoToWindow::AttemptAutoComplete() {
    TUniString text(FieldText(editField).AsBCStringRef());
    TUniString completion;
    bool exactCase = true;
    if (!CompleteString(TKelNode(), text, completion, exactCase)) {
        return;
    }
    const ControlEditTextSelectionRec selection = FieldSelection(editField);
    // The text may have taken on the folder's case too.
    text.Append(completion);
    SetFieldText(editField, text.AsBCString().AsBCStringRef());
    SelectInField(editField, selection.selStart, kEndOfText);
}

bool TGoToWindow::ConfirmLastAutoComplete() {
    const ControlEditTextSelectionRec selection = FieldSelection(editField);
    const int32_t start = selection.selStart;
    const int32_t end = selection.selEnd;
    const TStringRef text = FieldText(editField);
    if (start == end || (start == 0 && end >= text.Length() - 1)) {
        return false;
    }
    int32_t newStart = end;
    for (int32_t k = start + 1; k <= end - 1 && k < text.Length(); ++k) {
        if (text.CharacterAtIndex(k) == kSlash) {
            newStart = k + 1;
            break;
        }
    }
    SelectInField(editField, int16_t(newStart), int16_t(end));
    return true;
}
