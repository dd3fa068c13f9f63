#pragma once

// A view: one node of a window's retained view tree.
//
// Ownership: a view owns its subviews (shared_ptr); the superview link is weak. A view knows
// its window only while it is in that window's tree. Frames are in the superview's
// coordinates with the origin at the top left and y growing down; bounds are the view's own
// coordinates, (boundsOrigin, frame size). State changes notify the view's own target with the
// "cntl" events a custom view class listens to.

#include "basalt/toolbox/events/EventTarget.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

struct OpaqueTrackingAreaRef;

namespace basalt::toolbox {

class Window;
class Menu;

class View : public TargetOwner {
public:
    explicit View(OSType kind);
    ~View() override;

    static View* From(ControlRef ref) { return reinterpret_cast<View*>(ref); }
    ControlRef Ref() { return reinterpret_cast<ControlRef>(this); }
    std::shared_ptr<View> Shared() { return std::static_pointer_cast<View>(shared_from_this()); }

    // Identity.
    ControlKind Kind() const { return kind_; }
    void SetKindSignature(OSType signature, OSType kind) { kind_ = {signature, kind}; }
    ControlID id{0, 0};
    long reference = 0;
    // Feature bits answered for "cntl" 1000 (2: the view embeds others).
    uint32_t features = 0;
    // Sent as "cmds" 1 when a hit on the view is left unhandled; 0 for none.
    uint32_t command = 0;

    // Tree.
    View* Superview() const { return superview_.lock().get(); }
    Window* OwnerWindow() const { return window_; }
    const std::vector<std::shared_ptr<View>>& Subviews() const { return subviews_; }
    void AddSubview(const std::shared_ptr<View>& child);
    void RemoveFromSuperview();
    // Moves a child in its siblings' z-order: front (drawn last, hit first) or back.
    void Reorder(View* child, bool toFront, View* other);
    View* FindByID(const ControlID& wanted);
    // The front-most visible, enabled-or-not descendant (or this) under a point in bounds.
    View* HitView(BGPoint local);
    bool IsAncestorOf(const View* other) const;

    // Geometry.
    BGRect Frame() const { return frame_; }
    void SetFrame(const BGRect& frame);
    BGRect Bounds() const { return {boundsOrigin_, frame_.size}; }
    void SetBoundsOrigin(BGPoint origin);
    // From this view's coordinates to the window content's, and back.
    BGPoint ToWindow(BGPoint local) const;
    BGPoint FromWindow(BGPoint window) const;
    BGRect FrameInWindow() const;

    // State. Setters send the change notifications and mark the view for redrawing.
    bool IsVisible() const { return visible_; }
    bool IsVisibleInWindow() const;
    void SetVisible(bool visible);
    bool IsEnabled() const { return enabled_; }
    bool IsEnabledInTree() const;
    void SetEnabled(bool enabled);
    // Active in itself and in an active window.
    bool IsActive() const;
    // Whether the view itself was deactivated, whatever its window.
    bool IsDeactivated() const { return !active_; }
    void SetActive(bool active);
    ControlPartCode Hilite() const { return hilite_; }
    void SetHilite(ControlPartCode part);
    int32_t Value() const { return value_; }
    virtual void SetValue(int32_t value);
    int32_t Minimum() const { return minimum_; }
    int32_t Maximum() const { return maximum_; }
    void SetMinimum(int32_t minimum);
    void SetMaximum(int32_t maximum);
    const std::u16string& Text() const { return text_; }
    virtual void SetText(const std::u16string& text);
    void SetNeedsDisplay(bool needs = true);
    bool NeedsDisplay() const { return needsDisplay_; }
    bool SubtreeNeedsDisplay() const;

    // Control data by tag and properties by creator and tag.
    StatusCode SetData(ControlPartCode part, ResType tag, size_t size, const void* data);
    StatusCode GetData(ControlPartCode part, ResType tag, size_t bufferSize, void* buffer,
                       size_t* actualSize);
    std::map<std::pair<PropertyCreator, PropertyTag>, std::vector<uint8_t>> properties;

    // Layout bindings. A side bound to another view (toView) follows that view's edge: its
    // minimum edge (top, left) or maximum edge (bottom, right) as the kind says; the opposite
    // side, when unbound, goes along so that the view keeps its size.
    BTLayoutInfo layout{};
    int layoutSuspended = 0;
    void ApplyLayout(BGSize oldSize);
    // Set when another view's binding names this one, so that its moves are passed on.
    bool followed = false;

    // Behaviour that kinds override.
    virtual void Draw(BGContextRef context);
    virtual ControlPartCode HitTest(BGPoint local);
    // Does what a click on the part does before the hit is reported (toggle, pick, ...);
    // returns the part to report, 0 for none.
    virtual ControlPartCode PerformClick(ControlPartCode part, uint32_t modifiers);
    // True for kinds whose click acts on the press rather than on the release over it: a popup
    // shows its menu at once, so the user can drag to an item.
    virtual bool ActsOnPress() const { return false; }
    // After the frame changed: kinds that arrange their subviews do it here.
    virtual void FrameChanged() {}
    // The mouse moved with the button down after a click on this view; true if it took that.
    virtual bool Drag(BGPoint) { return false; }
    // The wheel turned by lines (positive: up) with the mouse at a point of the view; true if
    // the view scrolled. A touchpad turns it by fractions of a line.
    virtual bool Wheel(BGPoint, BGFloat) { return false; }
    // The same for a sideways wheel (positive: left); views that scroll across take it before
    // any enclosing scroll view does.
    virtual bool WheelSideways(BGPoint, BGFloat) { return false; }
    // The pointer's shape over the point.
    virtual uint32_t Cursor(BGPoint) { return kThemeArrowCursor; }
    virtual bool AcceptsFocus() const { return false; }
    virtual void FocusChanged(bool) {}
    // A key that reached the focused view: true if taken.
    virtual bool HandleText(EventRef textEvent);
    virtual BGSize OptimalSize(float* baseline);
    virtual bool IsPushButton() const { return false; }
    virtual StatusCode SetKindData(ResType, size_t, const void*) { return errDataNotSupported; }
    virtual StatusCode GetKindData(ResType, size_t, void*, size_t*) { return errDataNotSupported; }
    // Data of one part of the view (a segment, say); the whole view's kind data by default.
    virtual StatusCode SetPartData(ControlPartCode, ResType tag, size_t size, const void* data) {
        return SetKindData(tag, size, data);
    }
    virtual StatusCode GetPartData(ControlPartCode, ResType tag, size_t size, void* data,
                                   size_t* actual) {
        return GetKindData(tag, size, data, actual);
    }

    // Custom view classes keep their instance here.
    void* objectInstance = nullptr;
    std::vector<std::u16string> classChain; // most derived first
    std::vector<std::shared_ptr<OpaqueTrackingAreaRef>> trackingAreas;

    StatusCode HandleStandardEvent(EventHandlerCallRef call, EventRef event) override;
    EventTargetRef PropagationParent() override;

    // Sends "cntl" kind with no parameters to this view alone.
    StatusCode Notify(EventKind kind);
    void AttachToWindow(Window* window);

private:
    StatusCode HandleControlEvent(EventRef event);
    void LayoutChild(View& child, BGSize oldSize) const;
    void MoveFollowers(const BGRect& before);
    void Follow(View& leader, const BGRect& before, const BGRect& after);

    ControlKind kind_;
    std::weak_ptr<View> superview_;
    Window* window_ = nullptr;
    std::vector<std::shared_ptr<View>> subviews_;
    BGRect frame_{};
    BGPoint boundsOrigin_{};
    bool visible_ = true;
    bool enabled_ = true;
    bool active_ = true;
    ControlPartCode hilite_ = 0;
    int32_t value_ = 0;
    int32_t minimum_ = 0;
    int32_t maximum_ = 1;
    std::u16string text_;
    std::map<ResType, std::vector<uint8_t>> data_;
    bool needsDisplay_ = true;
};

// Views in no tree are held here until they are added to one or disposed of.
void HoldLoose(const std::shared_ptr<View>& view);
void ReleaseLoose(View* view);

// Sends "btob" 3 to a view of a custom class, once.
void SendDestruct(View& view);

// Makes a view of a control kind; null for a kind the toolbox does not know.
std::shared_ptr<View> MakeView(OSType kind);

} // namespace basalt::toolbox
