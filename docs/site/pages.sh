#!/usr/bin/env bash
# Writes the reference pages (html/) and the manual pages of the kit's functions (man/man3/) into a
# folder. Fails when Doxygen warns of anything; a public name without a comment is a warning.
# Usage: pages.sh <source folder> <folder> [<command bkoq>]
set -euo pipefail
source=$1 to=$2 bkoq=${3:-}
command -v doxygen >/dev/null || {
  echo "doxygen is missing (Debian: apt-get install doxygen)" >&2
  exit 1
}
mkdir -p "$to"
cd "$source"
more=
if [ -n "$bkoq" ]; then
  "$bkoq" schema | python3 docs/site/job_files_page.py >"$to/job-files.md"
  more=$to/job-files.md
fi
run() {
  { cat docs/site/Doxyfile; printf '%s\n' "OUTPUT_DIRECTORY = $to" "$@"; } >"$to/Doxyfile"
  doxygen "$to/Doxyfile" >/dev/null 2>"$to/warnings" || { cat "$to/warnings" >&2; exit 1; }
  [ ! -s "$to/warnings" ] || {
    sort -u "$to/warnings" >&2
    echo "Give each public name a comment at its declaration; docs/site/document_by_rule.py says what" \
      "follows from a rule." >&2
    exit 1
  }
}
run "INPUT += $more"
# Only what is C: the kit.
run 'INPUT = include/bkoq/kit.h' 'GENERATE_HTML = NO' 'GENERATE_MAN = YES' 'MAN_EXTENSION = .3' 'MAN_LINKS = YES'
# Of what it writes, the functions, and the page that they lead to, under a name that is the kit's.
mv "$to/man/man3/kit.h.3" "$to/man/man3/bkoqkit.3"
find "$to/man/man3" -type f ! -name 'bkoq[kA-Z]*' -delete
sed -i 's/kit\.h\.3/bkoqkit.3/' "$to"/man/man3/bkoq[A-Z]*
for function in $(grep -oE '\bbkoq[A-Z]\w+\(' include/bkoq/kit.h | tr -d '(' | sort -u); do
  [ -e "$to/man/man3/$function.3" ] || { echo "no manual page of $function()" >&2; exit 1; }
done
