#!/usr/bin/env bash
# Builds the project twice (plain, and with AddressSanitizer + UndefinedBehaviorSanitizer),
# runs the whole test suite in both, each test on its own and each test program once whole and
# shuffled, checks the formatting, and runs each fuzz target briefly so that none of them rots.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)

# Runs every test program once as a single process with its tests in a random order, so that a
# test leaning on what another left behind fails here. The seed is in the output of a failure.
run_whole_and_shuffled() {
    local dir=$1 failed=0 log
    log=$(mktemp)
    while IFS= read -r program; do
        if "$program" --gtest_shuffle >"$log" 2>&1; then
            echo "whole and shuffled: $(basename "$program") passed"
        else
            cat "$log"
            echo "whole and shuffled: $(basename "$program") FAILED"
            failed=1
        fi
    done < <(find "$dir/tests" -type f -name '*_tests' -perm -u+x | sort)
    rm -f "$log"
    return "$failed"
}

# A compiler cache, where the machine has one, makes a second run of the script quick.
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

run_suite() {
    local dir=$1; shift
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKEL_BUILD_BENCH=OFF \
        "${launcher[@]}" "$@" >/dev/null
    cmake --build "$dir" -j "$jobs"
    ctest --test-dir "$dir" -j "$jobs" --output-on-failure
    run_whole_and_shuffled "$dir"
}

if [ -z "${KEL_SKIP_FORMAT:-}" ]; then
    files=$(git ls-files '*.c' '*.cpp' '*.h' | grep -v '^bundle/' || true)
    if [ -n "$files" ]; then
        clang-format --dry-run --Werror $files
    fi
fi

echo "== plain build"
run_suite build
echo "== AddressSanitizer + UndefinedBehaviorSanitizer build"
# The suppression file names the font libraries' process-lifetime caches, for every program the
# suite runs (test programs, kelpick, the C client).
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
    LSAN_OPTIONS="suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0" \
    run_suite build-asan -DKEL_SANITIZE=ON

if [ -z "${KEL_SKIP_FUZZ:-}" ]; then
    echo "== fuzz targets, a few seconds each"
    bash scripts/fuzz.sh 5
fi
