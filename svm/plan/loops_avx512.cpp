// The inner loops for AVX-512F.
#include "svm/plan/loops_body.h"

namespace KwBrevix_930::plan {

constinit const Loops kAvx512Loops = Table("avx512");

}  // namespace KwBrevix_930::plan
