// The linear kernel: x . y.
#include "svm/SVMKFLinear.h"

#include "svm/dot_products.h"

namespace KwSVM_700 {

SVMKernelFunction::~SVMKernelFunction() = default;

double SVMKFLinear::Evaluate(const std::vector<double>& x, const std::vector<double>& y) const {
    return DenseDotProduct(x, y);
}

double SVMKFLinear::Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                             const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const {
    return SparseDotProduct(xIndices, xValues, yIndices, yValues);
}

}  // namespace KwSVM_700
