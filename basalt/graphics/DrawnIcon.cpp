#include "basalt/graphics/DrawnIcon.h"

#include "basalt/graphics/ThemePalette.h"

#include <cmath>

namespace basalt::graphics {

namespace {

void RoundedRect(cairo_t* cr, double x, double y, double w, double h, double r) {
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + w - r, y + r, r, -M_PI / 2, 0);
    cairo_arc(cr, x + w - r, y + h - r, r, 0, M_PI / 2);
    cairo_arc(cr, x + r, y + h - r, r, M_PI / 2, M_PI);
    cairo_arc(cr, x + r, y + r, r, M_PI, 3 * M_PI / 2);
    cairo_close_path(cr);
}

void FillAndOutline(cairo_t* cr, const ThemeColor& fill, const ThemeColor& line) {
    SetSource(cr, fill);
    cairo_fill_preserve(cr);
    SetSource(cr, line);
    cairo_set_line_width(cr, 0.03);
    cairo_stroke(cr);
}

void Document(cairo_t* cr) {
    const double fold = 0.22;
    cairo_move_to(cr, 0.2, 0.06);
    cairo_line_to(cr, 0.8 - fold, 0.06);
    cairo_line_to(cr, 0.8, 0.06 + fold);
    cairo_line_to(cr, 0.8, 0.94);
    cairo_line_to(cr, 0.2, 0.94);
    cairo_close_path(cr);
    FillAndOutline(cr, kPalette.iconPaper, kPalette.iconOutline);
    cairo_move_to(cr, 0.8 - fold, 0.06);
    cairo_line_to(cr, 0.8 - fold, 0.06 + fold);
    cairo_line_to(cr, 0.8, 0.06 + fold);
    SetSource(cr, kPalette.iconOutline);
    cairo_set_line_width(cr, 0.03);
    cairo_stroke(cr);
    for (double y = 0.45; y < 0.85; y += 0.1) {
        cairo_move_to(cr, 0.3, y);
        cairo_line_to(cr, 0.7, y);
    }
    SetSource(cr, kPalette.iconDetail);
    cairo_stroke(cr);
}

void Folder(cairo_t* cr) {
    cairo_move_to(cr, 0.06, 0.22);
    cairo_line_to(cr, 0.38, 0.22);
    cairo_line_to(cr, 0.45, 0.3);
    cairo_line_to(cr, 0.94, 0.3);
    cairo_line_to(cr, 0.94, 0.84);
    cairo_line_to(cr, 0.06, 0.84);
    cairo_close_path(cr);
    FillAndOutline(cr, kPalette.iconFolderBack, kPalette.iconFolderLine);
    RoundedRect(cr, 0.06, 0.38, 0.88, 0.46, 0.04);
    FillAndOutline(cr, kPalette.iconFolder, kPalette.iconFolderLine);
}

void Device(cairo_t* cr) {
    RoundedRect(cr, 0.1, 0.3, 0.8, 0.4, 0.08);
    FillAndOutline(cr, kPalette.iconDevice, kPalette.iconOutline);
    cairo_arc(cr, 0.75, 0.5, 0.05, 0, 2 * M_PI);
    SetSource(cr, kPalette.accent);
    cairo_fill(cr);
}

void Search(cairo_t* cr) {
    cairo_arc(cr, 0.42, 0.42, 0.26, 0, 2 * M_PI);
    FillAndOutline(cr, kPalette.iconPaper, kPalette.iconOutline);
    cairo_set_line_width(cr, 0.11);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_move_to(cr, 0.62, 0.62);
    cairo_line_to(cr, 0.86, 0.86);
    SetSource(cr, kPalette.iconOutline);
    cairo_stroke(cr);
}

void Application(cairo_t* cr) {
    RoundedRect(cr, 0.12, 0.12, 0.76, 0.76, 0.18);
    FillAndOutline(cr, kPalette.accent, kPalette.accentDark);
    RoundedRect(cr, 0.34, 0.34, 0.32, 0.32, 0.06);
    SetSource(cr, kPalette.iconPaper);
    cairo_fill(cr);
}

void Trash(cairo_t* cr) {
    cairo_move_to(cr, 0.24, 0.28);
    cairo_line_to(cr, 0.76, 0.28);
    cairo_line_to(cr, 0.7, 0.92);
    cairo_line_to(cr, 0.3, 0.92);
    cairo_close_path(cr);
    FillAndOutline(cr, kPalette.iconDevice, kPalette.iconOutline);
    RoundedRect(cr, 0.18, 0.16, 0.64, 0.1, 0.03);
    FillAndOutline(cr, kPalette.iconDevice, kPalette.iconOutline);
}

void Eject(cairo_t* cr) {
    cairo_move_to(cr, 0.5, 0.2);
    cairo_line_to(cr, 0.84, 0.58);
    cairo_line_to(cr, 0.16, 0.58);
    cairo_close_path(cr);
    cairo_rectangle(cr, 0.16, 0.68, 0.68, 0.12);
    SetSource(cr, kPalette.iconOutline);
    cairo_fill(cr);
}

// A line with round ends, for the marks on the alert icons.
void Bar(cairo_t* cr, double x0, double y0, double x1, double y1, double width) {
    cairo_set_line_width(cr, width);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_move_to(cr, x0, y0);
    cairo_line_to(cr, x1, y1);
    cairo_stroke(cr);
}

void Dot(cairo_t* cr, double x, double y, double radius) {
    cairo_arc(cr, x, y, radius, 0, 2 * M_PI);
    cairo_fill(cr);
}

// A disc with a darker rim, the ground of the note and stop icons.
void Disc(cairo_t* cr, const ThemeColor& fill, const ThemeColor& rim) {
    cairo_arc(cr, 0.5, 0.5, 0.43, 0, 2 * M_PI);
    SetSource(cr, fill);
    cairo_fill_preserve(cr);
    SetSource(cr, rim);
    cairo_set_line_width(cr, 0.04);
    cairo_stroke(cr);
}

void Caution(cairo_t* cr) {
    cairo_move_to(cr, 0.5, 0.1);
    cairo_line_to(cr, 0.93, 0.86);
    cairo_line_to(cr, 0.07, 0.86);
    cairo_close_path(cr);
    // Stroked wide with round joins for the rounded corners, then filled over the inner half
    // of that stroke, which leaves a rim.
    cairo_set_line_width(cr, 0.1);
    SetSource(cr, kPalette.iconCautionLine);
    cairo_stroke_preserve(cr);
    SetSource(cr, kPalette.iconCaution);
    cairo_set_line_width(cr, 0.06);
    cairo_stroke_preserve(cr);
    cairo_fill(cr);
    SetSource(cr, kPalette.iconCautionMark);
    Bar(cr, 0.5, 0.38, 0.5, 0.6, 0.1);
    Dot(cr, 0.5, 0.74, 0.055);
}

void Note(cairo_t* cr) {
    Disc(cr, kPalette.iconNote, kPalette.iconNoteLine);
    SetSource(cr, kPalette.iconPaper);
    Dot(cr, 0.5, 0.29, 0.065);
    Bar(cr, 0.5, 0.45, 0.5, 0.72, 0.12);
}

void Stop(cairo_t* cr) {
    Disc(cr, kPalette.iconStop, kPalette.iconStopLine);
    SetSource(cr, kPalette.iconPaper);
    Bar(cr, 0.35, 0.35, 0.65, 0.65, 0.11);
    Bar(cr, 0.65, 0.35, 0.35, 0.65, 0.11);
}

} // namespace

void DrawIconShape(cairo_t* cr, DrawnIcon kind, BGRect square) {
    cairo_save(cr);
    cairo_translate(cr, square.origin.x, square.origin.y);
    cairo_scale(cr, square.size.width, square.size.height);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    switch (kind) {
    case DrawnIcon::Document:
        Document(cr);
        break;
    case DrawnIcon::Folder:
        Folder(cr);
        break;
    case DrawnIcon::Device:
        Device(cr);
        break;
    case DrawnIcon::Search:
        Search(cr);
        break;
    case DrawnIcon::Application:
        Application(cr);
        break;
    case DrawnIcon::Trash:
        Trash(cr);
        break;
    case DrawnIcon::Eject:
        Eject(cr);
        break;
    case DrawnIcon::Caution:
        Caution(cr);
        break;
    case DrawnIcon::Note:
        Note(cr);
        break;
    case DrawnIcon::Stop:
        Stop(cr);
        break;
    }
    cairo_restore(cr);
}

} // namespace basalt::graphics
