#pragma once

// A menu window over an image surface, as a backend would make one, that keeps a record of
// what was done to it (which outlives the window): for drawing and running menus without a
// display.

#include "basalt/toolbox/backend/Backend.h"

#include <cmath>
#include <cstdint>
#include <memory>

namespace menutest {

class ImageMenuWindow final : public basalt::toolbox::BackendWindow {
public:
    struct Record {
        Rect frame;
        bool visible = false;
        int presents = 0;
    };

    ImageMenuWindow(const Rect& shown, double scale = 1)
        : record(std::make_shared<Record>(Record{shown})), scale_(scale) {
        surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                              int(std::lround((shown.right - shown.left) * scale)),
                                              int(std::lround((shown.bottom - shown.top) * scale)));
    }
    ~ImageMenuWindow() override { cairo_surface_destroy(surface_); }
    ImageMenuWindow(const ImageMenuWindow&) = delete;
    ImageMenuWindow& operator=(const ImageMenuWindow&) = delete;

    cairo_surface_t* Surface() override { return surface_; }
    double Scale() const override { return scale_; }
    void SetContentBounds(const Rect& bounds) override { record->frame = bounds; }
    void SetVisible(bool shown) override { record->visible = shown; }
    void SetTitle(const std::string&) override {}
    void Present() override {
        cairo_surface_flush(surface_);
        ++record->presents;
    }

    // The pixel at a point (points from the top left) as 0xRRGGBB.
    uint32_t Pixel(double x, double y) {
        cairo_surface_flush(surface_);
        int stride = cairo_image_surface_get_stride(surface_);
        const uint8_t* row = cairo_image_surface_get_data(surface_) +
                             size_t(std::lround(y * scale_)) * size_t(stride);
        return reinterpret_cast<const uint32_t*>(row)[std::lround(x * scale_)] & 0xFFFFFF;
    }

    std::shared_ptr<Record> record;

private:
    double scale_;
    cairo_surface_t* surface_;
};

// How dark a pixel is: 0 white to 765 black.
inline int Darkness(uint32_t rgb) {
    return 765 - int((rgb >> 16) & 0xFF) - int((rgb >> 8) & 0xFF) - int(rgb & 0xFF);
}

} // namespace menutest
