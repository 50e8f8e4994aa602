#!/usr/bin/env bash
# Writes the reference pages (html/) and the manual pages of the kit's functions (man/man3/) into a
# folder, the same bytes wherever the sources lie. Fails when Doxygen warns of anything; a public name
# without a comment is a warning.
# Usage: pages.sh <source folder> <folder> [<command bkoq>]
set -euo pipefail
source=$1 to=$2 bkoq=${3:-}
command -v doxygen >/dev/null || {
  echo "doxygen is missing (Debian: apt-get install doxygen)" >&2
  exit 1
}
export LC_ALL=C TZ=UTC
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(date +%s)}
export SOURCE_DATE_EPOCH
rm -rf "$to/html" "$to/man"
mkdir -p "$to/man/man3"
cd "$source"
more=
if [ -n "$bkoq" ]; then
  "$bkoq" schema | python3 docs/site/job_files_page.py >"$to/job-files.md"
  more=$to/job-files.md
fi
{ cat docs/site/Doxyfile; printf '%s\n' "OUTPUT_DIRECTORY = $to" "INPUT += $more" "STRIP_FROM_PATH += $to"; } >"$to/Doxyfile"
doxygen "$to/Doxyfile" >/dev/null 2>"$to/warnings" || { cat "$to/warnings" >&2; exit 1; }
[ ! -s "$to/warnings" ] || {
  sort -u "$to/warnings" >&2
  echo "Give each public name a comment at its declaration; docs/site/document_by_rule.py says what" \
    "follows from a rule." >&2
  exit 1
}
# The pages of folders say nothing, and where the sources lie is in them and in their names.
rm -f "$to"/html/dir_*.html
grep -lZ 'href="dir_' "$to"/html/*.html | xargs -0 sed -Ei 's|<a [^>]*href="dir_[^>]*>([^<]*)</a>|\1|g'

number() { sed -nE "s/^#define BKOQ_VERSION_$1 ([0-9]+)/\1/p" include/bkoq/version.h; }
version=$(number MAJOR).$(number MINOR).$(number PATCH)
python3 docs/site/kit_manual.py include/bkoq/kit.h "$version" "$(date -d "@$SOURCE_DATE_EPOCH" +%F)" \
  "$to/man/man3"
