// Making a folder in the browse dialog's target: by the New Folder button and command-N, which
// ask for the name, and by the client's message, which brings its own.

#include "basalt/nodes/NodeProperties.h"
#include "basalt/nodes/NodeService.h"
#include "kel/dialogs/NewFolderDialog.h"
#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/KelBundle.h"
#include "kel/interface/CStandardAlert.h"

namespace {

constexpr uint32_t kFolderChanged = 1;

} // namespace

StatusCode TBrowseDialog::CreateNewFolder(TUniString* name, TKelNode& out) {
    TKelNode target;
    if (Target(target) != noErr || target.IsEmpty()) {
        return memFullErr;
    }
    TUniString asked;
    if (name == nullptr) {
        NewFolderDialog dialog(client);
        dialog.AllocateDialogFromLayout(BCSTR("New Folder"));
        TStringRef text;
        if (!dialog.StartCreateNewFolder(target, text)) {
            return userCanceledErr;
        }
        asked = TUniString(text.AsBCStringRef());
        name = &asked;
    }
    NodeRef created = nullptr;
    const StatusCode status = NodeCreateNewContainerInNew(target.PeekNodeRef(), name->Length(),
                                                          name->Characters(), 0, &created);
    out = TKelNode(status == noErr ? created : nullptr, false);
    if (BFRef ref{}; target.GetAsBFRef(ref) == noErr) {
        FNNotify(&ref, kFolderChanged, 0);
    }
    return status;
}

StatusCode TBrowseDialog::DoNewFolder(TUniString* name) {
    TKelNode target;
    if (const StatusCode status = Target(target); status != noErr) {
        return status;
    }
    uint32_t rights = kNodePermissionAddChild;
    const StatusCode status = NodeGetPermissions(target.PeekNodeRef(), &rights);
    if ((rights & kNodePermissionAddChild) == 0) {
        const TStringRef text =
            KelBundle::GetStringResource(TStringRef(BCSTR("Cant NewFolder OnLockedDisk")));
        CStandardAlert alert(kAlertStopAlert, text.AsBCStringRef(), nullptr, nullptr, 0, true,
                             nullptr, nullptr, 1, 0, nullptr, false, true, nullptr);
        return status;
    }
    if ((actionState & kActionNewFolderRefused) != 0) {
        return noErr;
    }
    TKelNode made;
    StatusCode madeStatus = CreateNewFolder(name, made);
    if (madeStatus == noErr && !made.IsEmpty() && browser != nullptr) {
        madeStatus = browser->SetTarget(made, TKelNode(), TKelNode());
    }
    return madeStatus;
}
