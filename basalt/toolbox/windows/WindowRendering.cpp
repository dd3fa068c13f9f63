// Drawing a window: every view draws into the window's surface through a graphics context in
// flipped (top-left, y down) coordinates, back to front, each clipped to its bounds. A view
// draws by answering "cntl" 4, so custom view classes draw the same way built-in kinds do.

#include "basalt/toolbox/windows/Window.h"

namespace basalt::toolbox {
namespace {

void DrawTree(View& view, BGContextRef context) {
    if (!view.IsVisible())
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
        DrawTree(*child, context);
    BGContextRestoreGState(context);
}

} // namespace

void Window::RenderView(View& view) {
    EnsureSurface();
    if (surface_ == nullptr || view.OwnerWindow() != this)
        return;
    BGContextRef context = CreateFlippedContext(*surface_, content_.bottom - content_.top);
    if (context == nullptr)
        return;
    BGRect frame = view.FrameInWindow();
    if (&view == root_.get() || view.Superview() == nullptr) {
        BGRect all =
            BGRectMake(0, 0, content_.right - content_.left, content_.bottom - content_.top);
        BTThemeApplyBackground(&all, kBTThemeBackgroundWindow, kBTThemeStateActive, context);
        BGContextFillRect(context, all);
        DrawTree(*root_, context);
    } else {
        // Redraw what lies under the view first, then the view on top.
        BGContextClipToRect(context, frame);
        BTThemeApplyBackground(&frame, kBTThemeBackgroundWindow, kBTThemeStateActive, context);
        BGContextFillRect(context, frame);
        DrawTree(*root_, context);
    }
    BGContextRelease(context);
    surface_->Present();
}

void Window::Flush() {
    if (disposed || !visible_)
        return;
    if (dirty_ || root_->SubtreeNeedsDisplay()) {
        dirty_ = false;
        RenderView(*root_);
    }
}

} // namespace basalt::toolbox
