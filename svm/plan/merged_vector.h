// What the merge of a support vector with a case amounts to. A case has every column once and in order, so this depends
// on the support vector's indices alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pmml/SVMVectorInstance.h"

namespace KwBrevix_930::plan {

struct MergedVector {
    struct Entry {
        std::int32_t column;
        double value;
    };

    /// The entries that meet a column, in ascending order of columns.
    std::vector<Entry> matched;
    /// The others: beyond the columns, negative, repeated or out of order. A dot product passes over them; a squared
    /// distance adds their squares at the places where the merge comes upon them.
    std::vector<double> unmatched;
};

/// vector: has as many values as indices. columns: at most 2^31 - 1. merged: filled anew.
void MergeWithCase(const SVMVectorInstance& vector, std::size_t columns, MergedVector& merged);

}  // namespace KwBrevix_930::plan
