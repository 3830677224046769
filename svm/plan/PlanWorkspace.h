// The memory that plans work in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "svm/plan/AlignedArray.h"

namespace KwBrevix_930::plan {

/// Grows to what the largest call needs, and serves any number of plans, one call at a time.
struct PlanWorkspace {
    /// A case, or some tiles, with zeros behind.
    AlignedArray<double> numbers;
    AlignedArray<double> kernelValues;
    /// The decision values of one tile.
    AlignedArray<double> sums;
    /// A case as bits.
    AlignedArray<std::uint64_t> words;
    /// A case as kernels take it.
    std::vector<double> x;
    /// Where the columns of a batch begin.
    std::vector<const double*> columns;

    /// Returns: how many numbers there is room for.
    std::size_t GetRoom() const {
        return numbers.size() + kernelValues.size() + sums.size() + words.size() + x.capacity() + columns.capacity();
    }
};

}  // namespace KwBrevix_930::plan
