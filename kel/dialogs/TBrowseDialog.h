#pragma once

// The base of every dialog with a file browser: sidebar, list or column browser, search field,
// history and view buttons, the client's custom area and the button row, all read from the
// "Get File"-style windows of the layout file.
//
// Life: constructed with fields only; CreateDialog makes the window (the window's name is the
// layout name with the modality's suffix), the custom pane and the browser, then InitDialog sets
// the buttons, size, handlers, view style and first location, and places the window. While the
// browser is null, the target and the selection are defaultLocation and initialSelection, so a
// client may set both before the run. TerminateDialog hides the window and saves the
// preferences; the browser outlives the window so that a reply can still be read.
//
// The class is split by concern: construction (TBrowseDialog), window size and place
// (TBrowseDialogWindow), controls and their layout (TBrowseDialogLayout), the first location
// (TBrowseDialogTarget), events (TBrowseDialogEvents), keys (TBrowseDialogKeys), selection and
// accept (TBrowseDialogAccept), the browser's notices (TBrowseDialogObserver), drags
// (TBrowseDialogDrag), the custom area (TBrowseDialogCustomArea) and what is saved at the end
// (TBrowseDialogPrefs). Everything runs on the main thread.

#include "kel/browser/INodeBrowserControlObserver.h"
#include "kel/browser/TNodeBrowserControl.h"
#include "kel/foundation/TKelPrefs.h"
#include "kel/interface/__KelDialog.h"
#include "kel/nodes/TKelNodeArray.h"
#include "kel/nodes/TNodeFilter.h"
#include "kel/widgets/TFavoritesPopup.h"
#include "kel/widgets/TPathPopup.h"

#include <basalt/BasaltDrag.h>
#include <basalt/files/BEDesc.h>
#include <memory>
#include <span>

// The ids of the browse windows' controls, all with the signature "kels".
enum BrowseDialogItem : int16_t {
    kBrowseDefaultButton = 1,
    kBrowseCancelButton = 2,
    kBrowseMessage = 3,
    kBrowseSaveName = 4,
    kBrowseSaveNameLabel = 5,
    kBrowseFormatPopup = 6,
    kBrowseTypePopup = 7,
    kBrowseWherePopup = 8,
    kBrowseDisclosure = 9,
    kBrowsePane = 10,
    kBrowseBrowser = 11,
    kBrowseSearchField = 12,
    kBrowseNewFolder = 13,
    kBrowseCustomArea = 14,
    kBrowseCountText = 15,
    kBrowseScopeBar = 16,
    kBrowseHideExtension = 17,
    kBrowseSimpleSaveArrows = 18,
    kBrowseTopRow = 19,
    kBrowseBackForward = 20,
    kBrowseViewStyle = 21,
    kBrowseTypePopupLabel = 22,
    kBrowseSidebar = 23,
    kBrowseSplitter = 24,
    kBrowseTopBlock = 25,
    kBrowseWherePopupLabel = 26,
    kBrowseCustomPane = 27,
    kBrowseBottomGroup = 28,
    kBrowseFormatPopupLabel = 29,
    kBrowsePathPopup = 30,
    kBrowsePathArrows = 32,
    kBrowseScopeEverywhere = 33,
    kBrowseScopeHome = 34,
    kBrowseScopeFolder = 35,
};

// The bundle's text of a key, read once for the process.
const TStringRef& BundleText(const char* key);

inline int16_t RectWidth(const Rect& rect) {
    return int16_t(rect.right - rect.left);
}

inline int16_t RectHeight(const Rect& rect) {
    return int16_t(rect.bottom - rect.top);
}

inline BGRect FrameOf(ControlRef view) {
    BGRect frame = BGRectZero;
    BTViewGetFrame(view, &frame);
    return frame;
}

// A list of one node.
inline TKelNodeArray NodeList(const TKelNode& node) {
    TKelNodeArray list;
    list.push_back(node);
    return list;
}

constexpr OSType kKelControlSignature = NodeCode("kels");

// Directions of AdjustViewPositionBySizeAndExtra.
enum ViewShift : long { kShiftUp = 0, kShiftDown = 1, kShiftLeft = 2, kShiftRight = 3 };

// Bits of actionState, set by the client through SetKelState.
enum : uint32_t {
    kActionOpenRefused = 1,
    kActionSaveRefused = 2,
    kActionNewFolderRefused = 16,
};

class TBrowseDialog : public __KelDialog,
                      public INodeBrowserControlObserver,
                      public IFavoritesCommandHandler {
public:
    TBrowseDialog(BCStringRef layoutName, uint32_t acceptAction, const TStringRef& prefsKey,
                  const TDialogConfiguration& configuration, const BEDesc* defaultLocation,
                  BCStringRef fileListModeKey);
    ~TBrowseDialog() override;

    // ---- Menu commands, items, construction (KelBaseDialog's slots) ----
    bool IsBTCommandAllowed(uint32_t command) override;
    bool ExecuteBTCommand(uint32_t command) override;
    int32_t ItemHit(int16_t item, int16_t part, uint32_t modifiers) override;
    StatusCode InitDialog() override;
    void CacheControlRefs() override;
    void SetUpViewLayouts() override;
    void ReEnableMenuBar() override;
    void DisableMenuBar() override;

    // ---- __KelDialog's slots ----
    StatusCode FillReply(KelReplyRecord& reply) override;
    StatusCode CustomControl(long selector, void* parms) override;
    StatusCode SetFilterTypeIdentifiers(BCArrayRef identifiers) override;
    virtual StatusCode Target(TKelNode& out);
    StatusCode CreateDialog() override;
    StatusCode StartDialog() override;
    void TerminateDialog() override;

    // ---- The browse dialog's own slots ----
    virtual void SetDefaultButtonTitle();
    virtual void SetupDialogItems();
    virtual void SetupWindowSize(TRect& bounds);
    // Whether a save dialog shows only its name and where rows, with no browser.
    virtual bool SimpleSaveMode() const { return false; }
    virtual StatusCode GetFirstCustomControl(uint16_t* item);
    virtual StatusCode SelectSaveFileName(ControlEditTextSelectionRec* selection);
    virtual StatusCode ActualSelectCustomType(KelMenuItemSpec* spec, ControlRef popup,
                                              unsigned char* found);
    virtual StatusCode SelectCustomType(KelMenuItemSpec* spec);
    virtual StatusCode SelectAllType(uint16_t* item);
    virtual StatusCode SetKelState(uint32_t state);
    virtual bool CanOpen();
    virtual bool CanChoose();
    virtual void ResizeDialogForCustomization();
    virtual void DoClose();
    virtual StatusCode CreateNewFolder(TUniString* name, TKelNode& out);
    StatusCode SetTargetCommand(const TKelNode& target, const TKelNode& root) override;
    void SetBusyState(unsigned char busy) override;

    // ---- What the browser tells the dialog ----
    void NodeBrowserControlNodeOpen(TNodeBrowserControl& control, TKelNode& node) override;
    void NodeBrowserControlNodeOpenDone(TNodeBrowserControl& control, TKelNode& node) override;
    void NodeBrowserControlTargetChanged(TNodeBrowserControl& control, TKelNode& target) override;
    void NodeBrowserControlViewRootChanged(TNodeBrowserControl& control, TKelNode& root) override;
    void NodeBrowserControlSelectionChanged(TNodeBrowserControl& control) override;
    void NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl& control, TKelNode& node) override;
    bool NodeBrowserControlDrawPreview(TNodeBrowserControl& control, TKelNode& node,
                                       TRect& rect) override;
    bool NodeBrowserControlIsPreviewAllowed() override;
    void NodeBrowserControlHandleError(TNodeBrowserControl& control, TKelNode& node,
                                       long status) override;
    void NodeBrowserControlViewStyleChanged(unsigned long style) override;
    void NodeBrowserControlBackForwardSnapshotChanged(long position, long count) override;
    bool NodeBrowserControlWantsDisclosureTrianglesInListView() override;

    virtual StatusCode NotifySelection(TKelNodeArray& nodes, long code);
    virtual bool CanReceiveDrop(TKelNode& node);
    virtual StatusCode ReceiveDrop(TKelNode& node);
    virtual void BuildTypeMenu(const TDialogConfiguration& configuration);
    virtual void DetermineBestControlBounds();
    virtual int16_t GetLeftBoundsLimit();
    // The action button's title when the client gave none.
    virtual TStringRef GetDefaultButtonTitle() = 0;
    virtual bool ValidateAcceptDialog(uint32_t modifiers);
    virtual void CopyLastResortTargetPath(TKelNodeArray& path);
    virtual void AssignWindowTitle();
    virtual bool IsValidEvent(KelCBRec* record, EventRecord* event);
    virtual StatusCode IsPreviewShowing(unsigned char* showing);
    virtual void Idle(EventRecord& event);
    virtual bool FilterRawKeyEvent(uint16_t key, uint32_t modifiers, EventRef event);
    virtual bool HandleKeyEvents(EventRecord& event, int16_t& itemHit);
    virtual bool DoKeyEvents(uint16_t key, uint32_t modifiers, int16_t& itemHit);
    virtual bool ProcessModifierKeys(uint16_t key, uint32_t modifiers, int16_t& itemHit);
    virtual bool HandleWayfarerCommandKeys(uint16_t key, uint32_t modifiers);
    virtual bool DoMouseEvent(EventRef event);
    virtual void FixButtons();
    virtual void SaveDialogPrefs();
    virtual void AddTypeMenuItems();
    // Makes the type menu the popup's menu, filled with the entries, one value per item.
    void AttachTypeMenu(ControlRef popup);
    virtual void MonitorAdjustDialog();
    virtual void SetupEventHandlers();

    // ---- Layout ----
    void AdjustViewPositionBySizeAndExtra(ControlRef view, long direction);
    void RemoveWidgetFromBottomGroup(ControlRef widget);
    StatusCode InitBrowserTarget();
    void CopyDefaultTargetPath(TKelNodeArray& path);
    void PositionDialog();
    void SetupDismissButtons();
    // The sidebar's width at a splitter position, kept within the sidebar's own limits and
    // leaving 120 points of browser.
    BGFloat ConstrainSplitterPosition(ControlRef splitter, BGFloat position);

    // ---- Events and keys ----
    void EventLoop();
    bool GotoDesktop();
    bool GotoHome();
    bool IsLocationDesktop();
    bool BrowserHasFocus();
    void SendClassicEvent(EventRef event);
    // Command-shift-G: asks for a path and shows it.
    void GoToFolder();
    // Runs the Go To window, its field starting with firstCharacter unless that is 0, and moves
    // the browser to the path it answers; a file is selected in its folder. True when it moved.
    bool RunGoToWindow(char firstCharacter);

    // ---- New folder and type popup ----
    // Makes a folder of the client's name in the target and moves into it.
    StatusCode DoNewFolder(TUniString* name);
    void NotifyClientPopupSelection(int16_t item, const TTypeMenuItem& entry);

    // ---- Selection and accept ----
    StatusCode GetSelection(TKelNodeArray& out);
    StatusCode GetSelection(BEDesc* out);
    // Selects every row of the target that the filter lets the user select.
    StatusCode SelectAllSelectable();
    bool TryAcceptDialog(uint32_t modifiers);
    bool IsTargetLocked();
    StatusCode GetDropNode(DragRef drag, TKelNode& out);

    // ---- Custom area ----
    bool NegotiateForCustomSpace();
    void SyncCustomAreaTraditionalControlBounds();

    TNodeBrowserControl* Browser() const { return browser.get(); }
    TNodeFilter& Filter() { return filter; }
    TFavoritesPopup& WherePopup() { return wherePopup; }
    TPathPopup& PathPopup() { return pathPopup; }
    TKelPrefs& Prefs() { return prefs; }
    BCStringRef LayoutName() const { return layoutName; }
    uint32_t AcceptAction() const { return acceptAction; }
    uint32_t ActionState() const { return actionState; }
    const NodeFilterMaskSet& FilterMasks() const { return filterMasks; }
    FourCharCode FileCreatorFilter() const { return fileCreatorFilter; }
    KelTypeList** TypeList() const { return typeList; }
    BCArrayRef TypeIdentifiers() const { return typeIdentifiers; }
    Point MinimumSize() const { return Point{minimumHeight, minimumWidth}; }
    bool SearchTextStale() const { return searchTextStale; }
    uint32_t BottomGroupCount() const { return bottomGroupCount; }

protected:
    // The control of that id in the layout, or null.
    ControlRef Control(int16_t id) const { return GetControlFromLayout(id); }
    // Sends a selector with the custom area prepared for the client's drawing.
    void EventInCustomArea(long selector);
    // A view's "extr" property: the gap that goes with it when it leaves the layout.
    static int32_t ExtraOf(ControlRef view);
    // Titles the window: the client's title, else the named text with the client's name, else
    // the default text.
    void AssignTitleFrom(const char* namedKey, const char* defaultKey);
    // Runs the view style change of the list (2) or column (1) preference.
    void SwitchView(TKelPrefs::View view, TPrefOption option);
    // Lays the toolbar row and the scope bar out for whether a search shows; runs after every
    // change of view root, target, history, view style and search.
    void AdjustForSearch();
    void TellPopupsTarget(const TKelNode& target);

    uint32_t actionState = 0;
    // Base name of the window in the layout file, such as "Get File"; not owned.
    BCStringRef layoutName;
    uint32_t acceptAction;
    TNodeFilter filter;
    std::unique_ptr<TNodeBrowserControl> browser;
    TFavoritesPopup wherePopup;
    TPathPopup pathPopup;
    EventHandlerRef windowEventHandler = nullptr;
    bool dragAccepted = false;
    EventLoopTimerRef previewDrawTimer = nullptr;
    bool inPreviewDrawTimer = false;
    TKelNode defaultLocation;
    TKelNodeArray initialSelection;
    Point messageTextSize{0, 0};
    MenuRef typeMenu = nullptr;
    int16_t browserPaneWidth = 0;
    int16_t browserPaneHeight = 0;
    int16_t minimumWidth = 518;
    int16_t minimumHeight = 378;
    unsigned char previewShowing = 0;
    int16_t firstCustomItem = -1;
    ControlRef countText = nullptr;
    ControlRef searchField = nullptr;
    ControlRef sidebar = nullptr;
    ControlRef scopeBar = nullptr;
    ControlRef browserView = nullptr;
    float countTextMinWidth = 0;
    EventLoopTimerRef queryTimer = nullptr;
    TKelPrefs prefs;
    uint32_t bottomGroupCount = 1;
    BCStringRef fileListModeKey;
    uint16_t customItemBase = 65535;
    bool searchTextStale = false;

    // Kept from the configuration for the subclasses' type popups.
    NodeFilterMaskSet filterMasks;
    FourCharCode fileCreatorFilter;
    // The client's handle; the client keeps it alive while the dialog lives.
    KelTypeList** typeList;
    // Retained.
    BCArrayRef typeIdentifiers = nullptr;

private:
    friend class TCustomControlMessages;

    void MakeCustomPane();
    // Keeps control 25 in the middle of the window; what is bound to it follows.
    void CentreTopBlock();
    ControlRef MakeBrowserView();
    void InstallDragHandlers();
    void RemoveDragHandlers();
    void SetInitialView();
    void ShrinkToMainScreen(const Rect& structure, const Rect& screen);
    void SetupScopeButtons();
    void SetupSegmentImages();
    void SetupCountText();
    void SetSegmentEnabled(int16_t segment, bool enabled);
    void MoveDefaultButton(Rect& accept, Rect& cancel, int16_t best, int16_t limit);
    bool StepIntoSelectedFolder(uint16_t key);
    bool CommandKey(uint16_t key, uint32_t modifiers);
    bool FinishWithEditMenu(uint16_t key, EventRef event);
    void SavePath();
    StatusCode ReceiveDropHandler(DragRef drag);
    StatusCode TrackDrag(DragTrackingMessage message, DragRef drag);

    // ---- Search ----
    void InstallSearchHandlers();
    // Items 33 to 35: the scope of the next searches, and the search again in it.
    void ChooseQueryScope(int16_t item);
    void ShowQueryScope(TKelPrefs::QueryScope scope);
    void ExecuteQueryTimer();
    // The field's cancel mark follows its text.
    void FollowSearchText();
    // Whether the scope bar shows, and the browser's frame below it.
    void PlaceScopeBar(const TKelNode& root, const TKelNode& target);
    void PlaceSearchRowIdle(const BGRect& popupFrame);
    void PlaceSearchRowSearching(const BGRect& popupFrame, const TKelNode& target);
    // Shows the count of hits in countText; its optimal width.
    BGFloat ShowItemCount(long count);
    void InstallControlHandler(ControlRef control, EventHandlerUPP handler,
                               std::span<const EventTypeSpec> events);
    static StatusCode SearchFieldHandler(EventHandlerCallRef call, EventRef event, void* data);
    static StatusCode ScopeBarHandler(EventHandlerCallRef call, EventRef event, void* data);
    static void QueryTimerProc(EventLoopTimerRef timer, void* data);

    static StatusCode EventWindowHandler(EventHandlerCallRef call, EventRef event, void* data);
    StatusCode HandleWindowEvent(EventHandlerCallRef call, EventRef event);
    StatusCode HandleWindowClassEvent(EventHandlerCallRef call, EventRef event);
    StatusCode HandleControlHit(EventRef event);
    static StatusCode BottomGroupHandler(EventHandlerCallRef call, EventRef event, void* data);
    static StatusCode SidebarHandler(EventHandlerCallRef call, EventRef event, void* data);
    static StatusCode BrowserHandler(EventHandlerCallRef call, EventRef event, void* data);
    static StatusCode SplitterHandler(EventHandlerCallRef call, EventRef event, void* data);
    static StatusCode CustomAreaCompositingHandler(EventHandlerCallRef call, EventRef event,
                                                   void* data);
    static StatusCode CustomAreaNonCompositingHandler(EventHandlerCallRef call, EventRef event,
                                                      void* data);
    static StatusCode DragReceive(WindowRef window, void* data, DragRef drag);
    static StatusCode DragTracking(DragTrackingMessage message, WindowRef window, void* data,
                                   DragRef drag);
    static void PreviewDrawTimerProc(EventLoopTimerRef timer, void* data);
    static void MyDisplayNotifyProc(BGDirectDisplayID display, BGDisplayChangeSummaryFlags flags,
                                    void* data);

    std::vector<EventHandlerRef> handlers;
    bool displayCallbackRegistered = false;
    bool dragHandlersInstalled = false;
};

// Lets a client draw into the custom area with port drawing for the length of a scope: the
// dialog's port is current and clipped to the custom pane, the theme state is saved.
class TPrepareToDrawInsideCustomArea {
public:
    explicit TPrepareToDrawInsideCustomArea(TBrowseDialog& dialog);
    TPrepareToDrawInsideCustomArea(const TPrepareToDrawInsideCustomArea&) = delete;
    TPrepareToDrawInsideCustomArea& operator=(const TPrepareToDrawInsideCustomArea&) = delete;
    ~TPrepareToDrawInsideCustomArea();

private:
    GrafPtr savedPort = nullptr;
    CGrafPtr port = nullptr;
    RgnHandle savedVisibleRegion = nullptr;
};
