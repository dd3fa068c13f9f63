#!/bin/sh
# The shared library exports the boundary and nothing else: 56 functions, all named Kel...,
# or New/Dispose/Invoke...UPP.
#   ExportCheck.sh LIBRARY
set -eu
exports=$(nm -D --defined-only "$1" | awk '$2 == "T" { print $3 }')
count=$(printf '%s\n' "$exports" | wc -l)
strays=$(printf '%s\n' "$exports" | grep -v -E '^(Kel|NewKel|DisposeKel|InvokeKel)' || true)
if [ "$count" -ne 56 ] || [ -n "$strays" ]; then
    echo "expected 56 boundary functions, found $count; not of the boundary: $strays"
    exit 1
fi
