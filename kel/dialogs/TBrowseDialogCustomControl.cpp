// The messages through which a client commands a running browse dialog (KelCustomControl), and
// the answers of a dialog that lacks what a message asks for.

#include "basalt/files/BFRef.h"
#include "basalt/nodes/NodeService.h"
#include "kel/dialogs/TBrowseDialog.h"

#include <basalt/files/BEDesc.h>

namespace {

constexpr StatusCode kFailedErr = kKelBadCustomControlParamErr;
constexpr StatusCode kInvalidErr = kKelNotApplicableErr;
constexpr StatusCode kNoSaveNameErr = -8738;
constexpr long kSaveNameSize = 33;
constexpr unsigned long kSelectionSet = 1;
constexpr int32_t kVolumeParentID = 1;

// A descriptor with no data names the root node.
TKelNode NodeOfDesc(const BEDesc* desc) {
    if (desc->dataHandle == nullptr) {
        return TKelNode(TKelNode::GetRootNodeRef(), true);
    }
    return TKelNode(GetBEDescAsNode(desc), false);
}

StatusCode FailedUnless(bool done) {
    return done ? noErr : kFailedErr;
}

// Statuses that the message hands back in 16 bits.
StatusCode Short(StatusCode status) {
    return static_cast<int16_t>(status);
}

// Selectors whose argument must be there, one bit each.
constexpr uint32_t kNeedsParms = 1u << 1 | 1u << 2 | 1u << 7 | 1u << 8 | 1u << 9 | 1u << 13 |
                                 1u << 14 | 1u << 17 | 1u << 18 | 1u << 19 | 1u << 20 | 1u << 21 |
                                 1u << 22 | 1u << 23 | 1u << 24 | 1u << 25 | 1u << 28;

bool NeedsParms(long selector) {
    return ((kNeedsParms >> selector) & 1u) != 0;
}

StatusCode EjectVolume(int16_t volume) {
    const BFSpec spec{volume, kVolumeParentID, {0}};
    BFRef ref{};
    if (BFSpecMakeBFRef(&spec, &ref) != noErr) {
        return kFailedErr;
    }
    const TKelNode node(GetBFRefAsNode(&ref), false);
    return FailedUnless(!node.IsEmpty() && VolumeEject(node.PeekNodeRef()) == noErr);
}

} // namespace

// The messages that need more than one call of the dialog, with access to its parts.
class TCustomControlMessages {
public:
    static StatusCode GetLocation(TBrowseDialog& dialog, BEDesc* out);
    static StatusCode SetLocation(TBrowseDialog& dialog, const BEDesc* desc);
    static StatusCode SetSelection(TBrowseDialog& dialog, const BEDescList* list);
    static StatusCode NewFolder(TBrowseDialog& dialog, const uint8_t* name);
    static StatusCode GetSaveName(TBrowseDialog& dialog, uint8_t* out);
    static StatusCode GoToParent(TBrowseDialog& dialog);
};

StatusCode TBrowseDialog::CustomControl(long selector, void* parms) {
    if (selector < 0 || selector > kKelCtlTerminate) {
        return __KelDialog::CustomControl(selector, parms);
    }
    if (parms == nullptr && NeedsParms(selector)) {
        return paramErr;
    }
    switch (selector) {
    case kKelCtlShowDesktop:
        return FailedUnless(GotoDesktop());
    case 1:
    case 2:
        return *static_cast<uint16_t*>(parms) < 2 ? kInvalidErr : kFailedErr;
    case kKelCtlGetLocation:
        return TCustomControlMessages::GetLocation(*this, static_cast<BEDesc*>(parms));
    case kKelCtlSetLocation:
        return TCustomControlMessages::SetLocation(*this, static_cast<BEDesc*>(parms));
    case kKelCtlGetSelection:
        return FailedUnless(GetSelection(static_cast<BEDesc*>(parms)) == noErr);
    case kKelCtlSetSelection:
        return TCustomControlMessages::SetSelection(*this, static_cast<BEDescList*>(parms));
    case kKelCtlShowSelection:
        return browser != nullptr ? browser->RevealSelection() : kFailedErr;
    case kKelCtlOpenSelection:
    case kKelCtlAccept:
        return FailedUnless(TryAcceptDialog(0));
    case kKelCtlEjectVolume:
        return EjectVolume(*static_cast<int16_t*>(parms));
    case kKelCtlNewFolder:
        return TCustomControlMessages::NewFolder(*this, static_cast<const uint8_t*>(parms));
    case kKelCtlCancel:
        client.Event(kKelCBCancel);
        TerminateWithUserAction(kKelUserActionCancel);
        return noErr;
    case kKelCtlIsPreviewShowing:
        return Short(IsPreviewShowing(static_cast<unsigned char*>(parms)));
    case kKelCtlGetFirstControlID:
        return GetFirstCustomControl(static_cast<uint16_t*>(parms));
    case kKelCtlSelectCustomType:
        return SelectCustomType(static_cast<KelMenuItemSpec*>(parms));
    case kKelCtlSelectAllType:
        return SelectAllType(static_cast<uint16_t*>(parms));
    case kKelCtlGetEditFileName:
        return TCustomControlMessages::GetSaveName(*this, static_cast<uint8_t*>(parms));
    case kKelCtlSetEditFileName:
        SetSaveFileName(TStringRef::Create(static_cast<const uint8_t*>(parms),
                                           TStringRef::kApplicationEncoding),
                        false);
        return noErr;
    case kKelCtlSelectEditFileName:
        return SelectSaveFileName(static_cast<ControlEditTextSelectionRec*>(parms));
    case kKelCtlBrowserSelectAll:
        return browser != nullptr ? SelectAllSelectable() : kFailedErr;
    case kKelCtlGotoParent:
        return TCustomControlMessages::GoToParent(*this);
    case kKelCtlSetActionState:
        return Short(SetKelState(*static_cast<uint32_t*>(parms)));
    case kKelCtlRefresh:
        if (browser == nullptr) {
            return kFailedErr;
        }
        browser->Refresh();
        return noErr;
    case kKelCtlTerminate:
        // A dialog that isn't running has nothing to end.
        return __KelDialog::Terminate();
    default:
        // 3 to 6 have no function; 18 and 19 add controls to the custom area, which takes none
        // yet.
        return kInvalidErr;
    }
}

StatusCode TCustomControlMessages::GetLocation(TBrowseDialog& dialog, BEDesc* out) {
    *out = BEDesc{typeNull, nullptr};
    TKelNode location;
    if (dialog.browser != nullptr) {
        dialog.browser->GetTarget(location);
    } else {
        TKelNodeArray path;
        dialog.CopyDefaultTargetPath(path);
        if (!path.empty()) {
            location = path.back();
        }
    }
    return location.IsEmpty() ? noErr : location.GetAsBEDesc(*out, dialog.client.SelectionType());
}

StatusCode TCustomControlMessages::SetLocation(TBrowseDialog& dialog, const BEDesc* desc) {
    const TKelNode node = NodeOfDesc(desc);
    if (node.IsEmpty()) {
        return kFailedErr;
    }
    if (dialog.browser != nullptr) {
        return dialog.browser->SetTarget(node, TKelNode(), TKelNode());
    }
    dialog.defaultLocation = node;
    return noErr;
}

StatusCode TCustomControlMessages::SetSelection(TBrowseDialog& dialog, const BEDescList* list) {
    TKelNodeArray nodes;
    if (list == nullptr) {
        if (dialog.browser == nullptr) {
            dialog.initialSelection.clear();
            return noErr;
        }
        return dialog.browser->SetSelection(nodes, kSelectionSet);
    }
    TKelNode location;
    StatusCode lastRead = noErr;
    long count = 0;
    if (BECountItems(list, &count) != noErr) {
        nodes.push_back(NodeOfDesc(list));
        location = nodes.back().GetParent();
    }
    for (long index = 1; index <= count; ++index) {
        BEDesc item{typeNull, nullptr};
        BEKeyword keyword = 0;
        lastRead = BEGetNthDesc(list, index, typeWildCard, &keyword, &item);
        if (lastRead != noErr) {
            continue;
        }
        nodes.push_back(NodeOfDesc(&item));
        BEDisposeDesc(&item);
        if (location.IsEmpty()) {
            location = nodes.back().GetParent();
        }
    }
    if (dialog.browser == nullptr) {
        dialog.defaultLocation = location;
        dialog.initialSelection = nodes;
        return FailedUnless(lastRead == noErr);
    }
    // Nodes of other folders than the first one's stay unselected: the dialog shows one folder.
    if (dialog.browser->SetTarget(location, TKelNode(), TKelNode()) != noErr ||
        dialog.browser->SetSelection(nodes, kSelectionSet) != noErr) {
        return kFailedErr;
    }
    // Showing the target is a courtesy: the selection stands either way.
    dialog.browser->RevealTarget();
    return noErr;
}

// A new folder's name comes in the application's encoding, as every name the client sends.
StatusCode TCustomControlMessages::NewFolder(TBrowseDialog& dialog, const uint8_t* name) {
    TUniString text(TStringRef::Create(name, TStringRef::kApplicationEncoding).AsBCStringRef());
    return dialog.DoNewFolder(&text);
}

StatusCode TCustomControlMessages::GetSaveName(TBrowseDialog& dialog, uint8_t* out) {
    const TStringRef name = dialog.SaveFileName();
    // The name goes out in the system script, whatever the application's own encoding.
    if (name.IsNil() || !name.CopyToPascalString(out, kSaveNameSize,
                                                 uint32_t(GetScriptManagerVariable(smSysScript)))) {
        return kNoSaveNameErr;
    }
    return noErr;
}

StatusCode TCustomControlMessages::GoToParent(TBrowseDialog& dialog) {
    TKelNode target;
    if (dialog.browser == nullptr || dialog.browser->GetTarget(target) != noErr ||
        target.IsEmpty()) {
        return kFailedErr;
    }
    const TKelNode parent = target.GetParent();
    if (parent.IsEmpty()) {
        return kFailedErr;
    }
    return dialog.browser->SetTarget(parent, TKelNode(), TKelNode());
}
