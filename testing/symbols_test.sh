#!/usr/bin/env bash
# The exported symbols of a library are a contract with the clients that were linked against it.
# Usage: symbols_test.sh LIBRARY LIST. To accept a change, run it with UPDATE=1 and look at what
# changed in the list: a symbol that goes, or changes its signature, breaks clients.
set -euo pipefail
library=$1
list=$2
export LC_ALL=C
exported=$(nm --dynamic --defined-only --demangle "$library" | cut -d' ' -f2- | sort -u)
if [ "${UPDATE:-}" = 1 ]; then
  printf '%s\n' "$exported" >"$list"
  exit 0
fi
if ! diff -u "$list" <(printf '%s\n' "$exported"); then
  echo "$library exports other symbols than $list says; see the head of this script"
  exit 1
fi
