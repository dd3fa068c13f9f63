#pragma once

// The object behind a BGContextRef. Cairo keeps the matrix, clip and line width; colours, the
// global alpha and antialiasing live in our own state, saved and restored in step with Cairo's.
// baseMatrix maps the base space (points, origin bottom left) to device pixels.

#include "basalt/graphics/CountedObject.h"

#include <basalt/BasaltGraphics.h>
#include <cairo.h>
#include <memory>
#include <vector>

struct BGColor {
    double red = 0, green = 0, blue = 0, alpha = 1;
};

struct OpaqueBGContext : basalt::graphics::CountedObject {
    struct State {
        BGColor fill;
        BGColor stroke;
        double alpha = 1;
    };

    OpaqueBGContext(cairo_surface_t* target, const cairo_matrix_t& base);
    ~OpaqueBGContext();
    OpaqueBGContext(const OpaqueBGContext&) = delete;
    OpaqueBGContext& operator=(const OpaqueBGContext&) = delete;

    bool Valid() const { return cairo_status(cr) == CAIRO_STATUS_SUCCESS; }
    // Makes the fill (or stroke) colour, with the global alpha, Cairo's source.
    void UseFill();
    void UseStroke();

    cairo_t* cr;
    cairo_matrix_t baseMatrix;
    double deviceScale = 1;
    State state;
    std::vector<State> saved;

    // Bitmap contexts only.
    bool isBitmap = false;
    void* data = nullptr;
    size_t width = 0, height = 0, bytesPerRow = 0;
    std::unique_ptr<unsigned char[]> ownPixels;
};
