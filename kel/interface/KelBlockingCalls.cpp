// The blocking browse calls show a dialog and wait for its end. A browse dialog has no window
// yet: each call leaves an empty reply and answers -4, so a client learns at once that no
// dialog came.

#include "kel/interface/KelStartup.h"

#include <basalt/files/BEDesc.h>
#include <cstring>
#include <kel/KelServices.h>

namespace {

StatusCode RunBrowseCall(KelReplyRecord* reply) {
    EnsureKelInitialized();
    if (reply == nullptr) {
        return paramErr;
    }
    std::memset(reply, 0, sizeof *reply);
    reply->version = 2;
    reply->selection = BEDesc{typeNull, nullptr};
    return kBCUnimpErr;
}

} // namespace

StatusCode KelGetFile(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions*, KelEventProc,
                      KelPreviewProc, KelObjectFilterProc, KelTypeList**, void*) {
    return RunBrowseCall(reply);
}

StatusCode KelPutFile(const BEDesc*, KelReplyRecord* reply, const KelDialogOptions*, KelEventProc,
                      FourCharCode, FourCharCode, void*) {
    return RunBrowseCall(reply);
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
