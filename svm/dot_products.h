// The sums that all kernels are made of. Every sum runs left to right, so that results agree bit for bit with a plain
// loop.
#pragma once

#include <cstdint>
#include <vector>

namespace KwSVM_700 {

/// Returns: the sum of x[i] * y[i]; y has at least as many elements as x; 0.0 for an empty x.
double DenseDotProduct(const std::vector<double>& x, const std::vector<double>& y);

/// Returns: the sum of (x[i] - y[i])^2; y has at least as many elements as x.
double DenseSquaredDistance(const std::vector<double>& x, const std::vector<double>& y);

/// The dot product of two sparse vectors, merged by index: both index vectors ascend, and as many entries count as
/// there are indices. An index that only one vector has stands for a zero in the other.
double SparseDotProduct(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                        const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues);

/// The squared distance of two sparse vectors, merged as in SparseDotProduct.
double SparseSquaredDistance(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                             const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues);

}  // namespace KwSVM_700
