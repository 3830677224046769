// Some rows of a table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/short_decimal.h"
#include "runtime/Row.h"

namespace brevix {

/// Some rows that follow each other. Columns are counted in the order in which they were asked for.
class RowBatch {
public:
    void clear();
    void append(const Row& row);
    /// Adds a row whose text follows. width: the number of columns. Returns: its cells, all to be set, valid until the
    /// next row; their texts start where the text that appendText is given next will stand.
    Row::Cell* addRow(std::size_t width) {
        fWidth = width;
        ++fRowCount;
        if (fCells.size() < fRowCount * width)
            makeRoom();
        return fCells.data() + (fRowCount - 1) * width;
    }
    /// Takes the last row back.
    void dropRow() { --fRowCount; }
    /// text: of all rows that were added since the last text.
    void appendText(std::string_view text) { fText += text; }
    std::size_t getTextSize() const { return fText.size(); }

    std::size_t getRowCount() const { return fRowCount; }
    /// Returns: the cells of a row, one for each column.
    const Row::Cell* getRow(std::size_t row) const { return fCells.data() + row * fWidth; }
    /// Returns: a cell's text as it stands in the table; numbers too. ShortDecimal::kFront bytes in front of its end
    /// may be read.
    std::string_view getText(const Row::Cell& cell) const { return {fText.data() + cell.start, cell.length}; }
    Row::Kind getKind(std::size_t row, std::size_t column) const { return getRow(row)[column].kind; }
    std::string_view getText(std::size_t row, std::size_t column) const { return getText(getRow(row)[column]); }

private:
    void makeRoom();

    std::size_t fRowCount = 0;
    std::size_t fWidth = 0;
    // Of the rows, and room for more.
    std::vector<Row::Cell> fCells;
    // Behind a few bytes that belong to no cell.
    std::string fText = std::string(KwBrevix_930::ShortDecimal::kFront, '\0');
};

}  // namespace brevix
