#pragma once

// The library's own resource bundle: its string tables and images. The bundle is looked up by
// identifier on first use and kept once found; without it every lookup answers its key.

#include "kel/foundation/TStringRef.h"

#include <basalt/BasaltCore.h>
#include <basalt/BasaltGraphics.h>

namespace KelBundle {

BCBundleRef KelGetBundle();

// The text of key in the table "Localized", else key itself. The string that comes back is
// counted once more than its holder drops, so it outlives the holder: callers keep such texts
// as process-wide defaults.
TStringRef GetStringResource(TStringRef key);

// The same from the table "KelServices", which holds names that are not translated.
TStringRef GetStringResourceNonLocalized(TStringRef key);

// The PNG resource of that full name ("_internal_X.png"), decoded into memory of its own; null
// when the resource or the image is missing. The caller releases it.
BGImageRef GetImageFromPNG(BCStringRef name);

} // namespace KelBundle

// A copy of image that owns its pixels (32-bit, alpha premultiplied first), so that drawing it
// later does not go back to where it was read from. Null when memory fails.
BGImageRef CopyImageIntoRAM(BGImageRef image);
