#!/usr/bin/env bash
# The library exports its public classes, variables and functions, and nothing else.
# Usage: exports_test.sh <library> <extended regular expression of the demangled names>
set -euo pipefail

library=$1 public=$2
names=$(nm -D -C --defined-only "$library" | sed 's/^[0-9a-f]* . //')
[ -n "$names" ] || {
  echo "no exported symbol found in $library" >&2
  exit 1
}
others=$(grep -E -v "^((typeinfo|typeinfo name|vtable) for |(non-)?virtual thunk to )?($public)" <<<"$names" || true)
[ -z "$others" ] || {
  printf 'exported, but not public:\n%s\n' "$others" >&2
  exit 1
}
