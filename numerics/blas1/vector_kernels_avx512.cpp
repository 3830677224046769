// The dense loops for AVX-512F.
// Test: vector_kernels_test.cpp.
#include "numerics/blas1/vector_kernels_body.h"

namespace KwMath_930 {

typedef double Avx512Pack __attribute__((vector_size(64)));

constinit const VectorKernels kAvx512VectorKernels = DenseLoops<Avx512Pack>::Table("avx512");

}  // namespace KwMath_930
