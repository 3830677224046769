// pow of many values: by the method that agrees with the platform's.
// Test: exact_pow_test.cpp.
#include "svm/elementary/exact_pow.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "host/ExtendedPrecision.h"
#include "svm/elementary/check_points.h"

namespace KwSVM_700 {

namespace {

bool HasFastDegree(double degree) {
    return degree >= kSmallestDegree && degree <= kLargestDegree && degree == std::floor(degree);
}

void PowRounded(const ElementaryKernels& kernels, const double* x, int degree, double* y, std::size_t n) {
    for (std::size_t first = 0; first < n; first += OpenPlaces::kMost) {
        OpenPlaces open;
        kernels.pow(x + first, degree, y + first, std::min(n - first, OpenPlaces::kMost), open);
        for (std::size_t i = 0; i < open.count; ++i) {
            double& value = y[first + open.places[i]];
            value = std::pow(value, static_cast<double>(degree));
        }
    }
}

double PowSquared(double x, int degree) {
    double power = degree % 2 != 0 ? x : 1.0;
    for (degree /= 2; degree != 0; degree /= 2) {
        x *= x;
        if (degree % 2 != 0)
            power *= x;
    }
    return power;
}

void PowOfPlatform(const double* x, double degree, double* y, std::size_t n) {
    std::transform(x, x + n, y, [degree](double value) { return std::pow(value, degree); });
}

}  // namespace

void PowBy(PowMethod method, const ElementaryKernels& kernels, const double* x, int degree, double* y, std::size_t n) {
    switch (method) {
        case PowMethod::kPlatform:
            return PowOfPlatform(x, static_cast<double>(degree), y, n);
        case PowMethod::kRounded:
            return PowRounded(kernels, x, degree, y, n);
        case PowMethod::kSquared:
            std::transform(x, x + n, y, [degree](double value) { return PowSquared(value, degree); });
    }
}

PowMethod FindPowMethod(const ElementaryKernels& kernels, int degree, double (*platform)(double, double)) {
    const KwBrevix_930::ExtendedPrecision precision;
    for (const PowMethod method : {PowMethod::kRounded, PowMethod::kSquared}) {
        const auto agree = [&](const double* x, std::size_t n) {
            double y[OpenPlaces::kMost];
            PowBy(method, kernels, x, degree, y, n);
            for (std::size_t i = 0; i < n; ++i) {
                const double expected = platform(x[i], static_cast<double>(degree));
                if (std::bit_cast<std::uint64_t>(expected) != std::bit_cast<std::uint64_t>(y[i]))
                    return false;
            }
            return true;
        };
        if (CheckPoints(-2.0, 2.0).All(512, agree) && CheckPoints(-300.0, 5000.0).All(512, agree))
            return method;
    }
    return PowMethod::kPlatform;
}

ExactPow::ExactPow(const ElementaryKernels& kernels) : fKernels(kernels), fMethods{} {
    for (int degree = kSmallestDegree; degree <= kLargestDegree; ++degree)
        fMethods[degree] = FindPowMethod(kernels, degree);
}

void ExactPow::operator()(const double* x, double degree, double* y, std::size_t n) const {
    if (!HasFastDegree(degree) || !IsRoundedToNearest())
        return PowOfPlatform(x, degree, y, n);
    const int whole = static_cast<int>(degree);
    PowBy(fMethods[whole], fKernels, x, whole, y, n);
}

void Pow(const double* x, double degree, double* y, std::size_t n) {
    if (!HasFastDegree(degree) || !IsRoundedToNearest())
        return PowOfPlatform(x, degree, y, n);
    static const ExactPow pow(FastestElementaryKernels());
    pow(x, degree, y, n);
}

}  // namespace KwSVM_700
