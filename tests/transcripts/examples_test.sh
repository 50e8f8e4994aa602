#!/usr/bin/env bash
# Each example job, in both layouts: flattened, it gives the tree that stands in examples/trees; as an
# image and back, it gives the same.
#
#   examples_test.sh BKOQ EXAMPLES            compares
#   examples_test.sh --update BKOQ EXAMPLES   writes the trees anew
set -euo pipefail

update=
if [ "$1" = --update ]; then update=1; shift; fi
bkoq=$1
examples=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export TZ=UTC

status=0
kinds=()
for job in "$examples"/*.json; do
  name=$(basename "$job" .json)
  tree=$examples/trees/$name.txt
  kinds+=("$(grep -o '"kind": "[A-Za-z]*"' "$job" | head -1 | cut -d'"' -f4)")
  "$bkoq" flatten "$job" >"$folder/tree.txt"
  if [ -n "$update" ]; then cp "$folder/tree.txt" "$tree"; fi
  diff -u "$tree" "$folder/tree.txt" || status=1

  for layout in current previous; do
    image=$folder/$name.$layout.image
    "$bkoq" flatten "$job" --layout $layout -o "$image"
    "$bkoq" diff "$image" "$job" || status=1
    "$bkoq" flatten "$job" --layout $layout --show-secrets >"$folder/job.txt"
    "$bkoq" show "$image" --show-secrets >"$folder/image.txt"
    cmp "$folder/job.txt" "$folder/image.txt" || status=1
  done
done

# Every kind of job has its example.
wanted=$("$bkoq" new --help | grep -A 3 '^  KIND' | tr -d '\n' | sed 's/ KIND//; s/,/ /g')
for kind in $wanted; do
  case " ${kinds[*]} " in
    *" $kind "*) ;;
    *) case $kind in Options:|-*) break ;; esac
       echo "no example of kind $kind"; status=1 ;;
  esac
done
exit $status
