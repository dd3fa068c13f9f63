#pragma once

// Locale collation over ICU. Collators are made once per locale and option set and shared;
// ICU allows concurrent comparisons and sort keys on one collator.

#include "basalt/BasaltCore.h"

#include <string>

struct UCollator;

namespace basalt {

// The collator for the current locale under UCCollateOptions; null if ICU has none.
const UCollator* CollatorFor(UCCollateOptions options);

// <0, 0, >0 under the current locale; case is ignored when asked.
int CompareCollated(const std::u16string& a, const std::u16string& b, bool caseInsensitive);

} // namespace basalt
