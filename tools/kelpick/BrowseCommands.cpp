#include "tools/kelpick/BrowseCommands.h"

#include "basalt/types/BUTypes.h"
#include "tools/kelpick/DialogSession.h"
#include "tools/kelpick/ReplyPaths.h"

#include <basalt/BasaltFiles.h>
#include <basalt/BasaltToolbox.h>
#include <cstdio>

namespace {

// kelpick keeps its remembered sizes, views and folders under its own name, as any
// application does; --app names another application.
const std::optional<std::string> kClientName = "kelpick";

// What kelpick learns from the dialog's notices while it runs.
struct BrowseRun {
    bool sheet = false;
    bool ended = false;
};

// Like an application, kelpick passes an event callback, so its dialogs get their default
// titles; it learns from it when a sheet has ended.
void HearEvent(long selector, KelCBRec*, void* clientData) {
    auto& run = *static_cast<BrowseRun*>(clientData);
    if (selector == kKelCBTerminate) {
        run.ended = true;
        if (run.sheet) {
            QuitApplicationEventLoop();
        }
    }
}

uint32_t OptionFlags(const KelpickOptions& options, uint32_t flags) {
    flags &= ~uint32_t(kKelOptMultipleSelection);
    flags |= options.multiple ? uint32_t(kKelOptMultipleSelection) : 0;
    flags |= options.showHidden ? uint32_t(kKelOptShowInvisible) : 0;
    flags |= options.packagesAsFolders ? uint32_t(kKelOptPackagesBrowsable) : 0;
    return flags;
}

StatusCode CreateBrowseDialog(const std::string& command, const KelDialogCreationOptions& creation,
                              BrowseRun& run, KelDialogRef* dialog) {
    if (command == "open") {
        return KelCreateGetFileDialog(&creation, nullptr, HearEvent, nullptr, nullptr, &run,
                                      dialog);
    }
    if (command == "file") {
        return KelCreateChooseFileDialog(&creation, nullptr, HearEvent, nullptr, nullptr, &run,
                                         dialog);
    }
    if (command == "folder") {
        return KelCreateChooseFolderDialog(&creation, HearEvent, nullptr, &run, dialog);
    }
    if (command == "volume") {
        return KelCreateChooseVolumeDialog(&creation, HearEvent, nullptr, &run, dialog);
    }
    if (command == "object") {
        return KelCreateChooseObjectDialog(&creation, HearEvent, nullptr, nullptr, &run, dialog);
    }
    return KelCreateNewFolderDialog(&creation, HearEvent, &run, dialog);
}

// A folder that is not there leaves the dialog its usual first place, as a stale folder in an
// application's settings would.
void StartIn(KelDialogRef dialog, const std::string& dir) {
    BFRef ref;
    BEDesc location;
    if (BFPathMakeRef(reinterpret_cast<const uint8_t*>(dir.c_str()), &ref, nullptr) != noErr ||
        BECreateDesc(typeBFRef, &ref, sizeof ref, &location) != noErr) {
        std::fprintf(stderr, "kelpick: %s is not there; the dialog starts where it usually does\n",
                     dir.c_str());
        return;
    }
    KelCustomControl(dialog, kKelCtlSetLocation, &location);
    BEDisposeDesc(&location);
}

// Extensions become the type identifiers they name; MIME types are identifiers already.
StatusCode FilterTypes(KelDialogRef dialog, const std::vector<std::string>& types) {
    BCMutableArrayRef identifiers = BCArrayCreateMutable(nullptr, 0, &kBCTypeArrayCallBacks);
    for (const std::string& type : types) {
        BCStringRef tag = basalt::types::MakeString(type);
        BCStringRef identifier =
            type.find('/') != std::string::npos
                ? BCStringRef(BCRetain(tag))
                : BUTypeCreatePreferredIdentifierForTag(kBUTagClassFilenameExtension, tag, nullptr);
        BCArrayAppendValue(identifiers, identifier);
        BCRelease(identifier);
        BCRelease(tag);
    }
    StatusCode status = KelDialogSetFilterTypeIdentifiers(dialog, identifiers);
    BCRelease(identifiers);
    return status;
}

// The document window a sheet comes down from.
class ParentWindow {
public:
    ParentWindow() {
        const Rect bounds{60, 60, 560, 760};
        if (CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes, &bounds,
                            &window) == noErr) {
            SetWindowTitleWithBCString(window, BCSTR("kelpick"));
            ShowWindow(window);
        }
    }
    ParentWindow(const ParentWindow&) = delete;
    ParentWindow& operator=(const ParentWindow&) = delete;
    ~ParentWindow() {
        if (window != nullptr) {
            DisposeWindow(window);
        }
    }
    WindowRef window = nullptr;
};

int PrintChosen(KelDialogRef dialog) {
    KelReplyRecord reply;
    StatusCode status = KelDialogGetReply(dialog, &reply);
    if (status == noErr) {
        status = PrintReplyPaths(reply, stdout);
        KelDisposeReply(&reply);
    }
    if (status != noErr) {
        std::fprintf(stderr, "kelpick: the chosen items could not be read (status %d)\n",
                     static_cast<int>(status));
        return kError;
    }
    return kAnswered;
}

int Report(KelDialogRef dialog, StatusCode status, const ScriptRunner& runner) {
    if (runner.TimedOut()) {
        std::fputs("kelpick: nobody answered before the timeout\n", stderr);
        return kError;
    }
    if (runner.Failed()) {
        return kError; // the failed step has said why
    }
    const uint32_t action = KelDialogGetUserAction(dialog);
    if (status != noErr || action == kKelUserActionNone) {
        std::fprintf(stderr, "kelpick: the dialog ended without an answer (status %d)\n",
                     static_cast<int>(status));
        return kError;
    }
    return action == kKelUserActionCancel ? kCancelled : PrintChosen(dialog);
}

// Applies what must be set between creation and the run; false after saying what failed.
bool Prepare(KelDialogRef dialog, const KelpickOptions& options) {
    if (options.dir) {
        StartIn(dialog, *options.dir);
    }
    if (!options.types.empty()) {
        if (StatusCode status = FilterTypes(dialog, options.types); status != noErr) {
            std::fprintf(stderr, "kelpick: this dialog takes no --types (status %d)\n",
                         static_cast<int>(status));
            return false;
        }
    }
    return true;
}

} // namespace

int RunBrowseCommand(const KelpickOptions& options) {
    std::optional<std::vector<ScriptStep>> steps = PrepareDialogSession(options);
    if (!steps) {
        return kError;
    }
    OwnedString client(options.app ? options.app : kClientName);
    OwnedString title(options.title);
    OwnedString message(options.message);
    OwnedString okLabel(options.okLabel);
    KelDialogCreationOptions creation;
    KelGetDefaultDialogCreationOptions(&creation);
    creation.optionFlags = OptionFlags(options, creation.optionFlags);
    creation.clientName = client.get();
    creation.windowTitle = title.get();
    creation.message = message.get();
    creation.actionButtonLabel = okLabel.get();
    std::optional<ParentWindow> parent;
    if (options.sheet) {
        parent.emplace();
        creation.modality = kKelModalitySheet;
        creation.parentWindow = parent->window;
    } else {
        creation.modality = kKelModalityAppModal;
    }

    BrowseRun run{.sheet = options.sheet};
    KelDialogRef dialog = nullptr;
    if (StatusCode status = CreateBrowseDialog(options.command, creation, run, &dialog);
        status != noErr) {
        return CreationFailed(status);
    }
    if (!Prepare(dialog, options)) {
        KelDialogDispose(dialog);
        return kError;
    }
    ScriptRunner runner(dialog, std::move(*steps), options.snapshot, options.timeout);
    StartScript(runner);
    StatusCode status = KelDialogRun(dialog);
    if (status == noErr && options.sheet && !run.ended) {
        RunApplicationEventLoop(); // a sheet runs in its parent's loop
    }
    const int exit = Report(dialog, status, runner);
    KelDialogDispose(dialog);
    return exit;
}
