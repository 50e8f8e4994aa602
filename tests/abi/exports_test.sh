#!/usr/bin/env bash
# A library exports what stands in the list of its symbols, and nothing else. A symbol with "? " in
# front may be missing: clang++ leaves out the constructors that nobody can call, those of whole objects
# of abstract classes. A symbol that came after 1.0 has its version node in the list.
#
#   exports_test.sh LIBRARY LIST            compares
#   exports_test.sh --update LIBRARY LIST   writes the list anew
set -euo pipefail
export LC_ALL=C

update=
if [ "$1" = --update ]; then update=1; shift; fi
library=$1 list=$2
exported=$(mktemp)
trap 'rm -f "$exported"' EXIT
nm -D --defined-only "$library" | sed -n '/^[0-9a-f]* A /!s/^[0-9a-f]* . //p' | sed 's/@@[A-Z]*_1\.0$//' | sort >"$exported"
[ -s "$exported" ] || {
  echo "no exported symbol found in $library" >&2
  exit 1
}
unversioned=$(nm -D --defined-only "$library" | grep -v '@' | grep -v ' A ' || true)
[ -z "$unversioned" ] || {
  printf 'Without a version; cmake/exports gives every symbol one:\n%s\n' "$unversioned" >&2
  exit 1
}
optional=$(sed -n 's/^? //p' "$list" 2>/dev/null || true)
if [ -n "$update" ]; then
  { grep -vxF "${optional:-?}" "$exported" && sed 's/^/? /' <<<"$optional"; } | grep -v '^? $' >"$list"
  exit
fi

gone=$(comm -23 <(grep -v '^?' "$list" | sort) "$exported" | c++filt)
new=$(comm -13 <(sed 's/^? //' "$list" | sort) "$exported" | c++filt)
[ -z "$gone$new" ] && exit
{
  [ -z "$gone" ] || printf 'No longer exported; clients that use it do not start any more:\n%s\n' "$gone"
  [ -z "$new" ] || printf 'Exported, but not in the list:\n%s\n' "$new"
  echo "A symbol that is gone must come back, or the library needs a new major version. One that is new"
  echo "and meant for clients goes into $list:"
  echo "  tests/abi/exports_test.sh --update $library $list"
  echo "Any other must be hidden."
} >&2
exit 1
