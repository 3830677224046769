// Support vectors with all their columns, zeros filled in, in blocks: feature by feature, the vectors of a block side
// by side.
#pragma once

#include <cstdint>

#include "svm/plan/AlignedArray.h"
#include "svm/plan/Loops.h"
#include "svm/plan/RowSums.h"

namespace KwBrevix_930::plan {

/// Zeros change no squared distance, since x - 0 is x for every x; they change no dot product of finite numbers, since
/// a sum that starts at +0 never becomes -0. Dot products of other numbers are the caller's to exclude.
template <class Stored>
class DenseRows : public RowSums {
public:
    /// All numbers are zero at first. terms: of loops.
    DenseRows(std::size_t rows, std::size_t columns, const Loops& loops, const TermLoops& terms);

    /// Returns: how many bytes such rows take.
    static double GetByteCount(std::size_t rows, std::size_t columns) {
        return sizeof(DenseRows) + AlignedArray<Stored>::GetByteCount(static_cast<double>(WholeBlocks(rows)) *
                                                                      static_cast<double>(columns));
    }

    /// value: exact as Stored.
    void Set(std::size_t row, std::size_t column, double value);

    void SumCase(const double* x, double* sums) const override;
    void SumTiles(const Tiles& tiles) const override;

private:
    std::size_t fRows;
    std::size_t fColumns;
    const Loops& fLoops;
    const TermLoops& fTerms;
    AlignedArray<Stored> fNumbers;
};

extern template class DenseRows<double>;
extern template class DenseRows<float>;

}  // namespace KwBrevix_930::plan
