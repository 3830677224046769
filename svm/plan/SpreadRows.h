// Support vectors of whose columns few are there, kept as lists of those; the lists of a block are spread out among
// zeros, one stretch of columns after another, when it is summed.
#pragma once

#include <cstdint>
#include <vector>

#include "svm/plan/Loops.h"
#include "svm/plan/RowSums.h"
#include "svm/plan/merged_vector.h"

namespace KwBrevix_930::plan {

/// The same sums as DenseRows has, from less memory.
class SpreadRows : public RowSums {
public:
    /// entryCount: of all rows.
    SpreadRows(std::size_t rows, std::size_t columns, std::size_t entryCount, const TermLoops& terms);

    /// Returns: how many bytes such rows take.
    static double GetByteCount(std::size_t rows, std::size_t columns, std::size_t entryCount);

    /// The matched entries of the next row; each row is added once, then Finish is called.
    void Add(const MergedVector& vector);
    void Finish();

    void SumCase(const double* x, double* sums) const override;
    void SumTiles(const Tiles& tiles) const override;

private:
    using Place = std::uint16_t;
    static_assert(kStretch * kBlock <= Place(-1));

    struct Entry {
        std::size_t stretch;
        Place place;
        double value;
    };

    std::size_t CountStretches() const { return (fColumns + kStretch - 1) / kStretch; }
    void FinishBlock();
    template <class Use>
    void ForAllStretches(const Use& use) const;

    std::size_t fRows;
    std::size_t fColumns;
    const TermLoops& fTerms;
    // Where the entries of each stretch of each block begin, and where the last ones end.
    std::vector<std::size_t> fStarts;
    std::vector<Place> fPlaces;
    std::vector<double> fValues;
    // While rows are added: how many have been, and the entries of the last block.
    std::size_t fAdded = 0;
    std::vector<Entry> fBlock;
};

}  // namespace KwBrevix_930::plan
