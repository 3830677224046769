// The choice among the versions of exp and pow.
// Test: exact_exp_test.cpp, exact_pow_test.cpp.
#include "svm/elementary/elementary_kernels.h"

#include <cfenv>

namespace KwSVM_700 {

bool IsRoundedToNearest() {
    return std::fegetround() == FE_TONEAREST;
}

UsableElementaryKernels FindElementaryKernels() {
    UsableElementaryKernels usable{{&kBaselineElementaryKernels}, 1};
#if defined(__x86_64__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2"))
        usable.versions[usable.count++] = &kAvx2ElementaryKernels;
    if (__builtin_cpu_supports("avx512f"))
        usable.versions[usable.count++] = &kAvx512ElementaryKernels;
#endif
    return usable;
}

const ElementaryKernels& FastestElementaryKernels() {
    static const UsableElementaryKernels usable = FindElementaryKernels();
    return *usable.versions[usable.count - 1];
}

}  // namespace KwSVM_700
