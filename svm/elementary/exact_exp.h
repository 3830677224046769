// exp of many values at once, with the bits of std::exp.
#pragma once

#include <cstddef>

namespace KwSVM_700 {

struct ElementaryKernels;

/// y[i] = std::exp(x[i]), bit for bit, NaN, infinities, overflow and denormal results included; any NaN stands for any
/// other. y may be x; otherwise they do not overlap. Allocates nothing; any number of threads may call it.
/// Note:    the first call compares with std::exp at some thousand points. Where they differ at one of them, std::exp
///          is called for every value from then on, and wherever results are not rounded to nearest.
void Exp(const double* x, double* y, std::size_t n);

/// The same, by one version of the loops, whatever the comparison says. For tests and for the comparison itself.
void ExpBy(const ElementaryKernels& kernels, const double* x, double* y, std::size_t n);

/// Returns: whether one version of the loops agrees with std::exp at all points of the comparison.
bool AgreesOnExp(const ElementaryKernels& kernels);

}  // namespace KwSVM_700
