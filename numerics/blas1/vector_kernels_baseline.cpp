// The dense loops for what every processor of the family has (SSE2 on x86-64); elsewhere the compiler's own choice.
// Test: vector_kernels_test.cpp.
#include "numerics/blas1/vector_kernels_body.h"

namespace KwMath_930 {

typedef double BaselinePack __attribute__((vector_size(16)));

constinit const VectorKernels kBaselineVectorKernels = DenseLoops<BaselinePack>::Table("baseline");

}  // namespace KwMath_930
