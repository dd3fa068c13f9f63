#include "kel/dialogs/TTextEdit.h"

#include "kel/interface/KelBaseDialog.h"
#include "kel/interface/KelStartup.h"

namespace {

constexpr uint32_t kAlertBeep = 4096;
constexpr UniChar kColon = 58;
constexpr int16_t kReturnKey = 36;
constexpr int16_t kEnterKey = 76;
// Key codes of tab, the arrows, return, enter and the two deletes: they never count as text.
constexpr int16_t kMovementAndDeletionKeys[] = {117, 123, 124, 125, 126, 48, 51, 76, 36};
// Characters of keys that only move the insertion point, so the text cannot have changed.
constexpr UniChar kControlKeys[] = {1, 4, 11, 12, 28, 29, 30, 31};

void Beep() {
    AudioServicesPlayAlertSound(kAlertBeep);
}

bool IsTextKey(int16_t keyCode, int16_t character) {
    for (const int16_t key : kMovementAndDeletionKeys) {
        if (key == keyCode) {
            return false;
        }
    }
    return character >= 0x20 && character != 0x7F;
}

bool IsControlKey(UniChar character) {
    for (const UniChar key : kControlKeys) {
        if (key == character) {
            return true;
        }
    }
    return false;
}

// The bytes the text takes in UTF-8; asking without a buffer measures it whole, whatever the
// characters' widths.
int32_t ByteLength(BCStringRef text) {
    BCIndex used = 0;
    BCStringGetBytes(text, BCRangeMake(0, BCStringGetLength(text)), kBCStringEncodingUTF8, '?',
                     false, nullptr, 0, &used);
    return static_cast<int32_t>(used);
}

bool IsHighSurrogate(UniChar unit) {
    return (unit & 0xFC00) == 0xD800;
}

// Where to cut the text to keep at most `length` units without splitting a surrogate pair.
int32_t WholeCharacterCut(const TStringRef& text, int32_t length) {
    return length > 0 && length < text.Length() &&
                   IsHighSurrogate(text.CharacterAtIndex(length - 1))
               ? length - 1
               : length;
}

void ReplaceAll(TMutableStringRef& text, BCStringRef from, BCStringRef to) {
    BCStringFindAndReplace(text.AsBCMutableStringRef(), from, to,
                           BCRangeMake(0, BCStringGetLength(text.AsBCStringRef())), 0);
}

ControlRef FocusControl(DialogRef dialog) {
    ControlRef focus = nullptr;
    if (dialog == nullptr || GetKeyboardFocus(GetDialogWindow(dialog), &focus) != noErr) {
        return nullptr;
    }
    return focus;
}

} // namespace

TTextEdit::TTextEdit(KelBaseDialog* dialog, ITextEditObserver* observer, unsigned char validates,
                     ControlRef control)
    : control(control), dialog(dialog), validates(validates != 0), observer(observer) {
    if (control == nullptr) {
        return;
    }
    SetupControlEventHandler();
    if (!validates) {
        return;
    }
    SetControlReference(control, reinterpret_cast<long>(this));
    ControlKeyFilterUPP filter = EditFieldFilter;
    ControlEditTextInlinePreUpdateUPP inlineInput = InlineInputProc;
    ControlEditTextValidationUPP validation = ValidationProc;
    const Boolean singleLine = true;
    SetControlData(control, 0, kControlEditTextKeyFilterTag, sizeof filter, &filter);
    SetControlData(control, 0, kControlEditTextInlineInputTag, sizeof inlineInput, &inlineInput);
    SetControlData(control, 0, kControlEditTextValidationProcTag, sizeof validation, &validation);
    SetControlData(control, 0, kControlEditTextSingleLineTag, sizeof singleLine, &singleLine);
}

TTextEdit::~TTextEdit() {
    if (destroyed != nullptr) {
        *destroyed = true;
    }
    if (eventHandler != nullptr) {
        RemoveEventHandler(eventHandler);
    }
    if (control != nullptr) {
        DisposeControl(control);
    }
}

void TTextEdit::SetupControlEventHandler() {
    const EventTypeSpec events[] = {{kEventClassControl, kEventControlSetFocusPart},
                                    {kEventClassTextInput, kEventTextInputUpdateActiveInputArea},
                                    {kEventClassTextInput, kEventTextInputUnicodeForKeyEvent},
                                    {kEventClassTextField, kEventTextFieldTextDidChange}};
    InstallEventHandler(GetControlEventTarget(control), ControlEventHandler, 4, events, this,
                        &eventHandler);
}

void TTextEdit::SetFocus(int16_t part) {
    if (dialog != nullptr) {
        SetKeyboardFocus(dialog->GetWindow(), control, part);
    }
}

bool TTextEdit::HasFocus() const {
    if (dialog == nullptr) {
        return false;
    }
    if (focusOverride == 0 || focusOverride == 1) {
        return focusOverride == 1;
    }
    ControlRef focus = nullptr;
    GetKeyboardFocus(dialog->GetWindow(), &focus);
    return focus != nullptr && focus == control;
}

void TTextEdit::SelectTextContent(ControlEditTextSelectionRec& selection) {
    SetControlData(control, 0, kControlEditTextSelectionTag, sizeof selection, &selection);
}

void TTextEdit::GetSelectionEndpoints(int16_t& start, int16_t& end) const {
    ControlEditTextSelectionRec selection{0, 0};
    GetControlData(control, 0, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
    start = selection.selStart;
    end = selection.selEnd;
}

TStringRef TTextEdit::GetTextContent() const {
    BCStringRef text = nullptr;
    if (control == nullptr || GetControlData(control, 0, kControlEditTextCFStringTag, sizeof text,
                                             &text, nullptr) != noErr) {
        return TStringRef();
    }
    return TStringRef(text, false);
}

StatusCode TTextEdit::SetTextContent(const TStringRef& text) {
    if (text.AsBCStringRef() == nullptr) {
        return paramErr;
    }
    TMutableStringRef copy = text.CopyMutable(0);
    ValidateText(copy);
    validated = true;
    WriteText(copy);
    NotifyTextChanged(copy);
    return noErr;
}

void TTextEdit::SetMaxTextLength(unsigned long length) {
    if (length != maxTextLength) {
        maxTextLength = static_cast<uint32_t>(length);
        validated = false;
    }
}

void TTextEdit::SetMaxTextLengthIsUnicode(unsigned char isUnicode) {
    if ((isUnicode != 0) != maxIsUnicode) {
        maxIsUnicode = isUnicode != 0;
        validated = false;
    }
}

int32_t TTextEdit::SpaceLeftWithTruncation(TMutableStringRef& text, bool truncate,
                                           bool& wasTruncated) const {
    wasTruncated = false;
    if (!validates) {
        return 0;
    }
    const auto limit = static_cast<int32_t>(maxTextLength);
    if (maxIsUnicode) {
        const int32_t left = limit - text.Length();
        if (!truncate || left >= 0) {
            return left;
        }
        const int32_t cut = WholeCharacterCut(text, limit);
        text.Delete(TRange(cut, text.Length() - cut));
        wasTruncated = true;
        return 0;
    }
    int32_t left = limit - ByteLength(text.AsBCStringRef());
    while (truncate && left < 0 && text.Length() > 0) {
        const int32_t cut = WholeCharacterCut(text, text.Length() - 1);
        text.Delete(TRange(cut, text.Length() - cut));
        wasTruncated = true;
        left = limit - ByteLength(text.AsBCStringRef());
    }
    return left;
}

bool TTextEdit::ValidateText(TMutableStringRef& text) const {
    bool changed = false;
    SpaceLeftWithTruncation(text, true, changed);
    if (!validates) {
        return changed;
    }
    EnsureKelInitialized();
    for (const TStringRef* bad : {kColonStr, kSlashStr}) {
        if (text.Find(*bad, 0).location != kBCNotFound) {
            ReplaceAll(text, bad->AsBCStringRef(), kHyphenStr->AsBCStringRef());
            changed = true;
        }
    }
    return changed;
}

void TTextEdit::WriteText(const TStringRef& text) {
    BCStringRef string = text.AsBCStringRef();
    SetControlData(control, 0, kControlEditTextCFStringTag, sizeof string, &string);
    Draw1Control(control);
}

void TTextEdit::NotifyTextChanged(const TStringRef& text) {
    lastReported = text;
    if (observer != nullptr) {
        observer->TextChanged(text);
    }
    if (!validated) {
        ValidateAndUpdateWithNotification(false);
    }
}

void TTextEdit::ValidateAndUpdateWithNotification(unsigned char notify) {
    TMutableStringRef text = GetTextContent().CopyMutable(0);
    validated = true;
    if (ValidateText(text)) {
        WriteText(text);
        NotifyTextChanged(text);
        Beep();
    } else if (notify) {
        NotifyTextChanged(text);
    }
}

bool TTextEdit::CheckForValidKeyStrokes(int16_t keyCode, int16_t character,
                                        EventModifiers modifiers) {
    if (keyCode == kReturnKey || keyCode == kEnterKey) {
        Beep();
        return false;
    }
    if (!IsTextKey(keyCode, character) || (modifiers & cmdKey) != 0 || !validates) {
        return true;
    }
    TMutableStringRef text = GetTextContent().CopyMutable(0);
    int16_t start = 0;
    int16_t end = 0;
    GetSelectionEndpoints(start, end);
    bool truncated = false;
    const bool full = SpaceLeftWithTruncation(text, false, truncated) <= 0;
    if (character == kColon || (full && start == end)) {
        Beep();
        return false;
    }
    return true;
}

TTextEdit* TTextEdit::FromControl(ControlRef control) {
    return reinterpret_cast<TTextEdit*>(GetControlReference(control));
}

ControlKeyFilterResult TTextEdit::EditFieldFilter(ControlRef control, int16_t* keyCode,
                                                  int16_t* charCode, EventModifiers* modifiers) {
    TTextEdit* field = FromControl(control);
    if (field == nullptr || field->CheckForValidKeyStrokes(*keyCode, *charCode, *modifiers)) {
        return kControlKeyFilterPassKey;
    }
    return kControlKeyFilterBlockKey;
}

void TTextEdit::InlineInputProc(ControlRef control, int32_t, int32_t activeStart,
                                int32_t activeEnd) {
    TTextEdit* field = FromControl(control);
    if (field == nullptr) {
        return;
    }
    if (activeStart == -1 && activeEnd == -1) {
        field->ValidateAndUpdateWithNotification(true);
        field->compositionDone = true;
    } else {
        field->compositionDone = false;
    }
}

void TTextEdit::ValidationProc(ControlRef control) {
    TTextEdit* field = FromControl(control);
    if (field != nullptr && field->compositionDone) {
        field->ValidateAndUpdateWithNotification(false);
    }
}

StatusCode TTextEdit::ControlEventHandler(EventHandlerCallRef call, EventRef event, void* data) {
    return static_cast<TTextEdit*>(data)->HandleEvent(call, event);
}

StatusCode TTextEdit::HandleEvent(EventHandlerCallRef call, EventRef event) {
    bool wasDestroyed = false;
    bool* const outer = destroyed;
    destroyed = &wasDestroyed;
    StatusCode status = noErr;
    if (GetEventClass(event) == kEventClassTextField) {
        HandleTextDidChange();
        status = eventNotHandledErr;
    } else if (GetEventClass(event) != kEventClassTextInput) {
        status = HandleFocusEvent(call, event, wasDestroyed);
    } else if (GetEventKind(event) == kEventTextInputUpdateActiveInputArea) {
        // Composed text is validated and reported when the composition ends.
        status = CallNextEventHandler(call, event);
    } else {
        status = HandleTypedText(call, event, wasDestroyed);
    }
    if (!wasDestroyed) {
        destroyed = outer;
    } else if (outer != nullptr) {
        // A delivery further out is still using this field: tell it too.
        *outer = true;
    }
    return status;
}

StatusCode TTextEdit::HandleTypedText(EventHandlerCallRef call, EventRef event,
                                      const bool& wasDestroyed) {
    UniChar character = 0;
    GetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, nullptr,
                      sizeof character, nullptr, &character);
    if ((observer != nullptr && observer->CharacterTyped(character)) || wasDestroyed) {
        return noErr;
    }
    ++typingDepth;
    const StatusCode status = CallNextEventHandler(call, event);
    // The key may have closed the dialog and this field with it.
    if (wasDestroyed) {
        return status;
    }
    --typingDepth;
    if (!IsControlKey(character)) {
        NotifyTextChanged(GetTextContent());
    }
    return status;
}

// Changes that do not come from a typed key (cut, paste, clear, undo) are reported here. A typed
// key is reported once its delivery is over, and composed text when the composition ends.
void TTextEdit::HandleTextDidChange() {
    if (typingDepth > 0 || !compositionDone) {
        return;
    }
    TStringRef text = GetTextContent();
    const bool alreadyReported = !lastReported.IsNil() && !text.IsNil() &&
                                 BCEqual(text.AsBCStringRef(), lastReported.AsBCStringRef());
    if (!alreadyReported) {
        NotifyTextChanged(text);
    }
}

StatusCode TTextEdit::HandleFocusEvent(EventHandlerCallRef call, EventRef event,
                                       const bool& wasDestroyed) {
    const StatusCode status = CallNextEventHandler(call, event);
    ControlPartCode part = 0;
    GetEventParameter(event, kEventParamControlPart, typeControlPartCode, nullptr, sizeof part,
                      nullptr, &part);
    if (wasDestroyed) {
        return status;
    }
    const bool gained = part == kControlEditTextPart;
    focusOverride = gained ? 1 : 0;
    if (observer != nullptr) {
        observer->FocusChanged(gained);
    }
    if (!wasDestroyed) {
        focusOverride = -1;
    }
    return status;
}

bool TTextEdit::TextControlHasKeyboardFocus(DialogRef dialog) {
    if (dialog == nullptr || GetUserFocusWindow() != GetDialogWindow(dialog)) {
        return false;
    }
    ControlRef focus = FocusControl(dialog);
    ControlKind kind{0, 0};
    if (focus == nullptr || GetControlKind(focus, &kind) != noErr) {
        return false;
    }
    return kind.signature == kControlKindSignature &&
           (kind.kind == kControlKindEditText || kind.kind == kControlKindEditUnicodeText);
}

bool TTextEdit::HasTextSelection(DialogRef dialog) {
    ControlRef focus = FocusControl(dialog);
    ControlEditTextSelectionRec selection{0, 0};
    if (focus == nullptr || GetControlData(focus, 0, kControlEditTextSelectionTag, sizeof selection,
                                           &selection, nullptr) != noErr) {
        return false;
    }
    return selection.selStart != selection.selEnd;
}
