#pragma once

// The pictures of the library's views, loaded once and kept for the process. A picture is laid
// out at the size of its PNG, "name.png"; where the bundle also has "name@2x.png", that one is
// drawn into the same points, so the picture stays sharp on a dense screen and is scaled down
// evenly on a plain one.

#include "kel/foundation/KelBundle.h"

#include <string>

struct BundlePicture {
    BGImageRef image = nullptr; // what to draw; null when the bundle has no such picture
    BGSize size{};              // in points
};

inline BundlePicture LoadBundlePicture(const std::string& name) {
    auto load = [](const std::string& file) {
        TStringRef text(BCStringCreateWithCString(nullptr, file.c_str(), kBCStringEncodingUTF8),
                        false);
        return KelBundle::GetImageFromPNG(text.AsBCStringRef());
    };
    BundlePicture picture;
    picture.image = load(name + ".png");
    if (picture.image == nullptr)
        return picture;
    picture.size = {BGFloat(BGImageGetWidth(picture.image)),
                    BGFloat(BGImageGetHeight(picture.image))};
    if (BGImageRef dense = load(name + "@2x.png")) {
        BGImageRelease(picture.image);
        picture.image = dense;
    }
    return picture;
}
