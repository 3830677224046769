// Lists of (index, factor), summed left to right as factor * source[index]. The lists of a group run side by side.
#pragma once

#include <cstdint>
#include <vector>

#include "svm/plan/AlignedArray.h"
#include "svm/plan/Loops.h"
#include "svm/plan/RowSums.h"

namespace KwBrevix_930::plan {

/// Used twice: for support vectors as lists of columns, and for machines as lists of support vectors. Lists of a group
/// that are shorter than the longest are filled up with a zero of the source, so that nothing is asked of the numbers.
class ProductLists : public RowSums {
public:
    /// lengths: of each list. zeroIndex: where the source has a zero.
    ProductLists(const std::vector<std::size_t>& lengths, std::size_t zeroIndex, const ListLoops& loops);

    /// Returns: how many bytes such lists take.
    static double GetByteCount(const std::vector<std::size_t>& lengths);

    /// Entry k of a list, k below its length.
    void Set(std::size_t list, std::size_t k, std::size_t index, double factor);

    /// One sum a list, and no room beyond.
    void SumCase(const double* source, double* sums) const override;
    /// kTile sums a list, and no room beyond.
    void SumTile(const double* source, double* sums) const;
    void SumTiles(const Tiles& tiles) const override;

private:
    std::size_t fLists;
    // Where each group starts, in steps of kGroup entries, and where the last one ends.
    std::vector<std::size_t> fStarts;
    AlignedArray<std::int32_t> fIndices;
    AlignedArray<double> fFactors;
    const ListLoops& fLoops;
};

}  // namespace KwBrevix_930::plan
