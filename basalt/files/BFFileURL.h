#pragma once

// The text of a file URL for a path of bytes, and back: "file://" and the path with every byte
// outside the unreserved set percent-escaped, so that any name survives the trip.

#include <optional>
#include <string>
#include <string_view>

namespace basalt::files {

std::string FileURLFromPath(std::string_view path, bool isDirectory);
// The path of a "file:" URL (host empty or "localhost"); nothing for anything else.
std::optional<std::string> PathFromFileURL(std::string_view url);

} // namespace basalt::files
