#pragma once

// The search part of the browser benchmark: a name query over a tree of 100,000 files in nested
// folders, against a raw recursive getdents64 walk of the same tree, both warm, medians of runs.

#include <string>

namespace kelbench {

struct QueryBenchResult {
    double firstHitsMs = 0; // from starting the search to its first delivery of hits
    double walkMs = 0;      // from starting the search to the end of its walk
    double rawWalkMs = 0;   // the raw walk of the same tree
    double searchRatio = 0; // walkMs / rawWalkMs
    size_t hits = 0;
};

// Makes (once) the tree under baseFolder and measures; prints one line per run.
QueryBenchResult MeasureNameQuery(const std::string& baseFolder, int runs = 5);

// The tree (made once under baseFolder): 10 x 10 x 10 folders of 100 files, one of each folder's
// files named "Quarterly Report N.pdf"; its path.
std::string MakeQueryTree(const std::string& baseFolder);
// A raw recursive getdents64 walk of a folder, leaving out dot names; its milliseconds.
double RawWalkMs(const std::string& root);

} // namespace kelbench
