#include "kel/widgets/BTSidebar.h"

#include "kel/widgets/SidebarEvents.h"
#include "kel/widgets/views/BTSidebarItemsView.h"

#include <algorithm>

namespace {

BTSidebar* SidebarOf(ControlRef view) {
    return static_cast<BTSidebar*>(
        BTObjectDynamicCast(reinterpret_cast<BTObjectRef>(view), BTSidebar::ClassID()));
}

constexpr float kBackgroundGrey = 0.9216f;

} // namespace

BCStringRef BTSidebar::ClassID() {
    return BCSTR("com.velmo.BTSidebarView");
}

BTSidebar::BTSidebar(ControlRef control) : TView(control) {
    ChangeAutoInvalidateFlags(kInvalidateOnActivate | kInvalidateOnEnable, 0);
}

BTSidebar::~BTSidebar() {
    if (sidebarHandler != nullptr)
        RemoveEventHandler(sidebarHandler);
    if (acquired) {
        observatory.SetTickleControl(nullptr);
        observatory.UnregisterContainerObserver(topNode, *this);
        observatory.UnregisterContainerObserver(bottomNode, *this);
    }
}

uint64_t BTSidebar::GetKind() {
    return ViewKind("velm", "Side");
}

StatusCode BTSidebar::Initialize(TBasaltEvent&) {
    if (StatusCode status = BTSidebarItemsView::Create(this, &itemsViewRef))
        return status;
    itemsView = static_cast<BTSidebarItemsView*>(BTObjectDynamicCast(
        reinterpret_cast<BTObjectRef>(itemsViewRef), BTSidebarItemsView::ClassID()));
    if (StatusCode status = BTScrollViewCreate(kBTScrollViewOptionsVertScroll, &scrollView)) {
        DisposeControl(itemsViewRef);
        itemsViewRef = nullptr;
        itemsView = nullptr;
        return status;
    }
    BTScrollViewSetScrollBarAutoHide(scrollView, true);
    BTViewSetVisible(scrollView, true);
    BTViewSetVisible(itemsViewRef, true);
    BTViewAddSubview(scrollView, itemsViewRef);
    BTViewAddSubview(GetViewRef(), scrollView);
    PlaceScrollView();
    const EventTypeSpec changed = {kEventClassSidebar, kEventSidebarClientRootChanged};
    return InstallEventHandler(GetEventTarget(), EventHandler, 1, &changed, this, &sidebarHandler);
}

// The rows lie one point inside the sidebar, so that its frame shows around them. The scroll
// view is placed anew on every change of size rather than bound to the edges, since a binding
// keeps distances and the sidebar may start with no size at all.
void BTSidebar::PlaceScrollView() {
    BGRect bounds = Bounds();
    BGRect inside = BGRectMake(bounds.origin.x + 1, bounds.origin.y + 1,
                               std::max<BGFloat>(bounds.size.width - 2, 0),
                               std::max<BGFloat>(bounds.size.height - 2, 0));
    BTViewSetFrame(scrollView, &inside);
}

void BTSidebar::BoundsChanged(unsigned long, const BGRect&, const BGRect&) {
    if (scrollView != nullptr)
        PlaceScrollView();
}

void BTSidebar::Draw(RgnHandle, BGContextRef context) {
    BGRect bounds = Bounds();
    BGContextSetRGBFillColor(context, kBackgroundGrey, kBackgroundGrey, kBackgroundGrey, 1.0);
    BGContextFillRect(context, bounds);
    BTThemeFrameDrawInfo frame = {0, kBTThemeFrameListBox,
                                  IsActive() && IsEnabled() ? kBTThemeStateActive
                                                            : kBTThemeStateInactive,
                                  BTViewGetFocusPart(itemsViewRef) != kControlFocusNoPart};
    BTThemeDrawFrame(&bounds, &frame, context);
}

// The focus ring is drawn outside the view, so the region reaches that far.
StatusCode BTSidebar::GetRegion(short part, RgnHandle region) {
    if (part != kControlStructureMetaPart || region == nullptr)
        return eventNotHandledErr;
    int32_t outset = 0;
    GetThemeMetric(kBTThemeMetricFocusRectOutset, &outset);
    SetRegionToBounds(region, int16_t(outset));
    return noErr;
}

StatusCode BTSidebar::EventHandler(EventHandlerCallRef, EventRef ref, void* data) {
    TBasaltEvent event(ref);
    if (event.Class() != kEventClassSidebar || event.Kind() != kEventSidebarClientRootChanged)
        return eventNotHandledErr;
    return static_cast<BTSidebar*>(data)->ClientRootChanged(event);
}

// The dialog went somewhere: show its row, unless it went where the user's own choice of a row
// led, which is selected already.
StatusCode BTSidebar::ClientRootChanged(TBasaltEvent& event) {
    TKelNode* node = nullptr;
    if (StatusCode status =
            event.GetParameter(kEventParamSidebarNode, typeSidebarNode, sizeof node, &node))
        return status;
    if (node != nullptr && !(pendingRoot == node->PeekNodeRef()))
        SelectRootItem(node->savedQueryRef != nullptr ? node->savedQueryRef : node->PeekNodeRef());
    pendingRoot.Release();
    return noErr;
}

void BTSidebar::SelectRootItem(OpaqueNodeRef* node) {
    if (itemsView == nullptr)
        return;
    int row = LocateNode(node);
    itemsView->SelectItem(row, 0, false);
    if (row != 0)
        itemsView->MakeItemVisible(row);
}

TKelNode BTSidebar::CopyCurrentClientRoot() {
    TBasaltEvent event(kEventClassSidebar, kEventSidebarCopyClientRoot);
    if (event.Get() == nullptr ||
        SendEventToEventTargetWithOptions(event.Get(), GetEventTarget(),
                                          kEventTargetDontPropagate) != noErr)
        return TKelNode();
    OpaqueNodeRef* node = nullptr;
    if (event.GetParameter(kEventParamSidebarNodeRef, typeSidebarNodeRef, sizeof node, &node) ==
        noErr)
        return TKelNode(node, false);
    BFRef ref{};
    if (event.GetParameter(kEventParamSidebarBFRef, typeSidebarBFRef, sizeof ref, &ref) == noErr)
        return TKelNode(GetBFRefAsNode(&ref), false);
    return TKelNode();
}

void BTSidebar::ResetItemsInScrollView() {
    BTViewRemoveFromSuperview(itemsViewRef);
    BTViewAddSubview(scrollView, itemsViewRef);
}

StatusCode _BTSidebarRegisterClass() {
    return RegisterViewClassOnce<BTSidebar>();
}

StatusCode _BTSidebarConstrainFrame(ControlRef view, BGRect* frame) {
    BTSidebar* sidebar = SidebarOf(view);
    if (sidebar == nullptr || frame == nullptr || sidebar->ItemsView() == nullptr)
        return paramErr;
    sidebar->ItemsView()->ConstrainFrame(frame);
    return noErr;
}

StatusCode _BTSidebarSetFilter(ControlRef view, const TNodeFilter* filter) {
    BTSidebar* sidebar = SidebarOf(view);
    if (sidebar == nullptr || sidebar->ItemsView() == nullptr)
        return paramErr;
    sidebar->ItemsView()->SetFilter(filter);
    return noErr;
}

StatusCode _BTSidebarResetSidebarItemsInScrollView(ControlRef view) {
    BTSidebar* sidebar = SidebarOf(view);
    if (sidebar == nullptr)
        return paramErr;
    sidebar->ResetItemsInScrollView();
    return noErr;
}
