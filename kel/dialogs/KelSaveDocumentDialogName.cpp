// The save dialog's name field: what it shows, what the dialog answers for the name, and what
// the field tells the dialog as the user types.

#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/dialogs/SaveDialogAlerts.h"

namespace {

constexpr int16_t kWholeText = 0x7FFF;

bool SameText(const TStringRef& one, const TStringRef& other) {
    return BCStringCompare(one.AsBCStringRef(), other.AsBCStringRef(), 0) == kBCCompareEqualTo;
}

} // namespace

TStringRef KelSaveDocumentDialog::WithOwnExtension(const TStringRef& name) const {
    TMutableStringRef whole = name.CopyMutable(0);
    whole.Append(TStringRef(BCSTR(".")));
    whole.Append(TStringRef(extension.Get()));
    return whole;
}

TStringRef KelSaveDocumentDialog::WithoutOwnExtension(const TStringRef& name) const {
    const RetainedRef<BCOpaqueString> own = CopyExtensionFromName(name.AsBCStringRef());
    if (!own || !extension ||
        BCStringCompare(own, extension, kBCCompareCaseInsensitive) != kBCCompareEqualTo) {
        return name;
    }
    const int32_t cut = name.Length() - int32_t(BCStringGetLength(own)) - 1;
    return name.CreateSubstring(TRange(0, cut));
}

TStringRef KelSaveDocumentDialog::KeepingOwnExtension(const TStringRef& name) const {
    if ((optionFlags & kKelOptExtensionHandling) == 0) {
        return name;
    }
    TStringRef stem = name;
    unsigned long offset = 0;
    if (GetExtensionInfo(name, &offset) == noErr && offset != static_cast<unsigned long>(-1)) {
        stem = name.CreateSubstring(TRange(0, int32_t(offset) - 1));
    }
    return extension ? WithOwnExtension(stem) : stem;
}

TStringRef KelSaveDocumentDialog::WholeNameOf(const TStringRef& text) const {
    return extensionHidden && extension ? WithOwnExtension(text) : text;
}

TStringRef KelSaveDocumentDialog::SaveFileName() {
    if (nameField != nullptr) {
        const TStringRef whole = WholeNameOf(nameField->GetTextContent());
        __KelDialog::SetSaveFileName(taken.ownName.IsNil() ? whole : taken.ownName, false);
    }
    return __KelDialog::SaveFileName();
}

void KelSaveDocumentDialog::SetSaveFileName(const TStringRef& given, bool preserveExtension) {
    taken = {};
    TStringRef name = given.IsNil() ? TStringRef(BCSTR("")) : given;
    const bool handlesExtension = (optionFlags & kKelOptExtensionHandling) != 0;
    if (preserveExtension) {
        // A new stem keeps the dialog's extension: a click on a file takes only its stem.
        name = KeepingOwnExtension(name);
    }
    __KelDialog::SetSaveFileName(name, false);
    if (handlesExtension) {
        extension = CopyExtensionFromName(name.AsBCStringRef());
    }
    if (windowRef == nullptr || nameField == nullptr) {
        return;
    }
    TStringRef shown = name;
    if (!extension) {
        if (hideExtensionCheckbox != nullptr) {
            userHidesExtension = extensionHidden;
            SetExtensionHidden(false);
        }
    } else if (extensionHidden) {
        shown = WithoutOwnExtension(name);
    }
    UpdateEditFieldMaxLength();
    nameField->SetTextContent(shown);
    if (nameField->HasFocus()) {
        SelectFileEditText();
    }
    FixButtons(&shown);
}

StatusCode KelSaveDocumentDialog::SetSaveFileExtensionHidden(bool hidden) {
    if ((optionFlags & kKelOptExtensionHandling) == 0) {
        return kKelWrongDialogClassErr;
    }
    if (hidden && !extension) {
        return kKelWrongStateErr;
    }
    if (hidden == extensionHidden) {
        return noErr;
    }
    const bool focused = nameField != nullptr && nameField->HasFocus();
    if (focused) {
        ControlEditTextSelectionRec all{0, kWholeText};
        nameField->SelectTextContent(all);
    }
    SetExtensionHidden(hidden);
    userHidesExtension = hidden;
    if (nameField == nullptr) {
        return noErr;
    }
    const TStringRef text = nameField->GetTextContent();
    if (hidden) {
        // The field ends in the extension whenever it shows it.
        const int32_t kept = text.Length() - int32_t(BCStringGetLength(extension)) - 1;
        nameField->SetTextContent(text.CreateSubstring(TRange(0, std::max(kept, 0))));
    } else {
        nameField->SetTextContent(WithOwnExtension(text));
    }
    if (focused) {
        SelectFileEditText();
    }
    return noErr;
}

StatusCode KelSaveDocumentDialog::SelectSaveFileName(ControlEditTextSelectionRec* selection) {
    if (selection == nullptr) {
        return paramErr;
    }
    if (nameField == nullptr) {
        return kKelWrongStateErr;
    }
    nameField->SelectTextContent(*selection);
    return noErr;
}

void KelSaveDocumentDialog::SetupEditField() {
    ControlRef control = Control(kBrowseSaveName);
    if (control == nullptr) {
        return;
    }
    nameField = std::make_unique<TTextEdit>(this, this, true, control);
    // The file system limits a name in bytes, whatever the reply format counts.
    nameField->SetMaxTextLengthIsUnicode(false);
    nameField->SetFocus(kControlEditTextPart);
    TStringRef name = saveFileName.Length() > 0 ? saveFileName : BundleText("Untitled Doc");
    if (extensionHidden) {
        const TStringRef stem = WithoutOwnExtension(name);
        if (stem.Length() == name.Length()) {
            SetExtensionHidden(false);
        }
        name = stem;
    }
    UpdateEditFieldMaxLength();
    nameField->SetTextContent(name);
    SelectFileEditText();
}

void KelSaveDocumentDialog::SelectFileEditText() {
    if (nameField == nullptr) {
        return;
    }
    ControlEditTextSelectionRec selection{0, kWholeText};
    unsigned long offset = 0;
    if (!extensionHidden && GetExtensionInfo(nameField->GetTextContent(), &offset) == noErr &&
        offset != static_cast<unsigned long>(-1)) {
        // The stem only: the dot and the extension stay as they are when the user types.
        selection.selEnd = static_cast<int16_t>(offset - 1);
    }
    nameField->SelectTextContent(selection);
}

void KelSaveDocumentDialog::FocusChanged(unsigned char gained) {
    FixButtons();
    if (gained != 0) {
        SelectFileEditText();
    }
}

void KelSaveDocumentDialog::TextChanged(const TStringRef& text) {
    if (extension) {
        const RetainedRef<BCOpaqueString> typed = CopyExtensionFromName(text.AsBCStringRef());
        // Typing the extension by hand shows it, deleting it hides it again.
        const bool hidden =
            !typed ||
            BCStringCompare(typed, extension, kBCCompareCaseInsensitive) != kBCCompareEqualTo;
        if (hidden != extensionHidden) {
            userHidesExtension = extensionHidden;
            SetExtensionHidden(hidden);
        }
    }
    if (!taken.ownName.IsNil() && !SameText(WholeNameOf(text), taken.shownName)) {
        taken = {};
    }
    FixButtons(&text);
}

void KelSaveDocumentDialog::KeyError(TStringRef message) {
    if (message.Length() > 0) {
        SaveAlert alert;
        alert.kind = kSaveStopAlert;
        alert.text = message;
        RunSaveAlert(alert);
    }
}

// A name typed over the selected name that begins with "/" or "~" is a path: the Go To window
// takes it from there, and the field keeps the name.
bool KelSaveDocumentDialog::CharacterTyped(unsigned short character) {
    if ((character != u'~' && character != u'/') || nameField == nullptr) {
        return false;
    }
    int16_t start = 0;
    int16_t end = 0;
    nameField->GetSelectionEndpoints(start, end);
    if (start != 0 || end == start) {
        return false;
    }
    RunGoToWindow(static_cast<char>(character));
    return true;
}
