#!/usr/bin/env bash
# Code for wide registers fuses no multiplication with an addition, and where the stack may lie at any multiple of 16
# bytes, as on Windows, it moves no wide register as if the memory were aligned: check_wide_code.sh LIBRARY
set -euo pipefail
library=$1
code=$(mktemp)
trap 'rm -f "$code"' EXIT
objdump -d --no-show-raw-insn "$library" >"$code"

# Shows what should not be there: WHAT PATTERN
expect_no() {
    if grep -E -m 5 "$2" "$code"; then
        echo "$library: $1"
        exit 1
    fi
}

if grep -q '^[^ ].*file format .*-x86-64' "$code"; then
    # The loops for AVX2 and AVX-512 are there.
    grep -q '%ymm' "$code" && grep -q '%zmm' "$code" || { echo "$library: no wide instructions to look at"; exit 1; }
fi
expect_no "fused instructions" '\svfn?m(add|sub)'
if grep -q '^[^ ].*file format pei-' "$code"; then
    aligned='\svmov(ap[sd]|dqa(32|64)?|ntp[sd]|ntdq)\s'
    expect_no "aligned moves of wide registers" "$aligned"'(.*\(.*%[yz]mm|%[yz]mm.*\()'
fi
