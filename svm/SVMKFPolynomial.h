// The polynomial kernel: (gamma x . y + coef0) ^ degree, with a real degree.
#pragma once

#include "svm/SVMKernelFunction.h"

namespace KwSVM_700 {

class SVMKFPolynomial : public SVMKernelFunction {
public:
    SVMKFPolynomial(double gamma, double coef0, double degree) : fGamma(gamma), fCoef0(coef0), fDegree(degree) {}

    double Evaluate(const std::vector<double>& x, const std::vector<double>& y) const override;
    double Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                    const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const override;

private:
    double fGamma;
    double fCoef0;
    double fDegree;
};

}  // namespace KwSVM_700
