// The blocking browse calls show a dialog and wait for its end. When the second implementation
// serves the process, each goes through the create call of its dialog with a converted record,
// and the replies of the older calls get file specs back. Otherwise the call runs the library's
// own dialog modally in itself.

#include "kel/dialogs/KelChooseDialogs.h"
#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/interface/KelDialogRules.h"
#include "kel/interface/KelRoutedCall.h"
#include "kel/interface/KelRouting.h"
#include "kel/interface/KelStartup.h"

#include <basalt/files/BEDesc.h>
#include <cstring>
#include <kel/KelServices.h>
#include <new>

namespace {

enum class Reply { asGiven, converted };

// The older record's configuration for a local run, with the call's rules.
struct LocalConfiguration : TDialogConfiguration {
    LocalConfiguration(const KelDialogOptions* options, KelEventProc eventProc,
                       KelPreviewProc previewProc, KelObjectFilterProc filterProc, void* clientData,
                       const KelDialogRules& rules)
        : TDialogConfiguration(options, eventProc, previewProc, filterProc, clientData) {
        ApplyDialogRules(*this, rules);
    }
};

// Runs the dialog made of the arguments in the call and fills the reply from it once it has
// ended.
template <class Dialog, class... Arguments>
StatusCode RunHere(KelReplyRecord* reply, const Arguments&... arguments) {
    auto* dialog = new (std::nothrow) Dialog(arguments...);
    if (dialog == nullptr) {
        return memFullErr;
    }
    StatusCode status = dialog->Run();
    if (status == noErr) {
        status = dialog->FillReply(*reply);
    }
    dialog->Release();
    return status;
}

// create(const KelDialogCreationOptions*, KelDialogRef*) is the create call of the dialog;
// local() runs the library's own. refused: the call's own argument rules failed; they are
// applied after the reply was cleared.
template <class Create, class Local>
StatusCode RunBrowseCall(const BEDesc* defaultLocation, KelReplyRecord* reply,
                         const KelDialogOptions* options, Reply form, Create create, Local local,
                         bool refused = false) {
    if (!LoadTKKelRoutines()) {
        EnsureKelInitialized();
        if (reply == nullptr) {
            return paramErr;
        }
        std::memset(reply, 0, sizeof *reply);
        reply->version = 2;
        reply->selection = BEDesc{typeNull, nullptr};
        return refused ? StatusCode{paramErr} : local();
    }
    return RunRoutedCall(options, defaultLocation, create, [reply, form](KelDialogRef dialog) {
        StatusCode status = KelDialogGetReply(dialog, reply);
        if (status == noErr && form == Reply::converted) {
            status = ConvertReply(reply);
        }
        return status;
    });
}

// The choose calls whose create call takes the same arguments as they do.
using ChooseCreateCall = StatusCode (*)(const KelDialogCreationOptions*, KelEventProc,
                                        KelObjectFilterProc, void*, KelDialogRef*);

template <class Dialog>
StatusCode RunChooseCall(ChooseCreateCall createCall, const KelDialogRules& rules,
                         const BEDesc* defaultLocation, KelReplyRecord* reply,
                         const KelDialogOptions* options, KelEventProc eventProc,
                         KelObjectFilterProc filterProc, void* clientData) {
    return RunBrowseCall(
        defaultLocation, reply, options, Reply::converted,
        [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
            return createCall(local, eventProc, filterProc, clientData, out);
        },
        [&] {
            const LocalConfiguration configuration(options, eventProc, nullptr, filterProc,
                                                   clientData, rules);
            return RunHere<Dialog>(reply, configuration, defaultLocation);
        });
}

// The blocking calls' own rules where they differ from the create calls'.
KelDialogRules BlockingRules(KelDialogRules rules, const char* titleKey, uint32_t flagMask) {
    rules.defaultTitleKey = titleKey;
    rules.flagMask = flagMask;
    return rules;
}

} // namespace

StatusCode KelGetFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                      const KelDialogOptions* options, KelEventProc eventProc,
                      KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                      KelTypeList** typeList, void* clientData) {
    return RunBrowseCall(
        defaultLocation, reply, options, Reply::asGiven,
        [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
            return KelCreateGetFileDialog(local, typeList, eventProc, previewProc, filterProc,
                                          clientData, out);
        },
        [&] {
            LocalConfiguration configuration(options, eventProc, previewProc, filterProc,
                                             clientData, KelDialogKind::kGetFile);
            configuration.typeList = typeList;
            if (typeList != nullptr && (configuration.optionFlags & kKelOptNoTypePopup) != 0) {
                configuration.fileCreatorFilter = typeWildCard;
            }
            return RunHere<KelGetFileDialog>(reply, configuration, defaultLocation);
        },
        PopupNeedsEventProc(options, eventProc));
}

StatusCode KelPutFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                      const KelDialogOptions* options, KelEventProc eventProc,
                      FourCharCode fileType, FourCharCode fileCreator, void* clientData) {
    const bool keepsAliases =
        options != nullptr && (options->optionFlags & kKelOptKeepAliases) != 0;
    return RunBrowseCall(
        defaultLocation, reply, options, Reply::converted,
        [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
            return KelCreatePutFileDialog(local, fileType, fileCreator, eventProc, clientData, out);
        },
        [&] {
            const LocalConfiguration configuration(options, eventProc, nullptr, nullptr, clientData,
                                                   KelDialogKind::kPutFile);
            return RunHere<KelSaveDocumentDialog>(reply, configuration, fileType, fileCreator,
                                                  defaultLocation);
        },
        PopupNeedsEventProc(options, eventProc) || keepsAliases);
}

StatusCode KelChooseFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                         const KelDialogOptions* options, KelEventProc eventProc,
                         KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                         KelTypeList** typeList, void* clientData) {
    return RunBrowseCall(
        defaultLocation, reply, options, Reply::asGiven,
        [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
            return KelCreateChooseFileDialog(local, typeList, eventProc, previewProc, filterProc,
                                             clientData, out);
        },
        [&] {
            LocalConfiguration configuration(options, eventProc, previewProc, filterProc,
                                             clientData, KelDialogKind::kChooseFile);
            configuration.typeList = typeList;
            configuration.fileCreatorFilter = typeWildCard;
            return RunHere<KelChooseFileDialog>(reply, configuration, defaultLocation);
        });
}

StatusCode KelChooseFolder(const BEDesc* defaultLocation, KelReplyRecord* reply,
                           const KelDialogOptions* options, KelEventProc eventProc,
                           KelObjectFilterProc filterProc, void* clientData) {
    return RunChooseCall<KelChooseFolderDialog>(KelCreateChooseFolderDialog,
                                                KelDialogKind::kChooseFolder, defaultLocation,
                                                reply, options, eventProc, filterProc, clientData);
}

StatusCode KelChooseVolume(const BEDesc* defaultSelection, KelReplyRecord* reply,
                           const KelDialogOptions* options, KelEventProc eventProc,
                           KelObjectFilterProc filterProc, void* clientData) {
    // The blocking call's title key differs from the create call's, as it always has.
    const KelDialogRules rules = BlockingRules(KelDialogKind::kChooseVolume, "Choose Volume",
                                               KelDialogKind::kChooseVolume.flagMask);
    return RunChooseCall<KelChooseVolumeDialog>(KelCreateChooseVolumeDialog, rules,
                                                defaultSelection, reply, options, eventProc,
                                                filterProc, clientData);
}

StatusCode KelChooseObject(const BEDesc* defaultLocation, KelReplyRecord* reply,
                           const KelDialogOptions* options, KelEventProc eventProc,
                           KelObjectFilterProc filterProc, void* clientData) {
    // Without previews: the blocking call takes no preview callback.
    const KelDialogRules rules = BlockingRules(
        KelDialogKind::kChooseObject, KelDialogKind::kChooseObject.defaultTitleKey, 0xF780);
    return RunBrowseCall(
        defaultLocation, reply, options, Reply::converted,
        [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
            return KelCreateChooseObjectDialog(local, eventProc, nullptr, filterProc, clientData,
                                               out);
        },
        [&] {
            const LocalConfiguration configuration(options, eventProc, nullptr, filterProc,
                                                   clientData, rules);
            return RunHere<KelChooseObjectDialog>(reply, configuration, defaultLocation);
        });
}

StatusCode KelNewFolder(const BEDesc* defaultLocation, KelReplyRecord* reply,
                        const KelDialogOptions* options, KelEventProc eventProc, void* clientData) {
    return RunBrowseCall(
        defaultLocation, reply, options, Reply::converted,
        [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
            return KelCreateNewFolderDialog(local, eventProc, clientData, out);
        },
        [&] {
            const LocalConfiguration configuration(options, eventProc, nullptr, nullptr, clientData,
                                                   KelDialogKind::kNewFolder);
            return RunHere<KelNewFolderDialog>(reply, configuration, defaultLocation);
        });
}
