#pragma once

// Save dialogs made through the public create call on real temporary folders and run modally,
// with what the user sees and answers: the name field, the alerts in front, the reply.

#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "tests/kel/dialogs/AlertTesting.h"
#include "tests/kel/dialogs/PublicDialogTesting.h"

#include <filesystem>
#include <string>

namespace keltest {

constexpr uint32_t kSaveOptions = kKelOptDefaults | kKelOptExtensionHandling;

struct SaveSetup {
    std::string name;
    uint32_t optionFlags = kSaveOptions;
    uint32_t modality = kKelModalityAppModal;
    FourCharCode creator = NodeCode("****");
    // The client's own formats for the format popup; needs the event callback, which is given.
    BCArrayRef formats = nullptr;
    WindowRef parent = nullptr;
};

// A save dialog on folder, made but not yet run.
struct SaveRun : PublicDialog {
    explicit SaveRun(const std::filesystem::path& folder, const SaveSetup& setup = {});

    KelSaveDocumentDialog& Save() const { return *static_cast<KelSaveDocumentDialog*>(dialog); }
    std::string FieldText() const;
    bool DefaultButtonActive() const;
};

// What a save reply says.
struct SaveReply {
    StatusCode status = 0;
    std::string folder;
    // The name's bytes as the file system takes them.
    std::string name;
    bool replacing = false;
    bool extensionHidden = false;
};
SaveReply ReplyOf(const SaveRun& run);

// Remembers the dialog form and the hidden extension for the next save dialogs.
void RememberSaveForm(bool collapsed, bool extensionHidden);
// Does work on the alert once it has come up over the save dialog.
void WhenAlertShows(const SaveRun& run, const std::function<void(WindowRef)>& work);

} // namespace keltest
