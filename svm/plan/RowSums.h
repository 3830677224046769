// The sums that a kernel takes of a case and each support vector, in one of several layouts. A row is a support vector.
#pragma once

#include <cstddef>

#include "svm/plan/Loops.h"

namespace KwBrevix_930::plan {

/// Returns: how many rows the blocks have that hold so many.
constexpr std::size_t WholeBlocks(std::size_t rows) {
    return (rows + kBlock - 1) / kBlock * kBlock;
}

/// Tiles of cases, and where their sums go. A tile has kTile numbers for each column and kTile zeros behind them; its
/// sums are kTile a row, with room for whole blocks.
struct Tiles {
    std::size_t count;
    const double* numbers;
    std::size_t numberStride;
    double* sums;
    std::size_t sumStride;
};

/// The rows of a block, of whose columns at most kStretch are at hand at a time.
struct BlockStretch {
    std::size_t firstRow;
    std::size_t rows;
    std::size_t firstColumn;
    std::size_t columns;
    /// Column by column, kBlock for each.
    const double* numbers;
};

/// Adds the terms of a stretch to the sums of all tiles, so that it is made ready once for all; the first stretch of a
/// block sets them.
inline void AddToTiles(const TermLoops& loops, const BlockStretch& stretch, const Tiles& tiles) {
    for (std::size_t tile = 0; tile < tiles.count; ++tile)
        loops.addToTile(stretch.columns, stretch.rows, stretch.numbers,
                        tiles.numbers + tile * tiles.numberStride + stretch.firstColumn * kTile,
                        tiles.sums + tile * tiles.sumStride + stretch.firstRow * kTile, stretch.firstColumn == 0);
}

class RowSums {
public:
    RowSums() = default;
    RowSums(const RowSums&) = delete;
    RowSums& operator=(const RowSums&) = delete;
    virtual ~RowSums() = default;

    /// x: a number for each column and a zero behind them. sums: one a row, with room for whole blocks.
    virtual void SumCase(const double* x, double* sums) const = 0;
    virtual void SumTiles(const Tiles& tiles) const = 0;
};

}  // namespace KwBrevix_930::plan
