#include "basalt/backend/headless/ShownMenuPicture.h"

#include "basalt/graphics/BGCairo.h"
#include "basalt/toolbox/menus/MenuDrawing.h"

namespace basalt::headless {
namespace {

using toolbox::menus::MenuLayout;
using toolbox::menus::MenuPlacement;

MenuPlacement Place(const HeadlessBackend::ShownMenu& shown, const MenuLayout& layout) {
    Rect screen = toolbox::CurrentBackend().DisplayBounds();
    return toolbox::menus::PlaceMenu(layout, shown.where, shown.current, screen);
}

} // namespace

BGRect ShownMenuFrame(const HeadlessBackend::ShownMenu& shown, const Rect& content,
                      BGFloat contentTop) {
    toolbox::Menu& menu = *toolbox::Menu::From(shown.menu);
    MenuLayout layout = MenuLayout::Measure(menu);
    Rect frame = Place(shown, layout).frame;
    return BGRectMake(frame.left - content.left, frame.top - content.top + contentTop,
                      frame.right - frame.left, frame.bottom - frame.top);
}

void PaintShownMenu(cairo_t* cr, const HeadlessBackend::ShownMenu& shown, BGPoint origin,
                    double scale) {
    toolbox::Menu& menu = *toolbox::Menu::From(shown.menu);
    MenuLayout layout = MenuLayout::Measure(menu);
    MenuPlacement placement = Place(shown, layout);
    toolbox::menus::MenuAppearance appearance;
    appearance.frame = {BGFloat(placement.frame.right - placement.frame.left),
                        BGFloat(placement.frame.bottom - placement.frame.top)};
    appearance.scroll = placement.scroll;
    appearance.maxScroll = placement.maxScroll;
    appearance.highlighted = shown.highlighted;
    cairo_surface_t* surface =
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, int(appearance.frame.width * scale),
                                   int(appearance.frame.height * scale));
    if (BGContextRef context =
            graphics::CreateContextForSurface(surface, appearance.frame.height, scale)) {
        BGContextTranslateCTM(context, 0, appearance.frame.height);
        BGContextScaleCTM(context, 1, -1);
        toolbox::menus::DrawMenu(context, menu, layout, appearance);
        BGContextRelease(context);
    }
    cairo_surface_flush(surface);
    cairo_save(cr);
    // A soft shadow, so the menu reads as lying above the window.
    for (int step = 1; step <= 6; ++step) {
        cairo_set_source_rgba(cr, 0, 0, 0, 0.035);
        cairo_rectangle(cr, origin.x - step * scale / 2, origin.y + step * scale / 2,
                        appearance.frame.width * scale + step * scale,
                        appearance.frame.height * scale + step * scale / 2);
        cairo_fill(cr);
    }
    cairo_set_source_surface(cr, surface, origin.x, origin.y);
    cairo_paint(cr);
    cairo_restore(cr);
    cairo_surface_destroy(surface);
}

} // namespace basalt::headless
