// pow of many values at once, with the bits of std::pow.
#pragma once

#include <cstddef>

namespace KwSVM_700 {

struct ElementaryKernels;

/// y[i] = std::pow(x[i], degree), bit for bit; any NaN stands for any other. y may be x; otherwise they do not overlap.
/// Allocates nothing; any number of threads may call it.
/// Note:    fast for the whole degrees from 2 to 8. The first call compares with std::pow at some hundred points for
///          each of them; where neither rounding once nor multiplying in doubles agrees, and wherever results are not
///          rounded to nearest, std::pow is called.
void Pow(const double* x, double degree, double* y, std::size_t n);

/// The ways to a power of a whole degree.
enum class PowMethod {
    kPlatform,  ///< std::pow for every value
    kRounded,   ///< the exact product, rounded once; std::pow for the values that lie near a tie
    kSquared    ///< squares and products of doubles, from the lowest bit of the degree on, as some platforms do
};

/// The same by one method and one version of the loops, whatever the comparison says. degree: from 2 to 8. For tests
/// and for the comparison itself.
void PowBy(PowMethod method, const ElementaryKernels& kernels, const double* x, int degree, double* y, std::size_t n);

/// Returns: a method that agrees with std::pow at all points of the comparison.
PowMethod FindPowMethod(const ElementaryKernels& kernels, int degree);

}  // namespace KwSVM_700
