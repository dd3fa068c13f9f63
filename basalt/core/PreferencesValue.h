#pragma once

// Core objects as preference JSON. Strings, numbers (integers stay integers), booleans, arrays
// and dictionaries with string keys map to JSON directly; data is {"$data": base64} and dates
// are {"$date": seconds since 2001}. Other objects have no preference form.

#include "basalt/BasaltCore.h"

#include <nlohmann/json.hpp>
#include <optional>

namespace basalt {

std::optional<nlohmann::json> PreferenceJSON(BCTypeRef value);

// A new core object owned by the caller; null for JSON null.
BCTypeRef PreferenceObject(const nlohmann::json& json);

} // namespace basalt
