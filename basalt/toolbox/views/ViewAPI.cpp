// The C calls on views and controls.
//
// A view that is in no tree (made by a create call, or taken out of its superview) is held by
// the set of loose views until it is added somewhere or disposed of.

#include "basalt/toolbox/controls/EditText.h"
#include "basalt/toolbox/controls/ScrollView.h"
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

StatusCode SendData(View& view, EventKind kind, ControlPartCode part, ResType tag, size_t size,
                    const void* data, size_t* outSize) {
    // Custom view classes answer "cntl" 103/104 themselves; the rest is the view's own store.
    if (!view.classChain.empty()) {
        EventHolder event(kEventClassControl, kind);
        SetParam(event.get(), kEventParamControlPart, typeControlPartCode, part);
        SetParam(event.get(), kEventParamControlDataTag, typeEnumeration, tag);
        SetParam(event.get(), kEventParamControlDataBuffer, typeVoidPtr, data);
        auto bufferSize = int32_t(size);
        SetParam(event.get(), kEventParamControlDataBufferSize, typeSInt32, bufferSize);
        StatusCode status = SendEventToEventTargetWithOptions(event.get(), view.Target(),
                                                              kEventTargetDontPropagate);
        if (status != eventNotHandledErr) {
            if (status == noErr && outSize != nullptr &&
                GetParam(event.get(), kEventParamControlDataBufferSize, typeSInt32, &bufferSize))
                *outSize = size_t(bufferSize);
            return status;
        }
    }
    if (kind == kEventControlSetData)
        return view.SetData(part, tag, size, data);
    return view.GetData(part, tag, size, const_cast<void*>(data), outSize);
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

int32_t BTViewGetValue(BTViewRef inView) {
    return inView != nullptr ? V(inView)->Value() : 0;
}

StatusCode BTViewSetValue(BTViewRef inView, int32_t inValue) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetValue(inValue);
    return noErr;
}

int32_t BTViewGetMinimum(BTViewRef inView) {
    return inView != nullptr ? V(inView)->Minimum() : 0;
}

StatusCode BTViewSetMinimum(BTViewRef inView, int32_t inMinimum) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetMinimum(inMinimum);
    return noErr;
}

int32_t BTViewGetMaximum(BTViewRef inView) {
    return inView != nullptr ? V(inView)->Maximum() : 0;
}

StatusCode BTViewSetMaximum(BTViewRef inView, int32_t inMaximum) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetMaximum(inMaximum);
    return noErr;
}

BCStringRef BTViewCopyText(BTViewRef inView) {
    return inView != nullptr ? MakeBCString(V(inView)->Text()) : nullptr;
}

StatusCode BTViewSetText(BTViewRef inView, BCStringRef inText) {
    if (inView == nullptr)
        return paramErr;
    V(inView)->SetText(FromBCString(inText));
    return noErr;
}

void ShowControl(ControlRef control) {
    BTViewSetVisible(control, true);
}
void HideControl(ControlRef control) {
    BTViewSetVisible(control, false);
}
Boolean IsControlVisible(ControlRef control) {
    return BTViewIsVisible(control);
}

StatusCode EnableControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetEnabled(true);
    return noErr;
}

StatusCode DisableControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetEnabled(false);
    if (Window* window = V(control)->OwnerWindow();
        window != nullptr && window->Focus() == V(control))
        window->SetFocus(nullptr, kControlFocusNoPart);
    return noErr;
}

Boolean IsControlEnabled(ControlRef control) {
    return control != nullptr && V(control)->IsEnabledInTree();
}

StatusCode ActivateControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetActive(true);
    return noErr;
}

StatusCode DeactivateControl(ControlRef control) {
    if (control == nullptr)
        return paramErr;
    V(control)->SetActive(false);
    return noErr;
}

Boolean IsControlActive(ControlRef control) {
    return control != nullptr && V(control)->IsActive();
}

void HiliteControl(ControlRef control, ControlPartCode hiliteState) {
    if (control == nullptr)
        return;
    if (hiliteState == kControlInactivePart)
        V(control)->SetActive(false);
    else
        V(control)->SetHilite(hiliteState);
}

ControlPartCode GetControlHilite(ControlRef control) {
    return control != nullptr ? V(control)->Hilite() : ControlPartCode(kControlNoPart);
}

Boolean IsControlHilited(ControlRef control) {
    return control != nullptr && V(control)->Hilite() != kControlNoPart;
}

Rect* GetControlBounds(ControlRef control, Rect* bounds) {
    if (control != nullptr && bounds != nullptr)
        BGRectToRect(V(control)->FrameInWindow(), bounds);
    return bounds;
}

void SetControlBounds(ControlRef control, const Rect* bounds) {
    if (control == nullptr || bounds == nullptr)
        return;
    BGRect wanted = BGRectFromRect(bounds);
    if (View* parent = V(control)->Superview())
        wanted.origin = parent->FromWindow(wanted.origin);
    V(control)->SetFrame(wanted);
}

int16_t GetControlValue(ControlRef control) {
    return int16_t(BTViewGetValue(control));
}
void SetControlValue(ControlRef control, int16_t value) {
    BTViewSetValue(control, value);
}
int32_t GetControl32BitValue(ControlRef control) {
    return BTViewGetValue(control);
}
void SetControl32BitValue(ControlRef control, int32_t value) {
    BTViewSetValue(control, value);
}
void SetControlMinimum(ControlRef control, int16_t value) {
    BTViewSetMinimum(control, value);
}
void SetControlMaximum(ControlRef control, int16_t value) {
    BTViewSetMaximum(control, value);
}
int16_t GetControlMaximum(ControlRef control) {
    return int16_t(BTViewGetMaximum(control));
}

StatusCode SetControlTitleWithBCString(ControlRef control, BCStringRef title) {
    return BTViewSetText(control, title);
}

StatusCode CopyControlTitleAsBCString(ControlRef control, BCStringRef* outTitle) {
    if (control == nullptr || outTitle == nullptr)
        return paramErr;
    *outTitle = BTViewCopyText(control);
    return noErr;
}

StatusCode SetControlCommandID(ControlRef inControl, uint32_t inCommandID) {
    if (inControl == nullptr)
        return paramErr;
    V(inControl)->command = inCommandID;
    return noErr;
}

StatusCode GetControlCommandID(ControlRef inControl, uint32_t* outCommandID) {
    if (inControl == nullptr || outCommandID == nullptr)
        return paramErr;
    *outCommandID = V(inControl)->command;
    return noErr;
}

void SetControlReference(ControlRef control, long data) {
    if (control != nullptr)
        V(control)->reference = data;
}

long GetControlReference(ControlRef control) {
    return control != nullptr ? V(control)->reference : 0;
}

void DrawOneControl(ControlRef control) {
    BTViewRender(control);
}
void Draw1Control(ControlRef control) {
    BTViewRender(control);
}
void DrawControlInCurrentPort(ControlRef control) {
    BTViewRender(control);
}

StatusCode SetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTagName,
                          size_t inSize, const void* inData) {
    if (inControl == nullptr)
        return paramErr;
    return SendData(*V(inControl), kEventControlSetData, inPart, inTagName, inSize, inData,
                    nullptr);
}

StatusCode GetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTagName,
                          size_t inBufferSize, void* inBuffer, size_t* outActualSize) {
    if (inControl == nullptr)
        return paramErr;
    return SendData(*V(inControl), kEventControlGetData, inPart, inTagName, inBufferSize, inBuffer,
                    outActualSize);
}

StatusCode GetControlDataSize(ControlRef inControl, ControlPartCode inPart, ResType inTagName,
                              size_t* outMaxSize) {
    return GetControlData(inControl, inPart, inTagName, 0, nullptr, outMaxSize);
}

StatusCode SetControlProperty(ControlRef control, PropertyCreator creator, PropertyTag tag,
                              size_t size, const void* buffer) {
    if (control == nullptr || (buffer == nullptr && size != 0))
        return paramErr;
    auto* bytes = static_cast<const uint8_t*>(buffer);
    V(control)->properties[{creator, tag}].assign(bytes, bytes + size);
    return noErr;
}

StatusCode GetControlProperty(ControlRef control, PropertyCreator creator, PropertyTag tag,
                              size_t bufferSize, size_t* actualSize, void* buffer) {
    if (control == nullptr)
        return paramErr;
    auto& properties = V(control)->properties;
    auto it = properties.find({creator, tag});
    if (it == properties.end())
        return errDataNotSupported;
    if (actualSize != nullptr)
        *actualSize = it->second.size();
    if (buffer != nullptr)
        std::copy_n(it->second.begin(), std::min(bufferSize, it->second.size()),
                    static_cast<uint8_t*>(buffer));
    return noErr;
}

StatusCode RemoveControlProperty(ControlRef control, PropertyCreator creator, PropertyTag tag) {
    if (control == nullptr)
        return paramErr;
    return V(control)->properties.erase({creator, tag}) != 0 ? StatusCode(noErr)
                                                             : StatusCode(errDataNotSupported);
}

StatusCode BTSearchFieldChangeAttributes(BTViewRef inSearchField, uint32_t inAttributesToSet,
                                         uint32_t inAttributesToClear) {
    auto* field = inSearchField != nullptr ? dynamic_cast<SearchField*>(V(inSearchField)) : nullptr;
    if (field == nullptr)
        return paramErr;
    field->attributes = (field->attributes | inAttributesToSet) & ~inAttributesToClear;
    field->SetNeedsDisplay();
    return noErr;
}

StatusCode BTSearchFieldGetAttributes(BTViewRef inSearchField, uint32_t* outAttributes) {
    auto* field = inSearchField != nullptr ? dynamic_cast<SearchField*>(V(inSearchField)) : nullptr;
    if (field == nullptr || outAttributes == nullptr)
        return paramErr;
    *outAttributes = field->attributes;
    return noErr;
}

StatusCode BTScrollViewCreate(uint32_t, BTViewRef* outView) {
    if (outView == nullptr)
        return paramErr;
    auto view = MakeView(kControlKindScrollView);
    HoldLoose(view);
    *outView = view->Ref();
    return noErr;
}

StatusCode BTScrollViewSetScrollBarAutoHide(BTViewRef inView, Boolean inAutoHide) {
    auto* scroll = inView != nullptr ? dynamic_cast<ScrollView*>(V(inView)) : nullptr;
    if (scroll == nullptr)
        return paramErr;
    scroll->autoHide = inAutoHide != 0;
    scroll->Arrange();
    return noErr;
}

StatusCode BTScrollViewGoTo(BTViewRef inView, uint32_t inAction) {
    auto* scroll = inView != nullptr ? dynamic_cast<ScrollView*>(V(inView)) : nullptr;
    return scroll != nullptr ? scroll->GoTo(inAction) : paramErr;
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
