#include "tools/kelpick/AskCommands.h"

#include "tools/kelpick/DialogSession.h"

#include <cstdio>

namespace {

const char* AnswerWord(uint32_t action) {
    switch (action) {
    case kKelUserActionSaveChanges:
        return "save";
    case kKelUserActionDontSaveChanges:
        return "dont-save";
    case kKelUserActionDiscardChanges:
    case kKelUserActionDiscardDocuments:
        return "discard";
    case kKelUserActionReviewDocuments:
        return "review";
    case kKelUserActionCancel:
        return "cancel";
    default:
        return nullptr;
    }
}

StatusCode CreateAskDialog(const KelpickOptions& options, KelDialogCreationOptions& creation,
                           KelDialogRef* dialog) {
    if (options.command == "ask-save") {
        return KelCreateAskSaveChangesDialog(&creation, options.action, nullptr, nullptr, dialog);
    }
    if (options.command == "ask-discard") {
        return KelCreateAskDiscardChangesDialog(&creation, nullptr, nullptr, dialog);
    }
    return KelCreateAskReviewDocumentsDialog(&creation, static_cast<uint32_t>(options.count),
                                             nullptr, nullptr, dialog);
}

int Report(uint32_t action, StatusCode status, const ScriptRunner& runner) {
    if (runner.TimedOut()) {
        std::puts("timeout");
        return kError;
    }
    if (runner.Failed()) {
        return kError; // the failed step has said why
    }
    const char* word = AnswerWord(action);
    if (word == nullptr) {
        std::fprintf(stderr, "kelpick: the dialog ended without an answer (status %d)\n",
                     static_cast<int>(status));
        return kError;
    }
    std::puts(word);
    return action == kKelUserActionCancel ? kCancelled : kAnswered;
}

} // namespace

int RunAskCommand(const KelpickOptions& options) {
    std::optional<std::vector<ScriptStep>> steps = PrepareDialogSession(options);
    if (!steps) {
        return kError;
    }
    OwnedString document(options.document);
    OwnedString app(options.app);
    KelDialogCreationOptions creation;
    KelGetDefaultDialogCreationOptions(&creation);
    creation.modality = kKelModalityAppModal;
    creation.saveFileName = document.get();
    creation.clientName = app.get();

    KelDialogRef dialog = nullptr;
    if (StatusCode status = CreateAskDialog(options, creation, &dialog); status != noErr) {
        return CreationFailed(status);
    }
    ScriptRunner runner(dialog, std::move(*steps), options.snapshot, options.timeout);
    StartScript(runner, options);
    const StatusCode status = KelDialogRun(dialog);
    const uint32_t action = KelDialogGetUserAction(dialog);
    KelDialogDispose(dialog);
    return Report(action, status, runner);
}
