// exp and pow for every processor: SSE2 where there is one.
// Test: exact_exp_test.cpp, exact_pow_test.cpp.
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "svm/elementary/elementary_kernels_body.h"

namespace KwSVM_700 {

namespace {

struct BaselineSet {
    typedef double Pack __attribute__((vector_size(16)));
    typedef std::uint64_t Bits __attribute__((vector_size(16)));

    struct Entries {
        Pack tail;
        Bits shiftedBits;
    };

    static Entries LookUp(Bits places) {
        Entries found;
        for (int lane = 0; lane < 2; ++lane) {
            const Exp2Entry& entry = kExp2Table.entries[places[lane]];
            found.tail[lane] = entry.tail;
            found.shiftedBits[lane] = entry.shiftedBits;
        }
        return found;
    }

    static std::uint32_t GatherSigns(Bits lanes) {
#if defined(__SSE2__)
        return static_cast<std::uint32_t>(_mm_movemask_pd((__m128d)lanes));
#else
        return static_cast<std::uint32_t>((lanes[0] >> 63) | (lanes[1] >> 63) << 1);
#endif
    }
};

}  // namespace

constinit const ElementaryKernels kBaselineElementaryKernels = ElementaryLoops<BaselineSet>::Table("baseline");

}  // namespace KwSVM_700
