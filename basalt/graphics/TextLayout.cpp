#include "basalt/graphics/TextLayout.h"

#include "basalt/graphics/FontMap.h"
#include "basalt/graphics/MiddleCut.h"
#include "basalt/graphics/ShownText.h"
#include "basalt/graphics/UprightBox.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <pango/pangocairo.h>
#include <string>

namespace basalt::graphics {

namespace {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using LayoutPtr = std::unique_ptr<PangoLayout, GObjectUnref>;
using ContextPtr = std::unique_ptr<PangoContext, GObjectUnref>;

// Unhinted metrics make widths scale exactly with the context, so measuring needs no target.
void UseUnhintedMetrics(PangoContext* context) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
}

ContextPtr MakeContext() {
    ContextPtr made(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    UseUnhintedMetrics(made.get());
    return made;
}

// Pango's font maps belong to one thread, so each thread has its own contexts: one for
// measuring, which never sees a target, and one that follows the target being drawn into.
PangoContext* MeasuringContext() {
    thread_local ContextPtr context = MakeContext();
    return context.get();
}

PangoContext* DrawingContext(cairo_t* cr) {
    thread_local ContextPtr context = MakeContext();
    pango_cairo_update_context(cr, context.get());
    return context.get();
}

std::string PrepareText(std::string_view utf8, uint32_t maxLines) {
    std::string text(utf8);
    if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) {
        gchar* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
        text = valid;
        g_free(valid);
    }
    // A one-line box shows all of a multi-line text on its line, cut at the end.
    if (maxLines == 1)
        std::replace_if(
            text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

PangoAlignment AlignmentFor(uint32_t flush) {
    switch (flush) {
    case kBTThemeTextFlushCenter:
        return PANGO_ALIGN_CENTER;
    case kBTThemeTextFlushRight:
        return PANGO_ALIGN_RIGHT;
    default:
        return PANGO_ALIGN_LEFT;
    }
}

struct BuiltLayout {
    LayoutPtr layout;
    bool cut = false; // shortened with an ellipsis
};

void CutToLines(PangoLayout* layout, const TextBoxStyle& style, BuiltLayout& built) {
    if (style.maxLines == 1 && style.truncation == kBTThemeTextTruncationMiddle) {
        const int width = pango_layout_get_width(layout);
        pango_layout_set_width(layout, -1);
        if (auto cut = CutInTheMiddle(layout, width)) {
            pango_layout_set_text(layout, cut->data(), static_cast<int>(cut->size()));
            built.cut = true;
        }
        pango_layout_set_width(layout, width);
    }
    // The end ellipsis also guards a middle cut that kerning made a hair too wide.
    const bool middle = style.truncation == kBTThemeTextTruncationMiddle && !built.cut;
    pango_layout_set_ellipsize(layout, middle ? PANGO_ELLIPSIZE_MIDDLE : PANGO_ELLIPSIZE_END);
    pango_layout_set_height(layout, -static_cast<int>(style.maxLines));
}

BuiltLayout BuildLayout(PangoContext* context, std::string_view utf8, const TextBoxStyle& style,
                        double width) {
    PangoFontDescription* font = CreateThemeFontDescription(style.font);
    if (font == nullptr)
        return {};
    BuiltLayout built{LayoutPtr(pango_layout_new(context))};
    PangoLayout* layout = built.layout.get();
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
    const std::string text = PrepareText(utf8, style.maxLines);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    pango_layout_set_alignment(layout, AlignmentFor(style.horizontalFlush));
    if (width <= 0)
        return built;
    pango_layout_set_width(layout, pango_units_from_double(width));
    pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
    if (style.maxLines > 0 && style.truncation != kBTThemeTextTruncationNone)
        CutToLines(layout, style, built);
    return built;
}

bool IsCut(const BuiltLayout& built) {
    return built.cut || pango_layout_is_ellipsized(built.layout.get()) != 0;
}

PangoRectangle LogicalExtents(PangoLayout* layout) {
    PangoRectangle logical;
    pango_layout_get_extents(layout, nullptr, &logical);
    return logical;
}

} // namespace

std::optional<TextMeasure> MeasureText(std::string_view utf8, const TextBoxStyle& style,
                                       double width) {
    const BuiltLayout built = BuildLayout(MeasuringContext(), utf8, style, width);
    if (!built.layout)
        return std::nullopt;
    const PangoRectangle logical = LogicalExtents(built.layout.get());
    return TextMeasure{{std::ceil(pango_units_to_double(logical.width)),
                        std::ceil(pango_units_to_double(logical.height))},
                       pango_units_to_double(pango_layout_get_baseline(built.layout.get())),
                       IsCut(built)};
}

std::optional<bool> DrawText(cairo_t* cr, std::string_view utf8, const TextBoxStyle& style,
                             BGRect box) {
    box = BGRectStandardize(box);
    // Nothing fits in a box without width; without this the text would run unbounded.
    if (box.size.width <= 0)
        return IsThemeFont(style.font) ? std::optional<bool>(!utf8.empty()) : std::nullopt;
    const BuiltLayout built = BuildLayout(DrawingContext(cr), utf8, style, box.size.width);
    if (!built.layout)
        return std::nullopt;
    PangoLayout* layout = built.layout.get();
    NoteShownText(cr, utf8, box);
    const double height = pango_units_to_double(LogicalExtents(layout).height);
    double top = box.origin.y;
    if (style.verticalFlush == kBTThemeTextFlushCenter)
        top += (box.size.height - height) / 2;
    else if (style.verticalFlush == kBTThemeTextFlushBottom)
        top += box.size.height - height;
    cairo_save(cr);
    MakeUpright(cr, box);
    cairo_move_to(cr, box.origin.x, top);
    pango_cairo_show_layout(cr, layout);
    cairo_restore(cr);
    return IsCut(built);
}

} // namespace basalt::graphics
