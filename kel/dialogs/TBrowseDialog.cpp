#include "kel/dialogs/TBrowseDialog.h"

namespace {

constexpr WindowAttributes kResizableLive = 16 | 0x10000000;

// The window of the layout file for a modality: the movable modal and sheet forms carry a
// suffix, the modeless form none.
TStringRef WindowName(BCStringRef layoutName, uint32_t modality) {
    const char* suffix = "";
    if (modality == kKelModalityAppModal || modality == kKelModalityModal) {
        suffix = " Movable Modal";
    } else if (modality == kKelModalitySheet) {
        suffix = " Sheet";
    }
    return TStringRef(BCStringCreateWithFormat(nullptr, nullptr, BCSTR("%@%s"), layoutName, suffix),
                      false);
}

// The client's location as a node: a container stays, a file gives its folder and is selected.
void TakeDefaultLocation(const BEDesc* location, TKelNode& folder, TKelNodeArray& selection) {
    if (location == nullptr) {
        return;
    }
    TKelNode node(GetBEDescAsNode(location), false);
    if (node.IsEmpty() || node.IsContainer()) {
        folder = node;
        return;
    }
    selection.push_back(node);
    folder = node.GetParent();
}

} // namespace

TBrowseDialog::TBrowseDialog(BCStringRef layoutName, uint32_t acceptAction,
                             const TStringRef& prefsKey, const TDialogConfiguration& configuration,
                             const BEDesc* defaultLocation, BCStringRef fileListModeKey)
    : __KelDialog(configuration), layoutName(layoutName), acceptAction(acceptAction),
      filter(client, configuration.optionFlags, configuration.filterMasks, configuration.typeList,
             configuration.fileCreatorFilter),
      fileListModeKey(fileListModeKey), filterMasks(configuration.filterMasks),
      fileCreatorFilter(configuration.fileCreatorFilter), typeList(configuration.typeList) {
    CreateNewMenu(0, 0, &typeMenu);
    prefs.SetClientKeys(prefsKey, preferenceKey);
    TakeDefaultLocation(defaultLocation, this->defaultLocation, initialSelection);
}

TBrowseDialog::~TBrowseDialog() {
    if (windowEventHandler != nullptr) {
        RemoveEventHandler(windowEventHandler);
    }
    for (EventHandlerRef handler : handlers) {
        RemoveEventHandler(handler);
    }
    if (previewDrawTimer != nullptr) {
        RemoveEventLoopTimer(previewDrawTimer);
    }
    if (queryTimer != nullptr) {
        RemoveEventLoopTimer(queryTimer);
    }
    RemoveDragHandlers();
    if (displayCallbackRegistered) {
        BGDisplayRemoveReconfigurationCallback(MyDisplayNotifyProc, this);
    }
    browser.reset();
    if (typeMenu != nullptr) {
        DisposeMenu(typeMenu);
    }
    if (typeIdentifiers != nullptr) {
        BCRelease(typeIdentifiers);
    }
}

StatusCode TBrowseDialog::SetFilterTypeIdentifiers(BCArrayRef identifiers) {
    if (identifiers != nullptr) {
        BCRetain(identifiers);
    }
    if (typeIdentifiers != nullptr) {
        BCRelease(typeIdentifiers);
    }
    typeIdentifiers = identifiers;
    filter.SetTypeIdentifiers(identifiers);
    return noErr;
}

StatusCode TBrowseDialog::Target(TKelNode& out) {
    if (browser == nullptr) {
        out = defaultLocation;
        return out.IsEmpty() ? StatusCode(kKelWrongStateErr) : StatusCode(noErr);
    }
    return browser->GetTarget(out);
}

StatusCode TBrowseDialog::CreateDialog() {
    if (dialogRef != nullptr) {
        return noErr;
    }
    AllocateDialogFromLayout(WindowName(layoutName, modality).AsBCStringRef());
    if (dialogRef == nullptr) {
        return kKelWrongStateErr;
    }
    ChangeWindowAttributes(windowRef, kResizableLive, 0);
    AssignWindowTitle();
    MakeCustomPane();
    browser =
        std::make_unique<TNodeBrowserControl>(this, kColumnViewStyle, filter, *this, browserView);
    const StatusCode status = InitDialog();
    displayCallbackRegistered =
        BGDisplayRegisterReconfigurationCallback(MyDisplayNotifyProc, this) == noErr;
    return status;
}

StatusCode TBrowseDialog::InitDialog() {
    KelBaseDialog::InitDialog();
    SetupDismissButtons();
    if (message.Length() > 0) {
        Point size{0, 0};
        GetThemeTextDimensions(message.AsBCStringRef(), 1, 1, false, &size, nullptr);
        messageTextSize = size;
    }
    client.record.window = windowRef;
    if (ControlRef pane = Control(kBrowsePane)) {
        BGRect frame = BGRectZero;
        BTViewGetFrame(pane, &frame);
        browserPaneWidth = static_cast<int16_t>(frame.size.width);
        browserPaneHeight = static_cast<int16_t>(frame.size.height);
    }
    TRect bounds;
    GetBounds(bounds);
    SetupWindowSize(bounds);
    SetupEventHandlers();
    InstallDragHandlers();
    SetInitialView();
    const StatusCode status = InitBrowserTarget();
    PositionDialog();
    MonitorAdjustDialog();
    return status;
}

void TBrowseDialog::SetupDialogItems() {
    ControlRef messageText = Control(kBrowseMessage);
    if (messageText != nullptr && message.Length() == 0) {
        HideControl(messageText);
        AdjustViewPositionBySizeAndExtra(messageText, kShiftUp);
    } else if (messageText != nullptr) {
        BTViewSetText(messageText, message.AsBCStringRef());
    }
}

StatusCode TBrowseDialog::StartDialog() {
    DisableMenuBar();
    SetThemeCursor(kThemeArrowCursor);
    switch (modality) {
    case kKelModalityAppModal:
    case kKelModalityModal:
        editMenu.AdjustMenu();
        ShowWindow(windowRef);
        EventLoop();
        break;
    case kKelModalitySheet:
        ShowSheetWindow(windowRef, parentWindow);
        break;
    default:
        ShowWindow(windowRef);
        break;
    }
    return noErr;
}

void TBrowseDialog::TerminateDialog() {
    if (modality == kKelModalitySheet) {
        HideSheetWindow(windowRef);
    } else {
        HideWindow(windowRef);
    }
    ReEnableMenuBar();
    SaveDialogPrefs();
    QuitEventLoop(GetCurrentEventLoop());
}

void TBrowseDialog::AssignWindowTitle() {
    if (windowTitle.Length() > 0) {
        SetWindowTitleWithBCString(windowRef, windowTitle.AsBCStringRef());
    }
}

void TBrowseDialog::AssignTitleFrom(const char* namedKey, const char* defaultKey) {
    TStringRef title = windowTitle;
    if (title.Length() == 0 && clientName.Length() > 0) {
        TMutableStringRef named = BundleText(namedKey).CopyMutable(0);
        named.ReplaceParam(0, clientName);
        title = named;
    } else if (title.Length() == 0) {
        title = BundleText(defaultKey);
    }
    SetWindowTitleWithBCString(windowRef, title.AsBCStringRef());
}

void TBrowseDialog::MakeCustomPane() {
    ControlRef area = Control(kBrowseCustomArea);
    if (area == nullptr) {
        return;
    }
    const EventTypeSpec areaEvents[] = {{kEventClassControl, kEventControlDraw},
                                        {kEventClassControl, kEventControlActivate},
                                        {kEventClassControl, kEventControlDeactivate},
                                        {kEventClassControl, kEventControlBoundsChanged}};
    EventHandlerRef handler = nullptr;
    InstallEventHandler(GetControlEventTarget(area), CustomAreaCompositingHandler, 4, areaEvents,
                        this, &handler);
    handlers.push_back(handler);
    const Rect frame = GetControlContentRelativeRect(area);
    ControlRef pane = nullptr;
    if (BTCreateControl(windowRef, &frame, kControlKindUserPane, nullptr, &pane) != noErr) {
        return;
    }
    const ControlID paneID{kKelControlSignature, kBrowseCustomPane};
    SetControlID(pane, &paneID);
    BTViewAddSubview(area, pane);
    const EventTypeSpec paneEvents[] = {{kEventClassControl, kEventControlDraw}};
    InstallEventHandler(GetControlEventTarget(pane), CustomAreaNonCompositingHandler, 1, paneEvents,
                        this, &handler);
    handlers.push_back(handler);
    SetControlContentRelativeRect(pane, frame);
}

void TBrowseDialog::SetInitialView() {
    if (prefs.GetView(fileListModeKey) == TKelPrefs::kListView) {
        browser->SetBrowserView(kListViewStyle, kPrefOptionNone, prefs);
    } else {
        browser->SetBrowserView(kColumnViewStyle, kPrefOptionRestoreWidth, prefs);
    }
}
