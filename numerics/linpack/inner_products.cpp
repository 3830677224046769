// The choice among the versions of the inner loops, the one place where the processor is asked.
#include "numerics/linpack/inner_products.h"

namespace KwMath_930::linpack {

namespace {

const InnerLoops* FindFastest() {
#if defined(__x86_64__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2")) {
        return &kAvx2InnerLoops;
    }
#endif
    return &kBaselineInnerLoops;
}

}  // namespace

const InnerLoops& FastestInnerLoops() {
    static const InnerLoops* const fastest = FindFastest();
    return *fastest;
}

}  // namespace KwMath_930::linpack
