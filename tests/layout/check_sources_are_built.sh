#!/usr/bin/env bash
# Every source file is named in the CMakeLists.txt of its folder or of one above it: check_sources_are_built.sh ROOT
# tests/support is named where it is used, tests/install by the script that installs.
set -euo pipefail
cd "$1"

is_named() {
    local folder name=${1##*/}
    folder=$(dirname "$1")
    while true; do
        if [ -f "$folder/CMakeLists.txt" ] && grep -qE "(^|[ (/])${name//./\\.}([ )]|\$)" "$folder/CMakeLists.txt"; then
            return 0
        fi
        [ "$folder" = . ] && return 1
        folder=$(dirname "$folder")
    done
}

faults=0
while read -r source; do
    is_named "$source" || { echo "$source is in no CMakeLists.txt"; faults=1; }
done < <(find host numerics pmml svm plugin runtime tools tests benchmarks examples -name '*.cpp' \
    -not -path 'tests/support/*' -not -path 'tests/install/*' | sort)
exit "$faults"
