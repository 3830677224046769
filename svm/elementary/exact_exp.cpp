// exp of many values: the loops for the values that are certain, std::exp for the others.
// Test: exact_exp_test.cpp.
#include "svm/elementary/exact_exp.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "host/ExtendedPrecision.h"
#include "svm/elementary/check_points.h"
#include "svm/elementary/elementary_kernels.h"

namespace KwSVM_700 {

void ExpBy(const ElementaryKernels& kernels, double factor, const double* x, double* y, std::size_t n) {
    for (std::size_t first = 0; first < n; first += OpenPlaces::kMost) {
        OpenPlaces open;
        kernels.exp(factor, x + first, y + first, std::min(n - first, OpenPlaces::kMost), open);
        for (std::size_t i = 0; i < open.count; ++i) {
            double& value = y[first + open.places[i]];
            value = std::exp(value);
        }
    }
}

bool AgreesOnExp(const ElementaryKernels& kernels) {
    const KwBrevix_930::ExtendedPrecision precision;
    const auto agree = [&kernels](const double* x, std::size_t n) {
        double y[OpenPlaces::kMost];
        ExpBy(kernels, 1.0, x, y, n);
        for (std::size_t i = 0; i < n; ++i) {
            if (std::bit_cast<std::uint64_t>(std::exp(x[i])) != std::bit_cast<std::uint64_t>(y[i]))
                return false;
        }
        return true;
    };
    return agree(kHardForExp, std::size(kHardForExp)) && CheckPoints(-40.0, 2.0).All(2048, agree) &&
           CheckPoints(-0.01, 0.01).All(512, agree) && CheckPoints(-760.0, 720.0).All(1024, agree);
}

namespace {

void ExpOfPlatform(double factor, const double* x, double* y, std::size_t n) {
    std::transform(x, x + n, y, [factor](double value) { return std::exp(factor * value); });
}

}  // namespace

ExactExp::ExactExp(const ElementaryKernels& kernels) : fKernels(AgreesOnExp(kernels) ? &kernels : nullptr) {}

void ExactExp::operator()(double factor, const double* x, double* y, std::size_t n) const {
    if (IsRoundedToNearest())
        Compute(factor, x, y, n);
    else
        ExpOfPlatform(factor, x, y, n);
}

void ExactExp::Compute(double factor, const double* x, double* y, std::size_t n) const {
    if (fKernels)
        ExpBy(*fKernels, factor, x, y, n);
    else
        ExpOfPlatform(factor, x, y, n);
}

void Exp(double factor, const double* x, double* y, std::size_t n) {
    if (!IsRoundedToNearest())
        return ExpOfPlatform(factor, x, y, n);
    static const ExactExp exp(FastestElementaryKernels());
    exp.Compute(factor, x, y, n);
}

}  // namespace KwSVM_700
