#!/usr/bin/env bash
# A header that declares virtual functions of one name says that a compiler may lay them out in another order:
#     check_overloads.sh ROOT
set -euo pipefail
cd "$1"
silent=$(
    find host numerics pmml svm plugin runtime -name '*.h' | sort | while read -r header; do
        overloaded=$(sed -nE 's/^ *virtual [^;(]*[ *&]([A-Za-z_]+)\(.*/\1/p' "$header" | sort | uniq -d)
        [ -z "$overloaded" ] || grep -q 'reverse' "$header" || echo "$header: overloads" $overloaded
    done
)
if [ -n "$silent" ]; then
    echo "$silent"
    exit 1
fi
