#pragma once

// The library's views keep their pictures for the process once loaded; this loads one by the
// full name of its PNG in the bundle. Null when it is missing.

#include "kel/foundation/KelBundle.h"

#include <string>

inline BGImageRef LoadBundleImage(const std::string& name) {
    TStringRef text(BCStringCreateWithCString(nullptr, name.c_str(), kBCStringEncodingUTF8), false);
    return KelBundle::GetImageFromPNG(text.AsBCStringRef());
}
