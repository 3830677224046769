#!/usr/bin/env bash
# Every header compiles alone, and says what it is in its first line: check_headers.sh ROOT COMPILER [FLAG ...]
set -euo pipefail
cd "$1"
compiler=$2
shift 2
check() {
    local header=$1
    shift
    head -n 1 "$header" | grep -q '^// ' || { echo "$header: the first line does not say what the file is"; return 1; }
    grep -q '^#pragma once$' "$header" || { echo "$header: no #pragma once"; return 1; }
    "$@" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -I. -include "$header" -x c++ /dev/null
}
export -f check
find host numerics pmml svm plugin runtime -name '*.h' -print0 | sort -z |
    xargs -0 -P 2 -I {} bash -c 'check "$@"' check {} "$compiler" "$@"
