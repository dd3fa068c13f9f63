#pragma once

// Conversions between the platform's encoding numbers and UTF-16, over ICU converters. Decoding
// is strict: bytes that are not valid in the encoding give no string rather than a guess.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace basalt {

// The ICU converter name of an encoding number, or null when the number is unknown.
const char* ConverterNameFor(uint32_t encoding);

// The encoding number of an encoding name (any ICU alias), if it is one we know.
std::optional<uint32_t> EncodingNamed(const std::string& name);

std::optional<std::u16string> DecodeBytes(const uint8_t* bytes, size_t length, uint32_t encoding);

// Encodes text; a character with no mapping becomes lossByte, or fails the call when it is 0.
std::optional<std::string> EncodeText(std::u16string_view text, uint32_t encoding,
                                      uint8_t lossByte);

enum class DecodeStatus { Done, OutputFull, Malformed, Unsupported };

// Decodes as much as fits in the output, never splitting a character; reports what was used.
DecodeStatus DecodePrefix(const uint8_t* bytes, size_t length, uint32_t encoding, char16_t* out,
                          size_t capacity, size_t& bytesRead, size_t& unitsWritten);

// The most bytes one UTF-16 unit can take in the encoding.
size_t MaxBytesPerUnit(uint32_t encoding);

} // namespace basalt
