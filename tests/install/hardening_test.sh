#!/usr/bin/env bash
# The files that ship are hardened, and name no path of the machine that built them.
# Usage: hardening_test.sh <source folder> <build folder> <whether fortified: 0 or 1> <file>...
set -euo pipefail
export LC_ALL=C
source=$1 build=$2 fortified=$3
shift 3
failed=0
file=
wrong() {
  echo "$file: $*" >&2
  failed=1
}
# A pipe into grep -q could be cut while it is written.
has() { grep -qE "$1" <<<"$2"; }

[ $# -gt 0 ] || { echo "no file to check" >&2; exit 1; }
for file in "$@"; do
  segments=$(readelf -lW "$file")
  dynamic=$(readelf -dW "$file")
  imports=$(nm -D --undefined-only "$file" | sed 's/^ *[a-zA-Z] //; s/@.*//')
  has '^Elf file type is DYN' "$segments" || wrong "is not position-independent"
  if has ' INTERP ' "$segments"; then
    has 'FLAGS_1.* PIE' "$dynamic" || wrong "is a program, but no PIE"
  fi
  has 'GNU_RELRO' "$segments" || wrong "has no part that is read-only after loading"
  has 'FLAGS_1.* NOW' "$dynamic" || wrong "does not bind its calls when it is loaded"
  has 'GNU_STACK .* RW ' "$segments" || wrong "has an executable stack"
  ! has 'TEXTREL' "$dynamic" || wrong "has code that is written to when it is loaded"
  has '^__stack_chk_fail$' "$imports" || wrong "has no stack protector"
  # Where a call's bounds are known, and for every format, the compiler takes the checked form. The
  # stand-in for the class library has no such call.
  if [ "$fortified" = 1 ]; then
    plain=$(grep -E '^v?(f|s)?printf$' <<<"$imports" || true)
    [ -z "$plain" ] || wrong "calls the unchecked form of" $plain
    [[ "$file" = *libbkrw* ]] || has '^__.*printf_chk$|^__mem.*_chk$' "$imports" ||
      wrong "has no fortified call"
  fi
  # Every function that can be called from elsewhere starts with the mark of a place to jump to. (The
  # file as a whole is not marked as protected, since the C library's start files are not.)
  unmarked=$(objdump -d --no-show-raw-insn "$file" | awk '
    /^[0-9a-f]+ <.*>:$/ { name = $2; next }
    name != "" { if ($2 != "endbr32") print name; else ++marked; name = "" }
    END { if (!marked) print "none is marked" }' | tr -d '<>:' | sort)
  unmarked=$(comm -12 <(echo "$unmarked") \
    <({ nm -D --defined-only "$file" | sed -n 's/^[0-9a-f]* [TW] //p'; echo none is marked; } | sort))
  [ -z "$unmarked" ] || wrong "has functions without control-flow protection: ${unmarked//$'\n'/ }"
  runpath=$(sed -n 's/.*(R.*PATH).*\[\(.*\)\]$/\1/p' <<<"$dynamic")
  for path in ${runpath//:/ }; do
    [[ "$path" = '$ORIGIN'* ]] || wrong "looks for libraries in $path"
  done
  for path in "$source" "$build"; do
    ! grep -qaF "$path/" "$file" || wrong "names the folder $path"
  done
done
[ $failed = 0 ] || echo "The flags of what ships are in cmake/Hardening.cmake." >&2
exit $failed
