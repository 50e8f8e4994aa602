#!/usr/bin/env bash
# file(1) tells images, with the entry that is installed.
# Usage: magic_test.sh <bkoq> <folder of job files>
set -euo pipefail
bkoq=$1 examples=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$bkoq" layout --magic >"$folder/bkoq.magic"
(cd "$folder" && file -C -m bkoq.magic) 2>"$folder/errors"
[ ! -s "$folder/errors" ] || { cat "$folder/errors" >&2; exit 1; }

says() {  # says <file> <line>
  local found
  found=$(file -b -m "$folder/bkoq.magic" "$1")
  [ "$found" = "$2" ] || { printf '%s\nnot\n%s\n' "$found" "$2" >&2; exit 1; }
}

checked=0
for job in "$examples"/*.json; do
  for layout in current previous; do
    "$bkoq" flatten "$job" --layout "$layout" -o "$folder/image" 2>/dev/null || continue
    kind=$("$bkoq" show "$folder/image" --field usJobType --json | sed -n 's/.*"word": "\(.*\)".*/\1/p')
    [ -n "$kind" ]
    blocks=$(od -An -tu4 -j24 -N4 "$folder/image" | tr -d ' ')
    bytes=$(stat -c %s "$folder/image")
    says "$folder/image" \
      "backup job image, version 1, $layout layout, $kind job, $blocks blocks, $bytes bytes"
    checked=$((checked + 1))
  done
done
[ "$checked" -ge 26 ] || { echo "only $checked images" >&2; exit 1; }

[ "$(file -b --mime-type -m "$folder/bkoq.magic" "$folder/image")" = application/x-bkoq-image ]
# Another version, another file.
printf 'BKQIMAGE\2\0\0\0' >"$folder/version"
says "$folder/version" "backup job image, unknown format version 2"
printf 'BKQIMAGINE' >"$folder/other"
says "$folder/other" "ASCII text, with no line terminators"
