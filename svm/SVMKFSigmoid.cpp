// The sigmoid kernel: tanh(gamma x . y + coef0).
#include "svm/SVMKFSigmoid.h"

#include <cmath>

#include "svm/dot_products.h"

namespace KwSVM_700 {

double SVMKFSigmoid::Evaluate(const std::vector<double>& x, const std::vector<double>& y) const {
    return std::tanh(fGamma * DenseDotProduct(x, y) + fCoef0);
}

double SVMKFSigmoid::Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                              const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const {
    return std::tanh(fGamma * SparseDotProduct(xIndices, xValues, yIndices, yValues) + fCoef0);
}

}  // namespace KwSVM_700
