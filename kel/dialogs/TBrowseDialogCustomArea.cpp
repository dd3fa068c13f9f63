// The client's custom area: control 14 in the bottom group, with pane 27 inside it for the
// client's controls. The client agrees its size at start-up through kKelCBCustomize; it draws
// with port drawing clipped to the pane, inside TPrepareToDrawInsideCustomArea.

#include "kel/dialogs/TBrowseDialog.h"

#include <algorithm>

namespace {

constexpr int16_t kMinimumCustomHeight = 40;
constexpr int16_t kDisplayMargin = 20;

// Set while the custom area draws, so that a client's drawing that asks for another draw of the
// area does not recurse. One for the library: only one area draws at a time.
bool gDrawingCustomArea = false;

// A requested edge below the minimum is raised to it; one beyond the display is pulled back to
// 20 inside it; anything else is accepted and becomes the new minimum.
void SettleEdge(int16_t& edge, int16_t& minimum, int16_t displayEdge) {
    if (edge > minimum) {
        if (edge > displayEdge) {
            edge = int16_t(displayEdge - kDisplayMargin);
        } else {
            minimum = edge;
        }
    } else {
        edge = minimum;
    }
}

} // namespace

bool TBrowseDialog::NegotiateForCustomSpace() {
    ControlRef area = Control(kBrowseCustomArea);
    if (area == nullptr) {
        client.record.customRect = Rect{0, 0, 0, 0};
        return false;
    }
    BGRect usable = BGRectZero;
    BTWindowGetAvailablePositioningBounds(0, &usable);
    const auto displayRight = int16_t(usable.origin.x + usable.size.width);
    const auto displayBottom = int16_t(usable.origin.y + usable.size.height);
    const Rect frame = GetControlContentRelativeRect(area);
    int16_t minRight = frame.right;
    int16_t minBottom = (optionFlags & kKelOptNoCustomFrame) != 0
                            ? frame.top
                            : int16_t(frame.top + kMinimumCustomHeight);
    client.record.customRect = Rect{frame.top, frame.left, 0, 0};
    client.Event(kKelCBCustomize);
    Rect custom = client.record.customRect;
    if (custom.right == 0 || custom.bottom == 0) {
        client.record.customRect = Rect{0, 0, 0, 0};
        HideControl(area);
        RemoveWidgetFromBottomGroup(area);
        return false;
    }
    while (custom.right != minRight || custom.bottom != minBottom) {
        SettleEdge(custom.right, minRight, displayRight);
        SettleEdge(custom.bottom, minBottom, displayBottom);
        client.record.customRect = custom;
        client.Event(kKelCBCustomize);
        custom = client.record.customRect;
    }
    client.Event(kKelCBCustomize);
    ResizeDialogForCustomization();
    return true;
}

// The area takes the client's height by growing the bottom group upwards and the window
// downwards by as much, so the browser keeps its size; the width comes with the window, which
// the group and the area follow.
void TBrowseDialog::ResizeDialogForCustomization() {
    ControlRef area = Control(kBrowseCustomArea);
    ControlRef group = Control(kBrowseBottomGroup);
    const Rect custom = client.record.customRect;
    const Rect frame = GetControlContentRelativeRect(area);
    const int16_t dW = int16_t(RectWidth(custom) - RectWidth(frame));
    const int16_t dH = int16_t(RectHeight(custom) - RectHeight(frame));
    if (group != nullptr) {
        BTViewSuspendLayout(group);
        BGRect groupFrame = BGRectZero;
        BTViewGetFrame(group, &groupFrame);
        groupFrame.origin.y -= dH;
        groupFrame.size.height += dH;
        BTViewSetFrame(group, &groupFrame);
    }
    BGRect areaFrame = BGRectZero;
    BTViewGetFrame(area, &areaFrame);
    areaFrame.size.height += dH;
    BTViewSetFrame(area, &areaFrame);
    if (group != nullptr) {
        BTViewResumeLayout(group);
    }
    TRect bounds;
    GetBounds(bounds);
    const auto width = int16_t(RectWidth(bounds) + dW);
    const auto height = int16_t(RectHeight(bounds) + dH);
    SizeWindow(windowRef, width, height, true);
    minimumWidth = width;
    minimumHeight = height;
}

void TBrowseDialog::SyncCustomAreaTraditionalControlBounds() {
    ControlRef area = Control(kBrowseCustomArea);
    ControlRef pane = Control(kBrowseCustomPane);
    if (area == nullptr || pane == nullptr) {
        return;
    }
    const Rect areaRect = GetControlContentRelativeRect(area);
    const Rect paneRect = GetControlContentRelativeRect(pane);
    const bool moved = areaRect.top != paneRect.top || areaRect.left != paneRect.left ||
                       areaRect.bottom != paneRect.bottom || areaRect.right != paneRect.right;
    if (moved) {
        SetControlContentRelativeRect(pane, areaRect);
    }
    Rect custom = client.record.customRect;
    if (RectHeight(custom) == 0 || RectWidth(custom) == 0) {
        return;
    }
    const int16_t dh = int16_t(areaRect.left - custom.left);
    const int16_t dv = int16_t(areaRect.top - custom.top);
    custom =
        Rect{areaRect.top, areaRect.left, int16_t(custom.bottom + dv), int16_t(custom.right + dh)};
    client.record.customRect = custom;
}

StatusCode TBrowseDialog::CustomAreaCompositingHandler(EventHandlerCallRef call, EventRef event,
                                                       void* data) {
    auto* dialog = static_cast<TBrowseDialog*>(data);
    switch (GetEventKind(event)) {
    case kEventControlActivate:
    case kEventControlDeactivate:
        BTViewSetNeedsDisplay(dialog->Control(kBrowseCustomArea), true);
        return eventNotHandledErr;
    case kEventControlBoundsChanged: {
        const StatusCode status = CallNextEventHandler(call, event);
        dialog->SyncCustomAreaTraditionalControlBounds();
        return status;
    }
    case kEventControlDraw:
        if (gDrawingCustomArea) {
            return eventNotHandledErr;
        }
        gDrawingCustomArea = true;
        {
            TPrepareToDrawInsideCustomArea prepare(*dialog);
            EventRecord update{};
            update.what = updateEvt;
            update.message = reinterpret_cast<uintptr_t>(dialog->windowRef);
            dialog->client.record.eventData = &update;
            dialog->client.Event(kKelCBEvent);
            dialog->client.record.eventData = nullptr;
        }
        gDrawingCustomArea = false;
        return eventNotHandledErr;
    default:
        return eventNotHandledErr;
    }
}

StatusCode TBrowseDialog::CustomAreaNonCompositingHandler(EventHandlerCallRef, EventRef, void*) {
    // The pane is the client's: the toolbox draws the dialog's background under it.
    return eventNotHandledErr;
}

TPrepareToDrawInsideCustomArea::TPrepareToDrawInsideCustomArea(TBrowseDialog& dialog) {
    GetPort(&savedPort);
    SetPortWindowPort(dialog.GetWindow());
    port = GetWindowPort(dialog.GetWindow());
    ControlRef pane = dialog.GetControlFromLayout(kBrowseCustomPane);
    if (port == nullptr || pane == nullptr) {
        return;
    }
    savedVisibleRegion = NewRgn();
    GetPortVisibleRegion(port, savedVisibleRegion);
    const Rect bounds = dialog.GetControlContentRelativeRect(pane);
    RgnHandle clip = NewRgn();
    RectRgn(clip, &bounds);
    SectRgn(clip, savedVisibleRegion, clip);
    SetPortVisibleRegion(port, clip);
    DisposeRgn(clip);
}

TPrepareToDrawInsideCustomArea::~TPrepareToDrawInsideCustomArea() {
    if (savedVisibleRegion != nullptr) {
        SetPortVisibleRegion(port, savedVisibleRegion);
        DisposeRgn(savedVisibleRegion);
    }
    SetPort(savedPort);
}
