// A kernel as a formula: which sum it takes, and what it makes of it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pmml/SVMModelData.h"

namespace KwBrevix_930::plan {

struct KernelShape {
    explicit KernelShape(const SVMModelData& data)
        : type(data.GetKernelType()), gamma(data.GetGamma()), coef0(data.GetCoef0()), degree(data.GetDegree()) {}

    bool IsKnown() const { return type >= SVMModelData::kLinear && type <= SVMModelData::kSigmoid; }
    /// Returns: true for the squared distance, false for the dot product.
    bool TakesDistance() const { return type == SVMModelData::kRadialBasis; }
    /// Turns sums into kernel values, with the same bits as the kernel.
    void Apply(double* sums, std::size_t count) const;

    std::int32_t type;
    double gamma;
    double coef0;
    double degree;
};

}  // namespace KwBrevix_930::plan
