// The sums that a kernel takes of a case and each support vector, in one of several layouts. A row is a support vector.
#pragma once

#include <cstddef>

namespace KwBrevix_930::plan {

/// Tiles of cases, and where their sums go. A tile has kTile numbers for each column and kTile zeros behind them; its
/// sums are kTile a row, with room for whole blocks.
struct Tiles {
    std::size_t count;
    const double* numbers;
    std::size_t numberStride;
    double* sums;
    std::size_t sumStride;
};

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
