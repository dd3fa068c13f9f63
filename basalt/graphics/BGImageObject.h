#pragma once

// The objects behind BGImageRef and BGDataProviderRef. An image is always an ARGB32 Cairo
// surface; an image made over a provider's bytes keeps the provider (and so the bytes) alive.

#include "basalt/graphics/CountedObject.h"

#include <basalt/BasaltGraphics.h>
#include <cairo.h>
#include <cstdint>
#include <vector>

struct OpaqueBGDataProvider : basalt::graphics::CountedObject {
    ~OpaqueBGDataProvider();

    const uint8_t* bytes = nullptr;
    size_t size = 0;
    void* info = nullptr;
    BGDataProviderReleaseDataCallback release = nullptr;
    std::vector<uint8_t> owned;
    BCDataRef data = nullptr;
};

struct OpaqueBGImage : basalt::graphics::CountedObject {
    explicit OpaqueBGImage(cairo_surface_t* pixels) : surface(pixels) {}
    ~OpaqueBGImage();
    OpaqueBGImage(const OpaqueBGImage&) = delete;
    OpaqueBGImage& operator=(const OpaqueBGImage&) = delete;

    cairo_surface_t* surface;
    BGDataProviderRef provider = nullptr;
};

struct OpaqueBGColorSpace : basalt::graphics::CountedObject {};
