// The linear kernel: x . y.
#pragma once

#include "svm/SVMKernelFunction.h"

namespace KwSVM_700 {

class SVMKFLinear : public SVMKernelFunction {
public:
    double Evaluate(const std::vector<double>& x, const std::vector<double>& y) const override;
    double Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                    const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const override;
};

}  // namespace KwSVM_700
