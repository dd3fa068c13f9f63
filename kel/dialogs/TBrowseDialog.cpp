#include "kel/dialogs/TBrowseDialog.h"

TBrowseDialog::TBrowseDialog(const TDialogConfiguration& configuration, BCStringRef layoutName,
                             uint32_t acceptAction)
    : __KelDialog(configuration), layoutName(layoutName), acceptAction(acceptAction),
      filterMasks(configuration.filterMasks), fileCreatorFilter(configuration.fileCreatorFilter),
      typeList(configuration.typeList) {}

TBrowseDialog::~TBrowseDialog() {
    if (typeIdentifiers != nullptr) {
        BCRelease(typeIdentifiers);
    }
}

StatusCode TBrowseDialog::FillReply(KelReplyRecord& reply) {
    reply.validRecord = 0;
    // A reply names what the browser chose; with no browser yet, only a cancel or an end by
    // call can have happened.
    if (userAction == kKelUserActionCancel) {
        return userCanceledErr;
    }
    return kKelWrongStateErr;
}

StatusCode TBrowseDialog::SetFilterTypeIdentifiers(BCArrayRef identifiers) {
    if (identifiers != nullptr) {
        BCRetain(identifiers);
    }
    if (typeIdentifiers != nullptr) {
        BCRelease(typeIdentifiers);
    }
    typeIdentifiers = identifiers;
    return noErr;
}

StatusCode TBrowseDialog::CreateDialog() {
    return kBCUnimpErr;
}

StatusCode TBrowseDialog::StartDialog() {
    return kBCUnimpErr;
}

void TBrowseDialog::TerminateDialog() {}
