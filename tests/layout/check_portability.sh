#!/usr/bin/env bash
# What only some compilers or systems know has its own files: extensions of the compiler in the loops for instruction
# sets and where symbols are shown, calls of the system in files named after it. check_portability.sh ROOT
set -euo pipefail
cd "$1"
sources=$(find host numerics pmml svm plugin runtime tools -name '*.h' -o -name '*.cpp')

# Lines of code outside some files: PATTERN FILES
find_elsewhere() {
    grep -nE "$1" $(grep -vE "$2" <<<"$sources") | grep -vE '^[^:]+:[0-9]+: *//' || true
}

# The loops, what chooses among them, and some files more.
extending='_(body\.h|baseline\.cpp|avx2\.cpp|avx512\.cpp)$'
extending+='|^(numerics/(blas1/vector_kernels|linpack/inner_products|matrix/product_kernel)'
extending+='|svm/(elementary/elementary_kernels|plan/loops))\.cpp$'
extending+='|/Export\.h$|^host/(ExtendedPrecision|ScoringLog)\.h$|^numerics/matrix/packed_cholesky\.cpp$'
extending+='|^svm/plan/prefetch\.h$'
extensions='__builtin_|__attribute__|__extension__|__int128|__typeof|\<asm\>|#pragma GCC|\<(intrin|immintrin|x86intrin)\.h'
system='_(posix|windows)\.cpp$|^tools/remove_on_signal\.cpp$'
headers='<(unistd|fcntl|dlfcn|pthread|signal|dirent|poll|strings|windows|io|process)\.h>|<sys/'
headers+='|\<(localtime|gmtime)_[rs]\>|\<ssize_t\>'
found=$(
    find_elsewhere "$extensions" "$extending"
    find_elsewhere "$headers" "$system"
    find_elsewhere '\<long double\>' '^$'
    # A long has another size there: none is kept in an object.
    find_elsewhere \
        '^ *((static|mutable|const|unsigned) +)*long( int)?[ *]+[A-Za-z_]+( = [^()]*|\{.*\}|\[.*\]|,[^()]*)?;' '\.cpp$'
    find_elsewhere '[<,] *(unsigned )?long( int)? *\*? *[>,]' '^$' | grep -v '_cast<' || true
)
if [ -n "$found" ]; then
    echo "$found"
    exit 1
fi
