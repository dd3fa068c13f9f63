// The C calls on the view tree: making and disposing of controls, subviews, ids, frames and
// bounds, layout bindings, visibility and drawing, and conversions between coordinate spaces.
//
// A view that is in no tree (made by a create call, or taken out of its superview) is held by
// the set of loose views until it is added somewhere or disposed of.

#include "basalt/toolbox/views/UnicodeText.h"
#include "basalt/toolbox/windows/Window.h"

#include <algorithm>

using namespace basalt::toolbox;

namespace basalt::toolbox {

std::vector<std::shared_ptr<View>>& LooseViews() {
    static auto* loose = new std::vector<std::shared_ptr<View>>;
    return *loose;
}

void HoldLoose(const std::shared_ptr<View>& view) {
    LooseViews().push_back(view);
}

void ReleaseLoose(View* view) {
    std::erase_if(LooseViews(), [&](const auto& held) { return held.get() == view; });
}

} // namespace basalt::toolbox

namespace {

View* V(ControlRef ref) {
    return View::From(ref);
}

} // namespace

extern "C" {

EventTargetRef GetControlEventTarget(ControlRef control) {
    return control != nullptr ? V(control)->Target() : nullptr;
}

WindowRef GetControlOwner(ControlRef control) {
    Window* window = control != nullptr ? V(control)->OwnerWindow() : nullptr;
    return window != nullptr ? window->Ref() : nullptr;
}

StatusCode GetControlID(ControlRef inControl, ControlID* outID) {
    if (inControl == nullptr || outID == nullptr)
        return paramErr;
    *outID = V(inControl)->id;
    return noErr;
}

StatusCode SetControlID(ControlRef inControl, const ControlID* inID) {
    if (inControl == nullptr || inID == nullptr)
        return paramErr;
    V(inControl)->id = *inID;
    return noErr;
}

StatusCode GetControlKind(ControlRef inControl, ControlKind* outControlKind) {
    if (inControl == nullptr || outControlKind == nullptr)
        return paramErr;
    *outControlKind = V(inControl)->Kind();
    return noErr;
}

void DisposeControl(ControlRef control) {
    if (control == nullptr)
        return;
    auto keep = V(control)->Shared();
    SendDestruct(*keep);
    keep->RemoveFromSuperview();
    ReleaseLoose(keep.get());
    keep->Target()->RemoveAllHandlers();
}

StatusCode BTCreateControl(WindowRef window, const Rect* bounds, OSType kind, BCStringRef title,
                           ControlRef* outControl) {
    if (bounds == nullptr || outControl == nullptr)
        return paramErr;
    std::shared_ptr<View> view = MakeView(kind);
    if (view == nullptr)
        return errUnknownControl;
    view->SetFrame(BGRectFromRect(bounds));
    view->SetText(FromBCString(title));
    if (window != nullptr)
        Window::From(window)->Root().AddSubview(view);
    else
        HoldLoose(view);
    *outControl = view->Ref();
    return noErr;
}

StatusCode BTViewAddSubview(BTViewRef inParent, BTViewRef inNewChild) {
    if (inParent == nullptr || inNewChild == nullptr || V(inNewChild)->IsAncestorOf(V(inParent)))
        return paramErr;
    auto child = V(inNewChild)->Shared();
    V(inParent)->AddSubview(child);
    ReleaseLoose(child.get());
    return noErr;
}

StatusCode BTViewRemoveFromSuperview(BTViewRef inView) {
    if (inView == nullptr)
        return paramErr;
    if (V(inView)->Superview() == nullptr)
        return noErr;
    HoldLoose(V(inView)->Shared());
    V(inView)->RemoveFromSuperview();
    return noErr;
}

BTViewRef BTViewGetSuperview(BTViewRef inView) {
    View* parent = inView != nullptr ? V(inView)->Superview() : nullptr;
    return parent != nullptr ? parent->Ref() : nullptr;
}

BTViewRef BTViewGetFirstSubview(BTViewRef inView) {
    if (inView == nullptr || V(inView)->Subviews().empty())
        return nullptr;
    return V(inView)->Subviews().back()->Ref(); // the front-most
}

BTViewRef BTViewGetNextView(BTViewRef inView) {
    View* parent = inView != nullptr ? V(inView)->Superview() : nullptr;
    if (parent == nullptr)
        return nullptr;
    const auto& siblings = parent->Subviews();
    for (size_t i = siblings.size(); i-- > 1;)
        if (siblings[i].get() == V(inView))
            return siblings[i - 1]->Ref();
    return nullptr;
}

StatusCode BTViewFindByID(BTViewRef inStartView, ControlID inID, BTViewRef* outControl) {
    if (inStartView == nullptr || outControl == nullptr)
        return paramErr;
    View* found = V(inStartView)->FindByID(inID);
    *outControl = found != nullptr ? found->Ref() : nullptr;
    return found != nullptr ? StatusCode(noErr) : StatusCode(errUnknownControl);
}

StatusCode BTViewSetZOrder(BTViewRef inView, uint32_t inOp, BTViewRef inOther) {
    View* parent = inView != nullptr ? V(inView)->Superview() : nullptr;
    if (parent == nullptr || (inOp != 1 && inOp != 2))
        return paramErr;
    parent->Reorder(V(inView), inOp == 1, inOther != nullptr ? V(inOther) : nullptr);
    return noErr;
}

StatusCode BTViewGetFrame(BTViewRef inView, BGRect* outRect) {
    if (inView == nullptr || outRect == nullptr)
        return paramErr;
    *outRect = V(inView)->Frame();
    return noErr;
}

StatusCode BTViewSetFrame(BTViewRef inView, const BGRect* inRect) {
    if (inView == nullptr || inRect == nullptr)
        return paramErr;
    V(inView)->SetFrame(*inRect);
    return noErr;
}

StatusCode BTViewMoveBy(BTViewRef inView, BGFloat inDX, BGFloat inDY) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetFrame(BGRectOffset(V(inView)->Frame(), inDX, inDY));
    return noErr;
}

StatusCode BTViewGetBounds(BTViewRef inView, BGRect* outRect) {
    if (inView == nullptr || outRect == nullptr)
        return paramErr;
    *outRect = V(inView)->Bounds();
    return noErr;
}

StatusCode BTViewSetBoundsOrigin(BTViewRef inView, BGFloat inX, BGFloat inY) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetBoundsOrigin({inX, inY});
    return noErr;
}

StatusCode BTViewConvertRect(BGRect* ioRect, BTViewRef inSourceView, BTViewRef inDestView) {
    if (ioRect == nullptr)
        return paramErr;
    BGPoint origin =
        inSourceView != nullptr ? V(inSourceView)->ToWindow(ioRect->origin) : ioRect->origin;
    ioRect->origin = inDestView != nullptr ? V(inDestView)->FromWindow(origin) : origin;
    return noErr;
}

StatusCode BTViewGetOptimalBounds(BTViewRef inView, BGRect* outBounds, float* outBaseLineOffset) {
    if (inView == nullptr || outBounds == nullptr)
        return paramErr;
    EventHolder event(kEventClassControl, kEventControlGetOptimalBounds);
    StatusCode status = SendEventToEventTargetWithOptions(event.get(), V(inView)->Target(),
                                                          kEventTargetDontPropagate);
    if (status != noErr)
        return status;
    int16_t baseline = 0;
    GetParam(event.get(), kEventParamControlOptimalBounds, typeBTRect, outBounds);
    GetParam(event.get(), kEventParamControlOptimalBaselineOffset, typeSInt16, &baseline);
    if (outBaseLineOffset != nullptr)
        *outBaseLineOffset = baseline;
    return noErr;
}

StatusCode GetBestControlRect(ControlRef inControl, Rect* outRect, int16_t* outBaseLineOffset) {
    BGRect bounds{};
    float baseline = 0;
    if (outRect == nullptr)
        return paramErr;
    StatusCode status = BTViewGetOptimalBounds(inControl, &bounds, &baseline);
    if (status != noErr)
        return status;
    bounds.origin = V(inControl)->FrameInWindow().origin;
    BGRectToRect(bounds, outRect);
    if (outBaseLineOffset != nullptr)
        *outBaseLineOffset = int16_t(baseline);
    return noErr;
}

StatusCode BTViewSetLayoutInfo(BTViewRef inView, const BTLayoutInfo* inLayoutInfo) {
    if (inView == nullptr || inLayoutInfo == nullptr)
        return paramErr;
    V(inView)->layout = *inLayoutInfo;
    const BTBinding& binding = inLayoutInfo->binding;
    for (const BTSideBinding* side : {&binding.top, &binding.left, &binding.bottom, &binding.right})
        if (side->toView != nullptr)
            V(side->toView)->followed = true;
    return noErr;
}

StatusCode BTViewGetLayoutInfo(BTViewRef inView, BTLayoutInfo* outLayoutInfo) {
    if (inView == nullptr || outLayoutInfo == nullptr)
        return paramErr;
    *outLayoutInfo = V(inView)->layout;
    return noErr;
}

StatusCode BTViewSuspendLayout(BTViewRef inView) {
    if (inView == nullptr)
        return paramErr;
    ++V(inView)->layoutSuspended;
    return noErr;
}

StatusCode BTViewResumeLayout(BTViewRef inView) {
    if (inView == nullptr)
        return paramErr;
    if (V(inView)->layoutSuspended > 0)
        --V(inView)->layoutSuspended;
    return noErr;
}

Boolean BTViewIsLayoutActive(BTViewRef inView) {
    return inView != nullptr && V(inView)->layoutSuspended == 0;
}

// Bindings hold from the frame the views have now on; nothing to recompute at once.
StatusCode BTViewApplyLayout(BTViewRef inView) {
    return inView != nullptr ? StatusCode(noErr) : StatusCode(paramErr);
}

StatusCode BTViewSetVisible(BTViewRef inView, Boolean inVisible) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetVisible(inVisible != 0);
    return noErr;
}

Boolean BTViewIsVisible(BTViewRef inView) {
    return inView != nullptr && V(inView)->IsVisibleInWindow();
}

StatusCode BTViewSetNeedsDisplay(BTViewRef inView, Boolean inNeedsDisplay) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetNeedsDisplay(inNeedsDisplay != 0);
    return noErr;
}

Boolean BTViewGetNeedsDisplay(BTViewRef inView) {
    return inView != nullptr && V(inView)->NeedsDisplay();
}

StatusCode BTViewRender(BTViewRef inView) {
    if (inView == nullptr)
        return paramErr;
    Window* window = V(inView)->OwnerWindow();
    if (window == nullptr || !window->IsVisible())
        return noErr;
    window->RenderView(*V(inView));
    return noErr;
}

StatusCode BTViewScrollRect(BTViewRef inView, const BGRect*, BGFloat, BGFloat) {
    // Everything is composited anew, so scrolling pixels is redrawing them.
    return BTViewSetNeedsDisplay(inView, true);
}

Boolean BTViewIsActive(BTViewRef inView) {
    return inView != nullptr && V(inView)->IsActive();
}

Boolean BTViewIsEnabled(BTViewRef inView, BTViewRef* outEnabledView) {
    if (inView == nullptr)
        return false;
    if (outEnabledView != nullptr) {
        *outEnabledView = nullptr;
        for (View* view = V(inView); view != nullptr; view = view->Superview())
            if (!view->IsEnabled())
                *outEnabledView = view->Ref();
    }
    return V(inView)->IsEnabledInTree();
}

StatusCode BTViewSimulateClick(BTViewRef inView, ControlPartCode inPartToClick,
                               uint32_t inModifiers, ControlPartCode* outPartClicked) {
    if (inView == nullptr)
        return paramErr;
    ControlPartCode part = ClickView(*V(inView), inPartToClick, inModifiers);
    if (outPartClicked != nullptr)
        *outPartClicked = part;
    return noErr;
}

ControlPartCode BTViewGetFocusPart(BTViewRef inView) {
    Window* window = inView != nullptr ? V(inView)->OwnerWindow() : nullptr;
    return window != nullptr && window->Focus() == V(inView) ? ControlPartCode(kControlEditTextPart)
                                                             : ControlPartCode(kControlFocusNoPart);
}

} // extern "C"

namespace {

// A point in any space to global coordinates (points, y down), or back.
bool ToGlobal(BGPoint* point, uint32_t space, void* object) {
    if (space == kBTCoordSpaceScreenPixel)
        return true;
    WindowRef window = space == kBTCoordSpaceWindow
                           ? static_cast<WindowRef>(object)
                           : GetControlOwner(static_cast<ControlRef>(object));
    if (space == kBTCoordSpaceView) {
        if (object == nullptr)
            return false;
        *point = V(static_cast<ControlRef>(object))->ToWindow(*point);
    }
    Rect content{};
    if (space != kBTCoordSpaceWindow && space != kBTCoordSpaceView)
        return false;
    if (GetWindowBounds(window, kWindowContentRgn, &content) != noErr)
        return false;
    point->x += content.left;
    point->y += content.top;
    return true;
}

bool FromGlobal(BGPoint* point, uint32_t space, void* object) {
    if (space == kBTCoordSpaceScreenPixel)
        return true;
    if (space != kBTCoordSpaceWindow && space != kBTCoordSpaceView)
        return false;
    WindowRef window = space == kBTCoordSpaceWindow
                           ? static_cast<WindowRef>(object)
                           : GetControlOwner(static_cast<ControlRef>(object));
    Rect content{};
    if (GetWindowBounds(window, kWindowContentRgn, &content) != noErr)
        return false;
    point->x -= content.left;
    point->y -= content.top;
    if (space == kBTCoordSpaceView)
        *point = V(static_cast<ControlRef>(object))->FromWindow(*point);
    return true;
}

} // namespace

extern "C" {

StatusCode BTPointConvert(BGPoint* ioPoint, uint32_t inSourceSpace, void* inSourceObject,
                          uint32_t inDestSpace, void* inDestObject) {
    if (ioPoint == nullptr)
        return paramErr;
    BGPoint point = *ioPoint;
    if (!ToGlobal(&point, inSourceSpace, inSourceObject) ||
        !FromGlobal(&point, inDestSpace, inDestObject))
        return paramErr;
    *ioPoint = point;
    return noErr;
}

StatusCode BTRectConvert(BGRect* ioRect, uint32_t inSourceSpace, void* inSourceObject,
                         uint32_t inDestSpace, void* inDestObject) {
    if (ioRect == nullptr)
        return paramErr;
    return BTPointConvert(&ioRect->origin, inSourceSpace, inSourceObject, inDestSpace,
                          inDestObject);
}

} // extern "C"
