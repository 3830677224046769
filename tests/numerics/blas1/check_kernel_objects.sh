#!/usr/bin/env bash
# The objects compiled for one instruction set: check_kernel_objects.sh OBJECT ... They must hold no fused multiply-add,
# define nothing that the linker could use in place of common code, and really use the registers of their set.
set -euo pipefail
checked=0
for object in "$@"; do
    case "$object" in
        *vector_kernels_avx2.* | *elementary_kernels_avx2.*) register=ymm ;;
        *vector_kernels_avx512.* | *elementary_kernels_avx512.*) register=zmm ;;
        *vector_kernels_baseline.* | *elementary_kernels_baseline.*) register=xmm ;;
        *) continue ;;
    esac
    checked=$((checked + 1))
    code=$(objdump -d "$object")
    if grep -E '\bvfn?m(add|sub)' <<<"$code"; then
        echo "$object: fused multiply-add"
        exit 1
    fi
    grep -qE "mulpd.*%$register" <<<"$code" || { echo "$object: no packed product in $register"; exit 1; }
    if objdump -h "$object" | grep -E '\.text\$_Z'; then
        echo "$object: a section of code that is common"
        exit 1
    fi
    if nm --defined-only "$object" | grep -E ' [WVu] ' | grep -vE '(__asan|__ubsan|_ZTS|_ZTI|DW\.ref)'; then
        echo "$object: a definition that other code may be linked with"
        exit 1
    fi
done
[ "$checked" -ge 1 ]
