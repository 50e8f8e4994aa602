#!/usr/bin/env bash
# Compares the binary interfaces of the libraries, and of the records, with those of a release. The
# records reach a client through void* only, so no exported function describes them: they are compared
# in a library of their own, which has a variable of each.
#
#   abi_test.sh BASELINE SOURCE RW BKOQ KIT    compares; the last three are the libraries
#   abi_test.sh --write ...                    writes BASELINE
#   abi_test.sh --prove ...                    shows that changes of every kind are found
#
# What it does not see: what a value means, such as that of a kind of job or of a flag (the transcripts
# and the tests of the conversions do); which blocks are allocated and in what order
# (tests/memory/failures_test.cpp); texts and messages; and what an operation does. A change of
# which class an operation is inherited from is not one of its slot: slots_test.cpp calls each.
set -euo pipefail
export LC_ALL=C
mode=check
case $1 in --write | --prove)
  mode=${1#--}
  shift
  ;;
esac
baseline=$1 source=$2
declare -A library=([bkrw]=$3 [bkoq]=$4 [bkoqkit]=$5)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for tool in abidw abidiff; do
  command -v $tool >/dev/null || {
    echo "$tool is missing (Debian: apt-get install abigail-tools)" >&2
    exit 1
  }
done

options=(--drop-private-types --no-show-locs --no-comp-dir-path --no-corpus-path --no-parameter-names)
headers=("$source"/include/bkoq/records.h "$source"/include/bkoq/records_old.h)
records=$(sed -nE 's/^\} (BK[A-Z_]+);.*/\1/p; s/^typedef BK[A-Z_]+ (BK[A-Z_]+);.*/\1/p' "${headers[@]}")
{
  for header in "${headers[@]}"; do echo "#include <bkoq/$(basename "$header")>"; done
  for record in $records; do echo "$record the_$record;"; done
} >"$work/records.c"
gcc -m32 -g -shared -fPIC -I"$source/include" "$work/records.c" -o "$work/librecords.so"
library[records]=$work/librecords.so
names=(bkrw bkoq bkoqkit records)
for name in "${names[@]}"; do
  abidw --headers-dir "$source/include" "${options[@]}" --out-file "$work/$name.abi" "${library[$name]}"
done

# A type that is not described is not compared.
missing=
for record in $records; do
  grep -q "var-decl name='the_$record'" "$work/records.abi" || missing+=" $record"
done
for enumeration in $(sed -nE 's/.*\benum (BK[A-Za-z]+|Bkoq[A-Za-z]+).*/\1/p' "$source"/include/bkoq/*.h | sort -u); do
  cat "$work"/*.abi | grep -c "enum-decl name='$enumeration'" >/dev/null || missing+=" $enumeration"
done
[ -z "$missing" ] || {
  echo "No description of$missing: name each in an exported function or variable." >&2
  exit 1
}

if [ "$mode" = write ]; then
  for name in "${names[@]}"; do gzip -n9 <"$work/$name.abi" >"$baseline/$name.abi.gz"; done
  exit
fi

# compare NAME KEPT: what clients could notice; prints it and fails. What is new is no harm, except
# where it moves something: abidiff counts an enumerator that moves no other as harmless.
compare() {
  abidiff --leaf-changes-only --no-added-syms "$2" "$work/$1.abi" >"$work/report" 2>&1 && return
  cat "$work/report"
  return 1
}
declare -A who=(
  [bkrw]="Programs that hold, derive from or call the classes of the stand-in, and libbkoq itself."
  [bkoq]="Programs that create, derive from or call the classes of the model: they know sizes, slots,
members and the values of enumerators from the headers they were compiled with."
  [bkoqkit]="Programs that call the kit: they know its structs and the values of its enumerators."
  [records]="The server's queue code, which reads every field of a record at its offset, and every reader of
an image. No version of this library can be told to it: a record never changes."
)
# Private members that have another name since, which no client sees: where each is, and of which type,
# is compared all the same.
renamed="s/<var-decl name='kind_'/<var-decl name='mode_'/"
for name in "${names[@]}"; do
  gunzip -c "$baseline/$name.abi.gz" | sed "$renamed" >"$work/$name.kept.abi"
done

if [ "$mode" = check ]; then
  failed=0
  for name in "${names[@]}"; do
    compare "$name" "$work/$name.kept.abi" || {
      failed=1
      echo "== $name: the above is not as in $(basename "$baseline"). Who breaks: ${who[$name]}"
    }
  done
  [ $failed = 0 ] && exit
  cat <<'END'
Take the change back. If it is meant, the library needs a new major version: raise it in project() in
CMakeLists.txt, which changes the libraries' names so that programs of before keep what they have;
name the nodes in cmake/exports after it; and write its description into a folder of its own:
  tests/abi/abi_test.sh --write tests/abi/VERSION . <libbkrw.so> <libbkoq.so> <libbkoqkit.so>
END
  exit 1
fi

# The kept description is changed in one place each, so that the libraries are what differs from it.
# expect NAME SED-EXPRESSION PATTERN
expect() {
  sed -E "$2" "$work/$1.kept.abi" >"$work/changed.abi"
  if cmp -s "$work/$1.kept.abi" "$work/changed.abi"; then
    echo "nothing to change in $1: $2" >&2
    exit 1
  fi
  if report=$(compare "$1" "$work/changed.abi"); then
    echo "not found in $1: $2" >&2
    exit 1
  fi
  grep -qE "$3" <<<"$report" || {
    echo "found, but not told: $3 in" "$report" >&2
    exit 1
  }
}
# Two fields of a record in each other's place: its size is the same.
expect records "/class-decl name='BKNODE' /,/<\/class-decl>/s/pszBeforeNode/x/
  /class-decl name='BKNODE' /,/<\/class-decl>/s/pszAfterNode/pszBeforeNode/
  /class-decl name='BKNODE' /,/<\/class-decl>/s/name='x'/name='pszAfterNode'/" 'pszBeforeNode|pszAfterNode'
expect records "/class-decl name='BKQJDATATRANSFER_OLD' /s/size-in-bits='2336'/size-in-bits='2368'/" 'size changed from 2368'
# A slot before that of clone().
expect bkoq "/class-decl name='BKQDisk' /,/<\/class-decl>/s/vtable-offset='13'/vtable-offset='12'/" 'vtable offset'
expect bkoq "/enumerator name='Within'/s/value='3'/value='2'/" "'BKQTimeFilter::BKQTimeRangeType::Within' from value '2' to '3'"
expect bkoq "/class-decl name='BKQFax' /s/size-in-bits='[0-9]+'/size-in-bits='800'/" 'size changed from 800'
expect bkoqkit "/enumerator name='BKOQ_NO_MEMORY'/s/value='3'/value='4'/" "BKOQ_NO_MEMORY' from value '4' to '3'"
expect bkrw "/elf-symbol name='_ZN13RWCollectableD2Ev'/s/_ZN13/_ZN14/" 'RWCollectable'
echo "every change was found"
