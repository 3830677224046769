// The radial basis kernel: exp(-gamma |x - y|^2).
#pragma once

#include "svm/SVMKernelFunction.h"

namespace KwSVM_700 {

class SVMKFRBF : public SVMKernelFunction {
public:
    explicit SVMKFRBF(double gamma) : fGamma(gamma) {}

    double Evaluate(const std::vector<double>& x, const std::vector<double>& y) const override;
    double Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                    const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const override;

private:
    double fGamma;
};

}  // namespace KwSVM_700
