// Runs the search benchmark alone: bench_query FOLDER. The tree is made in FOLDER once.

#include "QueryBench.h"

#include <cstdio>
#include <filesystem>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    std::string base = std::filesystem::absolute(argv[1]).lexically_normal().string();
    kelbench::QueryBenchResult result = kelbench::MeasureNameQuery(base);
    std::printf("first hits ms: %.1f\n", result.firstHitsMs);
    std::printf("search ratio: %.2f\n", result.searchRatio);
    return 0;
}
