// A vector given by the places and the values of some of its elements; the others are 0.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

/// A sparse vector: entry k says that element GetIndex(k) is GetValue(k). Entries keep the order in which they were
/// given; entries of the same index add up. Copies are deep.
class KW_EXPORT KwSparseVector {
public:
    /// A vector without entries.
    KwSparseVector();
    /// Entry k is (indices[k], values[k]); of two lists of different length only as many entries as both hold.
    /// Note:    indices are not checked here: the members that take the vector refuse a negative one.
    ///          May throw std::bad_alloc.
    KwSparseVector(const std::vector<int>& indices, const std::vector<double>& values);

    /// Returns: number of stored entries.
    int GetNElements() const;
    /// Shape:   0 <= k < GetNElements(), unchecked.
    /// Returns: the index of entry k.
    int GetIndex(int k) const;
    /// Shape:   0 <= k < GetNElements(), unchecked.
    /// Returns: the value of entry k.
    double GetValue(int k) const;
    /// Returns: the smallest dense length that holds all indices, the largest index + 1; 0 without entries.
    ///          The largest int when an index is negative or the largest int itself: no vector holds it.
    int GetMinVecSize() const;

private:
    std::vector<int> fIndices;
    std::vector<double> fValues;
};

}  // namespace KwMath_930
