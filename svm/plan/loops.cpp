// The choice among the versions of the inner loops, the one place where the processor is asked.
#include "svm/plan/Loops.h"

#include <array>

namespace KwBrevix_930::plan {

namespace {

using Versions = std::array<const Loops*, 4>;

Versions FindRunnable() {
    Versions found{&kBaselineLoops};
#if defined(__x86_64__)
    __builtin_cpu_init();
    std::size_t count = 1;
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("popcnt")) {
        found[count++] = &kAvx2Loops;
        if (__builtin_cpu_supports("avx512f"))
            found[count++] = &kAvx512Loops;
    }
#endif
    return found;
}

}  // namespace

const Loops* const* RunnableLoops() {
    static const Versions runnable = FindRunnable();
    return runnable.data();
}

const Loops& FastestLoops() {
    const Loops* const* version = RunnableLoops();
    while (version[1])
        ++version;
    return **version;
}

}  // namespace KwBrevix_930::plan
