// The handlers a browse dialog installs and what each event does. A handler that does not take
// an event answers eventNotHandledErr so that the toolbox's standard handling goes on.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/SidebarEvents.h"

namespace {

template <class T>
bool ReadParam(EventRef event, EventParamName name, EventParamType type, T& out) {
    return GetEventParameter(event, name, type, nullptr, sizeof out, nullptr, &out) == noErr;
}

// The volume a node lies on: itself if it is one, else its nearest volume ancestor.
TKelNode VolumeOf(const TKelNode& node) {
    for (TKelNode step = node; !step.IsEmpty() && !step.IsRoot(); step = step.GetParent()) {
        if (NodeIsVolume(step.PeekNodeRef())) {
            return step;
        }
    }
    return TKelNode();
}

// Sets the window's port for the length of a handler, as client drawing expects.
class StWindowPort {
public:
    explicit StWindowPort(WindowRef window) {
        GetPort(&saved);
        SetPortWindowPort(window);
    }
    StWindowPort(const StWindowPort&) = delete;
    StWindowPort& operator=(const StWindowPort&) = delete;
    ~StWindowPort() { SetPort(saved); }

private:
    GrafPtr saved = nullptr;
};

} // namespace

void TBrowseDialog::SetupEventHandlers() {
    const EventTypeSpec windowEvents[] = {{kEventClassControl, kEventControlHit},
                                          {kEventClassMouse, kEventMouseDown},
                                          {kEventClassMouse, kEventMouseUp},
                                          {kEventClassKeyboard, kEventRawKeyDown},
                                          {kEventClassWindow, kEventWindowClose},
                                          {kEventClassWindow, kEventWindowDrawContent},
                                          {kEventClassWindow, kEventWindowGetMinimumSize},
                                          {kEventClassWindow, kEventWindowGetIdealSize},
                                          {kEventClassWindow, kEventWindowActivated},
                                          {kEventClassWindow, kEventWindowDeactivated},
                                          {kEventClassWindow, kEventWindowBoundsChanged}};
    InstallEventHandler(GetWindowEventTarget(windowRef), EventWindowHandler,
                        std::size(windowEvents), windowEvents, this, &windowEventHandler);
    const EventTypeSpec groupEvents[] = {{kEventClassControl, kEventControlDraw},
                                         {kEventClassControl, kEventControlGetPartRegion},
                                         {kEventClassControl, kEventControlActivate},
                                         {kEventClassControl, kEventControlDeactivate}};
    InstallControlHandler(Control(kBrowseBottomGroup), BottomGroupHandler, groupEvents);
    const EventTypeSpec sidebarEvents[] = {{kEventClassSidebar, kEventSidebarItemChosen},
                                           {kEventClassSidebar, kEventSidebarCopyClientRoot}};
    InstallControlHandler(sidebar, SidebarHandler, sidebarEvents);
    const EventTypeSpec browserEvents[] = {{kEventClassControl, kEventControlClickActivation}};
    InstallControlHandler(browserView, BrowserHandler, browserEvents);
    const EventTypeSpec splitterEvents[] = {{kEventClassSplitter, kEventSplitterMoved}};
    InstallControlHandler(Control(kBrowseSplitter), SplitterHandler, splitterEvents);
    InstallSearchHandlers();
}

void TBrowseDialog::InstallControlHandler(ControlRef control, EventHandlerUPP handler,
                                          std::span<const EventTypeSpec> events) {
    EventHandlerRef ref = nullptr;
    if (control != nullptr &&
        InstallEventHandler(GetControlEventTarget(control), handler, events.size(), events.data(),
                            this, &ref) == noErr) {
        handlers.push_back(ref);
    }
}

StatusCode TBrowseDialog::EventWindowHandler(EventHandlerCallRef call, EventRef event, void* data) {
    auto* dialog = static_cast<TBrowseDialog*>(data);
    // A handler may end the dialog; it must outlive the handler.
    StRetainDialog retain(dialog);
    StWindowPort port(dialog->windowRef);
    dialog->client.record.itemHit = -1;
    return dialog->HandleWindowEvent(call, event);
}

StatusCode TBrowseDialog::HandleWindowEvent(EventHandlerCallRef call, EventRef event) {
    switch (GetEventClass(event)) {
    case kEventClassControl:
        return GetEventKind(event) == kEventControlHit ? HandleControlHit(event)
                                                       : eventNotHandledErr;
    case kEventClassKeyboard: {
        if (GetEventKind(event) != kEventRawKeyDown) {
            SendClassicEvent(event);
            return eventNotHandledErr;
        }
        uint32_t modifiers = 0;
        char character = 0;
        if (!ReadParam(event, kEventParamKeyModifiers, typeUInt32, modifiers) ||
            !ReadParam(event, kEventParamKeyMacCharCodes, typeChar, character)) {
            return eventNotHandledErr;
        }
        return FilterRawKeyEvent(static_cast<uint8_t>(character), modifiers, event)
                   ? noErr
                   : eventNotHandledErr;
    }
    case kEventClassMouse:
        if (DoMouseEvent(event)) {
            return noErr;
        }
        return CallNextEventHandler(call, event) == noErr ? noErr : eventNotHandledErr;
    case kEventClassWindow:
        return HandleWindowClassEvent(call, event);
    default:
        SendClassicEvent(event);
        return eventNotHandledErr;
    }
}

StatusCode TBrowseDialog::HandleControlHit(EventRef event) {
    ControlRef control = nullptr;
    uint32_t modifiers = 0;
    ControlPartCode part = 0;
    if (!ReadParam(event, kEventParamDirectObject, typeControlRef, control)) {
        return eventNotHandledErr;
    }
    ReadParam(event, kEventParamKeyModifiers, typeUInt32, modifiers);
    ReadParam(event, kEventParamControlPart, typeControlPartCode, part);
    ControlID id{0, 0};
    if (GetControlID(control, &id) != noErr || id.signature != kKelControlSignature) {
        return eventNotHandledErr;
    }
    return ItemHit(static_cast<int16_t>(id.id), part, modifiers) != 0 ? noErr : eventNotHandledErr;
}

StatusCode TBrowseDialog::HandleWindowClassEvent(EventHandlerCallRef, EventRef event) {
    WindowRef window = nullptr;
    ReadParam(event, kEventParamDirectObject, typeWindowRef, window);
    switch (GetEventKind(event)) {
    case kEventWindowDrawContent:
        if (ControlRef pane = Control(kBrowseCustomPane)) {
            Draw1Control(pane);
        }
        if (window == windowRef && RectHeight(client.record.customRect) > 0) {
            EventRecord update{};
            update.what = updateEvt;
            update.message = reinterpret_cast<uintptr_t>(windowRef);
            client.record.eventData = &update;
            EventInCustomArea(kKelCBEvent);
            client.record.eventData = nullptr;
        }
        return eventNotHandledErr;
    case kEventWindowActivated:
        editMenu.AdjustMenu();
        wherePopup.Invalidate();
        if (window != windowRef) {
            SendClassicEvent(event);
        }
        return eventNotHandledErr;
    case kEventWindowDeactivated:
        if (window != windowRef) {
            SendClassicEvent(event);
        }
        return eventNotHandledErr;
    case kEventWindowBoundsChanged:
        // The custom area moves with its group, which its own frame doesn't show.
        CentreTopBlock();
        SyncCustomAreaTraditionalControlBounds();
        if (NodeBrowserControlIsPreviewAllowed()) {
            client.record.eventData = &previewShowing;
            client.Event(kKelCBAdjustPreview);
        }
        EventInCustomArea(kKelCBAdjustRect);
        return eventNotHandledErr;
    case kEventWindowClose:
        DoClose();
        return noErr;
    case kEventWindowGetIdealSize: {
        Rect display{0, 0, 0, 0};
        BTWindowGetGreatestAreaDisplay(windowRef, 0, &display);
        const Point size{static_cast<int16_t>(display.bottom - display.top),
                         static_cast<int16_t>(display.right - display.left)};
        SetEventParameter(event, kEventParamDimensions, typeQDPoint, sizeof size, &size);
        return noErr;
    }
    case kEventWindowGetMinimumSize: {
        IsPreviewShowing(&previewShowing);
        const Point size{minimumHeight, minimumWidth};
        SetEventParameter(event, kEventParamDimensions, typeQDPoint, sizeof size, &size);
        return noErr;
    }
    default:
        SendClassicEvent(event);
        return eventNotHandledErr;
    }
}

void TBrowseDialog::SendClassicEvent(EventRef event) {
    EventRecord record{};
    if (ConvertEventRefToEventRecord(event, &record)) {
        client.record.eventData = &record;
        client.Event(kKelCBEvent);
        client.record.eventData = nullptr;
    }
}

void TBrowseDialog::EventInCustomArea(long selector) {
    TPrepareToDrawInsideCustomArea prepare(*this);
    client.Event(selector);
}

bool TBrowseDialog::DoMouseEvent(EventRef event) {
    BGPoint global{0, 0};
    if (!IsWindowActive(windowRef) ||
        !ReadParam(event, kEventParamMouseLocation, typeBTPoint, global)) {
        return false;
    }
    EventRecord record{};
    if (!ConvertEventRefToEventRecord(event, &record) || record.what != mouseDown) {
        return false;
    }
    BTPointConvert(&global, kBTCoordSpaceScreenPixel, nullptr, kBTCoordSpaceWindow, windowRef);
    const Point local{static_cast<int16_t>(global.y), static_cast<int16_t>(global.x)};
    Rect custom = client.record.customRect;
    if (!PtInRect(local, &custom)) {
        return false;
    }
    client.record.itemHit = -1;
    DialogRef hitDialog = nullptr;
    DialogItemIndex item = -1;
    if (DialogSelect(&record, &hitDialog, &item) && hitDialog == dialogRef) {
        client.record.itemHit = item;
    }
    client.record.eventData = &record;
    EventInCustomArea(kKelCBEvent);
    client.record.eventData = nullptr;
    return true;
}

void TBrowseDialog::EventLoop() {
    const uint32_t sleep = client.HasEventProc() ? 60 : 3600;
    while (running) {
        EventRecord record{};
        WaitNextEvent(everyEvent, &record, sleep, nullptr);
        StWindowPort port(windowRef);
        if (running && IsValidEvent(&client.record, &record)) {
            client.record.itemHit = -1;
            client.record.eventData = &record;
            client.Event(kKelCBEvent);
            client.record.eventData = nullptr;
        }
    }
}

void TBrowseDialog::Idle(EventRecord& event) {
    constexpr uint32_t kResumeMessage = 1;
    if (event.what == osEvt && (event.message >> 24) == kResumeMessage &&
        (event.message & 1) != 0) {
        FlushEvents(everyEvent, 0);
    }
}

int32_t TBrowseDialog::ItemHit(int16_t item, int16_t part, uint32_t modifiers) {
    editMenu.AdjustMenu();
    switch (item) {
    case kBrowseDefaultButton:
        TryAcceptDialog(modifiers);
        return 1;
    case kBrowseCancelButton:
        DoClose();
        return 1;
    case kBrowseNewFolder: {
        TKelNode created;
        if (CreateNewFolder(nullptr, created) == noErr) {
            browser->SetTarget(created, TKelNode(), TKelNode());
        }
        return 1;
    }
    case kBrowseBackForward:
        searchTextStale = true;
        if (part == 1 || part == 2) {
            browser->SetHistoryViewSnapshot(part == 1 ? 1 : 0, prefs);
        }
        return 1;
    case kBrowseViewStyle:
        if (part == 1 || part == 2) {
            SwitchView(part == 2 ? TKelPrefs::kColumnView : TKelPrefs::kListView,
                       kPrefOptionSaveRestore);
        }
        AdjustForSearch();
        return 1;
    case kBrowseScopeEverywhere:
    case kBrowseScopeHome:
    case kBrowseScopeFolder:
        ChooseQueryScope(item);
        return 1;
    default:
        return KelBaseDialog::ItemHit(item, part, modifiers);
    }
}

void TBrowseDialog::SwitchView(TKelPrefs::View view, TPrefOption option) {
    browser->SetBrowserView(view == TKelPrefs::kListView ? kListViewStyle : kColumnViewStyle,
                            option, prefs);
    prefs.SetView(view, fileListModeKey);
}

void TBrowseDialog::DoClose() {
    client.Event(kKelCBCancel);
    TerminateWithUserAction(kKelUserActionCancel);
}

StatusCode TBrowseDialog::BottomGroupHandler(EventHandlerCallRef, EventRef event, void* data) {
    auto* dialog = static_cast<TBrowseDialog*>(data);
    ControlRef group = dialog->Control(kBrowseBottomGroup);
    BGRect bounds = BGRectZero;
    BTViewGetBounds(group, &bounds);
    switch (GetEventKind(event)) {
    case kEventControlActivate:
    case kEventControlDeactivate:
        BTViewSetNeedsDisplay(group, true);
        return eventNotHandledErr;
    case kEventControlGetPartRegion: {
        ControlPartCode part = 0;
        RgnHandle region = nullptr;
        ReadParam(event, kEventParamControlPart, typeControlPartCode, part);
        if (!ReadParam(event, kEventParamControlRegion, typeQDRgnHandle, region) ||
            (part != kControlOpaqueMetaPart && part != kControlStructureMetaPart)) {
            return eventNotHandledErr;
        }
        const BGRect area = part == kControlOpaqueMetaPart
                                ? BGRectInset(bounds, 5, 5)
                                : BGRectMake(bounds.origin.x - 3, bounds.origin.y - 2,
                                             bounds.size.width + 6, bounds.size.height + 6);
        SetRectRgn(region, int16_t(area.origin.x), int16_t(area.origin.y),
                   int16_t(area.origin.x + area.size.width),
                   int16_t(area.origin.y + area.size.height));
        return noErr;
    }
    default:
        return eventNotHandledErr;
    }
}

StatusCode TBrowseDialog::SidebarHandler(EventHandlerCallRef, EventRef event, void* data) {
    auto* dialog = static_cast<TBrowseDialog*>(data);
    if (dialog->browser == nullptr) {
        return eventNotHandledErr;
    }
    if (GetEventKind(event) == kEventSidebarItemChosen) {
        TKelNode* picked = nullptr;
        if (!ReadParam(event, kEventParamSidebarNode, typeSidebarNode, picked) ||
            picked == nullptr) {
            return eventNotHandledErr;
        }
        if (NodeIsSavedQuery(picked->PeekNodeRef())) {
            dialog->browser->SetSavedQueryTarget(*picked);
        } else {
            dialog->browser->SetTargetPath(NodeList(*picked), TKelNode());
        }
        return noErr;
    }
    TKelNode target;
    dialog->browser->GetTarget(target);
    if (!target.IsEmpty() && dialog->browser->ViewStyle() == kColumnViewStyle &&
        !target.IsNetwork()) {
        target = VolumeOf(target);
    }
    OpaqueNodeRef* answer = target.IsEmpty() ? nullptr : CopyNodeRef(target.PeekNodeRef());
    SetEventParameter(event, kEventParamSidebarNodeRef, typeSidebarNodeRef, sizeof answer, &answer);
    return noErr;
}

StatusCode TBrowseDialog::BrowserHandler(EventHandlerCallRef, EventRef event, void*) {
    const uint32_t result = 2;
    SetEventParameter(event, kEventParamControlClickActivationResult, typeClickActivationResult,
                      sizeof result, &result);
    return noErr;
}

void TBrowseDialog::DisableMenuBar() {
    if (modality != kKelModalityModeless && modality != kKelModalitySheet) {
        KelBaseDialog::DisableMenuBar();
    }
}

void TBrowseDialog::ReEnableMenuBar() {
    if (modality != kKelModalityModeless && modality != kKelModalitySheet) {
        KelBaseDialog::ReEnableMenuBar();
    }
}
