// The inner loops for AVX2.
#include "svm/plan/loops_body.h"

namespace KwBrevix_930::plan {

constinit const Loops kAvx2Loops = Table("avx2");

}  // namespace KwBrevix_930::plan
