// The create calls. Each forwards when the second implementation serves the process; otherwise
// it checks its arguments before anything is made, builds the configuration of its kind of
// dialog and hands the client the one reference to a new dialog. No window exists yet.

#include "kel/dialogs/KelChooseDialogs.h"
#include "kel/dialogs/KelGetFileDialog.h"
#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/interface/KelAskDiscardDialog.h"
#include "kel/interface/KelAskReviewDocumentsDialog.h"
#include "kel/interface/KelAskSaveDialog.h"
#include "kel/interface/KelDialogRules.h"
#include "kel/interface/KelRouting.h"
#include "kel/interface/KelStartup.h"

#include <new>

namespace {

// Stores the new dialog through out; the allocation is the only thing that can still fail.
template <class Dialog, class... Arguments>
StatusCode MakeDialog(KelDialogRef* out, const TDialogConfiguration& configuration,
                      Arguments... arguments) {
    *out = new (std::nothrow) Dialog(configuration, arguments...);
    return *out != nullptr ? noErr : memFullErr;
}

StatusCode Refuse(KelDialogRef* out) {
    if (out != nullptr) {
        *out = nullptr;
    }
    return paramErr;
}

template <class Dialog>
StatusCode CreateChooseDialog(const KelDialogCreationOptions* options, const KelDialogRules& rules,
                              KelEventProc eventProc, KelPreviewProc previewProc,
                              KelObjectFilterProc filterProc, void* clientData,
                              KelDialogRef* outDialog, KelTypeList** typeList = nullptr) {
    EnsureKelInitialized();
    if (outDialog == nullptr) {
        return paramErr;
    }
    TDialogConfiguration configuration(options, eventProc, previewProc, filterProc, clientData);
    ApplyDialogRules(configuration, rules);
    configuration.typeList = typeList;
    return MakeDialog<Dialog>(outDialog, configuration);
}

} // namespace

StatusCode KelCreateGetFileDialog(const KelDialogCreationOptions* options, KelTypeList** typeList,
                                  KelEventProc eventProc, KelPreviewProc previewProc,
                                  KelObjectFilterProc filterProc, void* clientData,
                                  KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateGetFileDialog>(TKKelEntry::CreateGetFileDialog)(
            options, typeList, eventProc, previewProc, filterProc, clientData, outDialog);
    }
    EnsureKelInitialized();
    if (outDialog == nullptr || PopupNeedsEventProc(options, eventProc)) {
        return Refuse(outDialog);
    }
    TDialogConfiguration configuration(options, eventProc, previewProc, filterProc, clientData);
    ApplyDialogRules(configuration, KelDialogKind::kGetFile);
    configuration.typeList = typeList;
    if (typeList != nullptr && (configuration.optionFlags & kKelOptNoTypePopup) != 0) {
        configuration.fileCreatorFilter = typeWildCard;
    }
    return MakeDialog<KelGetFileDialog>(outDialog, configuration);
}

StatusCode KelCreatePutFileDialog(const KelDialogCreationOptions* options, FourCharCode fileType,
                                  FourCharCode fileCreator, KelEventProc eventProc,
                                  void* clientData, KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreatePutFileDialog>(TKKelEntry::CreatePutFileDialog)(
            options, fileType, fileCreator, eventProc, clientData, outDialog);
    }
    EnsureKelInitialized();
    // A save dialog names a place to write, never an alias.
    if (outDialog == nullptr || PopupNeedsEventProc(options, eventProc) ||
        (options != nullptr && (options->optionFlags & kKelOptKeepAliases) != 0)) {
        return Refuse(outDialog);
    }
    TDialogConfiguration configuration(options, eventProc, nullptr, nullptr, clientData);
    ApplyDialogRules(configuration, KelDialogKind::kPutFile);
    return MakeDialog<KelSaveDocumentDialog>(outDialog, configuration, fileType, fileCreator);
}

StatusCode KelCreateChooseFileDialog(const KelDialogCreationOptions* options,
                                     KelTypeList** typeList, KelEventProc eventProc,
                                     KelPreviewProc previewProc, KelObjectFilterProc filterProc,
                                     void* clientData, KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateChooseFileDialog>(TKKelEntry::CreateChooseFileDialog)(
            options, typeList, eventProc, previewProc, filterProc, clientData, outDialog);
    }
    EnsureKelInitialized();
    if (outDialog == nullptr) {
        return paramErr;
    }
    TDialogConfiguration configuration(options, eventProc, previewProc, filterProc, clientData);
    ApplyDialogRules(configuration, KelDialogKind::kChooseFile);
    configuration.typeList = typeList;
    configuration.fileCreatorFilter = typeWildCard;
    return MakeDialog<KelChooseFileDialog>(outDialog, configuration);
}

StatusCode KelCreateChooseFolderDialog(const KelDialogCreationOptions* options,
                                       KelEventProc eventProc, KelObjectFilterProc filterProc,
                                       void* clientData, KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateChooseFolderDialog>(TKKelEntry::CreateChooseFolderDialog)(
            options, eventProc, filterProc, clientData, outDialog);
    }
    return CreateChooseDialog<KelChooseFolderDialog>(options, KelDialogKind::kChooseFolder,
                                                     eventProc, nullptr, filterProc, clientData,
                                                     outDialog);
}

StatusCode KelCreateChooseVolumeDialog(const KelDialogCreationOptions* options,
                                       KelEventProc eventProc, KelObjectFilterProc filterProc,
                                       void* clientData, KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateChooseVolumeDialog>(TKKelEntry::CreateChooseVolumeDialog)(
            options, eventProc, filterProc, clientData, outDialog);
    }
    return CreateChooseDialog<KelChooseVolumeDialog>(options, KelDialogKind::kChooseVolume,
                                                     eventProc, nullptr, filterProc, clientData,
                                                     outDialog);
}

StatusCode KelCreateChooseObjectDialog(const KelDialogCreationOptions* options,
                                       KelEventProc eventProc, KelPreviewProc previewProc,
                                       KelObjectFilterProc filterProc, void* clientData,
                                       KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateChooseObjectDialog>(TKKelEntry::CreateChooseObjectDialog)(
            options, eventProc, previewProc, filterProc, clientData, outDialog);
    }
    return CreateChooseDialog<KelChooseObjectDialog>(options, KelDialogKind::kChooseObject,
                                                     eventProc, previewProc, filterProc, clientData,
                                                     outDialog);
}

StatusCode KelCreateNewFolderDialog(const KelDialogCreationOptions* options, KelEventProc eventProc,
                                    void* clientData, KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateNewFolderDialog>(TKKelEntry::CreateNewFolderDialog)(
            options, eventProc, clientData, outDialog);
    }
    return CreateChooseDialog<KelNewFolderDialog>(options, KelDialogKind::kNewFolder, eventProc,
                                                  nullptr, nullptr, clientData, outDialog);
}

StatusCode KelCreateAskSaveChangesDialog(const KelDialogCreationOptions* options, uint32_t action,
                                         KelEventProc eventProc, void* clientData,
                                         KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateAskSaveChangesDialog>(TKKelEntry::CreateAskSaveChangesDialog)(
            options, action, eventProc, clientData, outDialog);
    }
    EnsureKelInitialized();
    if (options == nullptr || outDialog == nullptr) {
        return Refuse(outDialog);
    }
    TDialogConfiguration configuration(options, eventProc, nullptr, nullptr, clientData);
    return MakeDialog<KelAskSaveDialog>(outDialog, configuration, action);
}

StatusCode KelCreateAskDiscardChangesDialog(const KelDialogCreationOptions* options,
                                            KelEventProc eventProc, void* clientData,
                                            KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateAskDiscardChangesDialog>(TKKelEntry::CreateAskDiscardChangesDialog)(
            options, eventProc, clientData, outDialog);
    }
    EnsureKelInitialized();
    // The alert names the document whose changes go.
    if (options == nullptr || outDialog == nullptr || options->saveFileName == nullptr) {
        return Refuse(outDialog);
    }
    TDialogConfiguration configuration(options, eventProc, nullptr, nullptr, clientData);
    return MakeDialog<KelAskDiscardDialog>(outDialog, configuration);
}

StatusCode KelCreateAskReviewDocumentsDialog(const KelDialogCreationOptions* options,
                                             uint32_t documentCount, KelEventProc eventProc,
                                             void* clientData, KelDialogRef* outDialog) {
    if (LoadTKKelRoutines()) {
        return TKKel<&KelCreateAskReviewDocumentsDialog>(
            TKKelEntry::CreateAskReviewDocumentsDialog)(options, documentCount, eventProc,
                                                        clientData, outDialog);
    }
    EnsureKelInitialized();
    if (options == nullptr || outDialog == nullptr) {
        return Refuse(outDialog);
    }
    TDialogConfiguration configuration(options, eventProc, nullptr, nullptr, clientData);
    return MakeDialog<KelAskReviewDocumentsDialog>(outDialog, configuration, documentCount);
}
