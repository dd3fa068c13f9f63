#!/usr/bin/env bash
# Builds the project twice (plain, and with AddressSanitizer + UndefinedBehaviorSanitizer),
# runs the whole test suite in both, and checks the formatting.
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
