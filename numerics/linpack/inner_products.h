// The inner loops of the decompositions that level 1 of the BLAS has not, or not fast: sums with several accumulators,
// and steps that pass once over a column where separate ones would pass four times. Internal. One version for each
// instruction set; all give the same bits. Test: inner_products_test.cpp.
#pragma once

#include <cstddef>

namespace KwMath_930::linpack {

/// One version of the loops.
struct InnerLoops {
    const char* name;
    double (*dot)(std::ptrdiff_t n, const double* x, const double* y);
    void (*dotFour)(std::ptrdiff_t n, const double* const* x, const double* y, double* sums);
    void (*addFour)(std::ptrdiff_t n, const double* factors, const double* const* x, double* y);
};

extern const InnerLoops kBaselineInnerLoops;
#if defined(__x86_64__) && !defined(_WIN32)
extern const InnerLoops kAvx2InnerLoops;
#endif

/// Returns: the fastest version that this processor can run, found once.
const InnerLoops& FastestInnerLoops();

/// Returns: the dot product; 0 for n <= 0. The order of summation depends on n only.
inline double Dot(std::ptrdiff_t n, const double* x, const double* y) {
    return FastestInnerLoops().dot(n, x, y);
}

/// sums[c] := the dot product of x[c] with y, c = 0 .. 3.
inline void DotFour(std::ptrdiff_t n, const double* const* x, const double* y, double* sums) {
    FastestInnerLoops().dotFour(n, x, y, sums);
}

/// y := (((y + f[0] x[0]) + f[1] x[1]) + f[2] x[2]) + f[3] x[3], each product and sum rounded, as four steps of Daxpy
/// give it.
inline void AddFour(std::ptrdiff_t n, const double* factors, const double* const* x, double* y) {
    FastestInnerLoops().addFour(n, factors, x, y);
}

}  // namespace KwMath_930::linpack
