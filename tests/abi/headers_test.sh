#!/usr/bin/env bash
# Every public header compiles alone, with each compiler that is there, in every language that it
# promises: C++11 and later, the headers of C also C99 and C11; without a warning under the flags
# that strict projects use. What a header refuses, it refuses in one sentence.
set -euo pipefail
root=$1
failed=0

command -v g++ >/dev/null || command -v clang++ >/dev/null || {
  echo "no compiler found: nothing is tested"
  exit 1
}

strict=(-pedantic -Wall -Wextra -Werror -Wshadow -Wconversion -Wsign-conversion -Wundef -Wcast-qual
  -Wcast-align -Wredundant-decls)
strict_c=("${strict[@]}" -Wstrict-prototypes -Wmissing-prototypes -Wc++-compat)
strict_cxx=("${strict[@]}" -Wold-style-cast -Wzero-as-null-pointer-constant -Wnon-virtual-dtor
  -Woverloaded-virtual)

compile() {  # compiler language standard header flags
  printf '#include <%s>\nextern int used;\n' "$4" |
    "$1" -x "$2" -std="$3" "${@:5}" -I"$root/include" -fsyntax-only -
}

compiles() {
  compile "$1" "$2" "$3" "$4" -m32 "${@:5}" || {
    echo "$4 does not compile alone with $1 -std=$3 ${*:5}"
    failed=1
  }
}

is_refused() {  # text compiler language standard header flags
  local text=$1 said
  shift
  if said=$(compile "$@" 2>&1); then
    echo "$4 compiles with $1 ${*:5}, which it should refuse: $text"
    failed=1
  elif [ "$(grep -c 'error:' <<<"$said")" != 1 ] || ! grep -q "error:.*$text" <<<"$said"; then
    echo "$said"
    echo "$4 should be refused with $1 ${*:5} by this alone: $text"
    failed=1
  fi
}

c_headers=(bkoq/records.h bkoq/records_old.h bkoq/bktime.h bkoq/kit.h bkoq/export.h bkoq/version.h bkoq/codes.h)
is_for_c() {
  [[ " ${c_headers[*]} " = *" $1 "* ]]
}

for header in "$root"/include/bkoq/*.h "$root"/include/rw/*.h; do
  name=${header#"$root/include/"}
  for compiler in g++ clang++; do
    command -v "$compiler" >/dev/null || continue
    for standard in c++11 c++14 c++17 c++20; do
      compiles "$compiler" c++ "$standard" "$name" "${strict_cxx[@]}"
    done
    is_refused "libbkoq is 32-bit: compile with -m32" "$compiler" c++ c++17 "$name" -m64
    # Only classes need to be told apart at run time.
    if is_for_c "$name"; then
      compiles "$compiler" c++ c++17 "$name" -fno-rtti
    elif grep -q 'RWCollectable' <("$compiler" -m32 -x c++ -E -I"$root/include" "$header"); then
      is_refused "libbkoq asks objects for their class: compile without -fno-rtti" \
        "$compiler" c++ c++17 "$name" -m32 -fno-rtti
    fi
  done
done
for name in "${c_headers[@]}"; do
  for compiler in gcc clang; do
    command -v "$compiler" >/dev/null || continue
    for standard in c99 c11; do compiles "$compiler" c "$standard" "$name" "${strict_c[@]}"; done
    is_refused "libbkoq is 32-bit: compile with -m32" "$compiler" c c11 "$name" -m64
  done
done

long_time=(-m32 -D_TIME_BITS=64 -D_FILE_OFFSET_BITS=64)
for name in bkoq/bktime.h bkoq/bkoq.h; do
  for compiler in g++ clang++; do
    command -v "$compiler" >/dev/null || continue
    is_refused "libbkoq takes a time_t of 32 bits: compile without -D_TIME_BITS=64" \
      "$compiler" c++ c++17 "$name" "${long_time[@]}"
  done
done
for standard in c99 c11; do
  command -v gcc >/dev/null || continue
  is_refused "libbkoq takes a time_t of 32 bits: compile without -D_TIME_BITS=64" \
    gcc c "$standard" bkoq/bktime.h "${long_time[@]}"
done

if grep -nE '#include <[a-z_]+>' "$root"/include/bkoq/*.h "$root"/include/rw/*.h; then
  echo "a public header includes a header of the C++ standard library"
  failed=1
fi
[ $failed = 0 ] ||
  echo "Clients include any one header, in any of these languages: it includes what it needs, and uses" \
    "nothing that the oldest of them lacks. A new language or a dropped one is a change of the README."
exit $failed
