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
constexpr long kLastSelector = 30;
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

// Selectors whose argument must be there.
bool NeedsParms(long selector) {
    switch (selector) {
    case 1:
    case 2:
    case 7:
    case 8:
    case 9:
    case 13:
    case 14:
    case 17:
    case 18:
    case 19:
    case 20:
    case 21:
    case 22:
    case 23:
    case 24:
    case 25:
    case 28:
        return true;
    default:
        return false;
    }
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
    if (selector < 0 || selector > kLastSelector) {
        return __KelDialog::CustomControl(selector, parms);
    }
    if (parms == nullptr && NeedsParms(selector)) {
        return paramErr;
    }
    switch (selector) {
    case 0:
        return FailedUnless(GotoDesktop());
    case 1:
    case 2:
        return *static_cast<uint16_t*>(parms) < 2 ? kInvalidErr : kFailedErr;
    case 7:
        return TCustomControlMessages::GetLocation(*this, static_cast<BEDesc*>(parms));
    case 8:
        return TCustomControlMessages::SetLocation(*this, static_cast<BEDesc*>(parms));
    case 9:
        return FailedUnless(GetSelection(static_cast<BEDesc*>(parms)) == noErr);
    case 10:
        return TCustomControlMessages::SetSelection(*this, static_cast<BEDescList*>(parms));
    case 11:
        return browser != nullptr ? browser->RevealSelection() : kFailedErr;
    case 12:
    case 16:
        return FailedUnless(TryAcceptDialog(0));
    case 13:
        return EjectVolume(*static_cast<int16_t*>(parms));
    case 14:
        return TCustomControlMessages::NewFolder(*this, static_cast<const uint8_t*>(parms));
    case 15:
        client.Event(kKelCBCancel);
        TerminateWithUserAction(kKelUserActionCancel);
        return noErr;
    case 17:
        return Short(IsPreviewShowing(static_cast<unsigned char*>(parms)));
    case 20:
        return GetFirstCustomControl(static_cast<uint16_t*>(parms));
    case 21:
        return SelectCustomType(static_cast<KelMenuItemSpec*>(parms));
    case 22:
        return SelectAllType(static_cast<uint16_t*>(parms));
    case 23:
        return TCustomControlMessages::GetSaveName(*this, static_cast<uint8_t*>(parms));
    case 24:
        SetSaveFileName(TStringRef::Create(static_cast<const uint8_t*>(parms),
                                           TStringRef::kApplicationEncoding),
                        false);
        return noErr;
    case 25:
        return SelectSaveFileName(static_cast<ControlEditTextSelectionRec*>(parms));
    case 26:
        return browser != nullptr ? browser->SelectAll() : kFailedErr;
    case 27:
        return TCustomControlMessages::GoToParent(*this);
    case 28:
        return Short(SetKelState(*static_cast<uint32_t*>(parms)));
    case 29:
        if (browser == nullptr) {
            return kFailedErr;
        }
        browser->Refresh();
        return noErr;
    case 30:
        __KelDialog::Terminate();
        return noErr;
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
    const bool done = dialog.browser->SetTarget(location, TKelNode(), TKelNode()) == noErr &&
                      dialog.browser->SetSelection(nodes, kSelectionSet) == noErr &&
                      dialog.browser->RevealTarget() == noErr;
    return FailedUnless(done);
}

StatusCode TCustomControlMessages::NewFolder(TBrowseDialog& dialog, const uint8_t* name) {
    TUniString text(name, GetScriptManagerVariable(smSysScript));
    return dialog.DoNewFolder(&text);
}

StatusCode TCustomControlMessages::GetSaveName(TBrowseDialog& dialog, uint8_t* out) {
    const TStringRef name = dialog.SaveFileName();
    if (name.IsNil() ||
        !name.CopyToPascalString(out, kSaveNameSize, TStringRef::kApplicationEncoding)) {
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
