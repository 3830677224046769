// exp of many values at once, with the bits of std::exp.
#pragma once

#include <cstddef>

namespace KwSVM_700 {

struct ElementaryKernels;

/// exp by one version of the loops, as far as it has the bits of std::exp. Immutable.
class ExactExp {
public:
    /// Compares kernels with std::exp at some thousand points; where they differ at one of them, std::exp is called for
    /// every value. To be made on a thread that rounds to nearest. kernels: borrowed.
    explicit ExactExp(const ElementaryKernels& kernels);

    /// y[i] = std::exp(factor * x[i]), bit for bit, NaN, infinities, overflow and denormal results included; any NaN
    /// stands for any other. y may be x; otherwise they do not overlap. Allocates nothing; any number of threads may
    /// call it. Note:    calls std::exp for every value on a thread that does not round to nearest.
    void operator()(double factor, const double* x, double* y, std::size_t n) const;

private:
    friend void Exp(double factor, const double* x, double* y, std::size_t n);

    // On a thread that rounds to nearest.
    void Compute(double factor, const double* x, double* y, std::size_t n) const;

    // Null where the comparison found a difference.
    const ElementaryKernels* fKernels;
};

/// The same by the fastest version that this processor can run, which is compared when it is first called.
void Exp(double factor, const double* x, double* y, std::size_t n);

/// The same by one version, whatever the comparison says. For tests and for the comparison itself.
void ExpBy(const ElementaryKernels& kernels, double factor, const double* x, double* y, std::size_t n);

/// Returns: whether one version of the loops agrees with std::exp at all points of the comparison.
bool AgreesOnExp(const ElementaryKernels& kernels);

}  // namespace KwSVM_700
