#!/usr/bin/env bash
# Builds the project twice (plain, and with AddressSanitizer + UndefinedBehaviorSanitizer),
# runs the whole test suite in both, checks the formatting, and runs each fuzz target briefly
# so that none of them rots.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)

run_suite() {
    local dir=$1; shift
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKEL_BUILD_BENCH=OFF "$@" >/dev/null
    cmake --build "$dir" -j "$jobs"
    ctest --test-dir "$dir" -j "$jobs" --output-on-failure
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
