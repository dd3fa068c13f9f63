// Drawing a window: every view draws into the window's surface through a graphics context in
// flipped (top-left, y down) coordinates, back to front, each clipped to its bounds. A view
// draws by answering "cntl" 4, so custom view classes draw the same way built-in kinds do.

#include "basalt/toolbox/windows/Window.h"

namespace basalt::toolbox {
namespace {

// Draws a view and its subviews, back to front; those wholly outside the area are left alone.
void DrawTree(View& view, BGContextRef context, const BGRect& area) {
    if (!view.IsVisible() || !BGRectIntersectsRect(view.FrameInWindow(), area))
        return;
    BGRect frame = view.Frame();
    BGRect bounds = view.Bounds();
    BGContextSaveGState(context);
    BGContextTranslateCTM(context, frame.origin.x, frame.origin.y);
    BGContextClipToRect(context, BGRectMake(0, 0, frame.size.width, frame.size.height));
    BGContextTranslateCTM(context, -bounds.origin.x, -bounds.origin.y);
    EventHolder draw(kEventClassControl, kEventControlDraw);
    SetParam(draw.get(), kEventParamCGContextRef, typeBGContextRef, context);
    SendEventToEventTargetWithOptions(draw.get(), view.Target(), kEventTargetDontPropagate);
    view.SetNeedsDisplay(false);
    for (const auto& child : std::vector(view.Subviews()))
        DrawTree(*child, context, area);
    BGContextRestoreGState(context);
}

// Where the shown views that wait to draw lie, in window coordinates.
BGRect MarkedArea(const View& view) {
    if (!view.IsVisible())
        return BGRectNull;
    BGRect area = view.NeedsDisplay() ? view.FrameInWindow() : BGRectNull;
    for (const auto& child : view.Subviews())
        area = BGRectUnion(area, MarkedArea(*child));
    return area;
}

// A view with no size has nothing to draw; its mark goes with the drawing of the rest.
void ForgetMarks(View& view) {
    view.SetNeedsDisplay(false);
    for (const auto& child : view.Subviews())
        ForgetMarks(*child);
}

} // namespace

void Window::RenderView(View& view) {
    if (view.OwnerWindow() != this)
        return;
    const BGRect whole =
        BGRectMake(0, 0, content_.right - content_.left, content_.bottom - content_.top);
    RenderArea(&view == root_.get() || view.Superview() == nullptr ? whole : view.FrameInWindow());
}

void Window::RenderArea(const BGRect& area) {
    EnsureSurface();
    if (surface_ == nullptr || BGRectIsEmpty(area))
        return;
    BGContextRef context = CreateFlippedContext(*surface_, content_.bottom - content_.top);
    if (context == nullptr)
        return;
    // Redraw what lies under the area first, then the views on top.
    BGRect fill = area;
    BGContextClipToRect(context, fill);
    BTThemeApplyBackground(&fill, kBTThemeBackgroundWindow, kBTThemeStateActive, context);
    BGContextFillRect(context, fill);
    DrawTree(*root_, context, area);
    BGContextRelease(context);
    surface_->Present();
}

void Window::Flush() {
    if (disposed || !visible_)
        return;
    if (!dirty_ && !root_->SubtreeNeedsDisplay())
        return;
    dirty_ = false;
    if (wholeDirty_) {
        wholeDirty_ = false;
        RenderView(*root_);
    } else {
        RenderArea(MarkedArea(*root_));
    }
    ForgetMarks(*root_);
}

} // namespace basalt::toolbox
