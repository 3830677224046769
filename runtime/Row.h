// One row of a table while it is read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brevix {

/// One row's wanted cells.
class Row {
public:
    enum Kind : std::uint8_t { kMissing, kText, kNumber, kBoolean };

    /// Readers let no text grow beyond what length can tell.
    struct Cell {
        std::size_t start = 0;
        std::uint32_t length = 0;
        Kind kind = kMissing;
    };

    explicit Row(std::size_t width) : fCells(width) {}

    /// Makes all cells missing.
    void clear();
    /// text: copied; an empty one leaves the cell missing.
    void set(std::size_t column, Kind kind, std::string_view text);

private:
    friend class RowBatch;
    std::vector<Cell> fCells;
    std::string fText;
};

}  // namespace brevix
