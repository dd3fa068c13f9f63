#include "basalt/toolbox/views/View.h"

#include "basalt/toolbox/windows/Window.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace basalt::toolbox {

View::View(OSType kind) : kind_{kControlKindSignature, kind} {}

View::~View() {
    SendDestruct(*this);
    // Children outlive nothing of ours, but they must not keep pointing at our window.
    for (auto& child : subviews_)
        child->AttachToWindow(nullptr);
}

// ---- Tree ---------------------------------------------------------------------------------

void View::AddSubview(const std::shared_ptr<View>& child) {
    if (child == nullptr || child.get() == this || child->IsAncestorOf(this))
        return;
    auto keep = child;
    child->RemoveFromSuperview();
    child->superview_ = Shared();
    subviews_.push_back(child);
    child->AttachToWindow(window_);
    SetNeedsDisplay();
}

void View::RemoveFromSuperview() {
    auto parent = superview_.lock();
    if (parent == nullptr)
        return;
    auto keep = Shared();
    if (window_ != nullptr)
        window_->ViewLeaving(this);
    std::erase_if(parent->subviews_, [&](const auto& view) { return view.get() == this; });
    superview_.reset();
    AttachToWindow(nullptr);
    parent->SetNeedsDisplay();
}

void View::AttachToWindow(Window* window) {
    if (window_ == window)
        return;
    WindowRef oldWindow = window_ != nullptr ? window_->Ref() : nullptr;
    window_ = window;
    for (auto& child : subviews_)
        child->AttachToWindow(window);
    EventHolder event(kEventClassControl, kEventControlOwningWindowChanged);
    WindowRef newWindow = window != nullptr ? window->Ref() : nullptr;
    SetParam(event.get(), kEventParamControlOriginalOwningWindow, typeWindowRef, oldWindow);
    SetParam(event.get(), kEventParamControlCurrentOwningWindow, typeWindowRef, newWindow);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
}

void View::Reorder(View* child, bool toFront, View* other) {
    auto it = std::find_if(subviews_.begin(), subviews_.end(),
                           [&](const auto& view) { return view.get() == child; });
    if (it == subviews_.end())
        return;
    auto moved = *it;
    subviews_.erase(it);
    auto at = std::find_if(subviews_.begin(), subviews_.end(),
                           [&](const auto& view) { return view.get() == other; });
    if (at == subviews_.end())
        subviews_.insert(toFront ? subviews_.end() : subviews_.begin(), moved);
    else
        subviews_.insert(toFront ? at + 1 : at, moved);
    SetNeedsDisplay();
}

View* View::FindByID(const ControlID& wanted) {
    if (id.signature == wanted.signature && id.id == wanted.id)
        return this;
    for (auto& child : subviews_)
        if (View* found = child->FindByID(wanted))
            return found;
    return nullptr;
}

View* View::HitView(BGPoint local) {
    if (!visible_ || !BGRectContainsPoint(Bounds(), local))
        return nullptr;
    for (auto it = subviews_.rbegin(); it != subviews_.rend(); ++it) {
        View& child = **it;
        BGPoint inChild = {local.x - child.frame_.origin.x + child.boundsOrigin_.x,
                           local.y - child.frame_.origin.y + child.boundsOrigin_.y};
        if (View* hit = child.HitView(inChild))
            return hit;
    }
    return this;
}

bool View::IsAncestorOf(const View* other) const {
    for (const View* view = other; view != nullptr; view = view->Superview())
        if (view == this)
            return true;
    return false;
}

// ---- Geometry -----------------------------------------------------------------------------

void View::SetFrame(const BGRect& frame) {
    BGRect original = frame_;
    if (BGRectEqualToRect(original, frame))
        return;
    if (View* parent = Superview())
        parent->SetNeedsDisplay();
    frame_ = frame;
    if (layoutSuspended == 0)
        ApplyLayout(original.size);
    FrameChanged();
    if (followed)
        MoveFollowers(original);
    EventHolder event(kEventClassControl, kEventControlBoundsChanged);
    uint32_t attributes = 0;
    SetParam(event.get(), kEventParamAttributes, typeUInt32, attributes);
    SetParam(event.get(), kEventParamOriginalBounds, typeBTRect, original);
    SetParam(event.get(), kEventParamCurrentBounds, typeBTRect, frame);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
    SetNeedsDisplay();
}

void View::SetBoundsOrigin(BGPoint origin) {
    boundsOrigin_ = origin;
    SetNeedsDisplay();
}

BGPoint View::ToWindow(BGPoint local) const {
    BGPoint point = local;
    for (const View* view = this; view != nullptr; view = view->Superview()) {
        point.x += view->frame_.origin.x - view->boundsOrigin_.x;
        point.y += view->frame_.origin.y - view->boundsOrigin_.y;
    }
    return point;
}

BGPoint View::FromWindow(BGPoint window) const {
    BGPoint origin = ToWindow({0, 0});
    return {window.x - origin.x, window.y - origin.y};
}

BGRect View::FrameInWindow() const {
    View* parent = Superview();
    BGPoint origin = parent != nullptr ? parent->ToWindow(frame_.origin) : frame_.origin;
    return {origin, frame_.size};
}

void View::LayoutChild(View& child, BGSize oldSize) const {
    const BTBinding& binding = child.layout.binding;
    BGRect frame = child.frame_;
    double dx = frame_.size.width - oldSize.width;
    double dy = frame_.size.height - oldSize.height;
    double left = frame.origin.x, right = frame.origin.x + frame.size.width;
    double top = frame.origin.y, bottom = frame.origin.y + frame.size.height;
    // A side bound to another view follows that view instead of the superview.
    auto toSuperviewMax = [](const BTSideBinding& side) {
        return side.toView == nullptr && side.kind == kBTLayoutBindMax;
    };
    bool leftMax = toSuperviewMax(binding.left);
    bool rightMax = toSuperviewMax(binding.right);
    bool topMax = toSuperviewMax(binding.top);
    bool bottomMax = toSuperviewMax(binding.bottom);
    if (rightMax)
        right += dx;
    if (leftMax || (rightMax && binding.left.kind == kBTLayoutBindNone))
        left += dx;
    if (bottomMax)
        bottom += dy;
    if (topMax || (bottomMax && binding.top.kind == kBTLayoutBindNone))
        top += dy;
    child.SetFrame(BGRectMake(left, top, right - left, bottom - top));
}

namespace {

void ForEachView(View& view, const std::function<void(View&)>& action) {
    action(view);
    for (auto& child : std::vector(view.Subviews()))
        ForEachView(*child, action);
}

// How far the edge a side follows has moved: the minimum or the maximum edge of the leader.
double EdgeMove(const BTSideBinding& side, double beforeMin, double beforeMax, double afterMin,
                double afterMax) {
    return side.kind == kBTLayoutBindMax ? afterMax - beforeMax : afterMin - beforeMin;
}

bool Unbound(const BTSideBinding& side) {
    return side.toView == nullptr && side.kind == kBTLayoutBindNone;
}

} // namespace

void View::MoveFollowers(const BGRect& before) {
    View* top = this;
    while (top->Superview() != nullptr)
        top = top->Superview();
    const BGRect after = frame_;
    ForEachView(*top, [&](View& view) {
        if (&view != this)
            view.Follow(*this, before, after);
    });
}

void View::Follow(View& leader, const BGRect& before, const BGRect& after) {
    const BTBinding& binding = layout.binding;
    auto follows = [&](const BTSideBinding& side) { return side.toView == leader.Ref(); };
    if (!follows(binding.top) && !follows(binding.left) && !follows(binding.bottom) &&
        !follows(binding.right))
        return;
    double left = frame_.origin.x, right = left + frame_.size.width;
    double top = frame_.origin.y, bottom = top + frame_.size.height;
    auto horizontal = [&](const BTSideBinding& side) {
        return EdgeMove(side, before.origin.x, before.origin.x + before.size.width, after.origin.x,
                        after.origin.x + after.size.width);
    };
    auto vertical = [&](const BTSideBinding& side) {
        return EdgeMove(side, before.origin.y, before.origin.y + before.size.height, after.origin.y,
                        after.origin.y + after.size.height);
    };
    // An edge moves with its leader; the opposite edge goes along when its side is unbound, so
    // the view keeps its size.
    auto follow = [&](const BTSideBinding& side, const BTSideBinding& opposite, double& edge,
                      double& other, bool isHorizontal) {
        if (!follows(side))
            return;
        double move = isHorizontal ? horizontal(side) : vertical(side);
        edge += move;
        if (Unbound(opposite))
            other += move;
    };
    follow(binding.left, binding.right, left, right, true);
    follow(binding.right, binding.left, right, left, true);
    follow(binding.top, binding.bottom, top, bottom, false);
    follow(binding.bottom, binding.top, bottom, top, false);
    SetFrame(BGRectMake(left, top, right - left, bottom - top));
}

void View::ApplyLayout(BGSize oldSize) {
    if (layoutSuspended != 0 ||
        (oldSize.width == frame_.size.width && oldSize.height == frame_.size.height))
        return;
    for (auto& child : std::vector(subviews_))
        LayoutChild(*child, oldSize);
}

// ---- State --------------------------------------------------------------------------------

bool View::IsVisibleInWindow() const {
    for (const View* view = this; view != nullptr; view = view->Superview())
        if (!view->visible_)
            return false;
    return true;
}

void View::SetVisible(bool visible) {
    if (visible_ == visible)
        return;
    visible_ = visible;
    if (!visible && window_ != nullptr)
        window_->ViewLeaving(this);
    if (View* parent = Superview())
        parent->SetNeedsDisplay();
    Notify(kEventControlVisibilityChanged);
}

bool View::IsEnabledInTree() const {
    for (const View* view = this; view != nullptr; view = view->Superview())
        if (!view->enabled_)
            return false;
    return true;
}

void View::SetEnabled(bool enabled) {
    if (enabled_ == enabled)
        return;
    enabled_ = enabled;
    SetNeedsDisplay();
    Notify(kEventControlEnabledStateChanged);
}

bool View::IsActive() const {
    return active_ && (window_ == nullptr || window_->IsActive());
}

void View::SetActive(bool active) {
    if (active_ == active)
        return;
    active_ = active;
    SetNeedsDisplay();
    Notify(active ? kEventControlActivate : kEventControlDeactivate);
}

void View::SetHilite(ControlPartCode part) {
    if (hilite_ == part)
        return;
    ControlPartCode old = hilite_;
    hilite_ = part;
    SetNeedsDisplay();
    EventHolder event(kEventClassControl, kEventControlHiliteChanged);
    SetParam(event.get(), kEventParamControlPreviousPart, typeControlPartCode, old);
    SetParam(event.get(), kEventParamControlCurrentPart, typeControlPartCode, part);
    SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
}

void View::SetValue(int32_t value) {
    value = std::clamp(value, minimum_, std::max(minimum_, maximum_));
    if (value_ == value)
        return;
    value_ = value;
    SetNeedsDisplay();
    Notify(kEventControlValueFieldChanged);
}

void View::SetMinimum(int32_t minimum) {
    minimum_ = minimum;
    if (value_ < minimum_)
        SetValue(minimum_);
}

void View::SetMaximum(int32_t maximum) {
    maximum_ = maximum;
    if (value_ > maximum_)
        SetValue(maximum_);
}

void View::SetText(const std::u16string& text) {
    if (text_ == text)
        return;
    text_ = text;
    SetNeedsDisplay();
    Notify(kEventControlTitleChanged);
}

void View::SetNeedsDisplay(bool needs) {
    needsDisplay_ = needs;
    if (needs && window_ != nullptr)
        window_->InvalidateViews();
}

// A hidden view draws nothing, so its marks wait: showing it marks its superview.
bool View::SubtreeNeedsDisplay() const {
    if (!visible_)
        return false;
    return needsDisplay_ || std::any_of(subviews_.begin(), subviews_.end(),
                                        [](const auto& v) { return v->SubtreeNeedsDisplay(); });
}

// ---- Data ---------------------------------------------------------------------------------

StatusCode View::SetData(ControlPartCode part, ResType tag, size_t size, const void* data) {
    StatusCode status = SetPartData(part, tag, size, data);
    if (status != errDataNotSupported)
        return status;
    auto* bytes = static_cast<const uint8_t*>(data);
    data_[tag].assign(bytes, bytes + (bytes != nullptr ? size : 0));
    return noErr;
}

StatusCode View::GetData(ControlPartCode part, ResType tag, size_t bufferSize, void* buffer,
                         size_t* actualSize) {
    StatusCode status = GetPartData(part, tag, bufferSize, buffer, actualSize);
    if (status != errDataNotSupported)
        return status;
    if (tag == kControlKindTag) {
        if (buffer != nullptr && bufferSize >= sizeof kind_)
            std::memcpy(buffer, &kind_, sizeof kind_);
        if (actualSize != nullptr)
            *actualSize = sizeof kind_;
        return noErr;
    }
    auto it = data_.find(tag);
    if (it == data_.end())
        return errDataNotSupported;
    if (buffer != nullptr)
        std::memcpy(buffer, it->second.data(), std::min(bufferSize, it->second.size()));
    if (actualSize != nullptr)
        *actualSize = it->second.size();
    return noErr;
}

// ---- Behaviour ----------------------------------------------------------------------------

void View::Draw(BGContextRef) {}

ControlPartCode View::HitTest(BGPoint local) {
    return BGRectContainsPoint(Bounds(), local) ? ControlPartCode(kControlButtonPart)
                                                : ControlPartCode(kControlNoPart);
}

ControlPartCode View::PerformClick(ControlPartCode part, uint32_t) {
    return part;
}

bool View::HandleText(EventRef) {
    return false;
}

BGSize View::OptimalSize(float* baseline) {
    if (baseline != nullptr)
        *baseline = 0;
    return frame_.size;
}

StatusCode View::Notify(EventKind kind) {
    EventHolder event(kEventClassControl, kind);
    return SendEventToEventTargetWithOptions(event.get(), Target(), kEventTargetDontPropagate);
}

EventTargetRef View::PropagationParent() {
    if (View* parent = Superview())
        return parent->Target();
    return window_ != nullptr ? window_->Target() : nullptr;
}

StatusCode View::HandleStandardEvent(EventHandlerCallRef, EventRef event) {
    if (event->eventClass == kEventClassControl)
        return HandleControlEvent(event);
    if (event->eventClass == kEventClassTextInput)
        return HandleText(event) ? noErr : eventNotHandledErr;
    if (event->eventClass == kEventClassObject && event->kind == kEventObjectInitialize)
        return noErr;
    return eventNotHandledErr;
}

StatusCode View::HandleControlEvent(EventRef event) {
    switch (event->kind) {
    case kEventControlDraw: {
        BGContextRef context = nullptr;
        if (!GetParam(event, kEventParamCGContextRef, typeBGContextRef, &context))
            return eventNotHandledErr;
        Draw(context);
        return noErr;
    }
    case kEventControlHitTest: {
        BGPoint point{};
        if (!GetParam(event, kEventParamMouseLocation, typeBTPoint, &point))
            return eventNotHandledErr;
        ControlPartCode part = HitTest(point);
        SetParam(event, kEventParamControlPart, typeControlPartCode, part);
        return noErr;
    }
    case kEventControlGetOptimalBounds: {
        float baseline = 0;
        BGSize size = OptimalSize(&baseline);
        BGRect bounds = {frame_.origin, size};
        SetParam(event, kEventParamControlOptimalBounds, typeBTRect, bounds);
        auto offset = int16_t(baseline);
        SetParam(event, kEventParamControlOptimalBaselineOffset, typeSInt16, offset);
        return noErr;
    }
    case kEventControlGetFeatures:
        SetParam(event, kEventParamControlFeatures, typeUInt32, features);
        return noErr;
    case kEventControlSetFocusPart: {
        ControlPartCode part = 0;
        GetParam(event, kEventParamControlPart, typeControlPartCode, &part);
        if (!AcceptsFocus() && part != kControlFocusNoPart)
            return eventNotHandledErr;
        ControlPartCode result = part == kControlFocusNoPart
                                     ? ControlPartCode(kControlFocusNoPart)
                                     : ControlPartCode(kControlEditTextPart);
        SetParam(event, kEventParamControlPart, typeControlPartCode, result);
        return noErr;
    }
    default:
        return eventNotHandledErr;
    }
}

} // namespace basalt::toolbox
