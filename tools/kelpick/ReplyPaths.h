#pragma once

#include <basalt/BasaltCore.h>
#include <cstdio>
#include <kel/KelServices.h>

// Writes the path of every item of the reply, one per line, as the file system's bytes: a
// name that is not UTF-8 comes out exactly as it is on disk.
StatusCode PrintReplyPaths(const KelReplyRecord& reply, std::FILE* to);
