#!/usr/bin/env bash
# The plain values of a job, as jq reads them.
#
#   jq_test.sh BKOQ JQ EXAMPLES_FOLDER
set -euo pipefail
bkoq=$1 jq=$2 job=$3/nightly-backup.json

expect() {  # output filter bkoq's arguments
  local expected=$1 filter=$2 found
  shift 2
  found=$("$bkoq" show "$job" --json=plain "$@" | "$jq" -r "$filter")
  [ "$found" = "$expected" ] || {
    printf 'bkoq show --json=plain %s | jq -r %s\nexpected:\n%s\nfound:\n%s\n' "$*" "$filter" "$expected" "$found" >&2
    exit 1
  }
}

expect "bkoq-values 1 current" '"\(.format) \(.version) \(.layout)"'
expect $'/home\n/\nRegistry\nD:\naccounts' '.job.pSourceNodes[].pMedia[]?.pszDiskName'
expect '["/home","/","Registry","D:","accounts"]' \
  '[.matches[].value] | tojson' --field 'pSourceNodes[*].pMedia[*].pszDiskName'
expect 9029 '.job.pDestNodes[0].pMedia[0].usTapeID'
expect 'current previous' '[.trees[].layout] | join(" ")' --layout both
