// The choice among the versions of the dense loops, the one place where the processor is asked.
// Test: vector_kernels_test.cpp.
#include "numerics/blas1/vector_kernels.h"

namespace KwMath_930 {

UsableVectorKernels FindVectorKernels() {
    UsableVectorKernels usable{{&kBaselineVectorKernels}, 1};
#if defined(__x86_64__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2")) {
        usable.versions[usable.count++] = &kAvx2VectorKernels;
    }
    if (__builtin_cpu_supports("avx512f")) {
        usable.versions[usable.count++] = &kAvx512VectorKernels;
    }
#endif
    return usable;
}

const VectorKernels& FastestVectorKernels() {
    static const UsableVectorKernels usable = FindVectorKernels();
    return *usable.versions[usable.count - 1];
}

}  // namespace KwMath_930
