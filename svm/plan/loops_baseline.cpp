// The inner loops for what every processor of the family has (SSE2 on x86-64); elsewhere the compiler's own choice.
#include "svm/plan/loops_body.h"

namespace KwBrevix_930::plan {

constinit const Loops kBaselineLoops = Table("baseline");

}  // namespace KwBrevix_930::plan
