#!/usr/bin/env bash
# No multiplication is fused with an addition, whatever the instruction set of its code: check_no_fused.sh LIBRARY
set -euo pipefail
code=$(mktemp)
trap 'rm -f "$code"' EXIT
objdump -d --no-show-raw-insn "$1" >"$code"
if grep -q '^[^ ].*file format elf64-x86-64' "$code"; then
    # The loops for AVX2 and AVX-512 are there.
    grep -q '%ymm' "$code" && grep -q '%zmm' "$code" || { echo "$1: no wide instructions to look at"; exit 1; }
fi
! grep -E -m 5 '\svfn?m(add|sub)' "$code"
