// Support vectors with all their columns, in blocks.
#include "svm/plan/DenseRows.h"

#include <algorithm>
#include <type_traits>

#include "svm/plan/prefetch.h"

namespace KwBrevix_930::plan {

template <class Stored>
DenseRows<Stored>::DenseRows(std::size_t rows, std::size_t columns, const Loops& loops, const TermLoops& terms)
    : fRows(rows), fColumns(columns), fLoops(loops), fTerms(terms), fNumbers(WholeBlocks(rows) * columns) {}

template <class Stored>
void DenseRows<Stored>::Set(std::size_t row, std::size_t column, double value) {
    fNumbers[(row / kBlock * fColumns + column) * kBlock + row % kBlock] = static_cast<Stored>(value);
}

template <class Stored>
void DenseRows<Stored>::SumCase(const double* x, double* sums) const {
    if constexpr (std::is_same_v<Stored, float>)
        fTerms.oneCaseOfFloats(fColumns, WholeBlocks(fRows), fNumbers.data(), x, sums);
    else
        fTerms.oneCase(fColumns, WholeBlocks(fRows), fNumbers.data(), x, sums);
}

// While the tiles take one stretch, the next one is fetched.
template <class Stored>
void DenseRows<Stored>::SumTiles(const Tiles& tiles) const {
    [[maybe_unused]] alignas(AlignedArray<double>::kAlignment) double widened[kStretch * kBlock];
    const Stored* end = fNumbers.data() + WholeBlocks(fRows) * fColumns;
    const Stored* stored = fNumbers.data();
    for (std::size_t row = 0; row < fRows; row += kBlock) {
        for (std::size_t column = 0; column < fColumns; column += kStretch) {
            const std::size_t columns = std::min(kStretch, fColumns - column);
            const double* numbers;
            if constexpr (std::is_same_v<Stored, float>) {
                fLoops.widen(columns * kBlock, stored, widened);
                numbers = widened;
            } else {
                numbers = stored;
            }
            stored += columns * kBlock;
            Prefetch(stored, stored + std::min<std::ptrdiff_t>(kStretch * kBlock, end - stored));
            AddToTiles(fTerms, {row, std::min(kBlock, fRows - row), column, columns, numbers}, tiles);
        }
    }
}

template class DenseRows<double>;
template class DenseRows<float>;

}  // namespace KwBrevix_930::plan
