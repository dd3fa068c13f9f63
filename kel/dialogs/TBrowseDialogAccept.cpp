// The selection as the client sees it, the accept flow and the buttons that follow the state.
// Lists sent to the client are sorted by name, so that the client sees one order whatever the
// browser shows.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/KelBundle.h"

#include <basalt/nodes/NodeProperties.h>

namespace {

constexpr FourCharCode kNameProperty4 = NodeCode("pnam");
constexpr unsigned long kSelectionSet = 1;

// Appends each node as the next item of a new list. A node that can't be converted is skipped,
// but only the last node's status decides the result.
StatusCode MakeList(const TKelNodeArray& nodes, uint32_t replyType, BEDescList& list) {
    StatusCode status = BECreateList(nullptr, 0, false, &list);
    if (status != noErr) {
        return status;
    }
    long index = 1;
    for (const TKelNode& node : nodes) {
        BEDesc desc{typeNull, nullptr};
        status = node.GetAsBEDesc(desc, replyType);
        if (status == noErr) {
            status = BEPutDesc(&list, index++, &desc);
            BEDisposeDesc(&desc);
        }
    }
    if (status != noErr) {
        BEDisposeDesc(&list);
    }
    return status;
}

} // namespace

StatusCode TBrowseDialog::GetSelection(TKelNodeArray& out) {
    out.clear();
    if (browser != nullptr) {
        return browser->GetSelection(out);
    }
    if (!initialSelection.empty()) {
        out = initialSelection;
    } else if (!defaultLocation.IsEmpty()) {
        out.push_back(defaultLocation);
    }
    return noErr;
}

StatusCode TBrowseDialog::GetSelection(BEDesc* out) {
    *out = BEDesc{typeNull, nullptr};
    TKelNodeArray nodes;
    StatusCode status = GetSelection(nodes);
    if (status != noErr || nodes.empty()) {
        return status;
    }
    nodes.Sort(kNameProperty4);
    BEDescList list{typeNull, nullptr};
    status = MakeList(nodes, client.SelectionType(), list);
    if (status == noErr) {
        status = BEDuplicateDesc(&list, out);
        BEDisposeDesc(&list);
    }
    return status;
}

StatusCode TBrowseDialog::NotifySelection(TKelNodeArray& nodes, long code) {
    BEDescList list{typeNull, nullptr};
    const StatusCode status = MakeList(nodes, client.SelectionType(), list);
    if (status != noErr) {
        return status;
    }
    client.record.eventData = &list;
    client.Event(code);
    client.record.eventData = nullptr;
    BEDisposeDesc(&list);
    return noErr;
}

bool TBrowseDialog::TryAcceptDialog(uint32_t modifiers) {
    TKelNodeArray selection;
    if (GetSelection(selection) != noErr || !ValidateAcceptDialog(modifiers)) {
        return false;
    }
    client.Event(kKelCBAccept);
    TerminateWithUserAction(acceptAction);
    return true;
}

bool TBrowseDialog::ValidateAcceptDialog(uint32_t) {
    return CanChoose();
}

bool TBrowseDialog::CanChoose() {
    TKelNodeArray selection;
    if (GetSelection(selection) != noErr) {
        return false;
    }
    for (const TKelNode& node : selection) {
        TKelNode judged = node;
        if (NodeIsQueryHit(node.PeekNodeRef())) {
            node.GetOriginal(false, judged);
        }
        if (filter.CanChoose(judged)) {
            return true;
        }
    }
    return false;
}

StatusCode TBrowseDialog::SelectAllSelectable() {
    StatusCode status = browser->SelectAll();
    TKelNodeArray selection;
    if (status != noErr || (status = browser->GetSelection(selection)) != noErr) {
        return status;
    }
    // The browser picks rows by kind alone; rows the type filter greys out stay unselected.
    const auto refused = std::erase_if(selection, [this](const TKelNode& node) {
        TKelNode judged = node;
        if (NodeIsQueryHit(node.PeekNodeRef())) {
            node.GetOriginal(false, judged);
        }
        return !filter.CanSelect(judged, 0);
    });
    return refused == 0 ? noErr : browser->SetSelection(selection, kSelectionSet);
}

bool TBrowseDialog::CanOpen() {
    return (actionState & kActionOpenRefused) == 0;
}

StatusCode TBrowseDialog::SetKelState(uint32_t state) {
    actionState = state == 0 ? 0 : actionState | state;
    FixButtons();
    return noErr;
}

void TBrowseDialog::FixButtons() {
    if (CanOpen()) {
        wherePopup.Enable(1);
    }
    if (ControlRef newFolder = Control(kBrowseNewFolder)) {
        if (IsTargetLocked() || (actionState & kActionNewFolderRefused) != 0) {
            DisableControl(newFolder);
        } else {
            EnableControl(newFolder);
        }
    }
}

bool TBrowseDialog::IsTargetLocked() {
    TKelNode target;
    if (Target(target) != noErr || target.IsEmpty()) {
        return true;
    }
    TKelNode original = target;
    if (NodeIsAlias(target.PeekNodeRef()) && target.FollowAlias(false, original) != noErr) {
        return true;
    }
    // A folder whose own lock is on, or in which nothing may be made, takes no saves and no new
    // folders. Whether the folder itself may be renamed is its parent's business.
    for (uint32_t mask : {kNodePermissionUnlocked, kNodePermissionAddChild}) {
        uint32_t bits = mask;
        if (NodeGetPermissions(original.PeekNodeRef(), &bits) != noErr || bits != mask) {
            return true;
        }
    }
    return false;
}

void TBrowseDialog::SetDefaultButtonTitle() {
    if (defaultControl == nullptr) {
        return;
    }
    const TStringRef title =
        actionButtonLabel.Length() > 0 ? actionButtonLabel : BundleText("Open Button");
    SetControlTitleWithBCString(defaultControl, title.AsBCStringRef());
}

void TBrowseDialog::SetBusyState(unsigned char busy) {
    ControlRef arrows = Control(SimpleSaveMode() ? kBrowseSimpleSaveArrows : kBrowsePathArrows);
    if (arrows == nullptr) {
        return;
    }
    Boolean animating = false;
    GetControlData(arrows, 0, kControlChasingArrowsAnimatingTag, sizeof animating, &animating,
                   nullptr);
    if (!animating && busy == 0) {
        return;
    }
    if (busy != 0) {
        ShowControl(arrows);
    } else {
        HideControl(arrows);
    }
    animating = busy != 0;
    SetControlData(arrows, 0, kControlChasingArrowsAnimatingTag, sizeof animating, &animating);
    BTWindowFlush(windowRef);
}

StatusCode TBrowseDialog::SetTargetCommand(const TKelNode& target, const TKelNode& root) {
    return browser->SetTarget(target, root, TKelNode());
}

bool TBrowseDialog::IsValidEvent(KelCBRec* record, EventRecord* event) {
    if (!client.HasEventProc()) {
        return false;
    }
    switch (event->what) {
    case nullEvent:
    case keyDown:
    case keyUp:
    case autoKey:
    case 7:
    case activateEvt:
    case osEvt:
    case 23:
        return true;
    case mouseDown: {
        if (record == nullptr) {
            return false;
        }
        BGPoint where{double(event->where.h), double(event->where.v)};
        BTPointConvert(&where, kBTCoordSpaceScreenPixel, nullptr, kBTCoordSpaceWindow, windowRef);
        const Point local{int16_t(where.y), int16_t(where.x)};
        Rect custom = record->customRect;
        Rect preview = record->previewRect;
        return PtInRect(local, &custom) || PtInRect(local, &preview);
    }
    case updateEvt: {
        if (reinterpret_cast<WindowRef>(event->message) != windowRef) {
            return true;
        }
        const Rect custom = record->customRect;
        return custom.bottom > custom.top;
    }
    default:
        return false;
    }
}

StatusCode TBrowseDialog::FillReply(KelReplyRecord& reply) {
    reply.version = 2;
    reply.validRecord = 0;
    reply.selection = BEDesc{typeNull, nullptr};
    if (userAction == kKelUserActionCancel) {
        return userCanceledErr;
    }
    if (userAction != acceptAction || browser == nullptr) {
        return kKelWrongStateErr;
    }
    TKelNodeArray selection;
    StatusCode status = browser->GetSelection(selection);
    if (status != noErr) {
        return status;
    }
    std::erase_if(selection, [this](const TKelNode& node) { return !filter.CanChoose(node); });
    BEDescList list{typeNull, nullptr};
    status = MakeList(selection, client.SelectionType(), list);
    if (status != noErr) {
        return status;
    }
    reply.selection = list;
    reply.validRecord = 1;
    return noErr;
}
