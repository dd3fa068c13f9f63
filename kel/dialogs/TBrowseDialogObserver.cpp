// What the dialog does when its browser reports a change: buttons follow, the client hears of
// the new target and selection, the sidebar of the new root, and the history buttons of where
// the user stands in the history.

#include "kel/dialogs/TBrowseDialog.h"
#include "kel/foundation/KelBundle.h"
#include "kel/interface/CStandardAlert.h"
#include "kel/interface/KelProcess.h"
#include "kel/widgets/BTSidebar.h"
#include "kel/widgets/SidebarEvents.h"

namespace {

constexpr FourCharCode kNameProperty4 = NodeCode("pnam");
constexpr long kFileNotFound = -43;
constexpr long kAliasTargetMissing = -1069;

} // namespace

void TBrowseDialog::PreviewDrawTimerProc(EventLoopTimerRef, void* data) {
    auto* dialog = static_cast<TBrowseDialog*>(data);
    dialog->inPreviewDrawTimer = true;
    BTViewSetNeedsDisplay(dialog->browserView, true);
    BTViewRender(BTViewGetRoot(dialog->windowRef));
    dialog->inPreviewDrawTimer = false;
}

void TBrowseDialog::TellPopupsTarget(const TKelNode& target) {
    wherePopup.SetTarget(target);
    pathPopup.SetTarget(target);
}

void TBrowseDialog::NodeBrowserControlNodeOpenDone(TNodeBrowserControl&, TKelNode& node) {
    SetBusyState(0);
    if (!node.IsEmpty() && NodeIsQueryHitsContainer(node.PeekNodeRef())) {
        AdjustForSearch();
    }
}

void TBrowseDialog::NodeBrowserControlTargetChanged(TNodeBrowserControl&, TKelNode& target) {
    FixButtons();
    TKelNodeArray opened = NodeList(target);
    NotifySelection(opened, long(kKelCBOpenSelection));
    TellPopupsTarget(target);
    if (client.HasEventProc()) {
        TKelNode desktop;
        TKelNode::FindContainer(-32763, NodeCode("desk"), 0, desktop);
        BEDesc desc{typeNull, nullptr};
        if (target.GetAsBEDesc(desc, client.SelectionType()) == noErr) {
            client.record.eventData = &desc;
            client.Event(target == desktop ? kKelCBShowDesktop : kKelCBNewLocation);
            client.record.eventData = nullptr;
            BEDisposeDesc(&desc);
        }
    }
    AdjustForSearch();
}

void TBrowseDialog::NodeBrowserControlViewRootChanged(TNodeBrowserControl&, TKelNode& root) {
    if (sidebar != nullptr) {
        EventRef event = nullptr;
        if (CreateEvent(nullptr, kEventClassSidebar, kEventSidebarClientRootChanged,
                        GetCurrentEventTime(), 0, &event) == noErr) {
            auto copy = std::make_unique<TKelNode>(root);
            TKelNode* pointer = copy.get();
            SetEventParameter(event, kEventParamSidebarNode, typeSidebarNode, sizeof pointer,
                              &pointer);
            SendEventToEventTarget(event, GetControlEventTarget(sidebar));
            ReleaseEvent(event);
        }
    }
    AdjustForSearch();
}

void TBrowseDialog::NodeBrowserControlSelectionChanged(TNodeBrowserControl&) {
    FixButtons();
    TKelNodeArray selection;
    if (GetSelection(selection) == noErr) {
        selection.Sort(kNameProperty4);
        TPrepareToDrawInsideCustomArea prepare(*this);
        NotifySelection(selection, kKelCBSelectEntry);
    }
    if (NodeBrowserControlIsPreviewAllowed()) {
        IsPreviewShowing(&previewShowing);
        client.record.eventData = &previewShowing;
        client.Event(kKelCBAdjustPreview);
        client.record.eventData = nullptr;
    }
}

void TBrowseDialog::NodeBrowserControlNodeDoubleClicked(TNodeBrowserControl&, TKelNode& node) {
    if (node.IsContainer() && browser->ViewStyle() != kColumnViewStyle) {
        browser->SetTarget(node, TKelNode(), TKelNode());
    }
}

bool TBrowseDialog::NodeBrowserControlIsPreviewAllowed() {
    return (optionFlags & kKelOptPreviews) != 0;
}

void TBrowseDialog::NodeBrowserControlHandleError(TNodeBrowserControl&, TKelNode& node,
                                                  long status) {
    if ((status != kFileNotFound && status != kAliasTargetMissing) || node.IsEmpty()) {
        return;
    }
    TUniString name;
    node.GetPropertyAsString(kNameProperty4, name);
    TMutableStringRef text = BundleText("Navigate Alias Not Found").CopyMutable(0);
    text.ReplaceParam(0, name.AsBCString());
    CStandardAlert alert(kAlertNoteAlert, text.AsBCStringRef(), nullptr, nullptr, 0, false, nullptr,
                         nullptr, 1, kWindowAlertPositionParentWindowScreen, nullptr, false, true,
                         nullptr);
    int16_t hit = 0;
    alert.Run(&hit);
}

void TBrowseDialog::NodeBrowserControlViewStyleChanged(unsigned long style) {
    if (ControlRef view = Control(kBrowseViewStyle)) {
        SetControl32BitValue(view, style == kColumnViewStyle ? 2 : 1);
    }
}

void TBrowseDialog::NodeBrowserControlBackForwardSnapshotChanged(long position, long count) {
    if (Control(kBrowseBackForward) != nullptr) {
        SetSegmentEnabled(1, position >= 2);
        SetSegmentEnabled(2, position < count);
    }
    AdjustForSearch();
}

bool TBrowseDialog::NodeBrowserControlWantsDisclosureTrianglesInListView() {
    TKelNode target;
    if (Target(target) != noErr || !NodeIsQueryHitsContainer(target.PeekNodeRef())) {
        return true;
    }
    return target.savedQueryRef != nullptr;
}

// A client that runs the event loop from its preview callback must not do so while the
// views draw: the drawing is left for a timer, which draws the window again with the client
// called outside of any view's drawing.
bool TBrowseDialog::NodeBrowserControlDrawPreview(TNodeBrowserControl&, TKelNode& node,
                                                  TRect& rect) {
    if (!client.HasPreviewProc()) {
        return false;
    }
    BEDesc desc{typeNull, nullptr};
    if (node.GetAsBEDesc(desc, client.SelectionType()) != noErr) {
        return false;
    }
    if (!inPreviewDrawTimer && ShouldExpectClientToRunEventLoopDuringPreviewDraw()) {
        if (previewDrawTimer == nullptr) {
            InstallEventLoopTimer(GetMainEventLoop(), 0, kEventDurationForever,
                                  PreviewDrawTimerProc, this, &previewDrawTimer);
        } else {
            SetEventLoopTimerNextFireTime(previewDrawTimer, 0);
        }
        BEDisposeDesc(&desc);
        return true;
    }
    BGRect frame = BGRectMake(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
    BTViewConvertRect(&frame, browserView, nullptr);
    client.record.previewRect = Rect{int16_t(frame.origin.y), int16_t(frame.origin.x),
                                     int16_t(frame.origin.y + frame.size.height),
                                     int16_t(frame.origin.x + frame.size.width)};
    client.record.eventData = &desc;
    const bool drawn = client.Preview(&client.record);
    client.record.eventData = nullptr;
    BEDisposeDesc(&desc);
    return drawn;
}
