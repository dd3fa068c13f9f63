#pragma once

// The icon an alert shows, as drawn: the pixels of its square at the left of the content, to
// compare with the icon of a bare alert of a known type.

#include "basalt/backend/headless/HeadlessDriver.h"

#include <cairo.h>
#include <cstdint>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace keltest {

// The square of an alert's icon, 48 points at (20, 20) of its content, at scale 1.
inline std::vector<uint32_t> AlertIconPixels(WindowRef alert) {
    constexpr int kMargin = 20;
    constexpr int kSide = 48;
    constexpr WindowRegionCode kStructure = 32;
    constexpr WindowRegionCode kContent = 33;
    const std::filesystem::path png = std::filesystem::temp_directory_path() /
                                      ("kel-alert-icon-" + std::to_string(::getpid()) + ".png");
    std::vector<uint32_t> pixels;
    if (basalt::headless::HeadlessDriver::WritePNG(alert, png) != noErr) {
        return pixels;
    }
    Rect structure{};
    Rect content{};
    GetWindowBounds(alert, kStructure, &structure);
    GetWindowBounds(alert, kContent, &content);
    const int left = content.left - structure.left + kMargin;
    const int top = content.top - structure.top + kMargin;
    cairo_surface_t* image = cairo_image_surface_create_from_png(png.c_str());
    const unsigned char* data = cairo_image_surface_get_data(image);
    const int stride = cairo_image_surface_get_stride(image);
    for (int y = top; data != nullptr && y < top + kSide; ++y) {
        const auto* row = reinterpret_cast<const uint32_t*>(data + y * stride);
        pixels.insert(pixels.end(), row + left, row + left + kSide);
    }
    cairo_surface_destroy(image);
    std::filesystem::remove(png);
    return pixels;
}

// The icon of a bare alert of that type.
inline std::vector<uint32_t> AlertIconPixelsOfType(AlertType type) {
    DialogRef alert = nullptr;
    if (CreateStandardAlert(type, BCSTR("A message."), nullptr, nullptr, &alert) != noErr) {
        return {};
    }
    ShowWindow(GetDialogWindow(alert));
    std::vector<uint32_t> pixels = AlertIconPixels(GetDialogWindow(alert));
    DisposeWindow(GetDialogWindow(alert));
    return pixels;
}

} // namespace keltest
