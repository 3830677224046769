// The dense loops for AVX2.
// Test: vector_kernels_test.cpp.
#include "numerics/blas1/vector_kernels_body.h"

namespace KwMath_930 {

typedef double Avx2Pack __attribute__((vector_size(32)));

constinit const VectorKernels kAvx2VectorKernels = DenseLoops<Avx2Pack>::Table("avx2");

}  // namespace KwMath_930
