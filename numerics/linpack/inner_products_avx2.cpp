// The inner loops for AVX2.
#include "numerics/linpack/inner_products_body.h"

namespace KwMath_930::linpack {

constinit const InnerLoops kAvx2InnerLoops = Table("avx2");

}  // namespace KwMath_930::linpack
