// Support vectors with all their columns, in blocks.
#include "svm/plan/DenseRows.h"

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

template <class Stored>
void DenseRows<Stored>::SumTile(const double* tile, double* sums) const {
    fLoops.oneTile(fColumns, fRows, fNumbers.data(), tile, sums);
}

template class DenseRows<double>;
template class DenseRows<float>;

}  // namespace KwBrevix_930::plan
