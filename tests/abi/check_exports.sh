#!/usr/bin/env bash
# Compares what a shared library shows with the checked-in list: check_exports.sh LIBRARY LIST. Shared objects of several
# compilers differ only in how a name is marked, so marks are left out.
set -euo pipefail
LC_ALL=C
export LC_ALL
shown=$(nm -D --defined-only "$1" | awk '{print $3}' | sort -u)
listed=$(grep -v '^#' "$2" | sort -u)
if ! diff <(echo "$listed") <(echo "$shown"); then
    echo "the library's names differ from $2 (< listed, > shown)" >&2
    exit 1
fi
[ "$(grep -c . <<<"$shown")" -gt 1 ]
