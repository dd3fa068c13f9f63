// The blocking browse calls show a dialog and wait for its end. A browse dialog has no window
// yet: each call leaves an empty reply and answers -4, so a client learns at once that no
// dialog came.

#include "kel/interface/KelDialogRules.h"
#include "kel/interface/KelStartup.h"

#include <basalt/files/BEDesc.h>
#include <cstring>
#include <kel/KelServices.h>

namespace {

// refused: the call's own argument rules failed; they are applied after the reply was cleared.
StatusCode RunBrowseCall(KelReplyRecord* reply, bool refused = false) {
    EnsureKelInitialized();
    if (reply == nullptr) {
        return paramErr;
    }
    std::memset(reply, 0, sizeof *reply);
    reply->version = 2;
    reply->selection = BEDesc{typeNull, nullptr};
    return refused ? StatusCode{paramErr} : StatusCode{kBCUnimpErr};
}

} // namespace

StatusCode KelGetFile(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions* options,
                      KelEventProc eventProc, KelPreviewProc, KelObjectFilterProc, KelTypeList**,
                      void*) {
    return RunBrowseCall(reply, PopupNeedsEventProc(options, eventProc));
}

StatusCode KelPutFile(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions* options,
                      KelEventProc eventProc, FourCharCode, FourCharCode, void*) {
    const bool keepsAliases =
        options != nullptr && (options->optionFlags & kKelOptKeepAliases) != 0;
    return RunBrowseCall(reply, PopupNeedsEventProc(options, eventProc) || keepsAliases);
}

StatusCode KelChooseFile(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions*,
                         KelEventProc, KelPreviewProc, KelObjectFilterProc, KelTypeList**, void*) {
    return RunBrowseCall(reply);
}

StatusCode KelChooseFolder(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions*,
                           KelEventProc, KelObjectFilterProc, void*) {
    return RunBrowseCall(reply);
}

StatusCode KelChooseVolume(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions*,
                           KelEventProc, KelObjectFilterProc, void*) {
    return RunBrowseCall(reply);
}

StatusCode KelChooseObject(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions*,
                           KelEventProc, KelObjectFilterProc, void*) {
    return RunBrowseCall(reply);
}

StatusCode KelNewFolder(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions*, KelEventProc,
                        void*) {
    return RunBrowseCall(reply);
}
