// How many terms of a squared distance one core can add. The two loops differ in the width of their packs alone: a
// function that is compiled for other instructions cannot be made from a template.
#include "benchmarks/svm/peak_terms.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <ctime>

namespace benchmarks {

namespace {

constexpr std::size_t kSteps = 200'000;
constexpr std::size_t kSums = 8;
constexpr std::size_t kPacksOfCases = 2;

// The compiler takes a vector for changed at every use, so that no difference is kept, and all lanes of a sum for used.
void AddInPairs(const double* x, double y) {
    typedef double Pack __attribute__((vector_size(16)));
    Pack sums[kSums] = {};
    const Pack cases[kPacksOfCases] = {Pack{} + x[0], Pack{} + x[1]};
    Pack vector = Pack{} + y;
    for (std::size_t step = 0; step < kSteps; ++step) {
#pragma GCC unroll 8
        for (std::size_t i = 0; i < kSums; ++i) {
            if (i % kPacksOfCases == 0)
                asm volatile("" : "+x"(vector));
            const Pack difference = cases[i % kPacksOfCases] - vector;
            sums[i] += difference * difference;
        }
    }
    for (const Pack& sum : sums)
        asm volatile("" : : "x"(sum));
}

#if defined(__x86_64__)
__attribute__((target("avx2"))) void AddInFours(const double* x, double y) {
    typedef double Pack __attribute__((vector_size(32)));
    Pack sums[kSums] = {};
    const Pack cases[kPacksOfCases] = {Pack{} + x[0], Pack{} + x[1]};
    Pack vector = Pack{} + y;
    for (std::size_t step = 0; step < kSteps; ++step) {
#pragma GCC unroll 8
        for (std::size_t i = 0; i < kSums; ++i) {
            if (i % kPacksOfCases == 0)
                asm volatile("" : "+x"(vector));
            const Pack difference = cases[i % kPacksOfCases] - vector;
            sums[i] += difference * difference;
        }
    }
    for (const Pack& sum : sums)
        asm volatile("" : : "x"(sum));
}
#endif

// Returns: terms a second, the most of some runs. lanes: of a pack.
double Measure(void (*add)(const double*, double), std::size_t lanes) {
    const double x[2] = {0.375, 1.625};
    double least = 1.0;
    for (int run = 0; run < 12; ++run) {
        const std::clock_t start = std::clock();
        add(x, 0.875);
        least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return static_cast<double>(kSteps * kSums * lanes) / least;
}

}  // namespace

double MeasurePeakTerms(const char* level) {
#if defined(__x86_64__)
    if (std::strcmp(level, "avx2") == 0)
        return Measure(AddInFours, 4);
#endif
    return std::strcmp(level, "baseline") == 0 ? Measure(AddInPairs, 2) : 0.0;
}

}  // namespace benchmarks
