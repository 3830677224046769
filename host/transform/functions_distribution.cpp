// Built-in functions: the error function and the normal distribution.
#include <cmath>

#include "host/transform/built_in_functions.h"
#include "host/transform/normal_distribution.h"

namespace KwBrevix_930 {

namespace {

bool HasDeviation(const double* x) {
    return x[2] > 0.0;
}

bool IsProbability(const double* x) {
    return x[0] > 0.0 && x[0] < 1.0;
}

double Scaled(const double* x) {
    return (x[0] - x[1]) / x[2];
}

// The normal distributions take a value, the mean and the standard deviation.
constexpr NumericFunction kDistributionFunctions[] = {
    {"erf", 1, [](const double* x) { return std::erf(x[0]); }, nullptr},
    {"normalCDF", 3, [](const double* x) { return NormalProbability(Scaled(x)); }, &HasDeviation},
    {"normalPDF", 3, [](const double* x) { return NormalDensity(Scaled(x)) / x[2]; }, &HasDeviation},
    {"normalIDF", 3, [](const double* x) { return x[1] + x[2] * NormalQuantile(x[0]); },
     [](const double* x) { return HasDeviation(x) && IsProbability(x); }},
    {"stdNormalCDF", 1, [](const double* x) { return NormalProbability(x[0]); }, nullptr},
    {"stdNormalPDF", 1, [](const double* x) { return NormalDensity(x[0]); }, nullptr},
    {"stdNormalIDF", 1, [](const double* x) { return NormalQuantile(x[0]); }, &IsProbability},
};

}  // namespace

std::span<const BuiltInFunction> DistributionFunctions() {
    return FunctionsOf<kDistributionFunctions>();
}

}  // namespace KwBrevix_930
