// The blocking ask calls. Locally the dialog lives on this call's stack and runs modally inside
// it; when the second implementation serves the process, the call goes through the create
// functions with a converted record instead. Either way the answer is written only when the
// user gave one.

#include "kel/interface/KelAskDiscardDialog.h"
#include "kel/interface/KelAskSaveDialog.h"
#include "kel/interface/KelRoutedCall.h"
#include "kel/interface/KelRouting.h"
#include "kel/interface/KelStartup.h"

#include <kel/KelServices.h>

namespace {

enum Answer : uint32_t { kAnswerSaveOrDiscard = 1, kAnswerCancel = 2, kAnswerDontSave = 3 };

void WriteAnswer(uint32_t action, uint32_t* answer) {
    uint32_t value = 0;
    switch (action) {
    case kKelUserActionSaveChanges:
    case kKelUserActionDiscardChanges:
        value = kAnswerSaveOrDiscard;
        break;
    case kKelUserActionCancel:
        value = kAnswerCancel;
        break;
    case kKelUserActionDontSaveChanges:
        value = kAnswerDontSave;
        break;
    default:
        return;
    }
    if (answer != nullptr) {
        *answer = value;
    }
}

// The wording comes from the call, never from fields an older client left in its record.
template <class Dialog, class... Extra>
StatusCode RunLocally(const KelDialogOptions& options, bool keepMessage, uint32_t* answer,
                      KelEventProc eventProc, void* clientData, Extra... extra) {
    KelDialogOptions copy = options;
    copy.popupExtension = nullptr;
    if (!keepMessage) {
        copy.message[0] = 0;
    }
    TDialogConfiguration configuration(&copy, eventProc, nullptr, nullptr, clientData);
    Dialog dialog(configuration, extra...);
    const StatusCode status = dialog.__KelDialog::Run();
    if (status == noErr) {
        WriteAnswer(dialog.UserAction(), answer);
    }
    // Older clients read the status as a 16-bit value.
    return static_cast<int16_t>(status);
}

// create makes the dialog from the converted record.
template <class Create>
StatusCode RunRouted(const KelDialogOptions* options, uint32_t* answer, Create create) {
    return RunRoutedCall(options, nullptr, create, [answer](KelDialogRef dialog) {
        WriteAnswer(KelDialogGetUserAction(dialog), answer);
        return StatusCode(noErr);
    });
}

bool LacksText(const KelDialogOptions* options, const unsigned char* text) {
    return options == nullptr || text[0] == 0;
}

} // namespace

StatusCode KelAskSaveChanges(const KelDialogOptions* options, uint32_t action, uint32_t* answer,
                             KelEventProc eventProc, void* clientData) {
    if (LoadTKKelRoutines()) {
        return RunRouted(options, answer, [&](const KelDialogCreationOptions* local, auto* out) {
            return KelCreateAskSaveChangesDialog(local, action, eventProc, clientData, out);
        });
    }
    EnsureKelInitialized();
    if (LacksText(options, options != nullptr ? options->savedFileName : nullptr)) {
        return paramErr;
    }
    return RunLocally<KelAskSaveDialog>(*options, false, answer, eventProc, clientData, action);
}

StatusCode KelCustomAskSaveChanges(const KelDialogOptions* options, uint32_t* answer,
                                   KelEventProc eventProc, void* clientData) {
    if (LoadTKKelRoutines()) {
        return RunRouted(options, answer, [&](const KelDialogCreationOptions* local, auto* out) {
            return KelCreateAskSaveChangesDialog(local, KelAskSaveDialog::kClosing, eventProc,
                                                 clientData, out);
        });
    }
    EnsureKelInitialized();
    if (LacksText(options, options != nullptr ? options->message : nullptr)) {
        return paramErr;
    }
    return RunLocally<KelAskSaveDialog>(*options, true, answer, eventProc, clientData,
                                        uint32_t{KelAskSaveDialog::kClosing});
}

StatusCode KelAskDiscardChanges(const KelDialogOptions* options, uint32_t* answer,
                                KelEventProc eventProc, void* clientData) {
    if (LoadTKKelRoutines()) {
        return RunRouted(options, answer, [&](const KelDialogCreationOptions* local, auto* out) {
            return KelCreateAskDiscardChangesDialog(local, eventProc, clientData, out);
        });
    }
    EnsureKelInitialized();
    if (LacksText(options, options != nullptr ? options->savedFileName : nullptr)) {
        return paramErr;
    }
    return RunLocally<KelAskDiscardDialog>(*options, false, answer, eventProc, clientData);
}
