#!/usr/bin/env bash
# Installs what the project needs, builds it, and runs kelpick headless with a PNG snapshot.
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
"$kelpick" ask-save --document "Quarterly Report" --app "Ledger" --headless \
    --snapshot kelpick.png --script 'wait:idle;key:return' || status=$?
echo "snapshot: $(pwd)/kelpick.png"
exit "${status:-0}"
