#include "kel/dialogs/KelChooseDialogs.h"

#include "kel/foundation/KelBundle.h"

#include <basalt/files/BEDesc.h>

namespace {

constexpr uint32_t kActionChooseRefused = 4;

} // namespace

KelChooseDialog::KelChooseDialog(const char* prefsBase, uint32_t acceptAction,
                                 const char* buttonKey, const TDialogConfiguration& configuration,
                                 const BEDesc* defaultLocation)
    : KelGetFileDialog(BCSTR("Get File"), acceptAction,
                       TStringRef::Create(prefsBase, kBCStringEncodingUTF8), configuration,
                       defaultLocation, false),
      buttonKey(buttonKey) {}

bool KelChooseDialog::CanChoose() {
    if ((actionState & kActionChooseRefused) != 0) {
        return false;
    }
    return TBrowseDialog::CanChoose();
}

TStringRef KelChooseDialog::GetDefaultButtonTitle() {
    return KelBundle::GetStringResource(TStringRef::Create(buttonKey, kBCStringEncodingUTF8));
}

void KelChooseDialog::SetDefaultButtonTitle() {
    if (defaultControl == nullptr) {
        return;
    }
    const TStringRef title =
        actionButtonLabel.Length() > 0 ? actionButtonLabel : GetDefaultButtonTitle();
    SetControlTitleWithBCString(defaultControl, title.AsBCStringRef());
}

KelChooseFileDialog::KelChooseFileDialog(const TDialogConfiguration& configuration,
                                         const BEDesc* defaultLocation)
    : KelChooseDialog("ChooseFile", kKelUserActionChoose, "Choose Button", configuration,
                      defaultLocation) {}

KelChooseFolderDialog::KelChooseFolderDialog(const TDialogConfiguration& configuration,
                                             const BEDesc* defaultLocation)
    : KelChooseDialog("ChooseFolder", kKelUserActionChoose, "Choose Button", configuration,
                      defaultLocation) {}

KelChooseObjectDialog::KelChooseObjectDialog(const TDialogConfiguration& configuration,
                                             const BEDesc* defaultLocation)
    : KelChooseDialog("ChooseObject", kKelUserActionChoose, "Choose Button", configuration,
                      defaultLocation) {}

KelChooseVolumeDialog::KelChooseVolumeDialog(const TDialogConfiguration& configuration,
                                             const BEDesc* defaultLocation)
    : KelChooseDialog("ChooseVolume", kKelUserActionChoose, "Choose Button", configuration,
                      defaultLocation) {}

void KelChooseVolumeDialog::CopyLastResortTargetPath(TKelNodeArray& path) {
    path.assign(1, TKelNode(TKelNode::GetRootNodeRef(), true));
}

KelNewFolderDialog::KelNewFolderDialog(const TDialogConfiguration& configuration,
                                       const BEDesc* defaultLocation)
    : KelChooseDialog("NewFolder", kKelUserActionNewFolder, "New Folder Button", configuration,
                      defaultLocation) {}

bool KelNewFolderDialog::CanChoose() {
    if ((actionState & kActionNewFolderRefused) != 0 || IsTargetLocked()) {
        return false;
    }
    return KelGetFileDialog::CanChoose();
}

bool KelNewFolderDialog::ValidateAcceptDialog(uint32_t) {
    // A cancelled name leaves the dialog up.
    return CanChoose() && CreateNewFolder(nullptr, madeFolder) == noErr;
}

StatusCode KelNewFolderDialog::FillReply(KelReplyRecord& reply) {
    BEDesc list{typeNull, nullptr};
    BECreateList(nullptr, 0, false, &list);
    reply.selection = list;
    if (userAction != kKelUserActionNewFolder) {
        KelDisposeReply(&reply);
        return userAction == kKelUserActionCancel ? StatusCode(userCanceledErr)
                                                  : StatusCode(kKelWrongStateErr);
    }
    reply.replacing = 0;
    reply.isStationery = 0;
    if (!madeFolder.IsEmpty()) {
        BEDesc folder{typeNull, nullptr};
        StatusCode status = madeFolder.GetAsBEDesc(folder, client.SelectionType());
        if (status == noErr) {
            status = BEPutDesc(&list, 1, &folder);
            BEDisposeDesc(&folder);
        }
        reply.selection = list;
        if (status != noErr) {
            return status;
        }
    }
    MarkReplyValid(reply);
    return noErr;
}
