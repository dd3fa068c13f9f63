// The sidebar's mouse and keys: choosing a row tells the dialog at once, except while an arrow
// key repeats, when the report waits for the user to pause, so that holding a key walks the
// rows without loading every place on the way. Ejectable rows have a button of their own, with
// hover, press and release tracked here.

#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/SidebarEvents.h"
#include "kel/widgets/views/BTSidebarItemsView.h"

namespace {

enum : char16_t {
    kHomeKey = 1,
    kEndKey = 4,
    kPageUpKey = 11,
    kPageDownKey = 12,
    kUpArrowKey = 30,
    kDownArrowKey = 31,
};

// The volume a node lies on, or empty for nodes above the volumes.
TKelNode VolumeOf(TKelNode node) {
    while (!node.IsEmpty() && !NodeIsVolume(node.PeekNodeRef()))
        node = node.GetParent();
    return node;
}

} // namespace

StatusCode BTSidebarItemsView::Track(TBasaltEvent& event, short* outPart) {
    BGPoint point{};
    event.GetParameter(kEventParamMouseLocation, &point);
    int row = FindItemHit(point);
    if (row == 0)
        return noErr;
    SidebarItem* item = sidebar->GetItem(row - 1);
    OpaqueNodeRef* original = nullptr;
    bool selectable = false;
    if (NodeFollowAlias(item->node.PeekNodeRef(), true, &original) == noErr) {
        selectable = IsSelectable(original);
        DisposeNode(original);
    }
    *outPart = kControlNoPart;
    BGRect rowRect{}, button{};
    GetItemBounds(row, &rowRect);
    GetItemButtonBounds(item, rowRect, &button);
    // The button works even on a row that cannot be chosen: a volume can always be ejected.
    if (item->IsEjectable() && button.size.width > 0 && BGRectContainsPoint(button, point)) {
        TrackItemButton(item, row, button);
        return noErr;
    }
    if (!selectable)
        return noErr;
    unsigned long modifiers = 0;
    event.GetParameter(kEventParamKeyModifiers, &modifiers);
    SelectItem(row, modifiers, true);
    *outPart = 1;
    return noErr;
}

void BTSidebarItemsView::SelectItem(int row, unsigned long modifiers, bool notify) {
    if (row == selectedRow)
        return;
    InvalidateItems(selectedRow, row);
    selectedRow = row;
    if (!notify)
        return;
    // The highlight shows before the dialog goes off to load the place.
    BTWindowFlush(GetControlOwner(GetViewRef()));
    SetClientRoot(row, modifiers);
}

void BTSidebarItemsView::SetClientRoot(int row, unsigned long modifiers) {
    const SidebarItem* item = sidebar->GetItem(row - 1);
    TKelNode chosen;
    if (item == nullptr || item->node.FollowAlias(true, chosen) != noErr)
        return;
    TBasaltEvent event(kEventClassSidebar, kEventSidebarItemChosen);
    if (event.Get() == nullptr)
        return;
    sidebar->SetPendingRoot(VolumeOf(chosen));
    TKelNode* node = &chosen;
    event.SetParameter(kEventParamSidebarNode, typeSidebarNode, sizeof node, &node);
    event.SetParameter(kEventParamKeyModifiers, modifiers);
    SendEventToEventTargetWithOptions(event.Get(), sidebar->GetEventTarget(),
                                      kEventTargetDontPropagate);
}

void BTSidebarItemsView::TrackItemButton(const SidebarItem* item, int row,
                                         const BGRect& buttonBounds) {
    // Held here: the rows may be read again while the mouse is followed.
    TKelNode node = item->node;
    trackingRow = pressedRow = row;
    InvalidateItems(row, 0);
    WindowRef window = GetControlOwner(GetViewRef());
    bool inside = true; // a release before any move counts as a press
    for (;;) {
        Point where{};
        MouseTrackingResult result = kMouseTrackingMouseUp;
        if (TrackMouseLocation(GetWindowPort(window), &where, &result) != noErr) {
            inside = false;
            break;
        }
        BGPoint point = {BGFloat(where.h), BGFloat(where.v)};
        BTPointConvert(&point, kBTCoordSpaceWindow, window, kBTCoordSpaceView, GetViewRef());
        if (bool now = BGRectContainsPoint(buttonBounds, point); now != inside) {
            inside = now;
            pressedRow = inside ? row : 0;
            InvalidateItems(row, 0);
        }
        if (result == kMouseTrackingMouseUp || trackingRow == 0)
            break;
    }
    if (inside) {
        pressedRow = 0;
        InvalidateItems(row, 0);
    }
    if (hoverRow != 0 && hoverRow != row)
        InvalidateItems(hoverRow, 0);
    trackingRow = 0;
    OpaqueNodeRef* volume = nullptr;
    if (inside && NodeFollowAlias(node.PeekNodeRef(), true, &volume) == noErr) {
        // The row goes when the service reports the list without the volume.
        VolumeEject(volume);
        DisposeNode(volume);
    }
}

void BTSidebarItemsView::RebuildTrackingAreas() {
    int count = sidebar->CountItems();
    for (int row = 1; row <= count; ++row) {
        SidebarItem* item = sidebar->GetItem(row - 1);
        BGRect rowRect{}, button{};
        GetItemBounds(row, &rowRect);
        GetItemButtonBounds(item, rowRect, &button);
        if (!item->IsEjectable() || button.size.width <= 0) {
            if (item->trackingArea != nullptr)
                BTViewDisposeTrackingArea(item->trackingArea);
            item->trackingArea = nullptr;
            continue;
        }
        BTShapeRef shape = BTShapeCreateWithRect(&button);
        if (item->trackingArea != nullptr)
            BTViewChangeTrackingArea(item->trackingArea, shape);
        else
            BTViewNewTrackingArea(GetViewRef(), shape, BTViewTrackingAreaID(row),
                                  &item->trackingArea);
        BTShapeRelease(shape);
    }
}

void BTSidebarItemsView::ReleaseTrackingAreas() {
    int count = sidebar->CountItems();
    for (int index = 0; index < count; ++index) {
        SidebarItem* item = sidebar->GetItem(index);
        if (item->trackingArea != nullptr)
            BTViewDisposeTrackingArea(item->trackingArea);
        item->trackingArea = nullptr;
    }
    hoverRow = 0;
}

void BTSidebarItemsView::TrackingAreaEntered(BTViewTrackingAreaRef area) {
    BTViewTrackingAreaID id = 0;
    BTViewGetTrackingAreaID(area, &id);
    InvalidateItems(hoverRow, int(id));
    hoverRow = int(id);
}

void BTSidebarItemsView::TrackingAreaExited(BTViewTrackingAreaRef area) {
    BTViewTrackingAreaID id = 0;
    BTViewGetTrackingAreaID(area, &id);
    if (int(id) != hoverRow)
        return;
    InvalidateItems(hoverRow, 0);
    hoverRow = 0;
}

// Any part the toolbox gives the view focus with counts as the view's one part.
StatusCode BTSidebarItemsView::SetFocusPart(short part, bool, short* outPart) {
    bool had = HasFocus();
    if (!focusable)
        *outPart = kControlFocusNoPart;
    else if (part == kControlFocusNextPart || part == kControlFocusPrevPart)
        *outPart = had ? 0 : 1;
    else
        *outPart = part > 0 ? 1 : 0;
    if ((*outPart != 0) != had && selectedRow != 0)
        InvalidateItems(selectedRow, 0);
    sidebar->Invalidate(); // it draws the focus ring
    return noErr;
}

StatusCode BTSidebarItemsView::TextInput(TBasaltEvent& event) {
    char16_t text[4] = {};
    size_t size = 0;
    if (GetEventParameter(event.Get(), kEventParamTextInputSendText, typeUnicodeText, nullptr,
                          sizeof text, &size, text) != noErr ||
        size < sizeof(char16_t))
        return eventNotHandledErr;
    EventRef raw = nullptr;
    unsigned long modifiers = 0;
    bool repeat = false;
    if (event.GetParameter(kEventParamTextInputSendKeyboardEvent, typeEventRef, sizeof raw, &raw) ==
            noErr &&
        raw != nullptr) {
        TBasaltEvent key(raw);
        key.GetParameter(kEventParamKeyModifiers, &modifiers);
        repeat = key.Kind() == kEventRawKeyRepeat;
    }
    return MoveSelection(text[0], modifiers, repeat);
}

StatusCode BTSidebarItemsView::MoveSelection(char16_t key, unsigned long modifiers, bool repeat) {
    ControlRef scrollView = BTViewGetSuperview(GetViewRef());
    auto goTo = [scrollView](uint32_t action) {
        BTScrollViewGoTo(scrollView, action);
        return noErr;
    };
    bool up = key == kUpArrowKey;
    switch (key) {
    case kHomeKey:
        return goTo(kBTScrollViewScrollToTop);
    case kEndKey:
        return goTo(kBTScrollViewScrollToBottom);
    case kPageUpKey:
        return goTo(kBTScrollViewPageUp);
    case kPageDownKey:
        return goTo(kBTScrollViewPageDown);
    case kUpArrowKey:
    case kDownArrowKey:
        if (modifiers & cmdKey)
            return goTo(up ? kBTScrollViewScrollToTop : kBTScrollViewScrollToBottom);
        if (modifiers & optionKey)
            return goTo(up ? kBTScrollViewPageUp : kBTScrollViewPageDown);
        break;
    default:
        return eventNotHandledErr;
    }
    int count = sidebar->CountItems();
    int row = up ? (selectedRow == 0 ? count : selectedRow - 1)
                 : (selectedRow == 0 ? 1 : selectedRow + 1);
    if (row < 1 || row > count)
        return eventNotHandledErr;
    SelectItem(row, 0, !repeat);
    MakeItemVisible(row);
    if (repeat)
        ReportAfterKeyRepeat();
    return noErr;
}

void BTSidebarItemsView::ReportAfterKeyRepeat() {
    EventTimerInterval pause = (LMGetKeyRepThresh() + 5) / 60.0;
    if (clientRootTimer != nullptr)
        SetEventLoopTimerNextFireTime(clientRootTimer, pause);
    else
        InstallEventLoopTimer(GetMainEventLoop(), pause, 0, SetClientRootTimer, this,
                              &clientRootTimer);
}

void BTSidebarItemsView::SetClientRootTimer(EventLoopTimerRef timer, void* data) {
    auto* view = static_cast<BTSidebarItemsView*>(data);
    RemoveEventLoopTimer(timer);
    view->clientRootTimer = nullptr;
    view->SetClientRoot(view->selectedRow, 0);
}
