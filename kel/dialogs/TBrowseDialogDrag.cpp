// Drops on a browse dialog: one file or folder dragged in from elsewhere shows its folder, with
// the file selected. Only drags of exactly one item with a file URL are taken.

#include "kel/dialogs/TBrowseDialog.h"

#include <basalt/files/BFRef.h>
#include <vector>

namespace {

constexpr uint32_t kUTF8Encoding = 0x8000100;
constexpr StatusCode kURLNotAFileErr = -4960;

} // namespace

StatusCode TBrowseDialog::GetDropNode(DragRef drag, TKelNode& out) {
    uint16_t count = 0;
    StatusCode status = CountDragItems(drag, &count);
    if (status != noErr) {
        return status;
    }
    if (count > 1) {
        return dragNotAcceptedErr;
    }
    DragItemRef item = 0;
    Size size = 0;
    status = GetDragItemReferenceNumber(drag, 1, &item);
    if (status == noErr) {
        status = GetFlavorDataSize(drag, item, kDragFlavorTypeFileURL, &size);
    }
    if (status != noErr) {
        return status;
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    status = GetFlavorData(drag, item, kDragFlavorTypeFileURL, bytes.data(), &size, 0);
    if (status != noErr) {
        return status;
    }
    BCURLRef url = BCURLCreateWithBytes(nullptr, bytes.data(), size, kUTF8Encoding, nullptr);
    BFRef ref;
    const bool converted = url != nullptr && BCURLGetBFRef(url, &ref);
    if (url != nullptr) {
        BCRelease(url);
    }
    if (!converted) {
        return kURLNotAFileErr;
    }
    out = TKelNode(GetBFRefAsNode(&ref), false);
    return noErr;
}

bool TBrowseDialog::CanReceiveDrop(TKelNode& node) {
    if (node.IsEmpty()) {
        return false;
    }
    return node.IsContainer() ? filter.CanTarget(node) : filter.CanSelect(node, 0);
}

// The drop is taken once its folder shows; revealing the selection is only a courtesy.
StatusCode TBrowseDialog::ReceiveDrop(TKelNode& node) {
    StatusCode status = noErr;
    if (node.IsContainer()) {
        TKelNode original;
        const bool broken =
            NodeIsAlias(node.PeekNodeRef()) && node.FollowAlias(false, original) != noErr;
        if (!broken) {
            status = browser->SetTarget(node, TKelNode(), TKelNode());
        }
    } else {
        const TKelNode parent = node.GetParent();
        status = browser->SetTarget(parent, TKelNode(), TKelNode());
        if (status == noErr) {
            TellPopupsTarget(parent);
            browser->SetSelection(NodeList(node), 1);
        }
    }
    browser->RevealSelection();
    return status;
}

StatusCode TBrowseDialog::ReceiveDropHandler(DragRef drag) {
    TKelNode node;
    const StatusCode status = GetDropNode(drag, node);
    if (status != noErr) {
        return status;
    }
    return CanReceiveDrop(node) ? ReceiveDrop(node) : dragNotAcceptedErr;
}

StatusCode TBrowseDialog::TrackDrag(DragTrackingMessage message, DragRef drag) {
    if (message != kDragTrackingEnterHandler && !dragAccepted) {
        return noErr;
    }
    DragAttributes attributes = 0;
    GetDragAttributes(drag, &attributes);
    const bool leftSource = (attributes & kDragHasLeftSenderWindow) != 0;
    switch (message) {
    case kDragTrackingEnterHandler: {
        dragAccepted = true;
        uint16_t count = 0;
        CountDragItems(drag, &count);
        for (uint16_t index = 1; index <= count; ++index) {
            DragItemRef item = 0;
            FlavorFlags flags = 0;
            StatusCode status = GetDragItemReferenceNumber(drag, index, &item);
            if (status == noErr) {
                status = GetFlavorFlags(drag, item, kDragFlavorTypeFileURL, &flags);
            }
            if (status != noErr) {
                dragAccepted = false;
                return status;
            }
        }
        return noErr;
    }
    case kDragTrackingEnterWindow:
    case kDragTrackingInWindow: {
        if (!leftSource) {
            HideDragHilite(drag);
            return noErr;
        }
        TKelNode node;
        if (const StatusCode status = GetDropNode(drag, node); status != noErr) {
            HideDragHilite(drag);
            return status;
        }
        if (!CanReceiveDrop(node)) {
            return dragNotAcceptedErr;
        }
        TRect bounds;
        GetBounds(bounds);
        RgnHandle region = NewRgn();
        RectRgn(region, &bounds);
        ShowDragHilite(drag, region, true);
        DisposeRgn(region);
        return noErr;
    }
    case kDragTrackingLeaveWindow:
        if (leftSource) {
            HideDragHilite(drag);
        }
        return noErr;
    default:
        return noErr;
    }
}

StatusCode TBrowseDialog::DragReceive(WindowRef, void* data, DragRef drag) {
    return static_cast<TBrowseDialog*>(data)->ReceiveDropHandler(drag);
}

StatusCode TBrowseDialog::DragTracking(DragTrackingMessage message, WindowRef, void* data,
                                       DragRef drag) {
    return static_cast<TBrowseDialog*>(data)->TrackDrag(message, drag);
}

void TBrowseDialog::InstallDragHandlers() {
    dragHandlersInstalled = InstallReceiveHandler(DragReceive, windowRef, this) == noErr &&
                            InstallTrackingHandler(DragTracking, windowRef, this) == noErr;
}

void TBrowseDialog::RemoveDragHandlers() {
    if (windowRef != nullptr) {
        RemoveReceiveHandler(DragReceive, windowRef);
        RemoveTrackingHandler(DragTracking, windowRef);
    }
}
