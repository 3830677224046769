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
    void (*addScaled)(std::ptrdiff_t n, double factor, const double* x, double* y);
    void (*dotFour)(std::ptrdiff_t n, const double* const* x, const double* y, double* sums);
    void (*addFour)(std::ptrdiff_t n, const double* factors, const double* const* x, double* y);
    void (*solveRow)(std::ptrdiff_t n, const double* x, double* rows);
    void (*gramRows)(std::ptrdiff_t n, const double* rows, double* gram);
};

extern const InnerLoops kBaselineInnerLoops;
#if defined(__x86_64__)
extern const InnerLoops kAvx2InnerLoops;
#endif

/// Returns: the fastest version that this processor can run, found once.
const InnerLoops& FastestInnerLoops();

/// Vectors shorter than this are worked on in place, as a call would cost more than the loop.
constexpr std::ptrdiff_t kShort = 24;

/// Returns: the dot product; 0 for n <= 0. The order of summation depends on n only.
inline double Dot(std::ptrdiff_t n, const double* x, const double* y) {
    if (n >= kShort) {
        return FastestInnerLoops().dot(n, x, y);
    }
    double even = 0.0;
    double odd = 0.0;
    std::ptrdiff_t i = 0;
    for (; i + 1 < n; i += 2) {
        even += x[i] * y[i];
        odd += x[i + 1] * y[i + 1];
    }
    return i < n ? (even + x[i] * y[i]) + odd : even + odd;
}

/// y := y + factor x as Daxpy gives it, so nothing for a factor of 0; x and y do not overlap.
inline void AddScaled(std::ptrdiff_t n, double factor, const double* x, double* y) {
    if (factor == 0.0) {
        return;
    }
    if (n >= kShort) {
        FastestInnerLoops().addScaled(n, factor, x, y);
        return;
    }
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        y[i] += factor * x[i];
    }
}

/// sums[c] := the dot product of x[c] with y, c = 0 .. 3.
inline void DotFour(std::ptrdiff_t n, const double* const* x, const double* y, double* sums) {
    FastestInnerLoops().dotFour(n, x, y, sums);
}

/// y := (((y + f[0] x[0]) + f[1] x[1]) + f[2] x[2]) + f[3] x[3], as four calls of AddScaled give it.
inline void AddFour(std::ptrdiff_t n, const double* factors, const double* const* x, double* y) {
    if (factors[0] != 0.0 && factors[1] != 0.0 && factors[2] != 0.0 && factors[3] != 0.0) {
        FastestInnerLoops().addFour(n, factors, x, y);
        return;
    }
    for (int c = 0; c < 4; ++c) {
        AddScaled(n, factors[c], x[c], y);
    }
}

/// rows[4 n + c] := (rows[4 n + c] - the sum of x[i] * rows[4 i + c], i < n) / x[n], c = 0 .. 3: the step of a forward
/// solution for four columns that lie side by side.
inline void SolveRow(std::ptrdiff_t n, const double* x, double* rows) {
    FastestInnerLoops().solveRow(n, x, rows);
}

/// gram[4 d + c] := the sum of rows[4 i + d] * rows[4 i + c].
inline void GramRows(std::ptrdiff_t n, const double* rows, double* gram) {
    FastestInnerLoops().gramRows(n, rows, gram);
}

}  // namespace KwMath_930::linpack
