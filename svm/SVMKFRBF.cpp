// The radial basis kernel: exp(-gamma |x - y|^2).
#include "svm/SVMKFRBF.h"

#include <cmath>

#include "svm/dot_products.h"

namespace KwSVM_700 {

double SVMKFRBF::Evaluate(const std::vector<double>& x, const std::vector<double>& y) const {
    return std::exp(-(fGamma * DenseSquaredDistance(x, y)));
}

double SVMKFRBF::Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                          const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const {
    return std::exp(-(fGamma * SparseSquaredDistance(xIndices, xValues, yIndices, yValues)));
}

}  // namespace KwSVM_700
