#pragma once

// The library's own resource bundle: its string tables and images. The bundle is looked up by
// identifier on first use and kept once found; without it every lookup answers its key.

#include "kel/foundation/TStringRef.h"

#include <basalt/BasaltCore.h>

namespace KelBundle {

BCBundleRef KelGetBundle();

// The text of key in the table "Localized", else key itself. The string that comes back is
// counted once more than its holder drops, so it outlives the holder: callers keep such texts
// as process-wide defaults.
TStringRef GetStringResource(TStringRef key);

// The same from the table "KelServices", which holds names that are not translated.
TStringRef GetStringResourceNonLocalized(TStringRef key);

} // namespace KelBundle
