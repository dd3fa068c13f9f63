// The name's extension: finding it, hiding it in the field, the field's limit that follows from
// it, and the question when a typed ending would stand in front of a hidden one.

#include "basalt/types/BLRegistry.h"
#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/dialogs/SaveDialogAlerts.h"

namespace {

constexpr StatusCode kNoURLErr = -10810;
constexpr FourCharCode kReplyFormatRef = NodeCode("bfrf");
// Names as the file system takes them, and as the older reply record holds them.
constexpr int32_t kMaxNameBytes = 255;
constexpr int32_t kMaxOlderNameBytes = 31;
constexpr int16_t kUseOneItem = 1;
constexpr int16_t kUseBothItem = 3;

int32_t ByteCount(BCStringRef text) {
    BCIndex used = 0;
    BCStringGetBytes(text, BCRangeMake(0, BCStringGetLength(text)), kBCStringEncodingUTF8, 0, false,
                     nullptr, 0, &used);
    return static_cast<int32_t>(used);
}

} // namespace

StatusCode GetExtensionInfo(const TStringRef& name, unsigned long* offset) {
    if (name.IsNil() || offset == nullptr) {
        return paramErr;
    }
    BCURLRef url =
        BCURLCreateWithFileSystemPath(nullptr, name.AsBCStringRef(), kBCURLPOSIXPathStyle, false);
    if (url == nullptr) {
        return kNoURLErr;
    }
    *offset = static_cast<unsigned long>(-1);
    if (BCStringRef found = BCURLCopyPathExtension(url)) {
        if (BCStringGetLength(found) > 0) {
            *offset = static_cast<unsigned long>(name.Length() - BCStringGetLength(found));
        }
        BCRelease(found);
    }
    BCRelease(url);
    return noErr;
}

RetainedRef<BCOpaqueString> CopyExtensionFromName(BCStringRef name) {
    if (name == nullptr || BCStringGetLength(name) == 0) {
        return {};
    }
    const TStringRef text(name);
    unsigned long offset = 0;
    if (GetExtensionInfo(text, &offset) != noErr || offset == static_cast<unsigned long>(-1)) {
        return {};
    }
    const auto start = static_cast<int32_t>(offset);
    return text.CreateSubstring(TRange(start, text.Length() - start)).AsBCStringRef();
}

void KelSaveDocumentDialog::SetExtensionHidden(bool hidden) {
    if (hidden != extensionHidden) {
        extensionHidden = hidden;
        UpdateEditFieldMaxLength();
    }
    if (hideExtensionCheckbox != nullptr) {
        SetControlValue(hideExtensionCheckbox, extensionHidden ? 1 : 0);
    }
}

// Limits in bytes: a hidden extension comes back with its dot when the name is written, and the
// whole name must still fit.
void KelSaveDocumentDialog::UpdateEditFieldMaxLength() {
    if (nameField == nullptr) {
        return;
    }
    const int32_t limit =
        client.SelectionType() == kReplyFormatRef ? kMaxNameBytes : kMaxOlderNameBytes;
    if (!extensionHidden || !extension) {
        nameField->SetMaxTextLength(static_cast<unsigned long>(limit));
        return;
    }
    const int32_t left = limit - 1 - ByteCount(extension);
    nameField->SetMaxTextLength(static_cast<unsigned long>(std::max(left, 1)));
}

bool KelSaveDocumentDialog::ValidateExtension() {
    if (!extensionHidden || nameField == nullptr || !extension) {
        return true;
    }
    const TStringRef text = nameField->GetTextContent();
    const RetainedRef<BCOpaqueString> typed = CopyExtensionFromName(text.AsBCStringRef());
    // An ending that no application claims is part of the name.
    if (!typed || BLGetApplicationForInfo(0, 0, typed, kBLRoleAll, nullptr, nullptr) != noErr) {
        return true;
    }
    const TStringRef typedText(typed.Get());
    const TStringRef own(extension.Get());
    SaveAlert alert;
    alert.kind = kSaveCautionAlert;
    alert.text = BundleTextWith("ExtensionErrorText", {typedText, own});
    alert.explanation = BundleTextWith("ExtensionErrorSubtext", {typedText, own});
    alert.defaultText = BundleTextWith("ExtensionAlertUseOneLabel", {typedText, own});
    alert.otherText = BundleText("ExtensionAlertUserBothLabel");
    alert.cancelButton = 2;
    switch (RunSaveAlert(alert)) {
    case kUseOneItem: {
        const int32_t kept = text.Length() - typedText.Length() - 1;
        nameField->SetTextContent(text.CreateSubstring(TRange(0, kept)));
        return true;
    }
    case kUseBothItem:
        SetSaveFileExtensionHidden(false);
        userHidesExtension = true;
        return true;
    default:
        return false;
    }
}
