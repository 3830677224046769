// The inner loops for what every processor of the family has (SSE2 on x86-64); elsewhere the compiler's own choice.
#include "numerics/linpack/inner_products_body.h"

namespace KwMath_930::linpack {

constinit const InnerLoops kBaselineInnerLoops = Table("baseline");

}  // namespace KwMath_930::linpack
