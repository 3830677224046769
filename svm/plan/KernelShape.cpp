// A kernel as a formula: what it makes of its sum.
#include "svm/plan/KernelShape.h"

#include <cmath>

#include "svm/elementary/exact_exp.h"
#include "svm/elementary/exact_pow.h"

namespace KwBrevix_930::plan {

void KernelShape::Apply(double* sums, std::size_t count) const {
    switch (type) {
        case SVMModelData::kPolynomial:
            for (std::size_t i = 0; i < count; ++i)
                sums[i] = gamma * sums[i] + coef0;
            KwSVM_700::Pow(sums, degree, sums, count);
            break;
        case SVMModelData::kRadialBasis:
            for (std::size_t i = 0; i < count; ++i)
                sums[i] = -(gamma * sums[i]);
            KwSVM_700::Exp(sums, sums, count);
            break;
        case SVMModelData::kSigmoid:
            for (std::size_t i = 0; i < count; ++i)
                sums[i] = std::tanh(gamma * sums[i] + coef0);
            break;
        default:
            break;
    }
}

}  // namespace KwBrevix_930::plan
