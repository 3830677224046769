// pow of many values at once, with the bits of std::pow.
#pragma once

#include <cmath>
#include <cstddef>

#include "svm/elementary/elementary_kernels.h"

namespace KwSVM_700 {

/// The ways to a power of a whole degree.
enum class PowMethod {
    kPlatform,  ///< std::pow for every value
    kRounded,   ///< the exact product, rounded once; std::pow for the values that lie near a tie
    kSquared    ///< squares and products of doubles, from the lowest bit of the degree on, as some platforms do
};

/// pow by one version of the loops, as far as it has the bits of std::pow. Immutable.
class ExactPow {
public:
    /// Compares kernels with std::pow at some hundred points for each whole degree from 2 to 8; where neither rounding
    /// once nor multiplying in doubles agrees, std::pow is called. To be made on a thread that rounds to nearest.
    /// kernels: borrowed.
    explicit ExactPow(const ElementaryKernels& kernels);

    /// y[i] = std::pow(x[i], degree), bit for bit; any NaN stands for any other. y may be x; otherwise they do not
    /// overlap. Allocates nothing; any number of threads may call it.
    /// Note:    calls std::pow for every value where the degree is another, and on a thread that does not round to
    ///          nearest.
    void operator()(const double* x, double degree, double* y, std::size_t n) const;

private:
    const ElementaryKernels& fKernels;
    // By degree.
    PowMethod fMethods[kLargestDegree + 1];
};

/// The same by the fastest version that this processor can run, which is compared when it is first called.
void Pow(const double* x, double degree, double* y, std::size_t n);

/// The same by one method and one version, whatever the comparison says. degree: from 2 to 8. For tests and for the
/// comparison itself.
void PowBy(PowMethod method, const ElementaryKernels& kernels, const double* x, int degree, double* y, std::size_t n);

/// platform: what the comparison is with. Returns: a method that agrees with it at all points.
PowMethod FindPowMethod(const ElementaryKernels& kernels, int degree, double (*platform)(double, double) = std::pow);

}  // namespace KwSVM_700
