#include "tools/kelpick/BrowseCommands.h"

#include "tools/kelpick/BrowseRun.h"
#include "tools/kelpick/DialogSession.h"
#include "tools/kelpick/ReplyPaths.h"
#include "tools/kelpick/SaveCommand.h"

#include <basalt/BasaltFiles.h>
#include <basalt/BasaltToolbox.h>
#include <cstdio>

namespace {

// kelpick keeps its remembered sizes, views and folders under its own name, as any
// application does; --app names another application.
const std::optional<std::string> kClientName = "kelpick";

bool IsSave(const KelpickOptions& options) {
    return options.command == "save";
}

// A file of the front's filters shows when its name matches the chosen filter; folders always
// show, to be opened.
Boolean ShowsByName(BEDesc* item, void* info, void* clientData, int16_t) {
    const auto& run = *static_cast<BrowseRun*>(clientData);
    if (static_cast<KelFileOrFolderInfo*>(info)->isFolder != 0) {
        return true;
    }
    BFRef ref;
    std::string path;
    if (BEGetDescData(item, &ref, sizeof ref) != noErr || PathOfRef(ref, path) != noErr) {
        return true;
    }
    return run.popup.Shows(path.substr(path.rfind('/') + 1));
}

// A descriptor of the file or folder at path, if there is one.
bool MakePathDesc(const std::string& path, BEDesc& desc) {
    BFRef ref;
    return BFPathMakeRef(reinterpret_cast<const uint8_t*>(path.c_str()), &ref, nullptr) == noErr &&
           BECreateDesc(typeBFRef, &ref, sizeof ref, &desc) == noErr;
}

// The front names a file to open by its path: it is selected in its folder, if it is there.
void OpenDialogStarted(const BrowseRun& run) {
    BEDesc file;
    if (run.options.dir && run.options.name &&
        MakePathDesc(*run.options.dir + "/" + *run.options.name, file)) {
        KelCustomControl(run.dialog, kKelCtlSetSelection, &file);
        BEDisposeDesc(&file);
    }
}

// Like an application, kelpick passes an event callback, so its dialogs get their default
// titles; it hears of its own popup items through it, and when a sheet has ended.
void HearEvent(long selector, KelCBRec* record, void* clientData) {
    auto& run = *static_cast<BrowseRun*>(clientData);
    if (selector == kKelCBStart && IsSave(run.options)) {
        StartSaveDialog(run);
    } else if (selector == kKelCBStart) {
        OpenDialogStarted(run);
    } else if (selector == kKelCBPopupMenuSelect && record->eventData != nullptr) {
        const auto& spec = *static_cast<const KelMenuItemSpec*>(record->eventData);
        if (spec.menuCreator == kKelExtensionCreator) {
            run.popup.Choose(spec.menuType);
            if (IsSave(run.options)) {
                SaveTypeChosen(run);
            }
        }
    } else if (selector == kKelCBTerminate) {
        run.ended = true;
        if (run.options.sheet) {
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

StatusCode CreateBrowseDialog(KelDialogCreationOptions& creation, BrowseRun& run,
                              KelDialogRef* dialog) {
    const std::string& command = run.options.command;
    const KelObjectFilterProc filter = run.options.filters.empty() ? nullptr : ShowsByName;
    if (command == "open") {
        return KelCreateGetFileDialog(&creation, nullptr, HearEvent, nullptr, filter, &run, dialog);
    }
    if (command == "save") {
        return CreateSaveDialog(creation, run, HearEvent, dialog);
    }
    if (command == "file") {
        return KelCreateChooseFileDialog(&creation, nullptr, HearEvent, nullptr, filter, &run,
                                         dialog);
    }
    if (command == "folder") {
        return KelCreateChooseFolderDialog(&creation, HearEvent, filter, &run, dialog);
    }
    if (command == "volume") {
        return KelCreateChooseVolumeDialog(&creation, HearEvent, nullptr, &run, dialog);
    }
    if (command == "object") {
        return KelCreateChooseObjectDialog(&creation, HearEvent, nullptr, filter, &run, dialog);
    }
    return KelCreateNewFolderDialog(&creation, HearEvent, &run, dialog);
}

// A folder that is not there leaves the dialog its usual first place, as a stale folder in an
// application's settings would.
void StartIn(KelDialogRef dialog, const std::string& dir) {
    BEDesc location;
    if (!MakePathDesc(dir, location)) {
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
        BCStringRef identifier = CreateTypeIdentifier(type);
        BCArrayAppendValue(identifiers, identifier);
        BCRelease(identifier);
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

int PrintChosen(KelDialogRef dialog, const KelpickOptions& options) {
    KelReplyRecord reply;
    std::vector<std::string> paths(IsSave(options) ? 1 : 0);
    StatusCode status = KelDialogGetReply(dialog, &reply);
    if (status == noErr) {
        status = IsSave(options) ? CopySavePath(reply, paths[0]) : CopyReplyPaths(reply, paths);
        KelDisposeReply(&reply);
    }
    if (status != noErr) {
        std::fprintf(stderr, "kelpick: the chosen items could not be read (status %d)\n",
                     static_cast<int>(status));
        return kError;
    }
    PrintPaths(paths, options.fileSelection ? options.separator : "\n", stdout);
    return kAnswered;
}

int Report(KelDialogRef dialog, StatusCode status, const ScriptRunner& runner,
           const KelpickOptions& options) {
    if (runner.TimedOut()) {
        std::fputs("kelpick: nobody answered before the timeout\n", stderr);
        return options.fileSelection ? int(kFrontTimedOut) : int(kError);
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
    return action == kKelUserActionCancel ? kCancelled : PrintChosen(dialog, options);
}

// Applies what must be set between creation and the run; false after saying what failed.
bool Prepare(KelDialogRef dialog, const KelpickOptions& options) {
    if (options.dir) {
        StartIn(dialog, *options.dir);
    }
    // A save dialog offers its types in its format popup.
    if (!options.types.empty() && !IsSave(options)) {
        if (StatusCode status = FilterTypes(dialog, options.types); status != noErr) {
            std::fprintf(stderr, "kelpick: this dialog takes no --types (status %d)\n",
                         static_cast<int>(status));
            return false;
        }
    }
    return true;
}

PopupItems PopupFor(const KelpickOptions& options) {
    if (!options.filters.empty()) {
        return PopupItems::FromFilters(options.filters);
    }
    return IsSave(options) ? PopupItems::FromSaveTypes(options.types) : PopupItems();
}

int CreateAndRun(KelDialogCreationOptions& creation, BrowseRun& run,
                 std::vector<ScriptStep> steps) {
    const KelpickOptions& options = run.options;
    BCArrayRef popupTitles = run.popup.Empty() ? nullptr : run.popup.CreateTitles();
    creation.popupExtension = popupTitles;
    const StatusCode created = CreateBrowseDialog(creation, run, &run.dialog);
    creation.popupExtension = nullptr;
    if (popupTitles != nullptr) {
        BCRelease(popupTitles);
    }
    if (created != noErr) {
        return CreationFailed(created);
    }
    if (!Prepare(run.dialog, options)) {
        KelDialogDispose(run.dialog);
        return kError;
    }
    ScriptRunner runner(run.dialog, std::move(steps), options.snapshot, options.timeout);
    StartScript(runner, options);
    StatusCode status = KelDialogRun(run.dialog);
    if (status == noErr && options.sheet && !run.ended) {
        RunApplicationEventLoop(); // a sheet runs in its parent's loop
    }
    const int exit = Report(run.dialog, status, runner, options);
    KelDialogDispose(run.dialog);
    return exit;
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
    BrowseRun run{.options = options, .popup = PopupFor(options)};
    return CreateAndRun(creation, run, std::move(*steps));
}
