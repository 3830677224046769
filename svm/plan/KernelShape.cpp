// A kernel as a formula: what it makes of its sum.
#include "svm/plan/KernelShape.h"

#include <cmath>

#include "svm/elementary/exact_exp.h"
#include "svm/elementary/exact_pow.h"

namespace KwBrevix_930::plan {

namespace {

// By value: a sum might stand in the place of a parameter, for all that the compiler knows.
void ScaleAndShift(double factor, double shift, double* sums, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        sums[i] = factor * sums[i] + shift;
}

void Exponentiate(const ElementaryVersions& versions, double factor, double* sums, std::size_t count) {
    if (versions.exp)
        (*versions.exp)(factor, sums, sums, count);
    else
        KwSVM_700::Exp(factor, sums, sums, count);
}

void Raise(const ElementaryVersions& versions, double degree, double* sums, std::size_t count) {
    if (versions.pow)
        (*versions.pow)(sums, degree, sums, count);
    else
        KwSVM_700::Pow(sums, degree, sums, count);
}

}  // namespace

void KernelShape::Apply(double* sums, std::size_t count) const {
    switch (type) {
        case SVMModelData::kPolynomial:
            ScaleAndShift(gamma, coef0, sums, count);
            Raise(versions, degree, sums, count);
            break;
        case SVMModelData::kRadialBasis:
            // The same as the negated product.
            Exponentiate(versions, -gamma, sums, count);
            break;
        case SVMModelData::kSigmoid:
            ScaleAndShift(gamma, coef0, sums, count);
            for (std::size_t i = 0; i < count; ++i)
                sums[i] = std::tanh(sums[i]);
            break;
        default:
            break;
    }
}

}  // namespace KwBrevix_930::plan
