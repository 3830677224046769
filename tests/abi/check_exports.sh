#!/usr/bin/env bash
# Compares what a shared library shows with the checked-in list: check_exports.sh LIBRARY LIST. Shared objects of several
# compilers differ only in how a name is marked, so marks are left out. A library of Windows (.dll) does not show the
# texts of type names (_ZTS).
set -euo pipefail
LC_ALL=C
export LC_ALL
listed=$(grep -v '^#' "$2" | sort -u)
case "$1" in
    *.dll)
        headers=$(x86_64-w64-mingw32-objdump -p "$1")
        shown=$(sed -n '/^\[Ordinal\/Name Pointer\]/,/^$/p' <<<"$headers" | awk 'NR > 1 && NF {print $NF}' | sort -u)
        # What is shown by number alone has no name.
        if [ "$(awk '/^\tExport Address Table/ {print $NF; exit}' <<<"$headers")" != \
            "$(awk '/^\t\[Name Pointer\/Ordinal\] Table/ {print $NF; exit}' <<<"$headers")" ]; then
            echo "$1 shows something without a name" >&2
            exit 1
        fi
        listed=$(grep -v '^_ZTS' <<<"$listed")
        ;;
    *) shown=$(nm -D --defined-only "$1" | awk '{print $3}' | sort -u) ;;
esac
if ! diff <(echo "$listed") <(echo "$shown"); then
    echo "the library's names differ from $2 (< listed, > shown)" >&2
    exit 1
fi
[ "$(grep -c . <<<"$shown")" -gt 1 ]
