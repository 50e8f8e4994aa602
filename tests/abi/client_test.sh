#!/usr/bin/env bash
# A client is compiled with a compiler and headers that need not be those of the libraries, linked to
# them and run; every byte that it gets must be what 1.0.0 gave it.
# Usage: client_test.sh <compiler> <flags> <folder of headers> <library>...
#        client_test.sh --write ...   writes what is expected
set -euo pipefail
write=
if [ "$1" = --write ]; then write=1; shift; fi
compiler=$1 flags=$2 include=$3
shift 3
here=$(cd "$(dirname "$0")" && pwd)
expected=$here/1.0.0/expected
command -v "$compiler" >/dev/null || {
  echo "no $compiler"
  exit 77
}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

rpath=()
for library in "$@"; do rpath+=("-Wl,-rpath,$(dirname "$library")"); done
"$compiler" $flags -std=c++11 -O1 -I"$include" -I"$here/1.0.0/client" "$here/client.cpp" \
  "$here"/1.0.0/client/examples/*.cpp "$@" "${rpath[@]}" -o "$work/client"
mkdir "$work/found"
TZ=EST5 "$work/client" "$work/found" || {
  echo "The client fails." >&2
  exit 1
}
if [ -n "$write" ]; then
  mkdir -p "$expected"
  cp "$work"/found/* "$expected"
  exit
fi

diff -r "$expected" "$work/found" && exit
for file in "$expected"/*; do
  cmp "$file" "$work/found/$(basename "$file")" || true
done
{
  echo "A client compiled by $compiler with the headers in $include does not get what it got from 1.0.0."
  echo "Programs that are in use would send the server other records: take the change back, or give the"
  echo "library a new major version, and describe that one in a folder beside tests/abi/1.0.0."
} >&2
exit 1
