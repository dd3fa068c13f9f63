#pragma once

#include <basalt/BasaltCore.h>
#include <basalt/BasaltFiles.h>
#include <cstdio>
#include <kel/KelServices.h>
#include <string>
#include <vector>

// The path of a file or folder, as the file system's bytes.
StatusCode PathOfRef(const BFRef& ref, std::string& path);
// The paths of every item of the reply, as the file system's bytes: a name that is not UTF-8
// comes out exactly as it is on disk.
StatusCode CopyReplyPaths(const KelReplyRecord& reply, std::vector<std::string>& paths);
// The path a save reply names: the folder chosen and the name given, which may not exist yet.
StatusCode CopySavePath(const KelReplyRecord& reply, std::string& path);
// The paths joined by separator, and a new line.
void PrintPaths(const std::vector<std::string>& paths, const std::string& separator, std::FILE* to);

// A name as the file system's bytes (a name read from a file that is not UTF-8 goes back to its
// own bytes), and back.
std::string NameBytes(BCStringRef name);
BCStringRef CreateNameString(const std::string& bytes);
