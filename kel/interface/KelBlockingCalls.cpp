// The blocking browse calls show a dialog and wait for its end. When the second implementation
// serves the process, each goes through the create call of its dialog with a converted record,
// and the replies of the older calls get file specs back. The library's own browse dialogs have
// no window yet: locally each call leaves an empty reply and answers -4, so a client learns at
// once that no dialog came.

#include "kel/interface/KelRoutedCall.h"
#include "kel/interface/KelRouting.h"
#include "kel/interface/KelStartup.h"

#include <basalt/files/BEDesc.h>
#include <cstring>
#include <kel/KelServices.h>

namespace {

enum class Reply { asGiven, converted };

StatusCode RunLocally(KelReplyRecord* reply) {
    EnsureKelInitialized();
    if (reply == nullptr) {
        return paramErr;
    }
    std::memset(reply, 0, sizeof *reply);
    reply->version = 2;
    reply->selection = BEDesc{typeNull, nullptr};
    return kBCUnimpErr;
}

// create(const KelDialogCreationOptions*, KelDialogRef*) is the create call of the dialog.
template <class Create>
StatusCode RunBrowseCall(const BEDesc* defaultLocation, KelReplyRecord* reply,
                         const KelDialogOptions* options, Reply form, Create create) {
    if (!LoadTKKelRoutines()) {
        return RunLocally(reply);
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

StatusCode RunChooseCall(ChooseCreateCall createCall, const BEDesc* defaultLocation,
                         KelReplyRecord* reply, const KelDialogOptions* options,
                         KelEventProc eventProc, KelObjectFilterProc filterProc, void* clientData) {
    return RunBrowseCall(defaultLocation, reply, options, Reply::converted,
                         [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
                             return createCall(local, eventProc, filterProc, clientData, out);
                         });
}

} // namespace

StatusCode KelGetFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                      const KelDialogOptions* options, KelEventProc eventProc,
                      KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                      KelTypeList** typeList, void* clientData) {
    return RunBrowseCall(defaultLocation, reply, options, Reply::asGiven,
                         [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
                             return KelCreateGetFileDialog(local, typeList, eventProc, previewProc,
                                                           filterProc, clientData, out);
                         });
}

StatusCode KelPutFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                      const KelDialogOptions* options, KelEventProc eventProc,
                      FourCharCode fileType, FourCharCode fileCreator, void* clientData) {
    return RunBrowseCall(defaultLocation, reply, options, Reply::converted,
                         [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
                             return KelCreatePutFileDialog(local, fileType, fileCreator, eventProc,
                                                           clientData, out);
                         });
}

StatusCode KelChooseFile(const BEDesc* defaultLocation, KelReplyRecord* reply,
                         const KelDialogOptions* options, KelEventProc eventProc,
                         KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                         KelTypeList** typeList, void* clientData) {
    return RunBrowseCall(defaultLocation, reply, options, Reply::asGiven,
                         [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
                             return KelCreateChooseFileDialog(local, typeList, eventProc,
                                                              previewProc, filterProc, clientData,
                                                              out);
                         });
}

StatusCode KelChooseFolder(const BEDesc* defaultLocation, KelReplyRecord* reply,
                           const KelDialogOptions* options, KelEventProc eventProc,
                           KelObjectFilterProc filterProc, void* clientData) {
    return RunChooseCall(KelCreateChooseFolderDialog, defaultLocation, reply, options, eventProc,
                         filterProc, clientData);
}

StatusCode KelChooseVolume(const BEDesc* defaultSelection, KelReplyRecord* reply,
                           const KelDialogOptions* options, KelEventProc eventProc,
                           KelObjectFilterProc filterProc, void* clientData) {
    return RunChooseCall(KelCreateChooseVolumeDialog, defaultSelection, reply, options, eventProc,
                         filterProc, clientData);
}

StatusCode KelChooseObject(const BEDesc* defaultLocation, KelReplyRecord* reply,
                           const KelDialogOptions* options, KelEventProc eventProc,
                           KelObjectFilterProc filterProc, void* clientData) {
    return RunBrowseCall(defaultLocation, reply, options, Reply::converted,
                         [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
                             return KelCreateChooseObjectDialog(local, eventProc, nullptr,
                                                                filterProc, clientData, out);
                         });
}

StatusCode KelNewFolder(const BEDesc* defaultLocation, KelReplyRecord* reply,
                        const KelDialogOptions* options, KelEventProc eventProc, void* clientData) {
    return RunBrowseCall(defaultLocation, reply, options, Reply::converted,
                         [&](const KelDialogCreationOptions* local, KelDialogRef* out) {
                             return KelCreateNewFolderDialog(local, eventProc, clientData, out);
                         });
}
