#include "tools/kelpick/AskCommands.h"

#include "basalt/backend/headless/HeadlessDriver.h"
#include "tools/kelpick/ScriptRunner.h"

#include <cstdio>
#include <cstdlib>
#include <kel/KelServices.h>

using basalt::headless::HeadlessDriver;

namespace {

enum ExitStatus { kAnswered = 0, kCancelled = 1, kError = 2 };

// A string the options record borrows for the length of the command.
class OwnedString {
public:
    explicit OwnedString(const std::optional<std::string>& text)
        : string(text ? BCStringCreateWithCString(nullptr, text->c_str(), kBCStringEncodingUTF8)
                      : nullptr) {}
    OwnedString(const OwnedString&) = delete;
    OwnedString& operator=(const OwnedString&) = delete;
    ~OwnedString() {
        if (string != nullptr) {
            BCRelease(string);
        }
    }
    BCStringRef get() const { return string; }

private:
    BCStringRef string;
};

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
    if (options.headless || std::getenv("DISPLAY") == nullptr) {
        setenv("KEL_BACKEND", "headless", 1);
    }
    std::optional<std::vector<ScriptStep>> steps = ParseScript(options.script);
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
        std::fprintf(stderr, "kelpick: the dialog could not be made (status %d)\n",
                     static_cast<int>(status));
        return kError;
    }
    ScriptRunner runner(dialog, std::move(*steps), options.snapshot, options.timeout);
    if (HeadlessDriver::Available()) {
        runner.Start();
    }
    const StatusCode status = KelDialogRun(dialog);
    const uint32_t action = KelDialogGetUserAction(dialog);
    KelDialogDispose(dialog);
    return Report(action, status, runner);
}
