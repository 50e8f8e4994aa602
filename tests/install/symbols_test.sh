#!/usr/bin/env bash
# Each node of the version scripts is in the symbols file of its package: making the packages, which the
# tests do not, would fail. And the headers, the changelog and the packages have one version.
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

# Packages of what is not released yet come before those of the next version, and after the last one's.
number() { sed -nE "s/^#define BKOQ_VERSION_$1 ([0-9]+)\$/\1/p" include/bkoq/version.h; }
headers=$(number MAJOR).$(number MINOR).$(number PATCH)
released=$(sed -nE 's/^## \[([0-9.]+)\] - .*/\1/p' CHANGELOG.md | head -n 1)
packages=$(sed -nE '1s/^bkoq \((.*)\) .*/\1/p' packaging/debian/changelog)
[ "$headers" = "$released" ] || {
  echo "the headers are of version $headers, the last one in CHANGELOG.md is $released" >&2
  exit 1
}
unreleased=$(sed -n '/^## \[Unreleased\]/,/^## \[[0-9]/p' CHANGELOG.md | grep -c '^- ' || true)
if [ "$unreleased" -gt 0 ]; then
  next=${packages%"~pre"}
  newest=$(printf '%s\n' "$headers" "$next" | sort -V | tail -n 1)
  [ "$next~pre" = "$packages" ] && [ "$next" = "$newest" ] && [ "$next" != "$headers" ]
else
  [ "$packages" = "$headers" ]
fi || {
  echo "packaging/debian/changelog has version $packages, include/bkoq/version.h $headers; CONTRIBUTING.md says which" >&2
  exit 1
}
