// The save dialog's reply: the folder to write into and the name to write, never the file
// itself, which may not exist yet. "replacing" tells the client that a file of that name is
// there and the user agreed to replace it.

#include "basalt/nodes/NodeProperties.h"
#include "kel/dialogs/KelSaveDocumentDialog.h"
#include "kel/interface/KelRecordConversion.h"

#include <basalt/files/BEDesc.h>

namespace {

constexpr FourCharCode kReplyFormatRef = NodeCode("bfrf");

// The folder as the reply's item: a reference in the current format, a record naming the file
// inside it in the older one.
StatusCode MakeItem(const TKelNode& folder, const TStringRef& name, FourCharCode format,
                    BEDesc& item) {
    if (format == kReplyFormatRef) {
        return folder.GetAsBEDesc(item, kReplyFormatRef);
    }
    BEDesc ref{typeNull, nullptr};
    StatusCode status = folder.GetAsBEDesc(ref, kReplyFormatRef);
    BFRef folderRef{};
    if (status == noErr) {
        status = BEGetDescData(&ref, &folderRef, sizeof folderRef);
    }
    BEDisposeDesc(&ref);
    BFSpec spec{};
    if (status == noErr) {
        status = MakeChildSpec(folderRef, name.AsBCStringRef(), spec);
    }
    if (status == noErr) {
        status = BECreateDesc(typeFileSpec, &spec, sizeof spec, &item);
    }
    return status;
}

} // namespace

StatusCode KelSaveDocumentDialog::FillReply(KelReplyRecord& reply) {
    BEDescList list{typeNull, nullptr};
    BECreateList(nullptr, 0, false, &list);
    reply.selection = list;
    StatusCode status = noErr;
    if (userAction == kKelUserActionCancel) {
        status = userCanceledErr;
    } else if (userAction != kKelUserActionSaveAs) {
        status = kKelWrongStateErr;
    }
    const TStringRef name = SaveFileName();
    TKelNode target;
    if (status == noErr) {
        status = Target(target);
    }
    if (status == noErr && NodeIsAlias(target.PeekNodeRef())) {
        TKelNode original;
        status = target.FollowAlias(false, original);
        target = original;
    }
    const FourCharCode format = client.SelectionType();
    BEDesc item{typeNull, nullptr};
    if (status == noErr) {
        status = MakeItem(target, name, format, item);
    }
    if (status == noErr) {
        status = BEPutDesc(&list, 1, &item);
    }
    BEDisposeDesc(&item);
    reply.selection = list;
    if (status != noErr) {
        KelDisposeReply(&reply);
        return status;
    }
    if (format == kReplyFormatRef) {
        reply.saveFileName = BCStringCreateCopy(nullptr, name.AsBCStringRef());
    }
    reply.replacing = ExistingFile(target, name).IsEmpty() ? 0 : 1;
    reply.keyScript = GetScriptManagerVariable(smKeyScript);
    reply.isStationery = 0;
    reply.translationNeeded = 0;
    reply.fileTranslation = nullptr;
    reply.saveFileExtensionHidden = extensionHidden ? 1 : 0;
    reply.validRecord = 1;
    return noErr;
}
