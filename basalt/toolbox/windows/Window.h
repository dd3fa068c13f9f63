#pragma once

// A window: a content view tree, a place in the window list and a surface from the backend.
//
// The window list owns windows (shared_ptr); DisposeWindow takes a window out of the list and
// marks it disposed, and the object goes when the last dispatch that holds it returns. A
// disposed window's handle stays invalid for IsValidWindowPtr. Content bounds are global, y down.

#include "basalt/toolbox/backend/Backend.h"
#include "basalt/toolbox/views/View.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace basalt::toolbox {

class Dialog;

class Window final : public TargetOwner {
public:
    Window(WindowClass windowClass, WindowAttributes attributes, const Rect& contentBounds);
    ~Window() override;

    static Window* From(WindowRef ref) { return reinterpret_cast<Window*>(ref); }
    WindowRef Ref() { return reinterpret_cast<WindowRef>(this); }
    std::shared_ptr<Window> Shared() {
        return std::static_pointer_cast<Window>(shared_from_this());
    }

    WindowClass windowClass;
    WindowAttributes attributes;
    std::u16string title;
    long refCon = 0;
    std::map<std::pair<PropertyCreator, PropertyTag>, std::vector<uint8_t>> properties;
    std::unique_ptr<Dialog> dialog;

    const Rect& ContentBounds() const { return content_; }
    // The bounds a zoom out left behind, for zooming back in.
    std::optional<Rect> unzoomedBounds;
    void SetContentBounds(const Rect& bounds);
    Rect StructureBounds() const;
    bool HasTitleBar() const;
    View& Root() { return *root_; }

    bool IsVisible() const { return visible_; }
    void SetVisible(bool visible);
    bool IsActive() const;
    bool disposed = false;
    void Dispose();
    // The menu bar's state when this window's application modal state began.
    uint32_t savedBarState = 0;

    // Sheets.
    std::weak_ptr<Window> sheetParent;
    std::weak_ptr<Window> sheet;
    Window* VisibleSheet() const;

    // Keyboard focus and the default and cancel buttons.
    View* Focus() const { return focus_.lock().get(); }
    StatusCode SetFocus(View* view, ControlPartCode part);
    void AdvanceFocus(bool backwards);
    View* DefaultButton() const { return defaultButton_.lock().get(); }
    View* CancelButton() const { return cancelButton_.lock().get(); }
    void SetDefaultButton(View* view);
    void SetCancelButton(View* view);
    // Called when a view leaves the tree or hides: focus, buttons and tracking let go of it.
    void ViewLeaving(View* view);

    // Mouse tracking state of the standard handler.
    struct Tracking {
        std::weak_ptr<View> view;
        ControlPartCode part = 0;
        bool closeBox = false;
    } tracking;

    // Drawing. Invalidate asks for the whole window; InvalidateViews for the views that are
    // marked as needing display, which are drawn over what lies under them.
    void Invalidate();
    void InvalidateViews();
    bool IsDirty() const { return dirty_; }
    // Draws what needs drawing into the surface and presents it.
    void Flush();
    BackendWindow* Surface() { return surface_.get(); }
    // Draws one view and its subviews into the surface now.
    void RenderView(View& view);
    // Draws what lies within an area of the content, in window coordinates, and presents it.
    void RenderArea(const BGRect& area);

    StatusCode HandleStandardEvent(EventHandlerCallRef call, EventRef event) override;
    EventTargetRef PropagationParent() override { return GetApplicationEventTarget(); }

    // Asks the backend for the window's surface, once.
    void EnsureSurface();

private:
    Rect content_;
    std::shared_ptr<View> root_;
    std::unique_ptr<BackendWindow> surface_;
    bool visible_ = false;
    bool dirty_ = true;
    bool wholeDirty_ = true;
    std::weak_ptr<View> focus_;
    std::weak_ptr<View> defaultButton_;
    std::weak_ptr<View> cancelButton_;
};

// Sends "cntl" 1 for a view to the view with propagation.
StatusCode SendControlHit(View& view, ControlPartCode part, uint32_t modifiers);
// The whole click: hilite, PerformClick, and the hit when a part results.
ControlPartCode ClickView(View& view, ControlPartCode part, uint32_t modifiers);

} // namespace basalt::toolbox
