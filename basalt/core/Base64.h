#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace basalt {

std::string EncodeBase64(const uint8_t* bytes, size_t length);
// Nothing for text that is not canonical base64 (padding required, no white space).
std::optional<std::vector<uint8_t>> DecodeBase64(const std::string& text);

} // namespace basalt
