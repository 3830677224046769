// The polynomial kernel: (gamma x . y + coef0) ^ degree, with a real degree.
#include "svm/SVMKFPolynomial.h"

#include <cmath>

#include "svm/dot_products.h"

namespace KwSVM_700 {

double SVMKFPolynomial::Evaluate(const std::vector<double>& x, const std::vector<double>& y) const {
    return std::pow(fGamma * DenseDotProduct(x, y) + fCoef0, fDegree);
}

double SVMKFPolynomial::Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                                 const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const {
    return std::pow(fGamma * SparseDotProduct(xIndices, xValues, yIndices, yValues) + fCoef0, fDegree);
}

}  // namespace KwSVM_700
