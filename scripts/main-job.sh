#!/usr/bin/env bash
# Installs what the project needs, builds it, and opens a dialog headless on a folder of samples:
# kelpick selects a file, writes a PNG snapshot of the dialog, picks the file and prints its
# path. It runs with a HOME of its own under build/, so that nothing of yours is read or written.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$(nproc)"
kelpick=build/tools/kelpick/kelpick
if [ ! -x "$kelpick" ]; then
    echo "kelpick is not built yet in this checkout" >&2
    exit 2
fi
home=$(pwd)/build/main-job-home
samples=$home/Documents
rm -rf "$home"
mkdir -p "$samples/Projects" "$samples/Photos"
printf 'Quarterly figures\n' >"$samples/Quarterly Report.txt"
printf 'Minutes\n' >"$samples/Meeting Notes.md"
printf '%%PDF-1.4\n' >"$samples/Invoice 2026.pdf"
printf 'a,b\n1,2\n' >"$samples/Budget.csv"
# The snapshot step pictures the dialog as the steps before it left it (list view, the report
# selected), just before return picks the file; --snapshot would picture it as it opened.
HOME=$home "$kelpick" open --dir "$samples" --title "Open a Sample" --headless \
    --script 'view:list;select:Quarterly Report.txt;snapshot:kelpick.png;key:return' ||
    status=$?
echo "snapshot: $(pwd)/kelpick.png"
exit "${status:-0}"
