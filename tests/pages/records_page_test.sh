#!/usr/bin/env bash
# The page about the records says what the table of the kit says.
# Usage: records_page_test.sh <records_page> <docs/records.md>
set -euo pipefail

"$1" | diff -u "$2" - || {
  echo "docs/records.md is out of date: write it anew with records_page" >&2
  exit 1
}
