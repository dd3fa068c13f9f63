#pragma once

#include <filesystem>
#include <string>

// Every test process runs in a private scratch area: HOME, the XDG folders and the working
// folder all point into a temporary directory that is removed at exit, so no test ever sees
// or touches the user's own files.
namespace keltest {

// The temporary HOME of this test process.
std::filesystem::path ScratchHome();

// A fresh, empty folder below the scratch area, unique per call.
std::filesystem::path MakeScratchFolder(const std::string& hint);

// Writes text to a file, creating parent folders.
void WriteFile(const std::filesystem::path& path, const std::string& text);

// Reads a whole file; empty if it cannot be read.
std::string ReadFile(const std::filesystem::path& path);

} // namespace keltest
