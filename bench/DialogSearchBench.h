#pragma once

// The search part of bench_dialog, run in a process whose HOME is a tree of 100,000 files in
// nested folders: a headless open dialog searches its home for a typed name. It prints the
// time from the end of the typing pause to the first hits painted, and the whole search against
// a raw recursive getdents64 walk of the same home, medians of runs.

#include <string>

namespace kelbench {

// Exit status 0 when every run found its hits.
int MeasureDialogSearch(const std::string& home);

} // namespace kelbench
