#!/usr/bin/env bash
# Each node of the version scripts is in the symbols file of its package: making the packages, which the
# tests do not, would fail.
# Usage: symbols_test.sh <source folder>
set -euo pipefail
cd "$1"
count=0
for map in cmake/exports/*.map; do
  symbols=packaging/debian/lib32$(basename "$map" .map)1.symbols
  for node in $(sed -nE 's/^([A-Z]+_[0-9.]+) \{$/\1/p' "$map"); do
    count=$((count + 1))
    grep -qE "^ \(symver\)$node [0-9]" "$symbols" || {
      echo "$symbols: add \" (symver)$node VERSION\", the version of the packages that first have it" >&2
      exit 1
    }
  done
done
[ "$count" -ge 3 ] || { echo "only $count nodes were found" >&2; exit 1; }
