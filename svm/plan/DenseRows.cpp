// Support vectors with all their columns, in blocks.
#include "svm/plan/DenseRows.h"

#include <algorithm>

namespace KwBrevix_930::plan {

namespace {

std::size_t WholeBlocks(std::size_t rows) {
    return (rows + kBlock - 1) / kBlock * kBlock;
}

}  // namespace

template <class Stored>
DenseRows<Stored>::DenseRows(std::size_t rows, std::size_t columns, const DenseLoops<Stored>& loops)
    : fRows(rows), fColumns(columns), fLoops(loops), fNumbers(WholeBlocks(rows) * columns) {}

template <class Stored>
void DenseRows<Stored>::Set(std::size_t row, std::size_t column, double value) {
    fNumbers[(row / kBlock * fColumns + column) * kBlock + row % kBlock] = static_cast<Stored>(value);
}

template <class Stored>
void DenseRows<Stored>::SumCase(const double* x, double* sums) const {
    fLoops.oneCase(fColumns, WholeBlocks(fRows), fNumbers.data(), x, sums);
}

// Block by block, so that a block is fetched once for all tiles.
template <class Stored>
void DenseRows<Stored>::SumTiles(const Tiles& tiles) const {
    for (std::size_t row = 0; row < fRows; row += kBlock) {
        for (std::size_t tile = 0; tile < tiles.count; ++tile)
            fLoops.oneTile(fColumns, std::min(kBlock, fRows - row), fNumbers.data() + row * fColumns,
                           tiles.numbers + tile * tiles.numberStride,
                           tiles.sums + tile * tiles.sumStride + row * kTile);
    }
}

template class DenseRows<double>;
template class DenseRows<float>;

}  // namespace KwBrevix_930::plan
