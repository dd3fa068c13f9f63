#pragma once

// A fuzz target's private folder: made once per process under the system's temporary folder,
// set as HOME and XDG_CONFIG_HOME so that nothing the library does reaches the user's files,
// and removed when the process ends.

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

// The scratch folder, made on first use.
const std::string& ScratchFolder();

// Empties the scratch folder's subfolder `name` and returns its path.
std::string FreshFolder(const std::string& name);

// Writes the bytes to path, replacing the file and making its parent folders.
void WriteFile(const std::string& path, const uint8_t* data, size_t size);

} // namespace fuzz
