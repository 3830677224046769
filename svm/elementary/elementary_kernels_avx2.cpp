// exp and pow for AVX2.
// Test: exact_exp_test.cpp, exact_pow_test.cpp.
#include <immintrin.h>

#include "svm/elementary/elementary_kernels_body.h"

namespace KwSVM_700 {

namespace {

struct Avx2Set {
    typedef double Pack __attribute__((vector_size(32)));
    typedef std::uint64_t Bits __attribute__((vector_size(32)));

    struct Entries {
        Pack tail;
        Bits shiftedBits;
    };

    static __m128d Load(std::uint64_t place) {
        return _mm_loadu_pd(reinterpret_cast<const double*>(kExp2Table.entries + place));
    }

    static Entries LookUp(Bits places) {
        const __m256d even = _mm256_insertf128_pd(_mm256_castpd128_pd256(Load(places[0])), Load(places[2]), 1);
        const __m256d odd = _mm256_insertf128_pd(_mm256_castpd128_pd256(Load(places[1])), Load(places[3]), 1);
        return {(Pack)_mm256_unpacklo_pd(even, odd), (Bits)_mm256_unpackhi_pd(even, odd)};
    }

    static std::uint32_t GatherSigns(Bits lanes) {
        return static_cast<std::uint32_t>(_mm256_movemask_pd((__m256d)lanes));
    }
};

}  // namespace

constinit const ElementaryKernels kAvx2ElementaryKernels = ElementaryLoops<Avx2Set>::Table("avx2");

}  // namespace KwSVM_700
