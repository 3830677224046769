// The sigmoid kernel: tanh(gamma x . y + coef0).
#pragma once

#include "svm/SVMKernelFunction.h"

namespace KwSVM_700 {

class SVMKFSigmoid : public SVMKernelFunction {
public:
    SVMKFSigmoid(double gamma, double coef0) : fGamma(gamma), fCoef0(coef0) {}

    double Evaluate(const std::vector<double>& x, const std::vector<double>& y) const override;
    double Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                    const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const override;

private:
    double fGamma;
    double fCoef0;
};

}  // namespace KwSVM_700
