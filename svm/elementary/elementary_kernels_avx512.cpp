// exp and pow for AVX-512F.
// Test: exact_exp_test.cpp, exact_pow_test.cpp.
#include <immintrin.h>

#include "svm/elementary/elementary_kernels_body.h"

namespace KwSVM_700 {

namespace {

struct Avx512Set {
    typedef double Pack __attribute__((vector_size(64)));
    typedef std::uint64_t Bits __attribute__((vector_size(64)));

    struct Entries {
        Pack tail;
        Bits shiftedBits;
    };

    static Entries LookUp(Bits places) {
        Entries found;
        for (int lane = 0; lane < 8; ++lane) {
            const Exp2Entry& entry = kExp2Table.entries[places[lane]];
            found.tail[lane] = entry.tail;
            found.shiftedBits[lane] = entry.shiftedBits;
        }
        return found;
    }

    static std::uint32_t GatherSigns(Bits lanes) {
        return _mm512_cmpneq_epi64_mask((__m512i)lanes, _mm512_setzero_si512());
    }
};

}  // namespace

constinit const ElementaryKernels kAvx512ElementaryKernels = ElementaryLoops<Avx512Set>::Table("avx512");

}  // namespace KwSVM_700
