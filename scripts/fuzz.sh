#!/usr/bin/env bash
# Builds the fuzz targets (clang, libFuzzer, AddressSanitizer + UndefinedBehaviorSanitizer) in
# build-fuzz and runs each for SECONDS on a copy of its seed corpus, printing one line per
# target. Exits non-zero when any target crashes; the reproducer is kept under build-fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:?usage: scripts/fuzz.sh SECONDS [TARGET...]}
shift
root=$PWD
build=$root/build-fuzz

launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
# -O1 with line tables: reports keep their lines and the whole project builds much faster.
CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only" \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only" \
    -DKEL_FUZZ=ON -DKEL_BUILD_TESTS=OFF -DKEL_BUILD_BENCH=OFF "${launcher[@]}" >/dev/null

if [ $# -gt 0 ]; then
    targets=("$@")
else
    targets=()
    for source in tests/fuzz/Fuzz*.cpp; do
        name=$(basename "$source" .cpp)
        name=${name#Fuzz}
        targets+=("${name}")
    done
fi
build_targets=()
for name in "${targets[@]}"; do
    build_targets+=("fuzz_${name,,}")
done
cmake --build "$build" -j "$(nproc)" --target "${build_targets[@]}" >"$build/fuzz-build.log" 2>&1 ||
    { tail -50 "$build/fuzz-build.log"; exit 1; }

# The targets make their scratch folders here, memory-backed when possible since they write
# files on every run; a target that crashed cannot remove its own, so this goes at the end.
scratch_base=/tmp
[ -d /dev/shm ] && [ -w /dev/shm ] && scratch_base=/dev/shm
TMPDIR=$(mktemp -d "$scratch_base/kel-fuzz-runs.XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1
export LSAN_OPTIONS="suppressions=$root/tests/support/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1
failed=0
for name in "${targets[@]}"; do
    target=fuzz_${name,,}
    work=$build/fuzz-runs/$name
    rm -rf "$work"
    mkdir -p "$work/corpus" "$work/artifacts"
    [ -d "tests/fuzz/corpus/$name" ] && cp -r "tests/fuzz/corpus/$name/." "$work/corpus/"
    log=$work/log.txt
    status=0
    "$build/tests/fuzz/$target" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 \
        -max_len=65536 -close_fd_mask=3 -print_final_stats=1 -artifact_prefix="$work/artifacts/" \
        "$work/corpus" >"$log" 2>&1 || status=$?
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    reproducer=$(find "$work/artifacts" -type f | head -1)
    if [ "$status" -eq 0 ] && [ -z "$reproducer" ]; then
        echo "fuzz $name: ${runs:-0} runs, 0 crashes"
    else
        failed=1
        summary=$(grep -m1 -E 'ERROR: |runtime error:|SUMMARY: ' "$log" || echo "exit status $status")
        echo "fuzz $name: ${runs:-0} runs, crash: $summary; reproducer: ${reproducer:-none}, log: $log"
    fi
done
exit $failed
