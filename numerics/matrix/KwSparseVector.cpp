// Sparse vector: two lists of the same length. Test: KwSparseVector_test.cpp.
#include "numerics/matrix/KwSparseVector.h"

#include <algorithm>
#include <limits>

namespace KwMath_930 {

KwSparseVector::KwSparseVector() = default;

KwSparseVector::KwSparseVector(const std::vector<int>& indices, const std::vector<double>& values)
    : fIndices(indices), fValues(values) {
    const std::size_t common = std::min(fIndices.size(), fValues.size());
    fIndices.resize(common);
    fValues.resize(common);
}

int KwSparseVector::GetNElements() const {
    return static_cast<int>(fIndices.size());
}

int KwSparseVector::GetIndex(int k) const {
    return fIndices[static_cast<std::size_t>(k)];
}

double KwSparseVector::GetValue(int k) const {
    return fValues[static_cast<std::size_t>(k)];
}

int KwSparseVector::GetMinVecSize() const {
    int size = 0;
    for (const int index : fIndices) {
        if (index < 0 || index == std::numeric_limits<int>::max()) {
            return std::numeric_limits<int>::max();
        }
        size = std::max(size, index + 1);
    }
    return size;
}

}  // namespace KwMath_930
