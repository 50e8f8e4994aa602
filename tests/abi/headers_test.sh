#!/usr/bin/env bash
# Every public header compiles alone, with each compiler that is there, in every language that it
# promises: C++11 and later, the record headers also C11.
set -euo pipefail
root=$1
failed=0

command -v g++ >/dev/null || command -v clang++ >/dev/null || {
  echo "no compiler found: nothing is tested"
  exit 1
}

compile() {  # compiler language standard header
  printf '#include <%s>\n' "$4" |
    "$1" -m32 -x "$2" -std="$3" -pedantic -Wall -Wextra -Werror -I"$root/include" -fsyntax-only - || {
    echo "$4 does not compile alone with $1 -std=$3"
    failed=1
  }
}

for header in "$root"/include/bkoq/*.h "$root"/include/rw/*.h; do
  name=${header#"$root/include/"}
  for compiler in g++ clang++; do
    command -v "$compiler" >/dev/null || continue
    for standard in c++11 c++14 c++17 c++20; do compile "$compiler" c++ "$standard" "$name"; done
  done
done
for name in bkoq/records.h bkoq/records_old.h bkoq/bktime.h $(cd "$root/include" && ls bkoq/kit.h 2>/dev/null); do
  for compiler in gcc clang; do
    command -v "$compiler" >/dev/null || continue
    compile "$compiler" c c11 "$name"
  done
done

if grep -nE '#include <[a-z_]+>' "$root"/include/bkoq/*.h "$root"/include/rw/*.h; then
  echo "a public header includes a header of the C++ standard library"
  failed=1
fi
[ $failed = 0 ] ||
  echo "Clients include any one header, in any of these languages: it includes what it needs, and uses" \
    "nothing that the oldest of them lacks. A new language or a dropped one is a change of the README."
exit $failed
