// A kernel as a formula: which sum it takes, and what it makes of it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pmml/SVMModelData.h"

namespace KwSVM_700 {
class ExactExp;
class ExactPow;
}  // namespace KwSVM_700

namespace KwBrevix_930::plan {

/// By which versions of their loops exp and pow are taken; null: the fastest. Borrowed.
struct ElementaryVersions {
    const KwSVM_700::ExactExp* exp = nullptr;
    const KwSVM_700::ExactPow* pow = nullptr;
};

struct KernelShape {
    KernelShape(const SVMModelData& data, const ElementaryVersions& itsVersions)
        : type(data.GetKernelType()),
          gamma(data.GetGamma()),
          coef0(data.GetCoef0()),
          degree(data.GetDegree()),
          versions(itsVersions) {}

    bool IsKnown() const { return type >= SVMModelData::kLinear && type <= SVMModelData::kSigmoid; }
    /// Returns: true for the squared distance, false for the dot product.
    bool TakesDistance() const { return type == SVMModelData::kRadialBasis; }
    /// Turns sums into kernel values, with the same bits as the kernel.
    void Apply(double* sums, std::size_t count) const;

    std::int32_t type;
    double gamma;
    double coef0;
    double degree;
    ElementaryVersions versions;
};

}  // namespace KwBrevix_930::plan
